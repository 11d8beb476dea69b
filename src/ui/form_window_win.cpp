// The window procedure, the life of a window, and its place on the screens. Input of the child
// windows is turned into events in child_events_win.cpp.
#include "ui/form_window_win.h"

#include <commctrl.h>

#include <utility>
#include <vector>

namespace corvane {

namespace {

constexpr DWORD kStyle = WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr WORD kIconResource = 1;
constexpr int kLongestListDelayMs = 50;
constexpr UINT kArrange = WM_APP + 1;

PixelRect FromRect(const RECT& rect) {
  return {static_cast<int>(rect.left), static_cast<int>(rect.top),
          static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top)};
}

BOOL CALLBACK CollectScreen(HMONITOR monitor, HDC, LPRECT, LPARAM screens) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (GetMonitorInfoA(monitor, &info)) {
    reinterpret_cast<std::vector<PixelRect>*>(screens)->push_back(FromRect(info.rcWork));
  }
  return TRUE;
}

}  // namespace

bool FormWindow::RegisterWindowClass() const {
  WNDCLASSEXA window_class{};
  window_class.cbSize = sizeof window_class;
  window_class.lpfnWndProc = Procedure;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
  window_class.hIcon = LoadIconA(window_class.hInstance, MAKEINTRESOURCEA(kIconResource));
  window_class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  window_class.lpszClassName = table_->window_class;
  return RegisterClassExA(&window_class) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

bool FormWindow::Create(const WindowTable& table, UserEvents& handlers, HWND owner) {
  assert(window_ == nullptr);
  const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
  InitCommonControlsEx(&controls);
  table_.emplace(table);
  if (!RegisterWindowClass()) return false;
  window_ = CreateWindowExA(0, table.window_class, table.window.caption.get().c_str(),
                            kStyle | (table.minimises ? WS_MINIMIZEBOX : 0), CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr,
                            GetModuleHandleA(nullptr), this);
  if (window_ == nullptr) return false;
  dpi_ = static_cast<int>(GetDpiForWindow(window_));
  if (!children_.Create(window_, *table_, dpi_)) {
    Destroy();
    return false;
  }
  loop_.AddHook(*this);
  events_.Connect(window_, children_, handlers);
  if (table.window.bounds == Window::Bounds{}) NotePosition();
  Place();
  children_.LayOut(dpi_);
  return true;
}

void FormWindow::Show() {
  if (window_ == nullptr) return;
  ArrangeNow();  // a window that begins compact is never seen in another size
  const Window::Bounds& bounds = table_->window.bounds;
  PixelRect rect{bounds.left / kTwipsPerPixel, bounds.top / kTwipsPerPixel, 0, 0};
  const auto move = [&] {
    SetWindowPos(window_, nullptr, rect.left, rect.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  };
  move();  // may change the resolution, and with it the size
  RECT outer{};
  GetWindowRect(window_, &outer);
  rect = FromRect(outer);
  std::vector<PixelRect> screens;
  EnumDisplayMonitors(nullptr, nullptr, CollectScreen, reinterpret_cast<LPARAM>(&screens));
  if (!screens.empty()) rect = MoveIntoView(rect, screens);
  move();
  shown_ = true;
  // Whoever started the program may have asked for a minimised window; the first call obeys that.
  ShowWindow(window_, SW_SHOWNORMAL);
  ShowWindow(window_, SW_SHOWNORMAL);
  NotePosition();
  FocusWanted(table_->Home());
  UpdateWindow(window_);
}

void FormWindow::BringToFront() {
  if (window_ == nullptr) return;
  if (IsIconic(window_)) ShowWindow(window_, SW_RESTORE);
  SetForegroundWindow(window_);
}

void FormWindow::Destroy() {
  if (window_ == nullptr) return;
  const HWND window = window_;
  loop_.RemoveHook(*this);
  window_ = nullptr;
  focus_ = nullptr;
  shown_ = false;
  events_.Disconnect();
  children_.Clear();
  DestroyWindow(window);
  table_.reset();
}

bool FormWindow::FilterMessage(MSG& message) {
  if (window_ == nullptr) return false;
  if (message.hwnd != window_ && !IsChild(window_, message.hwnd)) return false;
  children_.Notice(message);
  return events_.Navigate(message);
}

// A call is set up and tuned in one event: its lines in the log wait until the commands are out,
// but not while something waits for long.
void FormWindow::Idle(bool at_rest) {
  if (window_ == nullptr || !children_.lists_wait()) {
    lists_wait_since_ms_.reset();
    return;
  }
  const std::int64_t now_ms = loop_.TickMs();
  if (!lists_wait_since_ms_) lists_wait_since_ms_ = now_ms;
  if (!at_rest && now_ms - *lists_wait_since_ms_ < kLongestListDelayMs) return;
  lists_wait_since_ms_.reset();
  children_.ShowLists();
}

void FormWindow::Changed(const Control& control, Field field) {
  if (window_ == nullptr) return;
  const bool turns_compact = &control == table_->compact && field == Field::kChecked;
  const bool is_place = field == Field::kBounds || field == Field::kVisible;
  if (turns_compact) ArrangeLater();
  if (is_place && arrange_waits_) return;
  if (&control != &table_->window) {
    children_.Mirror(control, field);
  } else if (field == Field::kCaption) {
    SetWindowTextA(window_, control.caption.get().c_str());
  } else if (field == Field::kBounds) {
    Place();
  }
}

// Compact or not changes the window's size, what is seen of it and where it stands, one after the
// other: they are shown together, before anything is painted.
void FormWindow::ArrangeLater() {
  if (!std::exchange(arrange_waits_, true)) PostMessageA(window_, kArrange, 0, 0);
}

void FormWindow::ArrangeNow() {
  if (!arrange_waits_) return;
  const Window::Bounds& bounds = table_->window.bounds;
  Arrange(dpi_, {bounds.left / kTwipsPerPixel, bounds.top / kTwipsPerPixel});
}

void FormWindow::Arrange(int dpi, POINT corner) {
  arrange_waits_ = false;
  arranging_ = true;
  dpi_ = dpi;
  const SIZE size = OuterSize(dpi);
  const bool moves = shown_ && !IsIconic(window_);
  RECT client{corner.x, corner.y, corner.x + size.cx, corner.y + size.cy};
  SendMessageA(window_, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&client));
  children_.Arrange(dpi, static_cast<int>(client.right - client.left),
                    static_cast<int>(client.bottom - client.top));
  SetWindowPos(
      window_, nullptr, corner.x, corner.y, size.cx, size.cy,
      SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | SWP_NOCOPYBITS | (moves ? 0U : SWP_NOMOVE));
  children_.LayOut(dpi);  // in case the menu bar takes another height now
  arranging_ = false;
  RedrawWindow(window_, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

void FormWindow::ListChanged(ListBox& list, ListChange change, std::size_t index) {
  if (window_ != nullptr) children_.MirrorList(list, change, index);
}

void FormWindow::FocusWanted(const Control& control) {
  if (window_ == nullptr || !shown_) return;
  const ChildWindow* child = children_.Find(control);
  if (child == nullptr || !control.enabled || !children_.Shown(*child)) return;
  ::SetFocus(child->window);
}

SIZE FormWindow::OuterSize(int dpi) const {
  const Window::Bounds& bounds = table_->window.bounds;
  if (bounds.width == 0 && table_->width == 0) {
    RECT outer{0, 0, ToPixels(table_->client_width, dpi), ToPixels(table_->client_height, dpi)};
    AdjustWindowRectExForDpi(&outer, static_cast<DWORD>(GetWindowLongPtrA(window_, GWL_STYLE)),
                             !table_->menu.empty(), 0, static_cast<UINT>(dpi));
    return {outer.right - outer.left, outer.bottom - outer.top};
  }
  const int width = bounds.width > 0 ? bounds.width : table_->width;
  const int height = bounds.height > 0 ? bounds.height : table_->height;
  return {ToPixels(width, dpi), ToPixels(height, dpi)};
}

// Size and place in one step. Before the window is shown the size alone: Show applies the place.
void FormWindow::Place() {
  const Window::Bounds& bounds = table_->window.bounds;
  const SIZE size = OuterSize(dpi_);
  SetWindowPos(window_, nullptr, bounds.left / kTwipsPerPixel, bounds.top / kTwipsPerPixel, size.cx,
               size.cy, SWP_NOZORDER | SWP_NOACTIVATE | (shown_ ? 0U : SWP_NOMOVE));
}

// The state has the restored window's place: a minimised one stands nowhere.
void FormWindow::NotePosition() {
  if (IsIconic(window_)) return;
  RECT outer{};
  GetWindowRect(window_, &outer);
  Window::Bounds bounds = table_->window.bounds;
  bounds.left = static_cast<int>(outer.left) * kTwipsPerPixel;
  bounds.top = static_cast<int>(outer.top) * kTwipsPerPixel;
  table_->window.bounds.TakeFromUser(bounds);
}

void FormWindow::HandleActivation(bool active) {
  if (!active) {
    const HWND focus = GetFocus();
    if (focus != nullptr && IsChild(window_, focus)) focus_ = focus;
  } else if (!IsIconic(window_)) {
    const bool usable = focus_ != nullptr && IsWindowVisible(focus_) && IsWindowEnabled(focus_);
    const ChildWindow* home = children_.Find(table_->Home());
    if (usable) {
      ::SetFocus(focus_);
    } else if (home != nullptr) {
      ::SetFocus(home->window);
    }
  }
}

LRESULT FormWindow::HandleDpiChange(int dpi, const RECT& suggested) {
  Arrange(dpi, {suggested.left, suggested.top});
  return 0;
}

LRESULT FormWindow::Handle(UINT message, WPARAM w_param, LPARAM l_param) {
  switch (message) {
    case WM_COMMAND:
      events_.Command(LOWORD(w_param), HIWORD(w_param));
      return 0;
    case WM_DRAWITEM:
      if (children_.Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(l_param))) return TRUE;
      break;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
      if (const HBRUSH brush =
              children_.ColourOf(reinterpret_cast<HDC>(w_param), reinterpret_cast<HWND>(l_param))) {
        return reinterpret_cast<LRESULT>(brush);
      }
      break;
    case WM_ACTIVATE:
      HandleActivation(LOWORD(w_param) != WA_INACTIVE);
      return 0;
    case WM_SETFOCUS:
      HandleActivation(true);
      return 0;
    case WM_WINDOWPOSCHANGED:
      if (shown_) NotePosition();
      break;  // the default sends WM_SIZE
    case WM_SIZE:
      if (w_param != SIZE_MINIMIZED && !arranging_ && !children_.all().empty()) {
        children_.LayOut(dpi_);
      }
      return 0;
    case WM_MOUSEMOVE:
      events_.NotePointer(window_, l_param);
      return 0;
    case kArrange:
      ArrangeNow();
      return 0;
    case WM_GETDPISCALEDSIZE:
      *reinterpret_cast<SIZE*>(l_param) = OuterSize(static_cast<int>(w_param));
      return TRUE;
    case WM_DPICHANGED:
      return HandleDpiChange(HIWORD(w_param), *reinterpret_cast<const RECT*>(l_param));
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE:
      RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
      break;
    case WM_CLOSE:
      events_.CloseRequested();
      return 0;
    case WM_QUERYENDSESSION:
      return TRUE;
    case WM_ENDSESSION:
      if (w_param != FALSE) events_.SessionEnding();
      return 0;
    default:
      break;
  }
  return DefWindowProcA(window_, message, w_param, l_param);
}

LRESULT CALLBACK FormWindow::Procedure(HWND window, UINT message, WPARAM w_param, LPARAM l_param) {
  auto* self = reinterpret_cast<FormWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (message == WM_NCCREATE) {
    const auto& creation = *reinterpret_cast<const CREATESTRUCTA*>(l_param);
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation.lpCreateParams));
  }
  // While the window is being made or ended its messages mean nothing to the program.
  if (self == nullptr || self->window_ != window) {
    return DefWindowProcA(window, message, w_param, l_param);
  }
  return self->Handle(message, w_param, l_param);
}

}  // namespace corvane
