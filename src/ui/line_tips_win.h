// Shows a list's line that is cut off whole, in its place, while the pointer rests on it.
#pragma once

#include <windows.h>

#include "ui/tool_tips_win.h"

namespace corvane {

class LineTips {
 public:
  explicit LineTips(ToolTips& tips) : tips_(tips) {}
  LineTips(const LineTips&) = delete;
  LineTips& operator=(const LineTips&) = delete;

  // To be told of every message of a list with such tips.
  void Note(HWND list, UINT message, LPARAM l_param);
  // To be called when the lines of `list` have changed or moved.
  void Hide(HWND list);

 private:
  void ShowFor(HWND list, POINT pointer);

  ToolTips& tips_;
  HWND list_ = nullptr;  // whose line shows
  int line_ = -1;
};

}  // namespace corvane
