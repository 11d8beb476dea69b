#include "store/day_folders.h"

#include <gtest/gtest.h>

#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

class DayFoldersTest : public ::testing::Test {
 protected:
  const Texts& Status() const { return run.form.lstStatusLog.items(); }

  sim::SimFiles files;
  StoreRun run{files};
  DayFolders& folders = run.folders;
};

TEST_F(DayFoldersTest, ThereIsNoFolderOfTheDayAtFirst) {
  EXPECT_EQ(folders.DayFolder(), "");
  EXPECT_EQ(folders.program_folder(), kFolder);
}

TEST_F(DayFoldersTest, MakesWhatIsMissingOnce) {
  folders.CreateDayFolders({2026, 11, 15, 14, 23, 5});
  EXPECT_EQ(folders.DayFolder(), kDayPath);
  EXPECT_TRUE(files.IsDirectory(kDayPath + "\\Record"));
  EXPECT_EQ(files.steps(), 3);
  files.ResetSteps();
  folders.CreateDayFolders({2026, 11, 15, 23, 59, 59});
  EXPECT_EQ(files.steps(), 0);
  EXPECT_TRUE(Status().empty());
}

TEST_F(DayFoldersTest, OneQuestionIsEnoughWhenAllIsThere) {
  folders.CreateDayFolders(run.clock.Now());
  files.ResetSteps();
  folders.CreateDayFolders(run.clock.Now());
  EXPECT_EQ(files.questions(), 1);
}

TEST_F(DayFoldersTest, NoFolderIsAskedForTwiceInOneCall) {
  folders.CreateDayFolders(run.clock.Now());
  EXPECT_EQ(files.questions(), 3) << "nothing was there";
  files.ResetSteps();
  files.FailPath("20261116", kPermissionDenied);
  folders.CreateDayFolders({2026, 11, 16, 0, 0, 0});
  EXPECT_EQ(files.questions(), 3) << "the new day's cannot be made";
}

TEST_F(DayFoldersTest, WhatIsDeletedWhileTheProgramRunsIsMadeAgain) {
  for (const std::string& gone : {kDayPath + "\\Record", kDayPath, kFolder + "\\Daily"}) {
    folders.CreateDayFolders(run.clock.Now());
    files.Remove(gone);
    folders.CreateDayFolders(run.clock.Now());
    EXPECT_TRUE(files.IsDirectory(kDayPath + "\\Record")) << gone;
  }
  EXPECT_TRUE(Status().empty());
}

TEST_F(DayFoldersTest, TheFolderFollowsTheDate) {
  struct Case {
    DateTime now;
    const char* folder;
  };
  const Case cases[] = {
      {{2026, 11, 15, 23, 59, 59}, "20261115"}, {{2026, 11, 16, 0, 0, 0}, "20261116"},
      {{2026, 11, 30, 23, 59, 59}, "20261130"}, {{2026, 12, 1, 0, 0, 0}, "20261201"},
      {{2026, 12, 31, 23, 59, 59}, "20261231"}, {{2027, 1, 1, 0, 0, 0}, "20270101"},
      {{2028, 2, 28, 23, 59, 59}, "20280228"},  {{2028, 2, 29, 0, 0, 0}, "20280229"},
      {{2028, 3, 1, 0, 0, 0}, "20280301"},      {{2027, 3, 1, 0, 0, 0}, "20270301"},
      {{2026, 11, 15, 23, 0, 0}, "20261115"}};  // the clock was set back
  for (const Case& c : cases) {
    folders.CreateDayFolders(c.now);
    const std::string folder = kFolder + "\\Daily\\" + c.folder;
    EXPECT_EQ(folders.DayFolder(), folder);
    EXPECT_EQ(folders.FolderOf(c.now), folder);
    EXPECT_TRUE(files.IsDirectory(folder + "\\Record"));
  }
  EXPECT_TRUE(Status().empty());
}

TEST_F(DayFoldersTest, AFileInPlaceOfAFolderIsReportedOnceAndTheFolderIsNamedAllTheSame) {
  files.Put(kFolder + "\\Daily", "a file");
  for (int i = 0; i < 3; ++i) folders.CreateDayFolders({2026, 11, 15, 14, 23, 5});
  EXPECT_EQ(Status(), Texts{"Error creating folder C:\\Corvane\\Daily [75]"});
  EXPECT_EQ(folders.DayFolder(), kDayPath);
}

TEST_F(DayFoldersTest, AnotherFailureIsReportedToo) {
  const std::string path = kFolder + "\\Daily";
  files.FailPath(path, kPermissionDenied);
  folders.CreateDayFolders(run.clock.Now());
  files.FailPath(path, kPathNotFound);
  folders.CreateDayFolders(run.clock.Now());
  folders.CreateDayFolders(run.clock.Now());
  EXPECT_EQ(Status(), (Texts{"Error creating folder C:\\Corvane\\Daily [70]",
                             "Error creating folder C:\\Corvane\\Daily [76]"}));
}

TEST_F(DayFoldersTest, AFailureThatComesBackIsReportedAgain) {
  files.SetLocked(kDayPath + "\\Record", true);
  folders.CreateDayFolders(run.clock.Now());
  EXPECT_EQ(Status(), Texts{"Error creating folder C:\\Corvane\\Daily\\20261115\\Record [70]"});
  files.SetLocked(kDayPath + "\\Record", false);
  folders.CreateDayFolders(run.clock.Now());
  EXPECT_TRUE(files.IsDirectory(kDayPath + "\\Record"));
  files.Remove(kDayPath + "\\Record");
  files.SetLocked(kDayPath + "\\Record", true);
  folders.CreateDayFolders(run.clock.Now());
  EXPECT_EQ(Status().size(), 2U);
}

}  // namespace
}  // namespace corvane
