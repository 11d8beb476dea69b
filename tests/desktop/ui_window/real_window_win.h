// What the tests of the real main window ask the system about it and do to it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ui/control_ids.h"
#include "ui/layout.h"

namespace corvane::ui_test {

using Handle = HWND;

// The window as the tests of the finished programs count it.
[[nodiscard]] std::uintptr_t NumberOf(Handle window);
[[nodiscard]] Handle ChildOf(Handle window, ControlId id);
// The ids of all child windows, in the order of the tab key.
[[nodiscard]] std::vector<int> ChildIds(Handle window);
[[nodiscard]] std::string TextOf(Handle window);
void SetText(Handle window, const std::string& text);

LRESULT Send(Handle window, UINT message, WPARAM w = 0, LPARAM l = 0);
void Post(Handle window, UINT message, WPARAM w = 0, LPARAM l = 0);
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
// Tells the window of another resolution: asks for its size there and suggests that at its corner.
void SendDpiChange(Handle window, int dpi);
// The height of a text in the window's font, broken into lines of that width.
[[nodiscard]] int WrappedHeight(Handle window, const std::string& text, int width);
// Where the window stands on the screen after each change of its place or size that `work` makes.
[[nodiscard]] std::vector<PixelRect> PlacesDuring(Handle window, const std::function<void()>& work);
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
// True when the window's font is drawn from outlines.
[[nodiscard]] bool HasOutlineFont(Handle window);
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

[[nodiscard]] std::uint32_t SystemColour(int number);
void SetPixelOf(Handle window, int x, int y, std::uint32_t colour);
// Pixels that have another colour than the window's ground.
[[nodiscard]] int InkIn(Handle window);
// For its life the system's colours are light texts on dark grounds.
class LightOnDark {
 public:
  LightOnDark();
  ~LightOnDark();
  LightOnDark(const LightOnDark&) = delete;
  LightOnDark& operator=(const LightOnDark&) = delete;

 private:
  std::vector<COLORREF> before_;
};

// The pointer and the keys themselves, as the system brings them to the window that they are for.
void MovePointer(int x, int y);
void ClickPointer();
void StrikeKey(int key, int with);
// Where the pointer is in the window, as a mouse message says it.
[[nodiscard]] LPARAM PointerIn(Handle window);
// The text and the place of the tool tip that shows; "" when none does.
[[nodiscard]] std::string ShownToolTip(Handle window);
[[nodiscard]] PixelRect ShownToolTipRect(Handle window);

[[nodiscard]] bool IsTabStop(Handle window);

// The size of a window and the places of those of its children that show.
struct Painted {
  PixelRect outer;
  std::vector<PixelRect> children;
  bool operator==(const Painted&) const = default;
};
[[nodiscard]] Painted PaintedNow(Handle window);
// How things stood each time that the window or a child was painted during `work`.
[[nodiscard]] std::vector<Painted> PaintedDuring(Handle window, const std::function<void()>& work);

struct MenuFacts {
  std::string text;
  bool exists = false;
  bool checked = false;
};
[[nodiscard]] MenuFacts MenuItemOf(Handle window, ControlId id);
[[nodiscard]] std::vector<std::string> MenuBarTexts(Handle window);

// The process that this program is.
[[nodiscard]] unsigned ThisProgram();

// What this program has of the system at the moment; of USER objects only the windows, where the
// system does not count them.
struct OwnUse {
  std::size_t windows = 0;  // with all their children
  unsigned gdi_objects = 0;
  unsigned user_objects = 0;
  std::size_t private_kib = 0;
};
[[nodiscard]] OwnUse UseOfThisProgram();
// What a thousand lives of a window may add to it: one KiB each, and what the system makes once.
inline constexpr std::size_t kSpareKib = 1024;
inline constexpr unsigned kSpareObjects = 20;
// How much private memory so many of the system's own labels leave behind when they end. Wine 10
// forgets a few bytes for each that was given a font; a heap that keeps blocks of a size together
// keeps a whole page for them.
[[nodiscard]] std::size_t KibLostByLabels(int labels);
inline constexpr std::size_t kSpareKibWhereLabelsLose = 4096;

// Lets messages in that other threads send directly, and nothing else, until `done`.
void AdmitSentMessages(const bool volatile& done);

}  // namespace corvane::ui_test
