#include "core/log_mode.h"

#include <gmock/gmock.h>

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using LogModeTest = CoreTest;

TEST_F(LogModeTest, SwitchingOnLogsAnEmptyLineAndTheMessage) {
  log_mode.Switched(true);
  EXPECT_THAT(CallLog(), ElementsAre("", " - LOG mode active - No calls will be heard"));
}

TEST_F(LogModeTest, SwitchingOffLogsTheMessage) {
  log_mode.Switched(false);
  EXPECT_THAT(CallLog(), ElementsAre(" - LOG mode de-activated - Calls can now be heard"));
}

TEST_F(LogModeTest, AFollowedCallIsEndedByAReset) {
  FollowCall();
  form.chkCreateCallActivityCvsFile.value = 1;
  log_mode.Switched(true);
  EXPECT_FALSE(flags.FollowingCall);
  EXPECT_EQ(form.lstCallLog.Item(2), kNow + " - Manual D-Release occured and UI reset");
  EXPECT_EQ(LastCallLine(), kNow + " - LOG mode active - No calls will be heard");
}

TEST_F(LogModeTest, BeyondTheVisibleRowsTheMessageIsScrolledIntoView) {
  for (int i = 0; i < 21; ++i) form.lstCallLog.Add("x");
  log_mode.Switched(false);
  EXPECT_EQ(form.lstCallLog.list_index(), -1);
  log_mode.Switched(false);
  EXPECT_EQ(form.lstCallLog.list_index(), 22);
  form.lstCallLog.ReportTopIndex(0);
  log_mode.Switched(true);
  EXPECT_EQ(form.lstCallLog.list_index(), form.lstCallLog.count() - 1)
      << "also when the user has scrolled up";
}

TEST_F(LogModeTest, OnAndOffWithinASequenceComeInTheirOrderAfterIt) {
  sequence.Run([&] {
    log_mode.Switched(true);
    log_mode.Switched(false);
    EXPECT_EQ(form.lstCallLog.count(), 0);
  });
  EXPECT_THAT(CallLog(), ElementsAre("", " - LOG mode active - No calls will be heard",
                                     " - LOG mode de-activated - Calls can now be heard"));
}

}  // namespace
}  // namespace corvane
