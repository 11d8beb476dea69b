// Where the controls of a window stand: a table in twips (1440 per inch), scaled to the pixels of a
// screen by plain arithmetic. Knows no window system, and no window of the program.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "panel/controls.h"
#include "ui/control_ids.h"

namespace corvane {

inline constexpr int kTwipsPerInch = 1440;
inline constexpr int kDesignDpi = 96;
inline constexpr int kTwipsPerPixel = kTwipsPerInch / kDesignDpi;

enum class FontKind {
  kText,   // Tahoma 8.25
  kLog,    // Tahoma 8.25
  kLabel,  // Tahoma 10: what a number on the air is called
  kGroup,  // Tahoma 14: who is on the air
  kTab,    // MS Sans Serif 8.25
};
struct FontSpec {
  const char* face;
  int quarter_points;
};
// MS Sans Serif is made of dots for one resolution: at others its outline form takes its place.
[[nodiscard]] FontSpec FontOf(FontKind kind, int dpi = kDesignDpi);
// The character height to ask for, in pixels, as a positive number.
[[nodiscard]] int FontPixels(FontKind kind, int dpi);

// What a control does with client area beyond the least, and what else is its own.
enum Trait : unsigned {
  kPlain = 0,
  kGrowsRight = 1U << 0,
  kGrowsDown = 1U << 1,
  kMovesRight = 1U << 2,
  kMovesDown = 1U << 3,
  kInCompact = 1U << 4,         // frame: what a compact window is about, with all that is in it
  kMovable = 1U << 5,           // frame: stands at its corner, not at a place of the table
  kTakesMouse = 1U << 6,        // frame: the mouse over it and its labels is told of
  kClickable = 1U << 7,         // label: the mouse pointer is a hand
  kBordered = 1U << 8,          // label: with a border, its text in the middle of the height
  kCentred = 1U << 9,           // label: its text in the middle of the width
  kScrollsSideways = 1U << 10,  // list: as far as its widest line
  kFitsRows = 1U << 11,         // list: its full rows and a part of the next, bars always there
  kNoTabStop = 1U << 12,        // the tab key passes it by
  kFollowsEnd = 1U << 13,       // list: at its end it stays there when lines come
  kTipsCutLines = 1U << 14,     // list: a line that is cut off shows whole under the pointer
  kActsOnEnter = 1U << 15,      // list: Enter is a click and a double click on the selected line
  kWraps = 1U << 16,            // check box: its text in two lines
};

// One control of a window, a child window of it.
struct ControlRow {
  ControlId id;
  Control& control;
  const Frame* frame;  // left and top count from it; nullptr: from the client area
  int left;            // twips, like the next three
  int top;
  int width;
  int height;
  FontKind font;
  unsigned traits;  // of Trait

  [[nodiscard]] bool Has(Trait trait) const { return (traits & trait) != 0; }
};

// A row written in pixels of the design's resolution.
[[nodiscard]] ControlRow Row(ControlId id, Control& control, const Frame* frame, int left, int top,
                             int width, int height, unsigned traits = kPlain,
                             FontKind font = FontKind::kText);
inline constexpr int kF2Code = 113;

// A key that stands for a menu item, anywhere in its window.
struct Shortcut {
  int key_code = 0;  // 0: none
  bool control = false;
  const char* text = "";  // as the menu shows it
};

struct MenuRow {
  ControlId id;
  MenuItem& item;
  const MenuItem* menu;  // the item that opens the menu it stands in; nullptr: in the menu bar
  Shortcut shortcut{};
  bool begins_group = false;  // a line above it

  // Its caption and, at the right, its key.
  [[nodiscard]] std::string Text() const;
};

// A text that is grey until the shape beside it has another colour than the window.
struct Lamp {
  const Control& text;
  const Shape& shape;

  [[nodiscard]] bool lit() const { return shape.fill_colour != kButtonFace; }
};

// Everything about the controls of one window, from which the rest follows: what is made, in which
// order the tab key goes round, by which number others find it, where it stands. Sizes are in
// twips.
struct WindowTable {
  Window& window;
  const char* window_class;
  bool minimises;  // its title bar has a button for it
  // The outer size to begin with, and the least client area that a window of that size has (wide
  // sizing borders). A larger one goes to the controls that grow. Without an outer size (0) the
  // window is as large as its client area needs.
  int width;
  int height;
  int client_width;
  int client_height;
  // The window is compact while the item is checked; nullptr: never.
  const MenuItem* compact;
  int compact_client_height;
  // Takes the keyboard when what has it cannot keep it; the other one in a compact window.
  Control& home;
  Control* compact_home = nullptr;
  std::vector<Lamp> lamps{};
  // In the order of the tab key; last the frames, which lie behind what stands in them.
  std::vector<ControlRow> controls;
  // From left to right; what opens a menu before what is in it.
  std::vector<MenuRow> menu;

  [[nodiscard]] bool IsCompact() const { return compact != nullptr && compact->checked; }
  [[nodiscard]] Control& Home() const { return IsCompact() ? *compact_home : home; }
  // True for what a compact window leaves out, while it is compact.
  [[nodiscard]] bool LeftOut(const ControlRow& row) const;
  // The row of the frame that `row` stands in; nullptr: on the window.
  [[nodiscard]] const ControlRow* FrameOf(const ControlRow& row) const;
  // Controls and menu items together.
  [[nodiscard]] std::vector<Control*> AllControls() const;
};

struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  [[nodiscard]] int right() const { return left + width; }
  [[nodiscard]] int bottom() const { return top + height; }
  bool operator==(const PixelRect&) const = default;
};

// Twips to pixels, rounded to nearest.
[[nodiscard]] int ToPixels(int twips, int dpi);

// The places of all controls in a client area of that many pixels, in the order of the table.
[[nodiscard]] std::vector<PixelRect> ComputeLayout(const WindowTable& table, int dpi,
                                                   int client_width, int client_height);

// The rows of a list that has to show so many whole ones and a part of the next.
struct RowFit {
  int row_height = 0;     // pixels of one row
  int client_height = 0;  // pixels that the rows take together
};
// Divides `available` pixels; rows are at least `font_height` high, so that a small `available` is
// exceeded rather than text cut off.
[[nodiscard]] RowFit FitRows(int full_rows, int available, int font_height);

// `window` moved, if need be, so that its title bar can be reached on one of the screens' work
// areas; those are not empty.
[[nodiscard]] PixelRect MoveIntoView(const PixelRect& window, std::span<const PixelRect> screens);

}  // namespace corvane
