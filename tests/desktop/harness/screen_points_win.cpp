// Points of the screen by the system's own calls.
#include <windows.h>

#include "desktop/harness/handles_win.h"
#include "desktop/harness/screen_points.h"

namespace corvane::desktop {

namespace {

constexpr LONG kInset = 7;
constexpr LONG kRightOfTheText = 5;

bool PointInside(WindowHandle window, POINT& point) {
  RECT place{};
  if (GetWindowRect(Hwnd(window), &place) == 0) return false;
  point = {place.left + kInset, place.top + kInset};
  return true;
}

std::int32_t ColourAt(POINT point) {
  const HDC screen = GetDC(nullptr);
  const COLORREF colour = GetPixel(screen, point.x, point.y);
  ReleaseDC(nullptr, screen);
  return static_cast<std::int32_t>(colour);
}

}  // namespace

std::int32_t ColourInside(WindowHandle window) {
  POINT point{};
  return PointInside(window, point) ? ColourAt(point) : -1;
}

std::int32_t GroundOf(WindowHandle window) {
  RECT place{};
  if (GetWindowRect(Hwnd(window), &place) == 0) return -1;
  return ColourAt({place.right - kRightOfTheText, (place.top + place.bottom) / 2});
}

int PixelsOf(WindowHandle window, std::int32_t colour) {
  RECT place{};
  if (GetWindowRect(Hwnd(window), &place) == 0) return 0;
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  int found = 0;
  if (bitmap != nullptr) {
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
    const auto* pixels = static_cast<const RGBQUAD*>(bits);
    for (int pixel = 0; pixel < width * height; ++pixel) {
      const RGBQUAD& seen = pixels[pixel];
      const COLORREF its_colour = RGB(seen.rgbRed, seen.rgbGreen, seen.rgbBlue);
      if (static_cast<std::int32_t>(its_colour) == colour) ++found;
    }
    SelectObject(memory, before);
    DeleteObject(bitmap);
  }
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return found;
}

std::int32_t ButtonFaceColour() {
  return static_cast<std::int32_t>(GetSysColor(COLOR_BTNFACE));
}

std::int32_t WindowColour() {
  return static_cast<std::int32_t>(GetSysColor(COLOR_WINDOW));
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
