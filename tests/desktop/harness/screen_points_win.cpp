// Points of the screen by the system's own calls.
#include <windows.h>

#include "desktop/harness/screen_points.h"

namespace corvane::desktop {

namespace {

constexpr LONG kInset = 7;

HWND Hwnd(WindowHandle window) {
  return reinterpret_cast<HWND>(window);
}

bool PointInside(WindowHandle window, POINT& point) {
  RECT place{};
  if (GetWindowRect(Hwnd(window), &place) == 0) return false;
  point = {place.left + kInset, place.top + kInset};
  return true;
}

}  // namespace

std::int32_t ColourInside(WindowHandle window) {
  POINT point{};
  if (!PointInside(window, point)) return -1;
  const HDC screen = GetDC(nullptr);
  const COLORREF colour = GetPixel(screen, point.x, point.y);
  ReleaseDC(nullptr, screen);
  return static_cast<std::int32_t>(colour);
}

WindowHandle SeenInside(WindowHandle window) {
  POINT point{};
  return PointInside(window, point) ? reinterpret_cast<WindowHandle>(WindowFromPoint(point)) : 0;
}

void Maximise(WindowHandle window) {
  ShowWindowAsync(Hwnd(window), SW_MAXIMIZE);
}

void Restore(WindowHandle window) {
  ShowWindowAsync(Hwnd(window), SW_RESTORE);
}

bool Maximised(WindowHandle window) {
  return IsZoomed(Hwnd(window)) != 0;
}

bool Minimised(WindowHandle window) {
  return IsIconic(Hwnd(window)) != 0;
}

}  // namespace corvane::desktop
