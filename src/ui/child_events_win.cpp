// Notifications and subclassed messages of the child windows, and the keyboard's way around them.
#include "ui/child_events_win.h"

#include <commctrl.h>

#include "base/loop_win.h"

namespace corvane {

namespace {

constexpr UINT_PTR kSubclassId = 1;

// Characters of Ctrl+A, C, V, X, Z: typed with Ctrl they are commands of the box, not text.
bool IsEditCommand(WPARAM code) {
  const bool known = code == 1 || code == 3 || code == 22 || code == 24 || code == 26;
  return known && GetKeyState(VK_CONTROL) < 0;
}

bool CanScroll(UINT message) {
  switch (message) {
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
    case WM_TIMER:
    case WM_SIZE:
    case LB_SETTOPINDEX:
    case LB_SETCURSEL:
    case LB_SELECTSTRING:
    case LB_SETCARETINDEX:
      return true;
    default:
      return false;
  }
}

// What asks a list box about its lines or points at one of them: that has to meet the lines that
// the state has.
bool MeetsLines(UINT message) {
  return (message >= LB_ADDSTRING && message < LB_MSGMAX) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
         (message >= WM_KEYFIRST && message <= WM_KEYLAST) || message == WM_VSCROLL ||
         message == WM_TIMER;
}

}  // namespace

// The subclass procedure of every child; its data are the events object.
LRESULT CALLBACK ChildEvents::Procedure(HWND window, UINT message, WPARAM w_param, LPARAM l_param,
                                        UINT_PTR, DWORD_PTR data) {
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, Procedure, kSubclassId);
  auto& events = *reinterpret_cast<ChildEvents*>(data);
  const ChildWindow* child = events.children_ == nullptr ? nullptr : events.children_->Find(window);
  if (child == nullptr) return DefSubclassProc(window, message, w_param, l_param);
  return events.Handle(*child, message, w_param, l_param);
}

LRESULT ChildEvents::Handle(const ChildWindow& child, UINT message, WPARAM w_param,
                            LPARAM l_param) {
  const HWND window = child.window;
  if (child.kind() == ControlKind::kFrame) {
    if (message == WM_ERASEBKGND) return 1;
    if (message == WM_PAINT) {
      children_->PaintFrameOf(child);
      return 0;
    }
    // The other frames let the mouse through to the owner, which has the tips of what is disabled.
    if (message == WM_NCHITTEST && child.row->Has(kTakesMouse)) return HTCLIENT;
  }
  const bool is_list = child.kind() == ControlKind::kListBox;
  if (is_list && MeetsLines(message)) children_->ShowLists();
  if (message == WM_SETCURSOR && child.row->Has(kClickable)) {
    ::SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_HAND)));
    return TRUE;
  }
  if (!Pass(child, message, w_param)) return 0;
  if (children_ == nullptr) return DefSubclassProc(window, message, w_param, l_param);
  const bool is_key = is_list && (message == WM_KEYDOWN || message == WM_CHAR);
  if (is_key) ++keys_under_way_;
  const LRESULT result = DefSubclassProc(window, message, w_param, l_param);
  if (is_key) --keys_under_way_;
  // What the control did may have ended the window.
  if (children_ != nullptr) Report(child, message, w_param);
  return result;
}

void ChildEvents::Connect(HWND owner, ChildWindows& children, UserEvents& handlers) {
  owner_ = owner;
  children_ = &children;
  handlers_ = &handlers;
  for (const ChildWindow& child : children.all()) {
    SetWindowSubclass(child.window, Procedure, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
  }
}

void ChildEvents::Disconnect() {
  children_ = nullptr;
  handlers_ = nullptr;
}

// What another program sends directly, while a handler waits for that or a third program, has to
// wait for its turn; anything else is an event already.
void ChildEvents::Run(const std::function<void(UserEvents&)>& event) {
  if (InSendMessage() && !loop_.TakingMessages()) {
    loop_.Post(EventSource::kUser, [this, event] {
      if (handlers_ != nullptr) event(*handlers_);
    });
  } else if (handlers_ != nullptr) {
    loop_.Guard([&] { event(*handlers_); });
  }
}

void ChildEvents::CloseRequested() {
  Run([](UserEvents& form) { form.CloseRequested(); });
}

// Cannot wait: the session is gone when the message has been answered.
void ChildEvents::SessionEnding() {
  if (handlers_ != nullptr) loop_.Guard([this] { handlers_->SessionEnding(); });
}

void ChildEvents::Command(int id, int code) {
  Run([this, id, code](UserEvents&) { RunCommand(id, code); });
}

void ChildEvents::RunCommand(int id, int code) {
  if (children_ == nullptr) return;
  const ChildWindow* child = children_->FindNumber(id);
  if (child == nullptr) {
    MenuItem* item = children_->FindMenuItem(id);
    if (item != nullptr) handlers_->Click(*item);
    return;
  }
  switch (child->kind()) {
    case ControlKind::kLabel:
      if (code == STN_CLICKED) handlers_->Click(child->control());
      if (code == STN_DBLCLK) handlers_->DoubleClick(child->control());
      break;
    case ControlKind::kButton:
      // The second press of a fast pair is a press like any other.
      if (code == BN_CLICKED || code == BN_DOUBLECLICKED) handlers_->Click(child->control());
      break;
    case ControlKind::kCheckBox:
    case ControlKind::kOption:
      if (code == BN_CLICKED) handlers_->Click(child->control());
      break;
    case ControlKind::kTextBox:
      BoxCommand(*child, code);
      break;
    case ControlKind::kListBox:
      ListCommand(*child, code);
      break;
    case ControlKind::kComboBox:
      if (code == CBN_SELCHANGE) {
        handlers_->ComboSelected(As<ComboBox>(child->control()), SelectedIndex(*child));
      }
      if (code == CBN_KILLFOCUS) handlers_->LostFocus(child->control());
      break;
    default:
      break;
  }
}

void ChildEvents::BoxCommand(const ChildWindow& child, int code) {
  auto& box = As<TextBox>(child.control());
  // One change can be notified twice, and one made by the program is none of the user's.
  if (code == EN_CHANGE && !children_->mirroring_text()) {
    const std::string text = ShownText(child);
    if (text != box.text) handlers_->TextEdited(box, text);
  }
  if (code == EN_KILLFOCUS) handlers_->LostFocus(box);
}

void ChildEvents::ListCommand(const ChildWindow& child, int code) {
  auto& list = As<ListBox>(child.control());
  if (code == LBN_SELCHANGE) {
    handlers_->ListSelected(list, SelectedIndex(child), keys_under_way_ == 0);
  }
  if (code == LBN_DBLCLK) {
    handlers_->ListSelected(list, SelectedIndex(child), false);
    handlers_->DoubleClick(list);
  }
  if (code == LBN_KILLFOCUS) handlers_->LostFocus(list);
}

// False: the message is not for the control.
bool ChildEvents::Pass(const ChildWindow& child, UINT message, WPARAM w_param) {
  if (message == WM_CHAR && child.kind() == ControlKind::kTextBox && !IsEditCommand(w_param)) {
    bool accepted = false;
    loop_.Guard([&] {
      accepted = handlers_->KeyPress(child.control(), static_cast<int>(w_param & 0xFFFF));
    });
    return accepted;
  }
  return true;
}

void ChildEvents::Report(const ChildWindow& child, UINT message, WPARAM w_param) {
  if (child.kind() == ControlKind::kListBox && CanScroll(message)) ReportTopIndex(child);
  Control& control = child.control();
  const auto mouse_up = [&](int button) {
    Run([&control, button](UserEvents& form) { form.MouseUp(control, button); });
  };
  switch (message) {
    case WM_KEYUP:
      Run([&control, w_param](UserEvents& form) {
        form.KeyUp(control, static_cast<int>(w_param));
      });
      break;
    case WM_LBUTTONUP:
      mouse_up(kLeftButton);
      break;
    case WM_RBUTTONUP:
      mouse_up(kRightButton);
      break;
    case WM_MBUTTONUP:
      mouse_up(kMiddleButton);
      break;
    case WM_MOUSEMOVE: {
      const bool is_label =
          child.kind() == ControlKind::kLabel || child.kind() == ControlKind::kShape;
      Control& over = is_label && child.frame != nullptr ? child.frame->control() : control;
      const bool is_foreground = GetForegroundWindow() == owner_;
      Run([&over, is_foreground](UserEvents& form) { form.MouseMove(over, is_foreground); });
      break;
    }
    default:
      break;
  }
}

bool ChildEvents::Navigate(MSG& key) {
  if (children_ == nullptr) return false;
  const ChildWindow* child = children_->Find(key.hwnd);
  if (key.message == WM_KEYDOWN && child != nullptr) {
    if (key.wParam == VK_RETURN && child->kind() == ControlKind::kButton) {
      child->Send(BM_CLICK);
      return true;
    }
    // Enter and Escape have no dialog meaning here: text boxes and open lists want them.
    if (key.wParam == VK_RETURN || key.wParam == VK_ESCAPE) return false;
    const bool back = key.wParam == VK_UP || key.wParam == VK_LEFT;
    if (child->kind() == ControlKind::kOption &&
        (back || key.wParam == VK_DOWN || key.wParam == VK_RIGHT)) {
      MoveInOptions(*child, back);
      return true;
    }
  }
  return IsDialogMessageA(owner_, &key) != FALSE;
}

void ChildEvents::MoveInOptions(const ChildWindow& option, bool back) {
  const HWND next = GetNextDlgGroupItem(owner_, option.window, back ? TRUE : FALSE);
  if (next == nullptr) return;
  ::SetFocus(next);  // some systems report a click for it, some do not
  if (children_ == nullptr) return;
  const ChildWindow* reached = children_->Find(next);
  if (reached == nullptr || reached->kind() != ControlKind::kOption) return;
  if (!As<OptionButton>(reached->control()).value) handlers_->Click(reached->control());
}

}  // namespace corvane
