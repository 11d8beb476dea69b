#include "link/sdr_position.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

class SdrPositionTest : public LinkTest {
 protected:
  void SetUp() override {
    AddSdr();
    FillHandles();
  }
  std::string Caption() { return form.lblPositionSdrSharpCC.caption.get(); }
  void Ask(const std::string& position) {
    form.chkPositionSDRsharps.value = 1;
    form.lblPositionSdrSharpCC.caption = position;
  }
};

TEST_F(SdrPositionTest, FourIntegersMakeAPosition) {
  EXPECT_EQ(ParsePosition("1,2,300,400"), (ScreenRect{1, 2, 300, 400}));
  EXPECT_EQ(ParsePosition("-8,-8, 300 ,400"), (ScreenRect{-8, -8, 300, 400}));
  for (const char* text :
       {"", "1,2,3", "1,2,3,4,5", "1,2,3,x", "1,2,,4", "1;2;3;4", "1,2,3,99999999999"}) {
    EXPECT_EQ(ParsePosition(text), std::nullopt) << text;
  }
}

TEST_F(SdrPositionTest, TheDoubleClickTakesTheRectangleOfAWindowShownNormally) {
  windows.At(kSdr).placement.normal_position = {-4, 20, 810, 620};
  TakeSdrPosition(context);
  EXPECT_EQ(Caption(), "-4,20,810,620");
}

TEST_F(SdrPositionTest, AMinimisedOrMaximisedWindowDoesNotChangeTheStoredPosition) {
  form.lblPositionSdrSharpCC.caption = std::string("1,2,3,4");
  for (const std::uint32_t state : {2u, 3u, 6u}) {
    windows.At(kSdr).placement.show_state = state;
    TakeSdrPosition(context);
    EXPECT_EQ(Caption(), "1,2,3,4");
  }
  windows.Destroy(kSdr);
  TakeSdrPosition(context);
  context.handles.Clear();
  TakeSdrPosition(context);
  EXPECT_EQ(Caption(), "1,2,3,4");
}

TEST_F(SdrPositionTest, APositionIsApplied) {
  Ask("5,6,700,800");
  ApplySdrPosition(context);
  ASSERT_EQ(windows.placements.size(), 1u);
  EXPECT_EQ(windows.placements[0].first, kSdr);
  EXPECT_EQ(windows.placements[0].second.normal_position, (ScreenRect{5, 6, 700, 800}));
  EXPECT_EQ(windows.placements[0].second.show_state, kShowNormal);
}

TEST_F(SdrPositionTest, NothingIsAppliedUnaskedOrWithoutAPosition) {
  Ask("5,6,700,800");
  form.chkPositionSDRsharps.value = 0;
  ApplySdrPosition(context);
  form.chkPositionSDRsharps.value = 2;
  ApplySdrPosition(context);
  for (const char* text : {"", "5,6,700", "here"}) {
    Ask(text);
    ApplySdrPosition(context);
  }
  EXPECT_TRUE(windows.placements.empty());
}

TEST_F(SdrPositionTest, AWindowNotShownNormallyIsNotMoved) {
  Ask("5,6,700,800");
  for (const std::uint32_t state : {2u, 3u, 6u}) {
    windows.At(kSdr).placement.show_state = state;
    ApplySdrPosition(context);
  }
  windows.Destroy(kSdr);
  ApplySdrPosition(context);
  EXPECT_TRUE(windows.placements.empty());
}

}  // namespace
}  // namespace corvane::test
