// The harness's window handles and the system's.
#pragma once

#include <windows.h>

#include "desktop/harness/foreign_windows.h"

namespace corvane::desktop {

inline HWND Hwnd(WindowHandle window) {
  return reinterpret_cast<HWND>(window);
}

inline WindowHandle Handle(HWND window) {
  return reinterpret_cast<WindowHandle>(window);
}

}  // namespace corvane::desktop
