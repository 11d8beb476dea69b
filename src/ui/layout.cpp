// Arithmetic of the layout. The main window's table is in main_layout.cpp.
#include "ui/layout.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>

namespace corvane {

namespace {

// A client area smaller than the least (a menu of two rows, large menu fonts) takes this much, in
// twips, from the controls that grow; beyond it they are cut off.
constexpr int kMostShrinkage = 360;

// The least and most that shows of the row behind the full ones, in hundredths of a row.
constexpr int kLeastPart = 30;
constexpr int kMostPart = 70;

// The part of a title bar that must be on a screen, in pixels.
constexpr int kReachableWidth = 64;
constexpr int kReachableHeight = 24;

struct Extra {
  int width = 0;
  int height = 0;
};

struct TwipRect {
  int left;
  int top;
  int width;
  int height;
};

// Edges are scaled, not sizes: neighbours that touch in twips touch in pixels.
PixelRect Scale(const TwipRect& rect, int dpi) {
  const int left = ToPixels(rect.left, dpi);
  const int top = ToPixels(rect.top, dpi);
  return {left, top, ToPixels(rect.left + rect.width, dpi) - left,
          ToPixels(rect.top + rect.height, dpi) - top};
}

void Grow(PixelRect& rect, unsigned traits, const Extra& extra) {
  if ((traits & kMovesRight) != 0) rect.left += extra.width;
  if ((traits & kGrowsRight) != 0) rect.width += extra.width;
  if ((traits & kMovesDown) != 0) rect.top += extra.height;
  if ((traits & kGrowsDown) != 0) rect.height += extra.height;
}

// In compact mode everything else stays where a least normal window has it, cut off by the window's
// edge.
Extra ExtraSpace(const WindowTable& table, bool in_compact, int dpi, int client_width,
                 int client_height) {
  const bool compact = table.IsCompact();
  if (compact && !in_compact) return {};
  const int least_height = compact ? table.compact_client_height : table.client_height;
  const int most_shrinkage = ToPixels(kMostShrinkage, dpi);
  Extra extra;
  extra.height = std::max(client_height - ToPixels(least_height, dpi), -most_shrinkage);
  if (!compact) {
    extra.width = std::max(client_width - ToPixels(table.client_width, dpi), -most_shrinkage);
  }
  return extra;
}

// Where the row's control stands in the client area, before anything grows.
TwipRect PlaceOf(const ControlRow& row, const ControlRow* frame) {
  TwipRect rect{row.left, row.top, row.width, row.height};
  if (frame != nullptr) {
    rect.left += frame->left;
    rect.top += frame->top;
  }
  const ControlRow& outer = frame != nullptr ? *frame : row;
  if (outer.Has(kMovable)) {
    const Frame::Corner& corner = As<Frame>(outer.control).corner;
    rect.left += corner.left;
    rect.top += corner.top;
  }
  return rect;
}

long long SquaredDistance(const PixelRect& one, const PixelRect& other) {
  const long long x = (one.left + one.right()) / 2 - (other.left + other.right()) / 2;
  const long long y = (one.top + one.bottom()) / 2 - (other.top + other.bottom()) / 2;
  return x * x + y * y;
}

bool TitleReachable(const PixelRect& window, const PixelRect& screen) {
  const int shown = std::min(window.right(), screen.right()) - std::max(window.left, screen.left);
  return shown >= std::min(kReachableWidth, window.width) && window.top >= screen.top &&
         window.top + kReachableHeight <= screen.bottom();
}

}  // namespace

FontSpec FontOf(FontKind kind, int dpi) {
  switch (kind) {
    case FontKind::kLabel:
      return {"Tahoma", 40};
    case FontKind::kGroup:
      return {"Tahoma", 56};
    case FontKind::kTab:
      return {dpi == kDesignDpi ? "MS Sans Serif" : "Microsoft Sans Serif", 33};
    case FontKind::kText:
    case FontKind::kLog:
      break;
  }
  return {"Tahoma", 33};
}

int FontPixels(FontKind kind, int dpi) {
  constexpr int kQuarterPointsPerInch = 288;
  return (FontOf(kind).quarter_points * dpi + kQuarterPointsPerInch / 2) / kQuarterPointsPerInch;
}

ControlRow Row(ControlId id, Control& control, const Frame* frame, int left, int top, int width,
               int height, unsigned traits, FontKind font) {
  return {id,
          control,
          frame,
          left * kTwipsPerPixel,
          top * kTwipsPerPixel,
          width * kTwipsPerPixel,
          height * kTwipsPerPixel,
          font,
          traits};
}

std::string MenuRow::Text() const {
  const std::string& caption = item.caption;
  return shortcut.key_code == 0 ? caption : caption + "\t" + shortcut.text;
}

const ControlRow* WindowTable::FrameOf(const ControlRow& row) const {
  if (row.frame == nullptr) return nullptr;
  const auto found = std::find_if(controls.begin(), controls.end(), [&](const ControlRow& other) {
    return &other.control == row.frame;
  });
  assert(found != controls.end());
  return &*found;
}

bool WindowTable::LeftOut(const ControlRow& row) const {
  const ControlRow* frame = FrameOf(row);
  return IsCompact() && !(frame != nullptr ? *frame : row).Has(kInCompact);
}

std::vector<Control*> WindowTable::AllControls() const {
  std::vector<Control*> all;
  for (const ControlRow& row : controls) all.push_back(&row.control);
  for (const MenuRow& row : menu) all.push_back(&row.item);
  return all;
}

int ToPixels(int twips, int dpi) {
  const long long scaled = static_cast<long long>(twips) * dpi;
  const long long half = scaled < 0 ? -kTwipsPerInch / 2 : kTwipsPerInch / 2;
  return static_cast<int>((scaled + half) / kTwipsPerInch);
}

std::vector<PixelRect> ComputeLayout(const WindowTable& table, int dpi, int client_width,
                                     int client_height) {
  std::vector<PixelRect> placed;
  for (const ControlRow& row : table.controls) {
    const ControlRow* frame = table.FrameOf(row);
    PixelRect pixels = Scale(PlaceOf(row, frame), dpi);
    const bool in_compact = (frame != nullptr ? *frame : row).Has(kInCompact);
    const Extra extra = ExtraSpace(table, in_compact, dpi, client_width, client_height);
    if (frame != nullptr) Grow(pixels, frame->traits & (kMovesRight | kMovesDown), extra);
    Grow(pixels, row.traits, extra);
    placed.push_back(pixels);
  }
  return placed;
}

RowFit FitRows(int full_rows, int available, int font_height) {
  const int row = std::max(font_height, available * 100 / (full_rows * 100 + kLeastPart));
  const int part =
      std::clamp(available - full_rows * row, (row * kLeastPart + 99) / 100, row * kMostPart / 100);
  return {row, full_rows * row + part};
}

PixelRect MoveIntoView(const PixelRect& window, std::span<const PixelRect> screens) {
  assert(!screens.empty());
  for (const PixelRect& screen : screens) {
    if (TitleReachable(window, screen)) return window;
  }
  const auto nearest = std::min_element(
      screens.begin(), screens.end(), [&](const PixelRect& one, const PixelRect& other) {
        return SquaredDistance(one, window) < SquaredDistance(other, window);
      });
  PixelRect moved = window;
  moved.left = std::max(nearest->left, std::min(moved.left, nearest->right() - moved.width));
  moved.top = std::max(nearest->top, std::min(moved.top, nearest->bottom() - moved.height));
  return moved;
}

}  // namespace corvane
