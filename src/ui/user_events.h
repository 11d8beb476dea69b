// What the user does in a window, as the real window tells it and as the handlers of that window
// take it. Knows no window system.
#pragma once

#include <string>

#include "panel/controls.h"

namespace corvane {

// Mouse buttons as MouseUp counts them.
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 4;

// Key codes and characters with a meaning here.
inline constexpr int kUpArrowCode = 38;
inline constexpr int kDownArrowCode = 40;
inline constexpr int kBackspaceCode = 8;
inline constexpr int kEnterCode = 13;
inline constexpr int kSpaceBarCode = 32;
inline constexpr int kDeleteCode = 46;
inline constexpr int kContextMenuCode = 93;  // also reported for Shift+F10

// Each method first brings the state to what the user sees, then runs the handler, which may let
// events run.
class UserEvents {
 public:
  // Buttons, check boxes, option buttons, labels, menu items. Check boxes and option buttons take
  // their new value here, through the sink: the window need not change by itself.
  virtual void Click(Control& control) = 0;
  // Labels and lists; the list's selection has been reported before.
  virtual void DoubleClick(Control& control) = 0;
  // The box shows `text` now. No echo to the sink.
  virtual void TextEdited(TextBox& box, const std::string& text) = 0;
  // A character is about to be typed; false when it is to be discarded.
  [[nodiscard]] virtual bool KeyPress(Control& control, int code) = 0;
  virtual void KeyUp(Control& control, int key_code) = 0;
  // The control has lost the keyboard focus. A real window reports this by itself, also for a
  // change of focus that FocusWanted caused; a simulated one must do the same.
  virtual void LostFocus(Control& control) = 0;
  // Line `index` (-1: none) is selected now. No echo to the sink.
  virtual void ListSelected(ListBox& list, int index, bool by_mouse) = 0;
  virtual void ComboSelected(ComboBox& combo, int index) = 0;
  // `line` is the line of a list under the pointer; -1 below the last one and elsewhere.
  virtual void MouseUp(Control& control, int button, int line) = 0;
  // The mouse moved over a control's own area; for a frame, over it and the labels in it.
  virtual void MouseMove(Control& control, bool form_is_foreground) = 0;
  // A key or a mouse button went down anywhere in the window.
  virtual void AnyInput() = 0;
  // The Escape key, unless an open list takes it.
  virtual void Escape() = 0;
  // The user closes the window.
  virtual void CloseRequested() = 0;
  // The system ends the session: everything is saved on return.
  virtual void SessionEnding() = 0;

 protected:
  ~UserEvents() = default;
};

}  // namespace corvane
