// Notifications and subclassed messages of the child windows, and the keyboard's way around them.
#include "ui/child_events_win.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "base/loop_win.h"
#include "ui/accessible_win.h"
#include "ui/list_update_win.h"

namespace corvane {

namespace {

// A window's own procedure, for the messages that come after the program has forgotten the window.
constexpr char kOwnProcedure[] = "Corvane own procedure";

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

// Where other programs read the tick of a line. Handed to the control itself, it would cost a
// message for each of thousands of lines.
LRESULT TickOf(const CheckList& list, WPARAM line) {
  if (line >= static_cast<WPARAM>(list.count())) return LB_ERR;
  return list.ticked(static_cast<int>(line)) ? 1 : 0;
}

// What a combo box that has a text for it says of itself while nothing is selected.
std::optional<LRESULT> AnswerForEmptyCombo(const ChildWindow& child, UINT message, WPARAM w_param,
                                           LPARAM l_param) {
  if (message != WM_GETTEXT && message != WM_GETTEXTLENGTH) return std::nullopt;
  if (child.kind() != ControlKind::kComboBox || SelectedIndex(child) >= 0) return std::nullopt;
  const std::string& text = As<ComboBox>(child.control()).text;
  if (message == WM_GETTEXTLENGTH) return static_cast<LRESULT>(text.size());
  if (w_param == 0) return 0;
  const std::size_t length = std::min<std::size_t>(text.size(), w_param - 1);
  // The system's combo boxes take wide texts, whatever made them.
  const bool wide = IsWindowUnicode(child.window) != FALSE;
  for (std::size_t at = 0; at <= length; ++at) {
    const char letter = at < length ? text[at] : '\0';
    if (wide) {
      reinterpret_cast<wchar_t*>(l_param)[at] = static_cast<unsigned char>(letter);
    } else {
      reinterpret_cast<char*>(l_param)[at] = letter;
    }
  }
  return static_cast<LRESULT>(length);
}

bool IsInput(UINT message) {
  return message == WM_KEYDOWN || message == WM_SYSKEYDOWN || message == WM_LBUTTONDOWN ||
         message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN || message == WM_LBUTTONDBLCLK ||
         message == WM_RBUTTONDBLCLK;
}

// Where a frame that takes the mouse has nothing to click.
bool IsEmptyPlace(const ChildWindow& child) {
  const ChildWindow& place = child.frame != nullptr ? *child.frame : child;
  const bool is_still = child.kind() == ControlKind::kFrame ||
                        child.kind() == ControlKind::kLabel || child.kind() == ControlKind::kShape;
  return place.row->Has(kTakesMouse) && is_still && !child.row->Has(kClickable);
}

}  // namespace

// Stands before the procedure of every child's class, by plain means: lists get their lines by
// thousands, and the common controls' way of doing it costs each message a search.
LRESULT CALLBACK ChildEvents::Procedure(HWND window, UINT message, WPARAM w_param, LPARAM l_param) {
  auto* events = reinterpret_cast<ChildEvents*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  const ChildWindow* child =
      events->children_ == nullptr ? nullptr : events->children_->Find(window);
  if (child != nullptr) {
    return events->Handle(*child, message, w_param, l_param);
  }
  const auto own =
      reinterpret_cast<WNDPROC>(message == WM_NCDESTROY ? RemovePropA(window, kOwnProcedure)
                                                        : GetPropA(window, kOwnProcedure));
  return CallWindowProcA(own, window, message, w_param, l_param);
}

LRESULT ChildEvents::Handle(const ChildWindow& child, UINT message, WPARAM w_param,
                            LPARAM l_param) {
  const HWND window = child.window;
  const WNDPROC own = child.own_procedure;
  if (child.kind() == ControlKind::kFrame) {
    if (message == WM_ERASEBKGND) return 1;
    if (message == WM_PAINT) {
      children_->PaintFrameOf(child);
      return 0;
    }
    // The other frames let the mouse through to the owner, which has the tips of what is disabled.
    if (message == WM_NCHITTEST && child.row->Has(kTakesMouse)) return HTCLIENT;
  }
  if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
    // A click on an empty place is a movement over it, and no press of a group box.
    if (IsEmptyPlace(child)) ReportMovement(child);
    if (child.kind() == ControlKind::kFrame) return 0;
  }
  if (child.row->Has(kTipsCutLines)) children_->line_tips().Note(window, message, l_param);
  const bool rests = message == WM_MOUSEMOVE && !NotePointer(window, l_param);
  const bool is_list = IsList(child.kind());
  if (is_list && MeetsLines(message)) children_->ShowLists();
  if (message == WM_GETOBJECT) {
    if (const auto answer = AnswerAccessibility(child, w_param, l_param)) return *answer;
  }
  if (message == LB_GETITEMDATA && child.kind() == ControlKind::kCheckList) {
    return TickOf(As<CheckList>(child.control()), w_param);
  }
  if (const auto answer = AnswerForEmptyCombo(child, message, w_param, l_param)) return *answer;
  if (message == WM_SETCURSOR && child.row->Has(kClickable)) {
    ::SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_HAND)));
    return TRUE;
  }
  if (!Pass(child, message, w_param)) return 0;
  if (children_ == nullptr) return CallWindowProcA(own, window, message, w_param, l_param);
  const bool is_key = is_list && (message == WM_KEYDOWN || message == WM_CHAR);
  if (is_key) ++keys_under_way_;
  const LRESULT result = CallWindowProcA(own, window, message, w_param, l_param);
  if (is_key) --keys_under_way_;
  // What the control did may have ended the window.
  if (children_ != nullptr && !rests) Report(child, message, w_param, l_param);
  return result;
}

bool ChildEvents::NotePointer(HWND window, LPARAM place) {
  POINT at{static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
  ClientToScreen(window, &at);
  const POINT before = std::exchange(pointer_, at);
  return at.x != before.x || at.y != before.y;
}

void ChildEvents::Connect(HWND owner, ChildWindows& children, UserEvents& handlers) {
  owner_ = owner;
  children_ = &children;
  handlers_ = &handlers;
  GetCursorPos(&pointer_);
  for (ChildWindow& child : children.all()) {
    SetWindowLongPtrA(child.window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    child.own_procedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(child.window, GWLP_WNDPROC));
    SetPropA(child.window, kOwnProcedure, reinterpret_cast<HANDLE>(child.own_procedure));
    SetWindowLongPtrA(child.window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure));
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
    case ControlKind::kCheckList:
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

void ChildEvents::Report(const ChildWindow& child, UINT message, WPARAM w_param, LPARAM l_param) {
  if (IsList(child.kind()) && CanScroll(message)) ReportTopIndex(child);
  Control& control = child.control();
  const auto mouse_up = [&](int button) {
    const POINT at{static_cast<short>(LOWORD(l_param)), static_cast<short>(HIWORD(l_param))};
    const int line = IsList(child.kind()) ? LineUnder(child.window, at) : -1;
    Run([&control, button, line](UserEvents& form) { form.MouseUp(control, button, line); });
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
    case WM_MOUSEMOVE:
      ReportMovement(child);
      break;
    default:
      break;
  }
}

void ChildEvents::ReportMovement(const ChildWindow& child) {
  const bool is_label = child.kind() == ControlKind::kLabel || child.kind() == ControlKind::kShape;
  Control& over = is_label && child.frame != nullptr ? child.frame->control() : child.control();
  const bool is_foreground = GetForegroundWindow() == owner_;
  Run([&over, is_foreground](UserEvents& form) { form.MouseMove(over, is_foreground); });
}

void ChildEvents::EnterPressed(const ChildWindow& list) {
  const int line = SelectedIndex(list);
  if (line < 0) return;
  auto& control = As<ListBox>(list.control());
  Run([&control, line](UserEvents& form) {
    form.ListSelected(control, line, true);
    form.DoubleClick(control);
  });
}

bool ChildEvents::RunShortcut(const MSG& key) {
  if (key.message != WM_KEYDOWN || GetKeyState(VK_SHIFT) < 0) return false;
  MenuItem* item =
      children_->FindShortcut(static_cast<int>(key.wParam), GetKeyState(VK_CONTROL) < 0);
  if (item == nullptr) return false;
  const bool repeats = (key.lParam & (1 << 30)) != 0;
  if (!repeats) Run([item](UserEvents& form) { form.Click(*item); });
  return true;
}

bool ChildEvents::Navigate(MSG& key) {
  if (children_ == nullptr) return false;
  if (IsInput(key.message)) {
    Run([](UserEvents& form) { form.AnyInput(); });
    if (children_ == nullptr) return true;
  }
  const ChildWindow* child = children_->Find(key.hwnd);
  if (RunShortcut(key)) return true;
  if (key.message == WM_SYSKEYDOWN && key.wParam == VK_F10 && GetKeyState(VK_SHIFT) < 0 &&
      child != nullptr) {
    Control& control = child->control();
    Run([&control](UserEvents& form) { form.KeyUp(control, kContextMenuCode); });
    return true;
  }
  if (key.message == WM_KEYDOWN && child != nullptr) {
    if (key.wParam == VK_RETURN && child->kind() == ControlKind::kButton) {
      child->Send(BM_CLICK);
      return true;
    }
    const bool repeats = (key.lParam & (1 << 30)) != 0;
    if (key.wParam == VK_RETURN && child->row->Has(kActsOnEnter)) {
      if (!repeats) EnterPressed(*child);
      return true;
    }
    // Enter has no dialog meaning here, and open lists want Escape for themselves.
    const bool open =
        child->kind() == ControlKind::kComboBox && child->Send(CB_GETDROPPEDSTATE) != FALSE;
    if (key.wParam == VK_ESCAPE && !open) {
      Run([](UserEvents& form) { form.Escape(); });
      return true;
    }
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
