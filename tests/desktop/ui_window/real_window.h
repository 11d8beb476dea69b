// What the tests of the real main window ask the system about it and do to it. The tests themselves
// include no system header.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ui/control_ids.h"
#include "ui/layout.h"

namespace corvane::ui_test {

using Handle = void*;  // HWND

inline constexpr unsigned kWmNcHitTest = 0x84;
inline constexpr unsigned kBmGetCheck = 0xF0;
inline constexpr unsigned kBmClick = 0xF5;
inline constexpr unsigned kLbSetCurSel = 0x186;
inline constexpr unsigned kLbGetCurSel = 0x188;
inline constexpr unsigned kLbGetCount = 0x18B;
inline constexpr unsigned kLbGetTopIndex = 0x18E;
inline constexpr unsigned kLbGetHorizontalExtent = 0x193;
inline constexpr unsigned kLbSetTopIndex = 0x197;
inline constexpr unsigned kLbGetItemHeight = 0x1A1;
inline constexpr unsigned kCbGetCount = 0x146;
inline constexpr unsigned kCbGetCurSel = 0x147;
inline constexpr unsigned kCbSetCurSel = 0x14E;
inline constexpr unsigned kWmClose = 0x10;
inline constexpr unsigned kWmQueryEndSession = 0x11;
inline constexpr unsigned kWmEndSession = 0x16;
inline constexpr unsigned kWmKeyDown = 0x100;
inline constexpr unsigned kWmKeyUp = 0x101;
inline constexpr unsigned kWmChar = 0x102;
inline constexpr unsigned kWmCommand = 0x111;
inline constexpr unsigned kWmVScroll = 0x115;
inline constexpr unsigned kWmMouseMove = 0x200;
inline constexpr unsigned kWmLButtonUp = 0x202;
inline constexpr unsigned kWmRButtonUp = 0x205;
inline constexpr unsigned kWmMButtonUp = 0x208;
inline constexpr int kSelChange = 1;  // of list and combo boxes
inline constexpr int kKeyTab = 9;
inline constexpr int kKeyEnter = 13;
inline constexpr int kKeyDown = 40;
inline constexpr int kScrollLineUp = 0;
inline constexpr int kHitTransparent = -1;
inline constexpr int kHitClient = 1;

[[nodiscard]] Handle ChildOf(Handle window, ControlId id);
// The ids of all child windows, in the order of the tab key.
[[nodiscard]] std::vector<int> ChildIds(Handle window);
[[nodiscard]] std::string TextOf(Handle window);
void SetText(Handle window, const std::string& text);

std::intptr_t Send(Handle window, unsigned message, std::uintptr_t w = 0, std::intptr_t l = 0);
void Post(Handle window, unsigned message, std::uintptr_t w = 0, std::intptr_t l = 0);
// Down, up in the middle of the window.
void PostClick(Handle window);
// As a mouse does it: down, up, double click, up.
void PostDoubleClick(Handle window);
void PostClickAtLine(Handle list, int line, bool twice);
// WM_COMMAND of a control to its parent.
void SendCommand(Handle parent, ControlId id, int code);

[[nodiscard]] bool IsShown(Handle window);  // itself and its parents
[[nodiscard]] bool HasVisibleStyle(Handle window);
[[nodiscard]] bool IsEnabled(Handle window);
[[nodiscard]] bool IsWindowAlive(Handle window);
[[nodiscard]] bool IsMinimised(Handle window);
void Minimise(Handle window);
[[nodiscard]] Handle Focused();
void Focus(Handle window);
[[nodiscard]] bool IsForeground(Handle window);
void TakeForeground(Handle window);
// Makes another window of this program, in front. To be ended with EndWindow.
[[nodiscard]] Handle MakeOtherWindow();
void EndWindow(Handle window);

[[nodiscard]] PixelRect OuterRect(Handle window);             // on the screen
[[nodiscard]] PixelRect RectIn(Handle parent, Handle child);  // in the parent's client area
[[nodiscard]] PixelRect ClientRect(Handle window);
// The last line that the vertical scroll bar of a list can reach, as painted so far: asks the list
// itself nothing.
[[nodiscard]] int ScrollEnd(Handle list);
[[nodiscard]] std::string ListLine(Handle list, int line);
void MoveTo(Handle window, int left, int top);
// The part of the work areas that all screens together span.
[[nodiscard]] PixelRect WorkArea();

struct FontFacts {
  std::string face;  // as asked for
  int height = 0;    // as asked for, negative
  int weight = 0;
};
[[nodiscard]] FontFacts FontOfWindow(Handle window);
// Width of a text in the window's font.
[[nodiscard]] int TextWidth(Handle window, const std::string& text);
[[nodiscard]] int TextHeight(Handle window);

// What the window answers when its child asks for its colours: the text's, 0xBBGGRR.
[[nodiscard]] std::uint32_t LabelTextColour(Handle window, Handle label);
// A pixel of what the window shows, 0xBBGGRR.
[[nodiscard]] std::uint32_t PixelOf(Handle window, int x, int y);
[[nodiscard]] std::uint32_t ButtonFaceColour();

// The tool tip tied to a child, and the rectangle tied to it while it is disabled.
[[nodiscard]] std::string ToolTipOf(Handle window, Handle child);
[[nodiscard]] PixelRect DisabledToolTipRect(Handle window, ControlId id);
[[nodiscard]] bool ToolTipsShowAmpersands(Handle window);

struct MenuFacts {
  std::string text;
  bool exists = false;
  bool checked = false;
};
[[nodiscard]] MenuFacts MenuItemOf(Handle window, ControlId id);
[[nodiscard]] std::vector<std::string> MenuBarTexts(Handle window);

// Lets messages in that other threads send directly, and nothing else, until `done`.
void AdmitSentMessages(const bool volatile& done);

}  // namespace corvane::ui_test
