// Tool tips of one window's controls, shown for disabled controls too.
#pragma once

#include <string>

#include "ui/layout.h"

namespace corvane {

class ToolTips {
 public:
  // `owner` is the window (HWND) whose children get the tips. Without success there are no tips.
  void Create(void* owner);
  // Adds `control` (HWND), without a text.
  void Add(void* control, int id);
  // The text is shown as it stands; an empty one shows nothing.
  void SetText(void* control, int id, const std::string& text);
  // The mouse over a disabled control is the owner's: the tip is tied to a rectangle of the owner
  // then. An empty rectangle while the control is enabled or hidden.
  void SetDisabledRect(int id, const PixelRect& rect);
  // Forgets everything; the tips end with their owner.
  void Clear() { tips_ = owner_ = nullptr; }

 private:
  void* owner_ = nullptr;
  void* tips_ = nullptr;
};

}  // namespace corvane
