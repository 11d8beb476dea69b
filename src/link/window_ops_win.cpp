// What is asked of other programs' windows, each time with a limit.
#include "link/window_ops_win.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <limits>

namespace corvane {

namespace {

constexpr int kClassNameSize = 50;
constexpr int kTitleSize = 256;
constexpr std::size_t kSmallestLineBuffer = 64;
constexpr std::size_t kLargestLineBuffer = 65535;      // the size goes into a 16-bit word
constexpr LPARAM kSelectorPoint = MAKELPARAM(38, 13);  // in its client area

// What `visit` throws must not pass through the system's enumeration.
struct Visit {
  const std::function<bool(WindowHandle)>& visit;
  std::exception_ptr thrown;
};

BOOL CALLBACK VisitWindow(HWND window, LPARAM parameter) {
  auto& visit = *reinterpret_cast<Visit*>(parameter);
  try {
    return visit.visit(ToHandle(window)) ? TRUE : FALSE;
  } catch (...) {
    visit.thrown = std::current_exception();
    return FALSE;
  }
}

// The messages of one call to one window, with one limit for all of them.
class Question {
 public:
  explicit Question(WindowHandle window)
      : target_(ToHwnd(window)), end_ms_(GetTickCount64() + WindowOpsWin::kSendLimitMs) {}

  Answer<LRESULT> Ask(UINT message, WPARAM w_param, LPARAM l_param) const {
    // Never to all windows at once.
    if (target_ == nullptr || target_ == HWND_BROADCAST || IsWindow(target_) == 0) return {};
    const ULONGLONG now_ms = GetTickCount64();
    if (now_ms >= end_ms_) return {Reply::kNoAnswer, 0};
    DWORD_PTR result = 0;
    SetLastError(ERROR_SUCCESS);
    if (SendMessageTimeoutA(target_, message, w_param, l_param, SMTO_ABORTIFHUNG | SMTO_NORMAL,
                            static_cast<UINT>(end_ms_ - now_ms), &result) != 0) {
      return {Reply::kAnswered, static_cast<LRESULT>(result)};
    }
    if (GetLastError() == ERROR_ACCESS_DENIED) return {Reply::kRefused, 0};
    return {IsWindow(target_) == 0 ? Reply::kGone : Reply::kNoAnswer, 0};
  }

 private:
  HWND target_;
  ULONGLONG end_ms_;
};

LPARAM Address(const char* bytes) {
  return reinterpret_cast<LPARAM>(bytes);
}

// Whether calls that have no limit of their own would come back at once.
Reply Probe(WindowHandle window) {
  if (IsHungAppWindow(ToHwnd(window)) != 0) return Reply::kNoAnswer;
  return Question(window).Ask(WM_NULL, 0, 0).reply;
}

// Moves and shows a window without waiting for the program that it belongs to.
void PlaceAsync(HWND window, const Placement& placement) {
  const ScreenRect& place = placement.normal_position;
  if (placement.show_state != kShowMinimised) {
    ShowWindowAsync(window, static_cast<int>(placement.show_state));
  }
  SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
  if (placement.show_state == kShowMinimised) ShowWindowAsync(window, SW_MINIMIZE);
}

ScreenRect FromRect(const RECT& rect) {
  return {static_cast<std::int32_t>(rect.left), static_cast<std::int32_t>(rect.top),
          static_cast<std::int32_t>(rect.right), static_cast<std::int32_t>(rect.bottom)};
}

}  // namespace

void WindowOpsWin::EnumTopLevel(const std::function<bool(WindowHandle)>& visit) {
  Visit state{visit, nullptr};
  EnumWindows(&VisitWindow, reinterpret_cast<LPARAM>(&state));
  if (state.thrown) std::rethrow_exception(state.thrown);
}

void WindowOpsWin::EnumChildren(WindowHandle parent,
                                const std::function<bool(WindowHandle)>& visit) {
  if (parent == 0) return;  // the system would enumerate the top-level windows
  Visit state{visit, nullptr};
  EnumChildWindows(ToHwnd(parent), &VisitWindow, reinterpret_cast<LPARAM>(&state));
  if (state.thrown) std::rethrow_exception(state.thrown);
}

std::string WindowOpsWin::ClassName(WindowHandle window) {
  char name[kClassNameSize] = {};
  const int size = GetClassNameA(ToHwnd(window), name, kClassNameSize);
  return std::string(name, static_cast<std::size_t>(std::max(size, 0)));
}

WindowHandle WindowOpsWin::Parent(WindowHandle window) {
  return ToHandle(GetParent(ToHwnd(window)));
}

ProgramId WindowOpsWin::Program(WindowHandle window) {
  DWORD program = 0;
  GetWindowThreadProcessId(ToHwnd(window), &program);
  return program;
}

// Of another program's window the system gives the title that it keeps; Wine 8 gives what happens
// to be in memory for one that is gone.
std::string WindowOpsWin::Title(WindowHandle window) {
  if (IsWindow(ToHwnd(window)) == 0) return {};
  char title[kTitleSize] = {};
  const int size = GetWindowTextA(ToHwnd(window), title, kTitleSize);
  return std::string(title, static_cast<std::size_t>(std::max(size, 0)));
}

bool WindowOpsWin::IsAlive(WindowHandle window) {
  return IsWindow(ToHwnd(window)) != 0;
}

bool WindowOpsWin::IsVisible(WindowHandle window) {
  return IsWindowVisible(ToHwnd(window)) != 0;
}

bool WindowOpsWin::GetPlacement(WindowHandle window, Placement& placement) {
  WINDOWPLACEMENT system{};
  system.length = sizeof system;
  if (GetWindowPlacement(ToHwnd(window), &system) == 0) return false;
  placement.flags = system.flags;
  placement.show_state = system.showCmd;
  placement.min_position = {static_cast<std::int32_t>(system.ptMinPosition.x),
                            static_cast<std::int32_t>(system.ptMinPosition.y)};
  placement.max_position = {static_cast<std::int32_t>(system.ptMaxPosition.x),
                            static_cast<std::int32_t>(system.ptMaxPosition.y)};
  placement.normal_position = FromRect(system.rcNormalPosition);
  return true;
}

bool WindowOpsWin::GetRect(WindowHandle window, ScreenRect& rect) {
  RECT system{};
  if (GetWindowRect(ToHwnd(window), &system) == 0) return false;
  rect = FromRect(system);
  return true;
}

std::int32_t WindowOpsWin::ScreenPixel(WindowHandle control, std::int32_t x, std::int32_t y) {
  HDC screen = GetWindowDC(nullptr);
  if (screen == nullptr) return -1;
  const COLORREF colour = GetPixel(screen, x, y);
  if (ReleaseDC(ToHwnd(control), screen) == 0) ReleaseDC(nullptr, screen);
  return static_cast<std::int32_t>(colour);
}

bool WindowOpsWin::IsSeenAt(WindowHandle window, std::int32_t x, std::int32_t y) {
  HWND wanted = ToHwnd(window);
  HWND seen = WindowFromPoint({x, y});
  if (seen == nullptr || wanted == nullptr) return false;
  if (seen == wanted) return true;
  // The desktop is an ancestor of every window, but of a top-level window of its own.
  return GetAncestor(seen, GA_ROOT) == GetAncestor(wanted, GA_ROOT) &&
         (IsChild(seen, wanted) != 0 || IsChild(wanted, seen) != 0);
}

bool WindowOpsWin::WrapsLines(WindowHandle edit) {
  const LONG style = GetWindowLongA(ToHwnd(edit), GWL_STYLE);
  return (style & ES_MULTILINE) != 0 && (style & ES_AUTOHSCROLL) == 0;
}

WindowHandle WindowOpsWin::Foreground() {
  return ToHandle(GetForegroundWindow());
}

Answer<std::string> WindowOpsWin::Text(WindowHandle window) {
  const Question question(window);
  // Under Wine 8 questions for texts know no limit; an empty message does, so it goes first.
  const Answer<LRESULT> awake = question.Ask(WM_NULL, 0, 0);
  if (!awake.answered()) return {awake.reply, {}};
  const Answer<LRESULT> length = question.Ask(WM_GETTEXTLENGTH, 0, 0);
  if (!length.answered()) return {length.reply, {}};
  if (length.value <= 0) return {Reply::kAnswered, kNoWindowText};
  const std::size_t size = std::min(static_cast<std::size_t>(length.value), kLongestText) + 1;
  std::string text(size, '\0');
  const Answer<LRESULT> copied = question.Ask(WM_GETTEXT, size, Address(text.data()));
  if (!copied.answered()) return {copied.reply, {}};
  text.resize(
      static_cast<std::size_t>(std::clamp<LRESULT>(copied.value, 0, static_cast<LRESULT>(size))));
  return {Reply::kAnswered, std::move(text)};
}

Answer<std::int32_t> WindowOpsWin::LineCount(WindowHandle edit) {
  const Answer<LRESULT> count = Question(edit).Ask(EM_GETLINECOUNT, 0, 0);
  return {count.reply, static_cast<std::int32_t>(std::clamp<LRESULT>(
                           count.value, 0, std::numeric_limits<std::int32_t>::max()))};
}

Answer<std::string> WindowOpsWin::Line(WindowHandle edit, std::int32_t index) {
  if (index < 0) return {Reply::kAnswered, {}};
  const Question question(edit);
  const auto line = static_cast<WPARAM>(index);
  const Answer<LRESULT> start = question.Ask(EM_LINEINDEX, line, 0);
  if (!start.answered() || start.value < 0) return {start.reply, {}};
  const Answer<LRESULT> length = question.Ask(EM_LINELENGTH, static_cast<WPARAM>(start.value), 0);
  if (!length.answered() || length.value <= 0) return {length.reply, {}};

  // Some edit boxes copy only half of what the size in the buffer allows, and more than the line.
  const auto characters = std::min(static_cast<std::size_t>(length.value), kLargestLineBuffer);
  const auto size = std::clamp(2 * characters + 2, kSmallestLineBuffer, kLargestLineBuffer);
  std::string text(size, '\0');
  const auto word = static_cast<WORD>(size);
  std::memcpy(text.data(), &word, sizeof word);
  const Answer<LRESULT> copied = question.Ask(EM_GETLINE, line, Address(text.data()));
  if (!copied.answered()) return {copied.reply, {}};
  text.resize(static_cast<std::size_t>(
      std::clamp<LRESULT>(copied.value, 0, static_cast<LRESULT>(characters))));
  return {Reply::kAnswered, std::move(text)};
}

Answer<std::int32_t> WindowOpsWin::LineStart(WindowHandle edit, std::int32_t index) {
  if (index < 0) return {Reply::kAnswered, -1};
  const Answer<LRESULT> start = Question(edit).Ask(EM_LINEINDEX, static_cast<WPARAM>(index), 0);
  return {start.reply, static_cast<std::int32_t>(std::clamp<LRESULT>(
                           start.value, -1, std::numeric_limits<std::int32_t>::max()))};
}

Reply WindowOpsWin::Press(WindowHandle button) {
  return Question(button).Ask(BM_CLICK, 0, 0).reply;
}

Reply WindowOpsWin::SetText(WindowHandle window, const std::string& text) {
  return Question(window).Ask(WM_SETTEXT, 0, Address(text.c_str())).reply;
}

Reply WindowOpsWin::PressSelector(WindowHandle selector) {
  return Question(selector).Ask(WM_LBUTTONDOWN, MK_LBUTTON, kSelectorPoint).reply;
}

Reply WindowOpsWin::SetPlacement(WindowHandle window, const Placement& placement) {
  HWND target = ToHwnd(window);
  if (window == 0 || IsWindow(target) == 0) return Reply::kGone;
  const Reply reply = Probe(window);
  if (reply == Reply::kAnswered) {
    WINDOWPLACEMENT system{};
    system.length = sizeof system;
    system.flags = placement.flags | WPF_ASYNCWINDOWPLACEMENT;
    system.showCmd = placement.show_state;
    system.ptMinPosition = {placement.min_position[0], placement.min_position[1]};
    system.ptMaxPosition = {placement.max_position[0], placement.max_position[1]};
    system.rcNormalPosition = {placement.normal_position.left, placement.normal_position.top,
                               placement.normal_position.right, placement.normal_position.bottom};
    if (SetWindowPlacement(target, &system) != 0) return reply;
    if (GetLastError() == ERROR_ACCESS_DENIED) return Reply::kRefused;
  }
  PlaceAsync(target, placement);
  return reply;
}

WindowHandle WindowOpsWin::SetForeground(WindowHandle window) {
  if (window == 0 || !IsAlive(window)) return 0;
  // Taking the front away from a window may wait for its program too.
  const WindowHandle front = Foreground();
  if (Probe(window) == Reply::kNoAnswer) return window;
  if (front != 0 && front != window && Probe(front) == Reply::kNoAnswer) return front;
  SetForegroundWindow(ToHwnd(window));
  return 0;
}

}  // namespace corvane
