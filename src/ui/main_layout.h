// The main window's table of controls, and its two arrangements.
#pragma once

#include "panel/form1.h"
#include "ui/layout.h"

namespace corvane {

inline constexpr char kMainWindowClass[] = "Corvane main window class";

// The outer size of the window, and where the call details stand in it, in twips.
struct WindowArrangement {
  int width;
  int height;
  Frame::Corner call_details;
  bool winsock_visible;
  const char* title;
};
inline constexpr WindowArrangement kNormalArrangement = {12450, 6120, {120, 1680}, true, kTitle};
inline constexpr WindowArrangement kCompactArrangement = {
    3690, 4440, {120, 0}, false, kCompactTitle};

// The least client area that a window of those outer sizes has, in twips.
inline constexpr int kClientWidth = 12210;
inline constexpr int kClientHeight = 5235;
inline constexpr int kCompactClientHeight = 3555;

// `form` outlives the table.
[[nodiscard]] WindowTable MainWindowTable(Form1& form);

}  // namespace corvane
