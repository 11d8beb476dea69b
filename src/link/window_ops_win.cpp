// What is asked of other programs' windows, each time with a limit.
#include "link/window_ops_win.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <string_view>
#include <vector>

namespace corvane {

namespace {

constexpr int kClassNameSize = 50;
constexpr std::size_t kSmallestLineBuffer = 64;
constexpr std::size_t kLargestWord = 65535;

HWND Window(WindowHandle handle) {
  return reinterpret_cast<HWND>(handle);
}
WindowHandle Handle(HWND window) {
  return reinterpret_cast<WindowHandle>(window);
}

// What `visit` throws must not pass through the system's enumeration.
struct Visit {
  const std::function<bool(WindowHandle)>& visit;
  std::exception_ptr thrown;
};

BOOL CALLBACK VisitWindow(HWND window, LPARAM parameter) {
  auto& visit = *reinterpret_cast<Visit*>(parameter);
  try {
    return visit.visit(Handle(window)) ? TRUE : FALSE;
  } catch (...) {
    visit.thrown = std::current_exception();
    return FALSE;
  }
}

Answer BoundedSend(WindowHandle window, unsigned message, WPARAM w_param, LPARAM l_param) {
  // Never to all windows at once.
  if (window == 0 || window == Handle(HWND_BROADCAST) || IsWindow(Window(window)) == 0) return {};
  DWORD_PTR result = 0;
  if (SendMessageTimeoutA(Window(window), message, w_param, l_param, SMTO_ABORTIFHUNG | SMTO_NORMAL,
                          WindowOpsWin::kSendLimitMs, &result) == 0) {
    return {};
  }
  return {true, static_cast<std::intptr_t>(result)};
}

// Whether calls that have no limit of their own would come back at once.
bool Responds(WindowHandle window) {
  return IsHungAppWindow(Window(window)) == 0 && BoundedSend(window, WM_NULL, 0, 0).answered;
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
  EnumChildWindows(Window(parent), &VisitWindow, reinterpret_cast<LPARAM>(&state));
  if (state.thrown) std::rethrow_exception(state.thrown);
}

std::string WindowOpsWin::ClassName(WindowHandle window) {
  char name[kClassNameSize] = {};
  const int size = GetClassNameA(Window(window), name, kClassNameSize);
  return std::string(name, static_cast<std::size_t>(std::max(size, 0)));
}

WindowHandle WindowOpsWin::Parent(WindowHandle window) {
  return Handle(GetParent(Window(window)));
}

bool WindowOpsWin::IsAlive(WindowHandle window) {
  return IsWindow(Window(window)) != 0;
}

bool WindowOpsWin::IsVisible(WindowHandle window) {
  return IsWindowVisible(Window(window)) != 0;
}

Answer WindowOpsWin::Send(WindowHandle window, unsigned message, std::uintptr_t w_param,
                          std::intptr_t l_param) {
  return BoundedSend(window, message, w_param, l_param);
}

Answer WindowOpsWin::SetText(WindowHandle window, const std::string& text) {
  return BoundedSend(window, kWmSetText, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

TextAnswer WindowOpsWin::GetText(WindowHandle window, std::size_t size) {
  std::vector<char> buffer(std::clamp<std::size_t>(size, 1, kLargestText), '\0');
  const Answer answer = BoundedSend(window, kWmGetText, std::min(size, buffer.size()),
                                    reinterpret_cast<LPARAM>(buffer.data()));
  if (!answer.answered) return {};
  const auto length =
      std::clamp<std::intptr_t>(answer.value, 0, static_cast<std::intptr_t>(buffer.size()));
  return {true, answer.value, std::string(buffer.data(), static_cast<std::size_t>(length))};
}

TextAnswer WindowOpsWin::GetLine(WindowHandle window, std::int32_t line, std::size_t size) {
  std::vector<char> buffer(std::clamp(size, kSmallestLineBuffer, kLargestText), '\0');
  const auto word = static_cast<WORD>(std::min(buffer.size(), kLargestWord));
  std::memcpy(buffer.data(), &word, sizeof word);
  const Answer answer = BoundedSend(window, kEmGetLine, static_cast<WPARAM>(line),
                                    reinterpret_cast<LPARAM>(buffer.data()));
  if (!answer.answered) return {};
  const auto length =
      std::clamp<std::intptr_t>(answer.value, 0, static_cast<std::intptr_t>(buffer.size()));
  return {true, answer.value, std::string(buffer.data(), static_cast<std::size_t>(length))};
}

bool WindowOpsWin::GetPlacement(WindowHandle window, Placement& placement) {
  WINDOWPLACEMENT system{};
  system.length = sizeof system;
  if (GetWindowPlacement(Window(window), &system) == 0) return false;
  placement.flags = system.flags;
  placement.show_state = system.showCmd;
  placement.min_position = {static_cast<std::int32_t>(system.ptMinPosition.x),
                            static_cast<std::int32_t>(system.ptMinPosition.y)};
  placement.max_position = {static_cast<std::int32_t>(system.ptMaxPosition.x),
                            static_cast<std::int32_t>(system.ptMaxPosition.y)};
  placement.normal_position = FromRect(system.rcNormalPosition);
  return true;
}

void WindowOpsWin::SetPlacement(WindowHandle window, const Placement& placement) {
  HWND target = Window(window);
  if (window == 0 || IsWindow(target) == 0) return;
  if (Responds(window)) {
    WINDOWPLACEMENT system{};
    system.length = sizeof system;
    system.flags = placement.flags | WPF_ASYNCWINDOWPLACEMENT;
    system.showCmd = placement.show_state;
    system.ptMinPosition = {placement.min_position[0], placement.min_position[1]};
    system.ptMaxPosition = {placement.max_position[0], placement.max_position[1]};
    system.rcNormalPosition = {placement.normal_position.left, placement.normal_position.top,
                               placement.normal_position.right, placement.normal_position.bottom};
    if (SetWindowPlacement(target, &system) != 0) return;
  }
  PlaceAsync(target, placement);
}

bool WindowOpsWin::GetRect(WindowHandle window, ScreenRect& rect) {
  RECT system{};
  if (GetWindowRect(Window(window), &system) == 0) return false;
  rect = FromRect(system);
  return true;
}

void WindowOpsWin::SetForeground(WindowHandle window) {
  if (window == 0 || !Responds(window)) return;
  // Taking the front away from a window may wait for its program too.
  const WindowHandle front = Handle(GetForegroundWindow());
  if (front != 0 && front != window && IsAlive(front) && !Responds(front)) return;
  SetForegroundWindow(Window(window));
}

std::int32_t WindowOpsWin::ScreenPixel(WindowHandle control, std::int32_t x, std::int32_t y) {
  HDC screen = GetWindowDC(nullptr);
  if (screen == nullptr) return -1;
  const COLORREF colour = GetPixel(screen, x, y);
  POINT cursor{};
  GetCursorPos(&cursor);  // read as ever, and of no use
  if (ReleaseDC(Window(control), screen) == 0) ReleaseDC(nullptr, screen);
  return static_cast<std::int32_t>(colour);
}

}  // namespace corvane
