// The user's hands: pointer and keyboard as the system has them, not messages to a window. What is
// under the pointer, or has the keyboard, gets the input; so the window must be seen and in front.
#pragma once

#include <string>
#include <string_view>

#include "desktop/harness/foreign_windows.h"

namespace corvane::desktop {

// Virtual key codes.
inline constexpr int kBackspaceKey = 0x08;
inline constexpr int kTabKey = 0x09;
inline constexpr int kReturnKey = 0x0D;
inline constexpr int kShiftKey = 0x10;
inline constexpr int kControlKey = 0x11;
inline constexpr int kAltKey = 0x12;
inline constexpr int kEscapeKey = 0x1B;
inline constexpr int kSpaceKey = 0x20;
inline constexpr int kPageUpKey = 0x21;
inline constexpr int kPageDownKey = 0x22;
inline constexpr int kEndKey = 0x23;
inline constexpr int kHomeKey = 0x24;
inline constexpr int kUpKey = 0x26;
inline constexpr int kDownKey = 0x28;
inline constexpr int kDeleteKey = 0x2E;
inline constexpr int kContextMenuKey = 0x5D;
inline constexpr int kF2Key = 0x71;
inline constexpr int kF4Key = 0x73;
inline constexpr int kSemicolonKey = 0xBA;

enum class MouseButton { kLeft, kRight, kMiddle };

// Screen coordinates in pixels.
void MovePointer(int x, int y);
// Presses and releases where the pointer is.
void PressMouse(MouseButton button);
// Moves the pointer to the middle of the control, or to a point `x`, `y` pixels from its corner,
// and clicks there; a few pixels beside it where the click before was, as two would be a double
// click.
void HandClick(WindowHandle control, MouseButton button = MouseButton::kLeft);
void HandClickAt(WindowHandle control, int x, int y, MouseButton button = MouseButton::kLeft);
// Clicks on a line of a list, which must be in view.
void HandClickLine(WindowHandle list, int line, MouseButton button = MouseButton::kLeft);
// Two clicks of the left button, closer together than the system wants them to be one.
void HandDoubleClick(WindowHandle control);
void HandDoubleClickAt(WindowHandle control, int x, int y);
void HandDoubleClickLine(WindowHandle list, int line);
// Moves the pointer onto a control: to its middle, then a pixel on.
void HandMoveOver(WindowHandle control);
// Presses and releases a key by its virtual key code, with another one held down (0: none).
void HandKey(int virtual_key, int with = 0);
// Types letters, digits and blanks of a US keyboard.
void HandType(std::string_view text);
// Puts the text on the system's clipboard and presses Ctrl+V. False: others held the clipboard.
[[nodiscard]] bool HandPaste(std::string_view text);

// The control that has the keyboard in the thread of `window`; 0 when none has.
[[nodiscard]] WindowHandle FocusIn(WindowHandle window);
[[nodiscard]] bool ComboIsOpen(WindowHandle combo);
// The tick of a line of a list with ticks; -1 when there is no such line.
[[nodiscard]] int TickOf(WindowHandle list, int line);
// The text of the tool tip of a process that is seen; "" when none is.
[[nodiscard]] std::string SeenToolTip(unsigned process_id);
// The menu of a process that is dropped down; 0 when none is.
[[nodiscard]] WindowHandle OpenMenu(unsigned process_id);

}  // namespace corvane::desktop
