#include "store/periodic_save.h"

#include <gtest/gtest.h>

#include "tests/unit/store/saving_run.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

class PeriodicSaveTest : public ::testing::Test {
 protected:
  void Ticks(int count) { run.loop.AdvanceMs(std::int64_t{kSaveTickMs} * count); }
  [[nodiscard]] std::string Now() const { return NowText(run.clock); }
  const Texts& Status() const { return run.form.lstStatusLog.items(); }

  sim::SimFiles files;
  SavingRun run{files};
};

TEST_F(PeriodicSaveTest, TheTenthTickSaves) {
  run.AddOneOfEach();
  for (int tick = 1; tick <= 9; ++tick) {
    Ticks(1);
    EXPECT_EQ(run.periodic.SaveTickCount, tick);
    EXPECT_TRUE(Status().empty());
    EXPECT_TRUE(files.List(kFolder).empty());
    EXPECT_TRUE(run.tmrSaveTimed->enabled());
  }
  Ticks(1);
  EXPECT_EQ(run.periodic.SaveTickCount, 0);
  EXPECT_EQ(files.List(kFolder).size(), 4U);
  EXPECT_TRUE(run.tmrSaveTimed->enabled());
  Ticks(9);
  EXPECT_EQ(Status().size(), 3U);
  Ticks(1);
  EXPECT_EQ(Status().size(), 6U);
}

TEST_F(PeriodicSaveTest, TheTimerIsDisabledWhileASaveIsUnderWay) {
  run.AddOneOfEach();
  int steps = 0;
  files.SetOnStep([&] {
    ++steps;
    EXPECT_FALSE(run.tmrSaveTimed->enabled());
  });
  Ticks(10);
  EXPECT_EQ(steps, 16) << "four files, each opened, written, flushed and moved";
  EXPECT_TRUE(run.tmrSaveTimed->enabled());
}

TEST_F(PeriodicSaveTest, AMinutePassesAfterATickThatCameLate) {
  run.loop.Sleep(kSaveTickMs + 5000);
  run.loop.DoEvents();
  EXPECT_EQ(run.periodic.SaveTickCount, 1);
  run.loop.AdvanceMs(kSaveTickMs - 1);
  EXPECT_EQ(run.periodic.SaveTickCount, 1);
  run.loop.AdvanceMs(1);
  EXPECT_EQ(run.periodic.SaveTickCount, 2);
}

TEST_F(PeriodicSaveTest, OneRecordOfEachIsReportedAsZero) {
  run.AddOneOfEach();
  Ticks(10);
  EXPECT_EQ(Status(), (Texts{"Saved SSI list (0) " + Now(), "Saved GSSI list (0) " + Now(),
                             "Saved GSSI with Call Activity (0) " + Now()}));
  EXPECT_EQ(run.form.lstStatusLog.list_index(), 2);
}

TEST_F(PeriodicSaveTest, TheWritersResultIsShownAsItIs) {
  run.AddOneOfEach();
  run.AddOneOfEach();
  run.AddOneOfEach();
  run.activity.CallActivityTable.Count(7);
  Ticks(10);
  EXPECT_EQ(Status(), (Texts{"Saved SSI list (2) " + Now(), "Saved GSSI list (2) " + Now(),
                             "Saved GSSI with Call Activity (1) " + Now()}));
}

TEST_F(PeriodicSaveTest, EmptyTablesAreReportedAndTheirFilesLeftAlone) {
  files.Put(kGroupPath, "kept");
  files.Put(kSubscriberPath, "kept");
  Ticks(10);
  EXPECT_EQ(Status(),
            (Texts{"No SSIs to save to SSI list " + Now(), "No GSSIs to save to GSSI list " + Now(),
                   "No Call Activity to save " + Now()}));
  EXPECT_EQ(files.Content(kGroupPath), "kept");
  EXPECT_EQ(files.Content(kSubscriberPath), "kept");
  EXPECT_TRUE(Has(files, kSettingsPath));
}

TEST_F(PeriodicSaveTest, AFullDiskIsReportedByEveryWriterAndTheNextSaveWorks) {
  run.AddOneOfEach();
  files.SetRoom(0);
  Ticks(10);
  EXPECT_EQ(Status(),
            (Texts{"Error saving SSI list. - " + Now(), "Error saving GSSI list. - " + Now(),
                   "Error saving Call Activity CVS. - " + Now(),
                   "Error saving settings [61] - " + Now()}));
  EXPECT_TRUE(files.List(kFolder).empty());
  EXPECT_TRUE(run.tmrSaveTimed->enabled());
  EXPECT_EQ(run.periodic.SaveTickCount, 0);
  files.SetRoom(std::nullopt);
  Ticks(10);
  EXPECT_EQ(files.List(kFolder).size(), 4U);
  EXPECT_EQ(Status().size(), 7U);
}

TEST_F(PeriodicSaveTest, OneFailureDoesNotStopTheOthers) {
  run.AddOneOfEach();
  files.SetLocked(kSubscriberPath, true);
  Ticks(10);
  EXPECT_EQ(Status()[0], "Error saving SSI list. - " + Now());
  EXPECT_EQ(Status()[1], "Saved GSSI list (0) " + Now());
  EXPECT_TRUE(Has(files, kGroupPath));
  EXPECT_TRUE(Has(files, kActivityPath));
  EXPECT_TRUE(Has(files, kSettingsPath));
}

TEST_F(PeriodicSaveTest, WhileShuttingDownATickLeavesTheTimerDisabledAndSavesNothing) {
  run.AddOneOfEach();
  Ticks(9);
  run.flags.mblnShuttingDown = true;
  Ticks(3);
  EXPECT_FALSE(run.tmrSaveTimed->enabled());
  EXPECT_TRUE(files.List(kFolder).empty());
  EXPECT_EQ(run.periodic.SaveTickCount, 9);
}

TEST_F(PeriodicSaveTest, CountsAreSavedAlthoughLogModeIsOff) {
  run.AddOneOfEach();
  run.form.chkCreateCallActivityCvsFile.value = 0;
  Ticks(10);
  EXPECT_TRUE(Has(files, kActivityPath));
}

}  // namespace
}  // namespace corvane
