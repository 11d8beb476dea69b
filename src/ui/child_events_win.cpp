// Notifications and subclassed messages of the child windows, and the keyboard's way around them.
#include "ui/child_events_win.h"

#include <windows.h>
//
#include <commctrl.h>

#include "base/loop_win.h"
#include "ui/main_form.h"

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

// Labels that do something when clicked.
bool IsClickable(ControlId id) {
  return id == ControlId::lblGroupHold || id == ControlId::lblGroupNumber ||
         id == ControlId::lblCurrentSSI || id == ControlId::lblManualD_Release ||
         id == ControlId::lblChangeToCcFrequency || id == ControlId::lblPositionSdrSharpCC;
}

}  // namespace

// The subclass procedure of every child; its data are the events object, its control by the id.
struct ChildEvents::Hook {
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w_param, LPARAM l_param,
                                    UINT_PTR, DWORD_PTR data) {
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, Procedure, kSubclassId);
    auto& events = *reinterpret_cast<ChildEvents*>(data);
    if (events.children_ == nullptr) return DefSubclassProc(window, message, w_param, l_param);
    const ChildWindow* child = events.children_->Find(static_cast<ControlId>(GetDlgCtrlID(window)));
    if (child == nullptr) return DefSubclassProc(window, message, w_param, l_param);

    if (child->kind == ChildKind::kFrame) {
      if (message == WM_ERASEBKGND) return 1;
      if (message == WM_PAINT) {
        events.children_->PaintFrameOf(*child);
        return 0;
      }
      // The other frames let the mouse through to the owner, which has the tips of what is
      // disabled.
      if (message == WM_NCHITTEST && child->id == ControlId::fraCallDetails) return HTCLIENT;
    }
    if (child->kind == ChildKind::kListBox && MeetsLines(message)) events.children_->ShowLists();
    if (message == WM_SETCURSOR && IsClickable(child->id)) {
      ::SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_HAND)));
      return TRUE;
    }
    if (!events.Pass(*child, message, w_param)) return 0;
    if (events.children_ == nullptr) return DefSubclassProc(window, message, w_param, l_param);
    const bool is_key =
        child->kind == ChildKind::kListBox && (message == WM_KEYDOWN || message == WM_CHAR);
    if (is_key) ++events.keys_under_way_;
    const LRESULT result = DefSubclassProc(window, message, w_param, l_param);
    if (is_key) --events.keys_under_way_;
    // What the control did may have ended the window.
    if (events.children_ != nullptr) events.Report(*child, message, w_param);
    return result;
  }
};

void ChildEvents::Connect(void* owner, ChildWindows& children, Form1& form, MainForm& main_form) {
  owner_ = owner;
  children_ = &children;
  form_ = &form;
  main_form_ = &main_form;
  for (const ChildWindow& child : children.all()) {
    SetWindowSubclass(static_cast<HWND>(child.window), Hook::Procedure, kSubclassId,
                      reinterpret_cast<DWORD_PTR>(this));
  }
}

void ChildEvents::Disconnect() {
  children_ = nullptr;
  main_form_ = nullptr;
  form_ = nullptr;
}

// What another program sends directly, while a handler waits for that or a third program, has to
// wait for its turn; anything else is an event already.
void ChildEvents::Run(const std::function<void(MainForm&)>& event) {
  if (InSendMessage() && !loop_.TakingMessages()) {
    loop_.Post(EventSource::kUser, [this, event] {
      if (main_form_ != nullptr) event(*main_form_);
    });
  } else if (main_form_ != nullptr) {
    loop_.Guard([&] { event(*main_form_); });
  }
}

void ChildEvents::CloseRequested() {
  Run([](MainForm& form) { form.CloseRequested(); });
}

// Cannot wait: the session is gone when the message has been answered.
void ChildEvents::SessionEnding() {
  if (main_form_ != nullptr) loop_.Guard([this] { main_form_->SessionEnding(); });
}

void ChildEvents::Command(int id, int code) {
  Run([this, id, code](MainForm&) { RunCommand(id, code); });
}

void ChildEvents::RunCommand(int id, int code) {
  if (children_ == nullptr) return;
  const ChildWindow* child = children_->Find(static_cast<ControlId>(id));
  if (child == nullptr) {
    MenuItem* item = children_->FindMenuItem(static_cast<ControlId>(id));
    if (item != nullptr) main_form_->Click(*item);
    return;
  }
  switch (child->kind) {
    case ChildKind::kLabel:
      if (code == STN_CLICKED) main_form_->Click(*child->control);
      if (code == STN_DBLCLK) main_form_->DoubleClick(*child->control);
      break;
    case ChildKind::kButton:
      // The second press of a fast pair is a press like any other.
      if (code == BN_CLICKED || code == BN_DOUBLECLICKED) main_form_->Click(*child->control);
      break;
    case ChildKind::kCheckBox:
    case ChildKind::kOption:
      if (code == BN_CLICKED) main_form_->Click(*child->control);
      break;
    case ChildKind::kTextBox:
      BoxCommand(*child, code);
      break;
    case ChildKind::kListBox:
      ListCommand(*child, code);
      break;
    case ChildKind::kComboBox:
      if (code == CBN_SELCHANGE) {
        main_form_->ComboSelected(static_cast<ComboBox&>(*child->control), SelectedIndex(*child));
      }
      if (code == CBN_KILLFOCUS) main_form_->LostFocus(*child->control);
      break;
    case ChildKind::kShape:
    case ChildKind::kFrame:
      break;
  }
}

void ChildEvents::BoxCommand(const ChildWindow& child, int code) {
  auto& box = static_cast<TextBox&>(*child.control);
  // One change can be notified twice, and one made by the program is none of the user's.
  if (code == EN_CHANGE && !children_->mirroring_text()) {
    const std::string text = ShownText(child);
    if (text != box.text.get()) main_form_->TextEdited(box, text);
  }
  if (code == EN_KILLFOCUS) main_form_->LostFocus(box);
}

void ChildEvents::ListCommand(const ChildWindow& child, int code) {
  auto& list = static_cast<ListBox&>(*child.control);
  if (code == LBN_SELCHANGE) {
    main_form_->ListSelected(list, SelectedIndex(child), keys_under_way_ == 0);
  }
  if (code == LBN_DBLCLK) {
    main_form_->ListSelected(list, SelectedIndex(child), false);
    main_form_->DoubleClick(list);
  }
  if (code == LBN_KILLFOCUS) main_form_->LostFocus(list);
}

// False: the message is not for the control.
bool ChildEvents::Pass(const ChildWindow& child, unsigned message, std::uintptr_t w_param) {
  if (message == WM_CHAR && child.kind == ChildKind::kTextBox && !IsEditCommand(w_param)) {
    bool accepted = false;
    loop_.Guard([&] {
      accepted = main_form_->KeyPress(*child.control, static_cast<int>(w_param & 0xFFFF));
    });
    return accepted;
  }
  return true;
}

void ChildEvents::Report(const ChildWindow& child, unsigned message, std::uintptr_t w_param) {
  if (child.kind == ChildKind::kListBox && CanScroll(message)) ReportTopIndex(child);
  Control& control = *child.control;
  const auto mouse_up = [&](int button) {
    Run([&control, button](MainForm& form) { form.MouseUp(control, button); });
  };
  switch (message) {
    case WM_KEYUP:
      Run([&control, w_param](MainForm& form) { form.KeyUp(control, static_cast<int>(w_param)); });
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
      const bool is_label = child.kind == ChildKind::kLabel || child.kind == ChildKind::kShape;
      Control& over = is_label && child.frame != nullptr ? *child.frame->control : control;
      const bool is_foreground = GetForegroundWindow() == static_cast<HWND>(owner_);
      Run([&over, is_foreground](MainForm& form) { form.MouseMove(over, is_foreground); });
      break;
    }
    default:
      break;
  }
}

bool ChildEvents::Navigate(void* message) {
  if (children_ == nullptr) return false;
  auto& key = *static_cast<MSG*>(message);
  const ChildWindow* child = children_->Find(static_cast<ControlId>(GetDlgCtrlID(key.hwnd)));
  if (key.message == WM_KEYDOWN && child != nullptr && child->window == key.hwnd) {
    const bool is_button = child->kind == ChildKind::kButton;
    if (key.wParam == VK_RETURN && is_button) {
      SendMessageA(key.hwnd, BM_CLICK, 0, 0);
      return true;
    }
    // Enter and Escape have no dialog meaning here: text boxes and open lists want them.
    if (key.wParam == VK_RETURN || key.wParam == VK_ESCAPE) return false;
    const bool back = key.wParam == VK_UP || key.wParam == VK_LEFT;
    if (child->kind == ChildKind::kOption &&
        (back || key.wParam == VK_DOWN || key.wParam == VK_RIGHT)) {
      MoveInOptions(*child, back);
      return true;
    }
  }
  return IsDialogMessageA(static_cast<HWND>(owner_), &key) != FALSE;
}

void ChildEvents::MoveInOptions(const ChildWindow& option, bool back) {
  const HWND next = GetNextDlgGroupItem(static_cast<HWND>(owner_), static_cast<HWND>(option.window),
                                        back ? TRUE : FALSE);
  if (next == nullptr) return;
  ::SetFocus(next);  // some systems report a click for it, some do not
  if (children_ == nullptr) return;
  const ChildWindow* reached = children_->Find(static_cast<ControlId>(GetDlgCtrlID(next)));
  if (reached == nullptr || reached->kind != ChildKind::kOption) return;
  if (!static_cast<const OptionButton&>(*reached->control).value) {
    main_form_->Click(*reached->control);
  }
}

}  // namespace corvane
