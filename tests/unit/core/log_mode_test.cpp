#include "core/call_follower.h"

#include <gmock/gmock.h>

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using LogModeTest = CoreTest;

TEST_F(LogModeTest, SwitchingOnLogsAnEmptyLineAndTheMessage) {
  follower.LogModeSwitched(true);
  EXPECT_THAT(CallLog(), ElementsAre("", " - LOG mode active - No calls will be heard"));
}

TEST_F(LogModeTest, SwitchingOffLogsTheMessage) {
  follower.LogModeSwitched(false);
  EXPECT_THAT(CallLog(), ElementsAre(" - LOG mode de-activated - Calls can now be heard"));
}

TEST_F(LogModeTest, AFollowedCallIsEndedByAReset) {
  FollowCall();
  form.chkCreateCallActivityCvsFile.value = 1;
  follower.LogModeSwitched(true);
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_EQ(form.lstCallLog.Item(2), kNow + " - Manual D-Release occured and UI reset");
  EXPECT_EQ(LastCallLine(), kNow + " - LOG mode active - No calls will be heard");
}

TEST_F(LogModeTest, BeyondTheVisibleRowsTheMessageIsScrolledIntoView) {
  for (int i = 0; i < 21; ++i) form.lstCallLog.Add("x");
  follower.LogModeSwitched(false);
  EXPECT_EQ(form.lstCallLog.list_index(), -1);
  follower.LogModeSwitched(false);
  EXPECT_EQ(form.lstCallLog.list_index(), 22);
  form.lstCallLog.ReportTopIndex(0);
  follower.LogModeSwitched(true);
  EXPECT_EQ(form.lstCallLog.list_index(), form.lstCallLog.count() - 1)
      << "also when the user has scrolled up";
}

TEST_F(LogModeTest, OnAndOffWithinASequenceComeInTheirOrderAfterIt) {
  int waits = 0;
  link.on_wait = [&] {
    if (++waits > 1) return;
    follower.LogModeSwitched(true);
    follower.LogModeSwitched(false);
    EXPECT_EQ(form.lstCallLog.count(), 0);
  };
  follower.ResetCallDisplay();
  EXPECT_THAT(CallLog(), ElementsAre(" - Manual D-Release occured and UI reset", "",
                                     " - LOG mode active - No calls will be heard",
                                     " - LOG mode de-activated - Calls can now be heard"));
}
}  // namespace
}  // namespace corvane
