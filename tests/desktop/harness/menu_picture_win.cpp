// The strip right above the client area, copied from the screen.
#include "desktop/harness/menu_picture.h"

#include <windows.h>

namespace corvane::desktop {

std::string PictureOfMenuBar(WindowHandle window) {
  const auto hwnd = reinterpret_cast<HWND>(window);
  POINT origin{};
  RECT client{};
  if (!ClientToScreen(hwnd, &origin) || !GetClientRect(hwnd, &client) || client.right <= 0) {
    return {};
  }
  const int height = GetSystemMetrics(SM_CYMENU);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, client.right, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* pixels = nullptr;
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, client.right, height, screen, origin.x, origin.y - height, SRCCOPY);
  GdiFlush();
  std::string picture(static_cast<const char*>(pixels), static_cast<std::size_t>(client.right) *
                                                            static_cast<std::size_t>(height) * 4);
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return picture;
}

}  // namespace corvane::desktop
