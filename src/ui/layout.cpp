// Arithmetic of the layout. The table itself is in layout_table.cpp.
#include "ui/layout.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>

namespace corvane {

namespace {

// A client area smaller than the least (a menu of two rows, large menu fonts) takes this much, in
// twips, from the controls that grow; beyond it they are cut off.
constexpr int kMostShrinkage = 360;

// Whole rows of the call log and the least and most of one more, in hundredths of a row.
constexpr int kFullRows = 21;
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

void Grow(PixelRect& rect, unsigned growth, const Extra& extra) {
  if ((growth & kMovesRight) != 0) rect.left += extra.width;
  if ((growth & kGrowsRight) != 0) rect.width += extra.width;
  if ((growth & kMovesDown) != 0) rect.top += extra.height;
  if ((growth & kGrowsDown) != 0) rect.height += extra.height;
}

// In compact mode everything but the call details stays where a least normal window has it, cut off
// by the window's edge.
Extra ExtraSpace(const LayoutInput& input, bool in_call_details) {
  if (input.compact && !in_call_details) return {};
  const int least_height = input.compact ? kCompactClientHeight : kClientHeight;
  const int most_shrinkage = ToPixels(kMostShrinkage, input.dpi);
  Extra extra;
  extra.height = std::max(input.client_height - ToPixels(least_height, input.dpi), -most_shrinkage);
  if (!input.compact) {
    extra.width = std::max(input.client_width - ToPixels(kClientWidth, input.dpi), -most_shrinkage);
  }
  return extra;
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

FontSpec FontOf(FontKind kind) {
  switch (kind) {
    case FontKind::kLog:
      return {"Tahoma", 36};
    case FontKind::kGroup:
      return {"Tahoma", 44};
    case FontKind::kTab:
      return {"MS Sans Serif", 33};
    case FontKind::kText:
      break;
  }
  return {"Tahoma", 33};
}

int FontPixels(FontKind kind, int dpi) {
  constexpr int kQuarterPointsPerInch = 288;
  return (FontOf(kind).quarter_points * dpi + kQuarterPointsPerInch / 2) / kQuarterPointsPerInch;
}

const ControlPlace& PlaceOf(ControlId id) {
  const auto places = MainWindowPlaces();
  const auto found = std::find_if(places.begin(), places.end(),
                                  [id](const ControlPlace& place) { return place.id == id; });
  assert(found != places.end());
  return *found;
}

int ToPixels(int twips, int dpi) {
  const long long scaled = static_cast<long long>(twips) * dpi;
  const long long half = scaled < 0 ? -kTwipsPerInch / 2 : kTwipsPerInch / 2;
  return static_cast<int>((scaled + half) / kTwipsPerInch);
}

std::vector<PlacedControl> ComputeLayout(const LayoutInput& input) {
  std::vector<PlacedControl> placed;
  for (const ControlPlace& place : MainWindowPlaces()) {
    const ControlPlace* frame = place.frame ? &PlaceOf(*place.frame) : nullptr;
    const bool in_call_details =
        place.id == ControlId::fraCallDetails || place.frame == ControlId::fraCallDetails;
    TwipRect rect{place.left, place.top, place.width, place.height};
    if (in_call_details) {
      if (frame == nullptr) rect.left = rect.top = 0;
      rect.left += input.call_details_left;
      rect.top += input.call_details_top;
    } else if (frame != nullptr) {
      rect.left += frame->left;
      rect.top += frame->top;
    }
    PixelRect pixels = Scale(rect, input.dpi);
    const Extra extra = ExtraSpace(input, in_call_details);
    if (frame != nullptr) Grow(pixels, frame->growth & (kMovesRight | kMovesDown), extra);
    Grow(pixels, place.growth, extra);
    placed.push_back({place.id, pixels});
  }
  return placed;
}

RowFit FitCallLogRows(int available, int font_height) {
  const int row = std::max(font_height, available * 100 / (kFullRows * 100 + kLeastPart));
  const int part =
      std::clamp(available - kFullRows * row, (row * kLeastPart + 99) / 100, row * kMostPart / 100);
  return {row, kFullRows * row + part};
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
