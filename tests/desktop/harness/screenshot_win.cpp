// Pictures of windows as they are on the screen, written as PNG by the system's own encoder.
#include <windows.h>
// The imaging header needs the types of the one before it.
#include <objidl.h>
// The imaging header uses min and max, which NOMINMAX takes away.
#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

#include "desktop/harness/foreign_windows.h"

namespace corvane::desktop {

namespace {

// The encoder's class id, fixed by the system.
const CLSID kPngEncoder = {
    0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

RECT ScreenRectOf(WindowHandle window) {
  if (window != 0) {
    RECT rect{};
    GetWindowRect(reinterpret_cast<HWND>(window), &rect);
    return rect;
  }
  return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

// The bitmap of a part of the screen; null when it has no size.
HBITMAP CopyFromScreen(const RECT& rect) {
  const int width = rect.right - rect.left;
  const int height = rect.bottom - rect.top;
  if (width <= 0 || height <= 0) return nullptr;
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width, height, screen, rect.left, rect.top, SRCCOPY);
  SelectObject(memory, before);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return bitmap;
}

}  // namespace

bool SaveScreenshot(WindowHandle window, const std::filesystem::path& file) {
  const HBITMAP copied = CopyFromScreen(ScreenRectOf(window));
  if (copied == nullptr) return false;
  ULONG_PTR token = 0;
  const Gdiplus::GdiplusStartupInput input;
  if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) {
    DeleteObject(copied);
    return false;
  }
  bool saved = false;
  {
    Gdiplus::Bitmap bitmap(copied, nullptr);
    saved = bitmap.Save(file.wstring().c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
  }
  Gdiplus::GdiplusShutdown(token);
  DeleteObject(copied);
  return saved;
}

}  // namespace corvane::desktop
