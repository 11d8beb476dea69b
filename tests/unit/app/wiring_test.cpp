// What only the assembled program shows: that each control and each timer reaches its own part.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/date_time.h"
#include "scenarios/world.h"

namespace corvane::sim {
namespace {

using ::testing::HasSubstr;

class WiringTest : public ::testing::Test {
 protected:
  void SetUp() override { world_.BringUp(); }

  World world_{{.scenario = "base 800000000\n"}};
};

TEST_F(WiringTest, EachCalibrationButtonTakesItsOwnReference) {
  Form1& form = world_.form();
  const std::string ticked = form.lblCheckedValue.caption;
  const std::string unticked = form.lblUnCheckedValue.caption;
  ASSERT_NE(ticked, unticked);
  world_.user().Click(form.cmdSettingTab[4]);
  world_.Run(600);
  EXPECT_EQ(form.lblTetraPanelExpanded.caption, "'Demodulator and Auto' are Visible");
  EXPECT_EQ(form.lblValidateState.caption, "Demodulator is Checked?");

  world_.user().Click(form.cmdSetUnCheckedValue);
  EXPECT_EQ(form.lblUnCheckedValue.caption, ticked) << "the box is ticked while it is sampled";
  EXPECT_EQ(form.lblCheckedValue.caption, ticked);
  world_.Do("press \"Demodulator\"");
  world_.user().Click(form.cmdSetCheckedValue);
  EXPECT_EQ(form.lblCheckedValue.caption, unticked);
  EXPECT_EQ(form.lblUnCheckedValue.caption, ticked);
  EXPECT_EQ(std::to_string(world_.view().presets.CheckedColour), unticked);
  EXPECT_EQ(std::to_string(world_.view().presets.UnCheckedColour), ticked);
}

TEST_F(WiringTest, TheCheckboxTimerRunsWithItsPageAlone) {
  Form1& form = world_.form();
  EXPECT_FALSE(world_.view().tmrDetectcheckbox.enabled());
  world_.user().Click(form.cmdSettingTab[4]);
  EXPECT_TRUE(world_.view().tmrDetectcheckbox.enabled());
  world_.Do("press \"Demodulator\"");
  world_.Run(600);
  EXPECT_EQ(form.lblValidateState.caption, "Demodulator is UnChecked?");
  world_.user().Click(form.cmdSettingTab[0]);
  world_.Do("press \"Demodulator\"");
  world_.Run(600);
  EXPECT_EQ(form.lblValidateState.caption, "Demodulator is UnChecked?") << "nobody looks any more";
}

TEST_F(WiringTest, TheDoubleClickTakesSdrSharpsPlace) {
  Label& position = world_.form().lblPositionSdrSharpCC;
  EXPECT_EQ(position.caption, "");
  world_.user().DoubleClick(position);
  WindowOps& windows = world_.desktop->windows();
  Placement placement;
  windows.EnumTopLevel([&](WindowHandle window) {
    return !windows.Text(window).value.starts_with("SDR# v") ||
           !windows.GetPlacement(window, placement);
  });
  ASSERT_EQ(placement.show_state, kShowNormal);
  const ScreenRect& place = placement.normal_position;
  EXPECT_EQ(position.caption, std::to_string(place.left) + "," + std::to_string(place.top) + "," +
                                  std::to_string(place.right) + "," + std::to_string(place.bottom));
}

TEST_F(WiringTest, TheWatchdogCountsTheFollowedCallsSilence) {
  world_.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=60");
  ASSERT_TRUE(world_.RunUntil([this] { return world_.Following(); }, 2000));
  world_.Do("pause id=7");
  world_.Run(650);
  const int ticks = world_.view().call.CallTimeoutTicks;
  world_.Run(900);
  EXPECT_EQ(world_.view().call.CallTimeoutTicks, ticks - 3);
}

TEST_F(WiringTest, ADroppedGroupIsLeftAloneForSixteenSeconds) {
  world_.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=60");
  ASSERT_TRUE(world_.RunUntil([this] { return world_.Following(); }, 2000));
  world_.user().Click(world_.form().lblManualD_Release);
  EXPECT_TRUE(world_.view().locks.IsDropped(9001));
  world_.Run(14900);
  EXPECT_TRUE(world_.view().locks.IsDropped(9001));
  world_.Run(1200);
  EXPECT_FALSE(world_.view().locks.IsDropped(9001));
}

TEST_F(WiringTest, TheHoldTakesTheGroupOnScreenAlsoACountedOne) {
  world_.user().Click(world_.form().chkCreateCallActivityCvsFile);
  world_.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=2");
  world_.Run(500);
  EXPECT_FALSE(world_.Following());
  world_.user().MouseUp(world_.form().lblGroupHold, kLeftButton, -1);
  EXPECT_EQ(world_.view().locks.held(), 9001);
  EXPECT_EQ(world_.form().lblGroupHold.tag, " 9001");
  world_.user().KeyUp(world_.form().lstCallLog, kSpaceBarCode);
  EXPECT_FALSE(world_.view().locks.held());
}

// Month, day, year and a twelve-hour clock, as some regions write them.
std::string AmericanDate(const DateTime& time) {
  const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
  const auto two = [](int number) { return (number < 10 ? "0" : "") + std::to_string(number); };
  return std::to_string(time.month) + "/" + std::to_string(time.day) + "/" +
         std::to_string(time.year) + " " + std::to_string(hour) + ":" + two(time.minute) + ":" +
         two(time.second) + (time.hour < 12 ? " AM" : " PM");
}

TEST_F(WiringTest, DatesAreWrittenAsTheRegionHasThem) {
  world_.clock.SetFormat(AmericanDate, [](std::string_view) { return std::nullopt; });
  world_.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=2");
  world_.Run(5000);
  EXPECT_EQ(world_.CountCallLog("11/15/2026 2:23:") > 0, true);
  EXPECT_EQ(world_.CountCallLog("2026-11-15"), 0);
  world_.user().CloseRequested();
  EXPECT_THAT(world_.FileText("\\TETRA_SSI.txt"), HasSubstr(";11/15/2026 2:23:"));
}

TEST_F(WiringTest, AnExceptionOutOfAHandlerIsToldOf) {
  world_.app->ReportException("no such page");
  EXPECT_EQ(world_.CountStatusLog("Internal error: no such page - 15/11/2026 "), 1);
}

TEST_F(WiringTest, RecordOnlyGroupsAreAddedAndRemoved) {
  Form1& form = world_.form();
  world_.user().Click(form.optRecordMode[2]);
  world_.user().TextEdited(form.txtRecOnlyGSSI, "9001");
  EXPECT_FALSE(world_.user().KeyPress(form.txtRecOnlyGSSI, kEnterCode));
  EXPECT_EQ(form.lstRecOnlyGSSI.items(), std::vector<std::string>{"9001"});
  world_.user().ListSelected(form.lstRecOnlyGSSI, 0, true);
  world_.user().KeyUp(form.lstRecOnlyGSSI, kDeleteCode);
  EXPECT_EQ(form.lstRecOnlyGSSI.count(), 0);
}

}  // namespace
}  // namespace corvane::sim
