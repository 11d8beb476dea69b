#include "store/call_activity.h"

#include <gtest/gtest.h>

#include "tests/unit/store/golden_files.h"
#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

class CallActivityTest : public ::testing::Test {
 protected:
  void SetUp() override { run.folders.CreateDayFolders(run.clock.Now()); }
  const Texts& Status() const { return run.form.lstStatusLog.items(); }
  static std::int32_t Calls(const CallActivity& activity, std::int32_t gssi) {
    for (const CallActivityRecord& record : activity.CallActivityTable) {
      if (record.Gssi == gssi) return record.Calls;
    }
    return 0;
  }

  sim::SimFiles files;
  StoreRun run{files};
  CallActivity& activity = run.activity;
};

TEST_F(CallActivityTest, AMissingFileLeavesEverythingButTheDay) {
  activity.LoadCallActivity();
  EXPECT_FALSE(activity.CallActivityLoaded);
  EXPECT_TRUE(activity.CallActivityTable.empty());
  EXPECT_EQ(activity.DayTag, "15-11-2026");
  EXPECT_TRUE(Status().empty());
}

TEST_F(CallActivityTest, TheFileIsReadAndReported) {
  files.Put(kActivityPath, "GSSI;Call Activity\r\n\r\n9;3\r\n9001;12\r\n");
  activity.LoadCallActivity();
  EXPECT_TRUE(activity.CallActivityLoaded);
  EXPECT_EQ(activity.CallActivityTable.size(), 2U);
  EXPECT_EQ(Calls(activity, 9001), 12);
  EXPECT_EQ(Status(), Texts{"Loaded call activity for 2 saved GSSIs"});
  EXPECT_EQ(run.form.lstStatusLog.list_index(), 0);
}

TEST_F(CallActivityTest, WhatIsLoadedIsNotLoadedAgain) {
  files.Put(kActivityPath, "GSSI;Call Activity\r\n9;3\r\n");
  activity.LoadCallActivity();
  activity.LoadCallActivity();
  EXPECT_EQ(Calls(activity, 9), 3);
  EXPECT_EQ(Status().size(), 1U);
}

TEST_F(CallActivityTest, SavingWritesGroupsInAscendingOrder) {
  activity.LoadCallActivity();
  for (const std::int32_t gssi : {70, 16777215, 9, 70}) activity.CallActivityTable.Count(gssi);
  EXPECT_EQ(activity.SaveCallActivity(), 2);
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n9;1\r\n70;2\r\n16777215;1\r\n");
}

TEST_F(CallActivityTest, LongerNumbersThanAnyGroupHasAreSortedByTheirFirstEightDigits) {
  activity.LoadCallActivity();
  for (const std::int32_t gssi : {1000000029, 1000000011}) activity.CallActivityTable.Count(gssi);
  EXPECT_EQ(activity.SaveCallActivity(), 1);
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n1000000029;1\r\n1000000011;1\r\n");
}

TEST_F(CallActivityTest, AnEmptyTableIsNotSaved) {
  files.Put(kActivityPath, "kept");
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_EQ(files.Content(kActivityPath), "kept");
}

TEST_F(CallActivityTest, TheGoldenFileIsReadAndWrittenToTheByte) {
  const std::string golden = GoldenFile("Call_Activity_15-11-2026.csv");
  files.Put(kActivityPath, golden);
  activity.LoadCallActivity();
  EXPECT_EQ(activity.SaveCallActivity(), 3);
  EXPECT_EQ(files.Content(kActivityPath), golden);
}

TEST_F(CallActivityTest, ASecondRunOfTheDayGoesOnCounting) {
  activity.LoadCallActivity();
  activity.CallActivityTable.Count(9, 5);
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  StoreRun second(files);
  second.folders.CreateDayFolders(second.clock.Now());
  second.activity.LoadCallActivity();
  second.activity.CallActivityTable.Count(9);
  EXPECT_EQ(second.activity.SaveCallActivity(), 0);
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n9;6\r\n");
}

TEST_F(CallActivityTest, ARunOnTheNextDayBeginsAnew) {
  activity.LoadCallActivity();
  activity.CallActivityTable.Count(9);
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  StoreRun next(files);
  next.clock.Set({2026, 11, 16, 0, 0, 1});
  next.folders.CreateDayFolders(next.clock.Now());
  next.activity.LoadCallActivity();
  EXPECT_FALSE(next.activity.CallActivityLoaded);
  next.activity.CallActivityTable.Count(9);
  EXPECT_EQ(next.activity.SaveCallActivity(), 0);
  EXPECT_EQ(files.Content(kFolder + "\\Daily\\20261116\\Call_Activity_16-11-2026.csv"),
            "GSSI;Call Activity\r\n9;1\r\n");
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n9;1\r\n");
}

TEST_F(CallActivityTest, PastMidnightTheFileOfTheFirstLoadIsWritten) {
  activity.LoadCallActivity();
  activity.CallActivityTable.Count(9);
  run.clock.Set({2026, 11, 16, 0, 0, 1});
  run.folders.CreateDayFolders(run.clock.Now());
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_EQ(activity.DayTag, "15-11-2026");
  EXPECT_TRUE(Has(files, kActivityPath));
  EXPECT_EQ(files.List(kFolder).size(), 1U);
}

TEST_F(CallActivityTest, TheFilesDateIsTheFoldersEvenWhenMidnightLiesBetween) {
  run.clock.Set({2026, 11, 16, 0, 0, 0});  // the folder was made a moment before
  activity.LoadCallActivity();
  activity.CallActivityTable.Count(9);
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_TRUE(Has(files, kActivityPath));
}

TEST_F(CallActivityTest, SavingAndLoadingWithinARunDoublesNothing) {
  activity.LoadCallActivity();
  activity.CallActivityTable.Count(9, 4);
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_TRUE(activity.CallActivityLoaded);
  activity.LoadCallActivity();
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n9;4\r\n");
}

TEST_F(CallActivityTest, CountsMadeBeforeTheLoadAreAddedToTheFiles) {
  activity.CallActivityTable.Count(9, 2);
  files.Put(kActivityPath, "GSSI;Call Activity\r\n9;3\r\n7;1\r\n");
  activity.LoadCallActivity();
  EXPECT_EQ(Calls(activity, 9), 5);
  EXPECT_EQ(activity.CallActivityTable.size(), 2U);
}

TEST_F(CallActivityTest, BadLinesAreSkippedReportedOnceAndKeptAside) {
  const std::string spoilt = "GSSI;Call Activity\r\n9;3\r\nx;4\r\n7\r\n8;9999999999\r\n70;1\r\n";
  files.Put(kActivityPath, spoilt);
  activity.LoadCallActivity();
  EXPECT_TRUE(activity.CallActivityLoaded);
  EXPECT_EQ(activity.CallActivityTable.size(), 2U);
  EXPECT_EQ(Status(), (Texts{"Error in line 3 of Call_Activity_15-11-2026.csv [13] - " + kNow,
                             "Loaded call activity for 2 saved GSSIs"}));
  EXPECT_EQ(files.Content(kActivityPath + ".bad"), spoilt);
  EXPECT_EQ(activity.SaveCallActivity(), 1);
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n9;3\r\n70;1\r\n");
}

TEST_F(CallActivityTest, AnOlderCopyOfABadFileIsKept) {
  files.Put(kActivityPath, "9\r\n");
  files.Put(kActivityPath + ".bad", "older");
  activity.LoadCallActivity();
  EXPECT_EQ(files.Content(kActivityPath + ".bad"), "older");
}

TEST_F(CallActivityTest, ACopyThatCannotBeMadeIsReported) {
  files.Put(kActivityPath, "9;1\r\n9\r\n");
  files.SetRoom(0);
  activity.LoadCallActivity();
  EXPECT_EQ(Status(), (Texts{"Error in line 2 of Call_Activity_15-11-2026.csv [9] - " + kNow,
                             "Error writing Call_Activity_15-11-2026.csv.bad [61] - " + kNow,
                             "Loaded call activity for 1 saved GSSIs"}));
}

TEST_F(CallActivityTest, WithoutACopyOfItABadFileIsNotWrittenOver) {
  const std::string spoilt = "GSSI;Call Activity\r\n9;1\r\nx\r\n";
  files.Put(kActivityPath, spoilt);
  files.FailPath(".bad", kPermissionDenied);
  activity.LoadCallActivity();
  EXPECT_EQ(Status().size(), 3U);
  activity.CallActivityTable.Count(9);
  EXPECT_EQ(activity.SaveCallActivity(), -1);
  EXPECT_EQ(activity.SaveCallActivity(), -1);
  EXPECT_EQ(files.Content(kActivityPath), spoilt);
  EXPECT_EQ(Status().size(), 3U) << "the caller reports it";
  files.FailPath(".bad", kFileOk);
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_EQ(files.Content(kActivityPath + ".bad"), spoilt);
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n9;2\r\n");
}

TEST_F(CallActivityTest, OnceThereIsACopyNoFurtherOneIsMade) {
  const std::string spoilt = "GSSI;Call Activity\r\n9;1\r\nx\r\n";
  files.Put(kActivityPath, spoilt);
  files.FailPath(".bad", kDiskFull);
  activity.LoadCallActivity();
  files.FailPath(".bad", kFileOk);
  files.Put(kActivityPath + ".bad", "made by hand");
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_EQ(files.Content(kActivityPath + ".bad"), "made by hand");
  files.Remove(kActivityPath + ".bad");
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_FALSE(Has(files, kActivityPath + ".bad")) << "the file has no bad line any more";
}

TEST_F(CallActivityTest, ABadFileThatIsGoneNeedsNoCopy) {
  files.Put(kActivityPath, "9;1\r\nx\r\n");
  files.FailPath(".bad", kDiskFull);
  activity.LoadCallActivity();
  files.Remove(kActivityPath);
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n9;1\r\n");
}

TEST_F(CallActivityTest, ABadFileThatCannotBeReadAgainIsNotWrittenOver) {
  files.Put(kActivityPath, "9;1\r\nx\r\n");
  files.FailPath(".bad", kDiskFull);
  activity.LoadCallActivity();
  files.FailPath(".bad", kFileOk);
  files.FailAtStep(files.steps() + 1, kPathAccess);  // the reading alone
  EXPECT_EQ(activity.SaveCallActivity(), -1);
  EXPECT_EQ(files.Content(kActivityPath), "9;1\r\nx\r\n");
}

TEST_F(CallActivityTest, AFileThatCannotBeReadIsReportedOnceAndNeverWrittenOver) {
  files.Put(kActivityPath, "GSSI;Call Activity\r\n9;3\r\n");
  files.SetLocked(kActivityPath, true);
  for (int i = 0; i < 3; ++i) activity.LoadCallActivity();
  EXPECT_EQ(Status(), Texts{"Error reading Call_Activity_15-11-2026.csv [70] - " + kNow});
  activity.CallActivityTable.Count(9);
  EXPECT_EQ(activity.SaveCallActivity(), -1);
  files.SetLocked(kActivityPath, false);
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n9;4\r\n");
}

TEST_F(CallActivityTest, CountsThatCouldNotBeReadYetAreNotWrittenOver) {
  const std::string counted = "GSSI;Call Activity\r\n9;3\r\n";
  files.Put(kActivityPath, counted);
  activity.CallActivityTable.Count(7);
  files.FailAtStep(files.steps() + 1, kPathAccess);  // the reading alone
  EXPECT_EQ(activity.SaveCallActivity(), -1);
  EXPECT_EQ(files.Content(kActivityPath), counted);
}

TEST_F(CallActivityTest, AFailedSaveGivesMinusOneAndLeavesTheOldFile) {
  files.Put(kActivityPath, "GSSI;Call Activity\r\n9;3\r\n");
  activity.LoadCallActivity();
  activity.CallActivityTable.Count(9);
  const Contents before = AllFiles(files);
  files.SetRoom(12);
  EXPECT_EQ(activity.SaveCallActivity(), -1);
  EXPECT_EQ(AllFiles(files), before);
  files.SetRoom(std::nullopt);
  EXPECT_EQ(activity.SaveCallActivity(), 0);
  EXPECT_EQ(files.Content(kActivityPath), "GSSI;Call Activity\r\n9;4\r\n");
}

TEST_F(CallActivityTest, WithoutAFolderOfTheDayNothingIsReadOrWritten) {
  DayFolders none(files, run.form, kFolder);
  CallActivity lost(files, run.clock, none, run.form);
  const int operations = files.steps();
  lost.LoadCallActivity();
  EXPECT_EQ(lost.DayTag, "");
  lost.CallActivityTable.Count(9);
  EXPECT_EQ(lost.SaveCallActivity(), -1);
  EXPECT_EQ(files.steps(), operations);
}

}  // namespace
}  // namespace corvane
