#include "store/periodic_save.h"

#include <gtest/gtest.h>

#include "tests/unit/store/saving_run.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

class PeriodicSaveTest : public ::testing::Test {
 protected:
  void Ticks(int count) {
    for (int i = 0; i < count; ++i) run.periodic.OnTick();
  }
  const Texts& Status() const { return run.form.lstStatusLog.items(); }

  MemoryFiles files;
  SavingRun run{files};
};

TEST_F(PeriodicSaveTest, TheTenthTickSaves) {
  run.AddOneOfEach();
  for (int tick = 1; tick <= 9; ++tick) {
    Ticks(1);
    EXPECT_EQ(run.periodic.SaveTickCount, tick);
    EXPECT_TRUE(Status().empty());
    EXPECT_TRUE(files.content.empty());
    EXPECT_TRUE(run.tmrSaveTimed.enabled());
  }
  Ticks(1);
  EXPECT_EQ(run.periodic.SaveTickCount, 0);
  EXPECT_EQ(files.content.size(), 4U);
  EXPECT_TRUE(run.tmrSaveTimed.enabled());
  Ticks(9);
  EXPECT_EQ(Status().size(), 3U);
  Ticks(1);
  EXPECT_EQ(Status().size(), 6U);
}

TEST_F(PeriodicSaveTest, EachTickDisablesTheTimerFirst) {
  Ticks(1);
  EXPECT_EQ(run.tmrSaveTimed.switched, (std::vector<bool>{false, true}));
}

TEST_F(PeriodicSaveTest, OneRecordOfEachIsReportedAsZero) {
  run.AddOneOfEach();
  Ticks(10);
  EXPECT_EQ(Status(), (Texts{"Saved SSI list (0) " + kNow, "Saved GSSI list (0) " + kNow,
                             "Saved GSSI with Call Activity (0) " + kNow}));
  EXPECT_EQ(run.form.lstStatusLog.list_index(), 2);
}

TEST_F(PeriodicSaveTest, TheWritersResultIsShownAsItIs) {
  run.AddOneOfEach();
  run.AddOneOfEach();
  run.AddOneOfEach();
  run.activity.CallActivityTable.Count(7);
  Ticks(10);
  EXPECT_EQ(Status(), (Texts{"Saved SSI list (2) " + kNow, "Saved GSSI list (2) " + kNow,
                             "Saved GSSI with Call Activity (1) " + kNow}));
}

TEST_F(PeriodicSaveTest, EmptyTablesAreReportedAndTheirFilesLeftAlone) {
  files.content[kGroupPath] = "kept";
  files.content[kSubscriberPath] = "kept";
  Ticks(10);
  EXPECT_EQ(Status(),
            (Texts{"No SSIs to save to SSI list " + kNow, "No GSSIs to save to GSSI list " + kNow,
                   "No Call Activity to save " + kNow}));
  EXPECT_EQ(files.content[kGroupPath], "kept");
  EXPECT_EQ(files.content[kSubscriberPath], "kept");
  EXPECT_TRUE(files.content.contains(kSettingsPath));
}

TEST_F(PeriodicSaveTest, AFullDiskIsReportedByEveryWriterAndTheNextSaveWorks) {
  run.AddOneOfEach();
  files.room = 0;
  Ticks(10);
  EXPECT_EQ(
      Status(),
      (Texts{"Error saving SSI list. - " + kNow, "Error saving GSSI list. - " + kNow,
             "Error saving Call Activity CVS. - " + kNow, "Error saving settings [61] - " + kNow}));
  EXPECT_TRUE(files.content.empty());
  EXPECT_TRUE(run.tmrSaveTimed.enabled());
  EXPECT_EQ(run.periodic.SaveTickCount, 0);
  files.room.reset();
  Ticks(10);
  EXPECT_EQ(files.content.size(), 4U);
  EXPECT_EQ(Status().size(), 7U);
}

TEST_F(PeriodicSaveTest, OneFailureDoesNotStopTheOthers) {
  run.AddOneOfEach();
  files.locked[kSubscriberPath] = kPermissionDenied;
  Ticks(10);
  EXPECT_EQ(Status()[0], "Error saving SSI list. - " + kNow);
  EXPECT_EQ(Status()[1], "Saved GSSI list (0) " + kNow);
  EXPECT_TRUE(files.content.contains(kGroupPath));
  EXPECT_TRUE(files.content.contains(kActivityPath));
  EXPECT_TRUE(files.content.contains(kSettingsPath));
}

TEST_F(PeriodicSaveTest, WhileShuttingDownATickLeavesTheTimerDisabledAndSavesNothing) {
  run.AddOneOfEach();
  Ticks(9);
  run.flags.mblnShuttingDown = true;
  Ticks(3);
  EXPECT_FALSE(run.tmrSaveTimed.enabled());
  EXPECT_TRUE(files.content.empty());
  EXPECT_EQ(run.periodic.SaveTickCount, 9);
}

TEST_F(PeriodicSaveTest, CountsAreSavedAlthoughLogModeIsOff) {
  run.AddOneOfEach();
  run.form.chkCreateCallActivityCvsFile.value = 0;
  Ticks(10);
  EXPECT_TRUE(files.content.contains(kActivityPath));
}

}  // namespace
}  // namespace corvane
