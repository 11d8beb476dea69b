// What lies on the screen at a point, and the show states of a window.
#pragma once

#include <cstdint>

#include "desktop/harness/foreign_windows.h"

namespace corvane::desktop {

// What frames a held group, as GetPixel gives it.
inline constexpr std::int32_t kOrange = 0x0080FF;

// The screen's colour 7 pixels right of and below the window's corner, as GetPixel gives it; -1
// when the window is gone.
[[nodiscard]] std::int32_t ColourInside(WindowHandle window);
// The colour in the middle of a window's right edge, a few pixels inside: the ground of a button or
// of a box, right of its text. As GetPixel gives it; -1 when the window is gone.
[[nodiscard]] std::int32_t GroundOf(WindowHandle window);
// How many pixels of what is seen of the window's place have this colour.
[[nodiscard]] int PixelsOf(WindowHandle window, std::int32_t colour);
// The system's colour of buttons and of what is written into.
[[nodiscard]] std::int32_t ButtonFaceColour();
[[nodiscard]] std::int32_t WindowColour();
// The window that is seen 7 pixels right of and below the window's corner.
[[nodiscard]] WindowHandle SeenInside(WindowHandle window);

void Maximise(WindowHandle window);
void Restore(WindowHandle window);
[[nodiscard]] bool Maximised(WindowHandle window);
[[nodiscard]] bool Minimised(WindowHandle window);

}  // namespace corvane::desktop
