// Tool tips of one window's controls, shown for disabled controls too, and one that is put where it
// is wanted.
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
  // To be shown each message that goes to the owner or one of its children.
  void Relay(MSG message);
  // The text is shown as it stands; an empty one shows nothing.
  void SetText(HWND control, int id, const std::string& text);
  // The mouse over a disabled control is the owner's: the tip is tied to a rectangle of the owner
  // then. An empty rectangle while the control is enabled or hidden.
  void SetDisabledRect(int id, const PixelRect& rect);
  // Shows a tip whose text covers `place` on the screen, as far as the screen goes; the mouse goes
  // through it.
  void ShowPlaced(const std::string& text, const RECT& place);
  void HidePlaced();
  // Forgets everything; the tips end with their owner.
  void Clear() { owner_ = tips_ = nullptr; }

 private:
  HWND owner_ = nullptr;
  HWND tips_ = nullptr;
};

}  // namespace corvane
