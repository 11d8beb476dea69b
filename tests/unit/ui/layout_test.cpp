// The layout as arithmetic: nothing overlaps, nothing leaves its frame or the window, at every
// resolution, in both sizes.
#include "ui/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "sim/no_sink.h"
#include "ui/main_layout.h"
#include "unit/ui/overlap.h"

namespace corvane {

namespace {

using enum ControlId;

constexpr int kResolutions[] = {96, 120, 144, 168, 192};

struct Case {
  int dpi;
  bool compact;
  int extra;  // pixels of client area beyond the least, both ways
};

std::vector<Case> Cases() {
  std::vector<Case> cases;
  for (const int dpi : kResolutions) {
    for (const bool compact : {false, true}) {
      for (const int extra : {-20, 0, 10, 25}) cases.push_back({dpi, compact, extra});
    }
  }
  return cases;
}

class LayoutTest : public testing::Test {
 protected:
  std::map<ControlId, PixelRect> Place(const Case& at) {
    const WindowArrangement& arrangement = at.compact ? kCompactArrangement : kNormalArrangement;
    form_.mnuCompactMode.checked = at.compact;
    form_.fraCallDetails.corner = arrangement.call_details;
    const int height = at.compact ? kCompactClientHeight : kClientHeight;
    const int width = kClientWidth - (kNormalArrangement.width - arrangement.width);
    const auto placed = ComputeLayout(table_, at.dpi, ToPixels(width, at.dpi) + at.extra,
                                      ToPixels(height, at.dpi) + at.extra);
    std::map<ControlId, PixelRect> rects;
    for (std::size_t row = 0; row < placed.size(); ++row) {
      rects[table_.controls[row].id] = placed[row];
    }
    return rects;
  }

  sim::NoSink sink_;
  Form1 form_{sink_};
  const WindowTable table_ = MainWindowTable(form_);
};

PixelRect ClientOf(const Case& at) {
  const int height = at.compact ? kCompactClientHeight : kClientHeight;
  return {0, 0, ToPixels(kClientWidth, at.dpi) + at.extra, ToPixels(height, at.dpi) + at.extra};
}

bool Inside(const PixelRect& inner, const PixelRect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right() <= outer.right() &&
         inner.bottom() <= outer.bottom();
}

std::string Describe(const Case& at, ControlId id) {
  return std::to_string(Number(id)) + " at " + std::to_string(at.dpi) +
         (at.compact ? " compact" : "") + " with " + std::to_string(at.extra);
}

bool IsPage(ControlId id) {
  return id == fraPresets || id == fraRecordingOptions || id == fraOptions ||
         id == fraLoggingOptions || id == fraCheckboxDetection;
}

TEST_F(LayoutTest, WhatCompactModeCutsOffStaysWhereItIsInTheLeastWindow) {
  for (const int dpi : {96, 144, 192}) {
    EXPECT_EQ(Place({dpi, true, 0}).at(lstCallLog), Place({dpi, false, 0}).at(lstCallLog)) << dpi;
  }
}

TEST_F(LayoutTest, FramesComeAfterEverythingThatStandsInThem) {
  std::set<const Control*> frames_seen;
  for (const ControlRow& row : table_.controls) {
    if (row.frame != nullptr) {
      EXPECT_FALSE(frames_seen.contains(row.frame)) << Number(row.id);
    }
    if (row.control.kind() == ControlKind::kFrame) frames_seen.insert(&row.control);
  }
  EXPECT_EQ(frames_seen.size(), 7U);
}

TEST_F(LayoutTest, ControlsLieInsideTheirFrames) {
  for (const Case& at : Cases()) {
    const auto rects = Place(at);
    for (const ControlRow& row : table_.controls) {
      if (row.frame == nullptr) continue;
      const ControlRow& frame =
          *std::find_if(table_.controls.begin(), table_.controls.end(),
                        [&](const ControlRow& other) { return &other.control == row.frame; });
      EXPECT_TRUE(Inside(rects.at(row.id), rects.at(frame.id))) << Describe(at, row.id);
    }
  }
}

TEST_F(LayoutTest, TopLevelControlsLieInsideTheClientArea) {
  for (const Case& at : Cases()) {
    const auto rects = Place(at);
    for (const ControlRow& row : table_.controls) {
      if (row.frame != nullptr || (at.compact && row.id != fraCallDetails)) continue;
      EXPECT_TRUE(Inside(rects.at(row.id), ClientOf(at))) << Describe(at, row.id);
    }
  }
}

TEST_F(LayoutTest, NeighboursDoNotOverlap) {
  for (const Case& at : Cases()) {
    const auto rects = Place(at);
    const std::vector<ControlRow>& rows = table_.controls;
    for (std::size_t one = 0; one < rows.size(); ++one) {
      for (std::size_t other = one + 1; other < rows.size(); ++other) {
        if (rows[one].frame != rows[other].frame) continue;
        if (IsPage(rows[one].id) && IsPage(rows[other].id)) continue;  // one shows at a time
        if (at.compact && rows[one].frame == nullptr) continue;
        EXPECT_FALSE(Overlap(rects.at(rows[one].id), rects.at(rows[other].id)))
            << Describe(at, rows[one].id) << ", " << Number(rows[other].id);
      }
    }
  }
}

TEST_F(LayoutTest, CallNumberTimeslotAndCarrierShareALine) {
  const auto rects = Place({96, false, 0});
  for (const ControlId id : {lblCallID, Label11, lblTimeSlotNumber, Label8, lblCarrierNumber}) {
    EXPECT_EQ(rects.at(id).top, rects.at(Label17).top) << Number(id);
  }
}

TEST_F(LayoutTest, CompactWindowLeavesOutAllButTheCallDetails) {
  for (const ControlRow& row : table_.controls) EXPECT_FALSE(table_.LeftOut(row));
  EXPECT_EQ(&table_.Home(), &form_.lstCallLog);
  form_.mnuCompactMode.checked = true;
  for (const ControlRow& row : table_.controls) {
    const bool part = row.id == fraCallDetails || row.frame == &form_.fraCallDetails;
    EXPECT_EQ(table_.LeftOut(row), !part) << row.control.name();
  }
  EXPECT_EQ(&table_.Home(), &form_.lstCurrentSSI_Users);
}

TEST_F(LayoutTest, PagesShareOnePlace) {
  for (const Case& at : Cases()) {
    const auto rects = Place(at);
    for (const auto& [id, rect] : rects) {
      if (IsPage(id)) {
        EXPECT_EQ(rect, rects.at(fraPresets)) << Describe(at, id);
      }
    }
  }
}

TEST_F(LayoutTest, EverythingHasASize) {
  for (const Case& at : Cases()) {
    for (const auto& [id, rect] : Place(at)) {
      EXPECT_GE(rect.width, ToPixels(12 * 15, at.dpi)) << Describe(at, id);
      EXPECT_GE(rect.height, ToPixels(12 * 15, at.dpi)) << Describe(at, id);
    }
  }
}

TEST_F(LayoutTest, CallDetailsStandWhereTheArrangementsPutThem) {
  for (const int dpi : kResolutions) {
    const PixelRect normal = Place({dpi, false, 0}).at(fraCallDetails);
    EXPECT_EQ(normal.left, ToPixels(120, dpi));
    EXPECT_EQ(normal.top, ToPixels(1680, dpi));
    const PixelRect compact = Place({dpi, true, 0}).at(fraCallDetails);
    EXPECT_EQ(compact.left, ToPixels(120, dpi));
    EXPECT_EQ(compact.top, 0);
    EXPECT_LE(compact.right(), ToPixels(3450, dpi));
  }
}

TEST_F(LayoutTest, WinsockFrameIsWhatCompactModeMakesRoomFor) {
  const auto rects = Place({96, false, 0});
  EXPECT_LE(rects.at(fraWinsock).bottom(), rects.at(fraCallDetails).top);
  EXPECT_EQ(rects.at(fraWinsock).left, rects.at(fraCallDetails).left);
  EXPECT_EQ(rects.at(fraWinsock).width, rects.at(fraCallDetails).width);
}

TEST_F(LayoutTest, SpareWidthGoesToTheCallLog) {
  const auto least = Place({96, false, 0});
  const auto more = Place({96, false, 25});
  EXPECT_EQ(more.at(lstCallLog).width, least.at(lstCallLog).width + 25);
  EXPECT_EQ(more.at(lstCallLog).height, least.at(lstCallLog).height + 25);
  EXPECT_EQ(more.at(fraPresets).width, least.at(fraPresets).width);
  EXPECT_EQ(more.at(fraPresets).left, least.at(fraPresets).left + 25);
  EXPECT_EQ(more.at(txtTimeout).left, least.at(txtTimeout).left + 25);
  EXPECT_EQ(more.at(txtTimeout).top, least.at(txtTimeout).top);
}

TEST_F(LayoutTest, OptionsStandInTheOrderOfTheirPage) {
  const auto rects = Place({96, false, 0});
  EXPECT_LT(rects.at(optOffsets_3).top, rects.at(optOffsets_2).top);
  EXPECT_LT(rects.at(optOffsets_1).top, rects.at(optOffsets_0).top);
  EXPECT_LT(rects.at(optRecordMode_2).top, rects.at(optRecordMode_1).top);
  EXPECT_LT(rects.at(optRecordMode_1).top, rects.at(optRecordMode_0).top);
}

TEST(ToPixels, RoundsToNearestOnBothSidesOfZero) {
  EXPECT_EQ(ToPixels(15, 96), 1);
  EXPECT_EQ(ToPixels(12450, 96), 830);
  EXPECT_EQ(ToPixels(12450, 120), 1038);  // 1037.5
  EXPECT_EQ(ToPixels(7, 96), 0);
  EXPECT_EQ(ToPixels(8, 96), 1);
  EXPECT_EQ(ToPixels(-8, 96), -1);
  EXPECT_EQ(ToPixels(-7, 96), 0);
  EXPECT_EQ(ToPixels(2'000'000'000, 96), 133333333);
}

TEST(Fonts, AreAsHighAsTheirPointsAtTheResolution) {
  EXPECT_EQ(FontPixels(FontKind::kText, 96), 11);
  EXPECT_EQ(FontPixels(FontKind::kText, 144), 17);
  EXPECT_EQ(FontPixels(FontKind::kLog, 96), 11);
  EXPECT_EQ(FontPixels(FontKind::kLabel, 96), 13);
  EXPECT_EQ(FontPixels(FontKind::kGroup, 192), 37);
  for (const FontKind kind :
       {FontKind::kText, FontKind::kLog, FontKind::kLabel, FontKind::kGroup}) {
    for (const int dpi : kResolutions) EXPECT_STREQ(FontOf(kind, dpi).face, "Tahoma");
  }
}

TEST(Fonts, OfTheTabsIsItsOutlineFormWhereItsDotsDoNotFit) {
  EXPECT_STREQ(FontOf(FontKind::kTab, 96).face, "MS Sans Serif");
  for (const int dpi : {120, 144, 168, 192}) {
    EXPECT_STREQ(FontOf(FontKind::kTab, dpi).face, "Microsoft Sans Serif") << dpi;
  }
}

TEST(Fonts, OfGroupAndTalkerAreTheLargest) {
  sim::NoSink sink;
  Form1 form(sink);
  for (const ControlRow& row : MainWindowTable(form).controls) {
    const bool names = row.id == lblGSSI_label || row.id == lblSSI_label;
    const bool numbers = row.id == lblGroupNumber || row.id == lblCurrentSSI;
    const int expected = numbers ? 19 : names ? 13 : 11;
    EXPECT_EQ(FontPixels(row.font, 96), expected) << row.control.name();
  }
}

TEST(CallLogRows, AreTwentyOneAndAPartWhateverTheRoom) {
  for (int available = 300; available <= 900; ++available) {
    const RowFit fit = FitRows(kCallLogFullRows, available, 14);
    EXPECT_EQ(fit.client_height / fit.row_height, 21) << available;
    const int part = fit.client_height % fit.row_height;
    EXPECT_GE(part * 100, fit.row_height * 30) << available;
    EXPECT_LE(part * 100, fit.row_height * 70) << available;
    if (available >= 14 * 213 / 10 + 1) {
      EXPECT_LE(fit.client_height, available) << available;
    }
  }
}

TEST(CallLogRows, AreNeverLowerThanTheirText) {
  const RowFit fit = FitRows(kCallLogFullRows, 100, 14);
  EXPECT_EQ(fit.row_height, 14);
  EXPECT_EQ(fit.client_height, 21 * 14 + 5);
}

TEST(CallLogRows, WithoutRoomThreeTenthsOfTheLastOneAreSeen) {
  for (int font_height = 8; font_height <= 80; ++font_height) {
    const RowFit fit = FitRows(kCallLogFullRows, 100, font_height);
    ASSERT_EQ(fit.row_height, font_height);
    const int part = fit.client_height - kCallLogFullRows * font_height;
    EXPECT_GE(part * 100, font_height * 30) << font_height;
    EXPECT_LT((part - 1) * 100, font_height * 30) << font_height;
  }
}

TEST_F(LayoutTest, CallLogRowsFitTheLeastWindowAtEveryResolution) {
  // Heights of a line of Tahoma 8.25 and of a scroll bar with both borders.
  const std::map<int, std::pair<int, int>> measures = {
      {96, {13, 21}}, {120, {17, 25}}, {144, {21, 30}}, {168, {23, 34}}, {192, {27, 38}}};
  for (const auto& [dpi, measure] : measures) {
    const int available = Place({dpi, false, 0}).at(lstCallLog).height - measure.second;
    EXPECT_LE(FitRows(kCallLogFullRows, available, measure.first).client_height, available) << dpi;
  }
}

TEST(MoveIntoView, LeavesAReachableWindowAlone) {
  const PixelRect screens[] = {{0, 0, 1920, 1040}, {1920, 200, 1280, 984}};
  for (const PixelRect& window : {PixelRect{0, 0, 830, 408},
                                  {1500, 700, 830, 408},
                                  {-700, 10, 830, 408},
                                  {3100, 300, 830, 408},
                                  {100, 1010, 830, 408}}) {
    EXPECT_EQ(MoveIntoView(window, screens), window);
  }
}

TEST(MoveIntoView, BringsALostWindowWhollyOntoTheNearestScreen) {
  const PixelRect screens[] = {{0, 0, 1920, 1040}, {1920, 200, 1280, 984}};
  EXPECT_EQ(MoveIntoView({-5000, -5000, 830, 408}, screens), (PixelRect{0, 0, 830, 408}));
  EXPECT_EQ(MoveIntoView({9000, 9000, 830, 408}, screens), (PixelRect{2370, 776, 830, 408}));
  EXPECT_EQ(MoveIntoView({100, -30, 830, 408}, screens), (PixelRect{100, 0, 830, 408}));
  EXPECT_EQ(MoveIntoView({-800, 10, 830, 408}, screens), (PixelRect{0, 10, 830, 408}));
  EXPECT_EQ(MoveIntoView({2000, 50, 830, 408}, screens), (PixelRect{2000, 200, 830, 408}));
}

TEST(MoveIntoView, OfScreensAboveEachOtherTheNearerOneGetsTheWindow) {
  const PixelRect screens[] = {{0, 0, 1920, 1040}, {0, 1040, 1920, 1040}};
  EXPECT_EQ(MoveIntoView({-2000, 1096, 830, 408}, screens), (PixelRect{0, 1096, 830, 408}));
  EXPECT_EQ(MoveIntoView({-2000, 600, 830, 408}, screens), (PixelRect{0, 600, 830, 408}));
}

TEST(MoveIntoView, ShowsTheTitleOfAWindowLargerThanTheScreen) {
  const PixelRect screens[] = {{10, 20, 640, 300}};
  EXPECT_EQ(MoveIntoView({5000, 5000, 830, 408}, screens), (PixelRect{10, 20, 830, 408}));
}

TEST(MoveIntoView, BringsUpATitleThatIsAtTheVeryBottom) {
  const PixelRect screens[] = {{0, 0, 1920, 1040}};
  EXPECT_EQ(MoveIntoView({100, 1016, 830, 408}, screens), (PixelRect{100, 1016, 830, 408}));
  EXPECT_EQ(MoveIntoView({100, 1017, 830, 408}, screens), (PixelRect{100, 632, 830, 408}));
}

TEST(MenuRow, ShowsItsKeyBehindItsCaption) {
  sim::NoSink sink;
  Form1 form(sink);
  for (const MenuRow& row : MainWindowTable(form).menu) {
    const std::string& caption = row.item.caption;
    const std::string key = row.shortcut.text;
    EXPECT_EQ(row.Text(), key.empty() ? caption : caption + "\t" + key);
  }
  EXPECT_EQ((MenuRow{mnuEndCall, form.mnuEndCall, nullptr, {'E', true, "Ctrl+E"}}).Text(),
            form.mnuEndCall.caption.get() + "\tCtrl+E");
}

TEST(Lamp, IsLitInAnyColourButTheWindows) {
  sim::NoSink sink;
  Form1 form(sink);
  const Lamp lamp = MainWindowTable(form).lamps.at(0);
  EXPECT_FALSE(lamp.lit());
  form.ShapeWinsock_state.fill_colour = kGreen;
  EXPECT_TRUE(lamp.lit());
}

}  // namespace

}  // namespace corvane
