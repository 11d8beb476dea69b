// The user's hands: pointer and keyboard as the system has them, not messages to a window. What is
// under the pointer, or has the keyboard, gets the input; so the window must be seen and in front.
#pragma once

#include <string_view>

#include "desktop/harness/foreign_windows.h"

namespace corvane::desktop {

// Virtual key codes.
inline constexpr int kTabKey = 0x09;
inline constexpr int kReturnKey = 0x0D;
inline constexpr int kShiftKey = 0x10;
inline constexpr int kEscapeKey = 0x1B;
inline constexpr int kEndKey = 0x23;
inline constexpr int kHomeKey = 0x24;
inline constexpr int kDownKey = 0x28;
inline constexpr int kSemicolonKey = 0xBA;

enum class MouseButton { kLeft, kRight, kMiddle };

// Screen coordinates in pixels.
void MovePointer(int x, int y);
// Presses and releases where the pointer is.
void PressMouse(MouseButton button);
// Moves the pointer to the middle of the control, or to a point `x`, `y` pixels from its corner,
// and clicks there.
void HandClick(WindowHandle control, MouseButton button = MouseButton::kLeft);
void HandClickAt(WindowHandle control, int x, int y, MouseButton button = MouseButton::kLeft);
// Clicks on a line of a list, which must be in view.
void HandClickLine(WindowHandle list, int line, MouseButton button = MouseButton::kLeft);
// Presses and releases a key by its virtual key code, with another one held down (0: none).
void HandKey(int virtual_key, int with = 0);
// Types letters, digits and blanks of a US keyboard.
void HandType(std::string_view text);

// The control that has the keyboard in the thread of `window`; 0 when none has.
[[nodiscard]] WindowHandle FocusIn(WindowHandle window);
[[nodiscard]] bool ComboIsOpen(WindowHandle combo);
// The tick of a line of a list with ticks; -1 when there is no such line.
[[nodiscard]] int TickOf(WindowHandle list, int line);

}  // namespace corvane::desktop
