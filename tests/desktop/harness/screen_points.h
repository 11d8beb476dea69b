// What lies on the screen at a point, and the show states of a window.
#pragma once

#include <cstdint>

#include "desktop/harness/foreign_windows.h"

namespace corvane::desktop {

// The screen's colour 7 pixels right of and below the window's corner, as GetPixel gives it; -1
// when the window is gone.
[[nodiscard]] std::int32_t ColourInside(WindowHandle window);
// The window that is seen there.
[[nodiscard]] WindowHandle SeenInside(WindowHandle window);

void Maximise(WindowHandle window);
void Restore(WindowHandle window);
[[nodiscard]] bool Maximised(WindowHandle window);
[[nodiscard]] bool Minimised(WindowHandle window);

}  // namespace corvane::desktop
