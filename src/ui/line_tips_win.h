// Shows a list's line that is cut off whole, in its place, while the pointer rests on it.
#pragma once

#include <windows.h>

#include "ui/tool_tips_win.h"

namespace corvane {

// Outlives the lists that it watches.
class LineTips {
 public:
  explicit LineTips(ToolTips& tips) : tips_(tips) {}
  LineTips(const LineTips&) = delete;
  LineTips& operator=(const LineTips&) = delete;

  void Watch(HWND list);
  // To be called when the lines of `list` have changed or moved.
  void Hide(HWND list);

 private:
  static LRESULT CALLBACK Procedure(HWND list, UINT message, WPARAM w_param, LPARAM l_param,
                                    UINT_PTR, DWORD_PTR data);
  void Handle(HWND list, UINT message, LPARAM l_param);
  void ShowFor(HWND list, POINT pointer);

  ToolTips& tips_;
  HWND list_ = nullptr;  // whose line shows
  int line_ = -1;
};

}  // namespace corvane
