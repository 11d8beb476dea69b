// Tool tips of one window's controls, shown for disabled controls too.
#pragma once

#include <windows.h>

#include <string>

#include "ui/layout.h"

namespace corvane {

class ToolTips {
 public:
  // `owner` is the window whose children get the tips. Without success there are no tips.
  void Create(HWND owner);
  // Adds `control`, without a text.
  void Add(HWND control, int id);
  // The text is shown as it stands; an empty one shows nothing.
  void SetText(HWND control, int id, const std::string& text);
  // The mouse over a disabled control is the owner's: the tip is tied to a rectangle of the owner
  // then. An empty rectangle while the control is enabled or hidden.
  void SetDisabledRect(int id, const PixelRect& rect);
  // Forgets everything; the tips end with their owner.
  void Clear() { owner_ = tips_ = nullptr; }

 private:
  HWND owner_ = nullptr;
  HWND tips_ = nullptr;
};

}  // namespace corvane
