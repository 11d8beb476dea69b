// The window procedure, the life of the window, and its place on the screens. Input of the child
// windows is turned into events in child_events_win.cpp.
#include "ui/main_window_win.h"

#include <windows.h>
//
#include <commctrl.h>

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/loop_win.h"
#include "ui/child_events_win.h"
#include "ui/child_windows_win.h"
#include "ui/main_form.h"

namespace corvane {

namespace {

constexpr int kTwipsPerPixel = 15;  // of positions, on every screen
constexpr DWORD kStyle = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
constexpr WORD kIconResource = 1;
constexpr int kLongestListDelayMs = 50;

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

class MainWindowWin::Impl {
 public:
  explicit Impl(LoopWin& loop) : loop_(loop), events_(loop) {}
  ~Impl() { Destroy(); }

  bool Create(Form1& form, MainForm& main_form);
  void Show();
  void BringToFront();
  void Destroy();
  bool FilterMessage(MSG& message);
  void SimulateDpi(int dpi);
  void Changed(const Control& control, Field field);
  void ListChanged(ListBox& list, ListChange change, std::size_t index);
  void FocusWanted(const Control& control);

  [[nodiscard]] HWND window() const { return window_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w_param, LPARAM l_param);
  static bool RegisterWindowClass();
  LRESULT Handle(UINT message, WPARAM w_param, LPARAM l_param);
  LRESULT HandleDpiChange(int dpi, const RECT& suggested);
  void HandleActivation(bool active);
  void NotePosition();
  void ApplySize();
  void LayOut();
  void ShowLists(bool at_rest);

  LoopWin& loop_;
  HWND window_ = nullptr;
  HWND focus_ = nullptr;  // what had the keyboard when the window was last active
  Form1* form_ = nullptr;
  int dpi_ = kDesignDpi;
  bool shown_ = false;
  std::optional<std::int64_t> lists_wait_since_ms_;
  ChildWindows children_;
  ChildEvents events_;
};

bool MainWindowWin::Impl::RegisterWindowClass() {
  WNDCLASSEXA window_class{};
  window_class.cbSize = sizeof window_class;
  window_class.lpfnWndProc = Procedure;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
  window_class.hIcon = LoadIconA(window_class.hInstance, MAKEINTRESOURCEA(kIconResource));
  window_class.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  window_class.lpszClassName = kMainWindowClass;
  return RegisterClassExA(&window_class) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

bool MainWindowWin::Impl::Create(Form1& form, MainForm& main_form) {
  assert(window_ == nullptr);
  const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
  InitCommonControlsEx(&controls);
  if (!RegisterWindowClass()) return false;
  form_ = &form;
  window_ = CreateWindowExA(0, kMainWindowClass, form.Window::caption.get().c_str(), kStyle,
                            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr,
                            nullptr, GetModuleHandleA(nullptr), this);
  if (window_ == nullptr) return false;
  dpi_ = static_cast<int>(GetDpiForWindow(window_));
  if (!children_.Create(window_, form, dpi_)) {
    Destroy();
    return false;
  }
  events_.Connect(window_, children_, form, main_form);
  NotePosition();
  ApplySize();
  LayOut();
  loop_.SetMessageFilter(
      [this](void* message) { return FilterMessage(*static_cast<MSG*>(message)); });
  loop_.SetIdleHandler([this](bool at_rest) { ShowLists(at_rest); });
  return true;
}

void MainWindowWin::Impl::Show() {
  if (window_ == nullptr) return;
  PixelRect rect{form_->left / kTwipsPerPixel, form_->top / kTwipsPerPixel, 0, 0};
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
  FocusWanted(form_->lstCallLog);
  UpdateWindow(window_);
}

void MainWindowWin::Impl::BringToFront() {
  if (window_ == nullptr) return;
  if (IsIconic(window_)) ShowWindow(window_, SW_RESTORE);
  SetForegroundWindow(window_);
}

void MainWindowWin::Impl::Destroy() {
  if (window_ == nullptr) return;
  const HWND window = window_;
  window_ = nullptr;
  shown_ = false;
  events_.Disconnect();
  children_.Clear();
  loop_.SetMessageFilter({});
  loop_.SetIdleHandler({});
  DestroyWindow(window);
  form_ = nullptr;
}

bool MainWindowWin::Impl::FilterMessage(MSG& message) {
  if (window_ == nullptr) return false;
  if (message.hwnd != window_ && !IsChild(window_, message.hwnd)) return false;
  return events_.Navigate(&message);
}

// A call is set up and tuned in one event: its lines in the log wait until the commands are out,
// but not while something waits for long.
void MainWindowWin::Impl::ShowLists(bool at_rest) {
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

void MainWindowWin::Impl::SimulateDpi(int dpi) {
  dpi_ = dpi;
  ApplySize();
  children_.ChangeDpi(dpi, form_->mnuCompactMode.checked);
}

void MainWindowWin::Impl::Changed(const Control& control, Field field) {
  if (window_ == nullptr) return;
  if (&control != static_cast<const Control*>(static_cast<const Window*>(form_))) {
    children_.Mirror(control, field);
    return;
  }
  if (field == Field::kCaption) SetWindowTextA(window_, form_->Window::caption.get().c_str());
  if (field != Field::kBounds) return;
  ApplySize();
  if (!shown_) return;  // the place is applied as a whole when the window is shown
  SetWindowPos(window_, nullptr, form_->left / kTwipsPerPixel, form_->top / kTwipsPerPixel, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MainWindowWin::Impl::ListChanged(ListBox& list, ListChange change, std::size_t index) {
  if (window_ != nullptr) children_.MirrorList(list, change, index);
}

void MainWindowWin::Impl::FocusWanted(const Control& control) {
  if (window_ == nullptr || !shown_) return;
  const ChildWindow* child = children_.Find(control);
  if (child == nullptr || !child->control->enabled || !children_.Shown(*child)) return;
  ::SetFocus(static_cast<HWND>(child->window));
}

void MainWindowWin::Impl::ApplySize() {
  const WindowArrangement& fallback = kNormalArrangement;
  const int width = form_->width > 0 ? form_->width.get() : fallback.width;
  const int height = form_->height > 0 ? form_->height.get() : fallback.height;
  SetWindowPos(window_, nullptr, 0, 0, ToPixels(width, dpi_), ToPixels(height, dpi_),
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MainWindowWin::Impl::LayOut() {
  children_.LayOut(dpi_, form_->mnuCompactMode.checked);
}

// The state has the restored window's place: a minimised one stands nowhere.
void MainWindowWin::Impl::NotePosition() {
  if (IsIconic(window_)) return;
  RECT outer{};
  GetWindowRect(window_, &outer);
  form_->left.TakeFromUser(static_cast<int>(outer.left) * kTwipsPerPixel);
  form_->top.TakeFromUser(static_cast<int>(outer.top) * kTwipsPerPixel);
}

void MainWindowWin::Impl::HandleActivation(bool active) {
  if (!active) {
    const HWND focus = GetFocus();
    if (focus != nullptr && IsChild(window_, focus)) focus_ = focus;
  } else if (!IsIconic(window_)) {
    const bool usable = focus_ != nullptr && IsWindowVisible(focus_) && IsWindowEnabled(focus_);
    const ChildWindow* log = children_.Find(ControlId::lstCallLog);
    if (usable) {
      ::SetFocus(focus_);
    } else if (log != nullptr) {
      ::SetFocus(static_cast<HWND>(log->window));
    }
  }
}

LRESULT MainWindowWin::Impl::HandleDpiChange(int dpi, const RECT& suggested) {
  dpi_ = dpi;
  SetWindowPos(window_, nullptr, suggested.left, suggested.top, ToPixels(form_->width, dpi_),
               ToPixels(form_->height, dpi_), SWP_NOZORDER | SWP_NOACTIVATE);
  children_.ChangeDpi(dpi_, form_->mnuCompactMode.checked);
  return 0;
}

LRESULT MainWindowWin::Impl::Handle(UINT message, WPARAM w_param, LPARAM l_param) {
  switch (message) {
    case WM_COMMAND:
      events_.Command(LOWORD(w_param), HIWORD(w_param));
      return 0;
    case WM_DRAWITEM:
      if (children_.Draw(reinterpret_cast<const void*>(l_param))) return TRUE;
      break;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
      if (void* brush = children_.ColourOf(reinterpret_cast<void*>(w_param),
                                           reinterpret_cast<void*>(l_param))) {
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
      if (w_param != SIZE_MINIMIZED && !children_.all().empty()) LayOut();
      return 0;
    case WM_GETDPISCALEDSIZE: {
      auto& size = *reinterpret_cast<SIZE*>(l_param);
      size = {ToPixels(form_->width, static_cast<int>(w_param)),
              ToPixels(form_->height, static_cast<int>(w_param))};
      return TRUE;
    }
    case WM_DPICHANGED:
      return HandleDpiChange(HIWORD(w_param), *reinterpret_cast<const RECT*>(l_param));
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
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

LRESULT CALLBACK MainWindowWin::Impl::Procedure(HWND window, UINT message, WPARAM w_param,
                                                LPARAM l_param) {
  auto* self = reinterpret_cast<Impl*>(GetWindowLongPtrA(window, GWLP_USERDATA));
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

MainWindowWin::MainWindowWin(LoopWin& loop) : impl_(std::make_unique<Impl>(loop)) {}
MainWindowWin::~MainWindowWin() = default;

bool MainWindowWin::Create(Form1& form, MainForm& main_form) {
  return impl_->Create(form, main_form);
}
void MainWindowWin::Show() {
  impl_->Show();
}
void MainWindowWin::BringToFront() {
  impl_->BringToFront();
}
void MainWindowWin::Destroy() {
  impl_->Destroy();
}
void* MainWindowWin::handle() const {
  return impl_->window();
}
bool MainWindowWin::FilterMessage(void* message) {
  return impl_->FilterMessage(*static_cast<MSG*>(message));
}
void MainWindowWin::SimulateDpi(int dpi) {
  impl_->SimulateDpi(dpi);
}
void MainWindowWin::Changed(const Control& control, Field field) {
  impl_->Changed(control, field);
}
void MainWindowWin::ListChanged(ListBox& list, ListChange change, std::size_t index) {
  impl_->ListChanged(list, change, index);
}
void MainWindowWin::FocusWanted(const Control& control) {
  impl_->FocusWanted(control);
}

}  // namespace corvane
