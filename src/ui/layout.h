// Where the main window's controls stand: a table in twips (1440 per inch), scaled to the pixels of
// a screen by plain arithmetic. Knows no window system.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "ui/control_ids.h"

namespace corvane {

inline constexpr int kTwipsPerInch = 1440;
inline constexpr int kDesignDpi = 96;

// The outer size of the window, and where the call details stand in it, in twips.
struct WindowArrangement {
  int width;
  int height;
  int call_details_left;
  int call_details_top;
  bool winsock_visible;
  const char* title;
};
inline constexpr WindowArrangement kNormalArrangement = {12450, 6120, 120,
                                                         1680,  true, "Corvane v0.99.6s"};
inline constexpr WindowArrangement kCompactArrangement = {3690, 4440,  120,
                                                          0,    false, "Corva v0.99.6s"};

// The least client area that a window of those outer sizes has (wide sizing borders), in twips. A
// larger one goes to the controls that grow.
inline constexpr int kClientWidth = 12210;
inline constexpr int kClientHeight = 5235;
inline constexpr int kCompactClientHeight = 3555;

enum class FontKind {
  kText,   // Tahoma 8.25
  kLog,    // Tahoma 9
  kGroup,  // Tahoma 11
  kTab,    // MS Sans Serif 8.25
};
struct FontSpec {
  const char* face;
  int quarter_points;
};
[[nodiscard]] FontSpec FontOf(FontKind kind);
// The character height to ask for, in pixels, as a positive number.
[[nodiscard]] int FontPixels(FontKind kind, int dpi);

// What a control does with client area beyond the least.
enum Growth : unsigned {
  kFixed = 0,
  kGrowsRight = 1,
  kGrowsDown = 2,
  kMovesRight = 4,
  kMovesDown = 8,
};

struct ControlPlace {
  ControlId id;
  std::optional<ControlId> frame;  // left and top count from it; none: from the client area
  int left;                        // twips, like the next three
  int top;
  int width;
  int height;
  FontKind font;
  unsigned growth;  // of Growth
};

// Every child window of the main window once: first the controls in the order of the tab key, then
// the frames, which lie behind them.
[[nodiscard]] std::span<const ControlPlace> MainWindowPlaces();
// The entry of `id`; `id` is one of them.
[[nodiscard]] const ControlPlace& PlaceOf(ControlId id);

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

struct LayoutInput {
  int dpi = kDesignDpi;
  int client_width = 0;   // pixels
  int client_height = 0;  // pixels
  bool compact = false;
  int call_details_left = kNormalArrangement.call_details_left;  // twips
  int call_details_top = kNormalArrangement.call_details_top;    // twips
};

struct PlacedControl {
  ControlId id;
  PixelRect rect;  // in the client area
};

// The places of all controls, in the order of MainWindowPlaces.
[[nodiscard]] std::vector<PlacedControl> ComputeLayout(const LayoutInput& input);

// The rows of the call log: 21 whole ones and a part of the next have to show in it.
struct RowFit {
  int row_height = 0;     // pixels of one row
  int client_height = 0;  // pixels that the rows take together
};
// Divides `available` pixels; rows are at least `font_height` high, so that a small `available` is
// exceeded rather than text cut off.
[[nodiscard]] RowFit FitCallLogRows(int available, int font_height);

// `window` moved, if need be, so that its title bar can be reached on one of the screens' work
// areas; those are not empty.
[[nodiscard]] PixelRect MoveIntoView(const PixelRect& window, std::span<const PixelRect> screens);

}  // namespace corvane
