// The faults that the simulated file system can be given.
#include "sim/sim_files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane::sim {
namespace {

const std::string kPath = "C:\\Corvane\\a.txt";

class SimFilesTest : public ::testing::Test {
 protected:
  SimFiles files_;
};

TEST_F(SimFilesTest, TheNthStepFailsAndTheOthersDoNot) {
  files_.Put(kPath, "old");
  files_.FailAtStep(2, kDiskFull);
  EXPECT_EQ(files_.WriteAll(kPath, "newer"), kDiskFull);  // open, write, flush
  EXPECT_EQ(files_.Content(kPath), "ne");
  EXPECT_EQ(files_.WriteAll(kPath, "newer"), kFileOk);
  EXPECT_EQ(files_.Content(kPath), "newer");
  EXPECT_EQ(files_.steps(), 5);
}

TEST_F(SimFilesTest, AFailedOpenLeavesTheFileAlone) {
  files_.Put(kPath, "old");
  files_.FailAtStep(1, kPathAccess);
  EXPECT_EQ(files_.WriteAll(kPath, "new"), kPathAccess);
  EXPECT_EQ(files_.Content(kPath), "old");
}

TEST_F(SimFilesTest, AFailedAppendTakesBackWhatItWrote) {
  files_.Put(kPath, "old");
  files_.FailAtStep(2, kDiskFull);
  EXPECT_EQ(files_.Append(kPath, "1234"), kDiskFull);
  EXPECT_EQ(files_.Content(kPath), "old");
}

TEST_F(SimFilesTest, KillingLeavesWhatWasWrittenByThen) {
  for (int step = 1; step <= 3; ++step) {
    files_.Restart();
    files_.Put(kPath, "old");
    files_.KillAtStep(step);
    EXPECT_THROW(static_cast<void>(files_.WriteAll(kPath, "1234")), ProgramKilled) << step;
    const std::vector<std::string> left = {"old", "12", "1234"};
    EXPECT_EQ(files_.Content(kPath), left[static_cast<std::size_t>(step - 1)]) << step;
  }
}

TEST_F(SimFilesTest, APowerCutLosesWhatWasNotFlushed) {
  for (int step = 1; step <= 4; ++step) {
    files_.Restart();
    files_.Put(kPath, "old");
    files_.CutPowerAtStep(step);
    const auto write_twice = [this] {
      static_cast<void>(files_.WriteAll(kPath, "1234"));  // open, write, flush
      static_cast<void>(files_.Append(kPath, "5678"));
    };
    EXPECT_THROW(write_twice(), PowerCut) << step;
    const std::vector<std::string> left = {"old", "", "", "1234"};
    EXPECT_EQ(files_.Content(kPath), left[static_cast<std::size_t>(step - 1)]) << step;
  }
}

TEST_F(SimFilesTest, WhatWasNotFlushedIsLostWhereItWasMovedTo) {
  files_.Put(kPath, "old");
  EXPECT_EQ(files_.Append(kPath + ".new", "new"), kFileOk);
  EXPECT_EQ(files_.MoveOver(kPath + ".new", kPath), kFileOk);
  EXPECT_EQ(files_.Content(kPath), "new");
  files_.CutPowerAtStep(files_.steps() + 1);
  EXPECT_THROW(static_cast<void>(files_.Delete(kPath)), PowerCut);
  EXPECT_EQ(files_.Content(kPath), "");
}

TEST_F(SimFilesTest, ReplacedContentOutlastsAPowerCut) {
  files_.Put(kPath, "old");
  EXPECT_EQ(ReplaceContent(files_, kPath, "new"), kFileOk);
  files_.CutPowerAtStep(files_.steps() + 1);
  EXPECT_THROW(static_cast<void>(files_.Delete(kPath)), PowerCut);
  EXPECT_EQ(files_.Content(kPath), "new");
}

TEST_F(SimFilesTest, QuestionsAreCounted) {
  EXPECT_FALSE(files_.Exists(kPath));
  EXPECT_FALSE(files_.IsDirectory(kPath));
  EXPECT_EQ(files_.questions(), 2);
  EXPECT_EQ(files_.steps(), 0);
  files_.ResetSteps();
  EXPECT_EQ(files_.questions(), 0);
}

TEST_F(SimFilesTest, AHookSeesEachStepBeforeItsEffect) {
  std::vector<std::string> seen;
  files_.SetOnStep([&] { seen.push_back(files_.Content(kPath).value_or("none")); });
  EXPECT_EQ(files_.WriteAll(kPath, "new"), kFileOk);
  EXPECT_EQ(files_.Delete(kPath), kFileOk);
  EXPECT_EQ(seen, (std::vector<std::string>{"none", "", "new", "new"}));
}

TEST_F(SimFilesTest, KillingAnAppendLeavesAHalf) {
  files_.Put(kPath, "old");
  files_.KillAtStep(2);
  EXPECT_THROW(static_cast<void>(files_.Append(kPath, "1234")), ProgramKilled);
  EXPECT_EQ(files_.Content(kPath), "old12");
}

TEST_F(SimFilesTest, ReplacingAFileNeverShowsAHalfWhereverItIsKilledOrFails) {
  int steps = 0;
  for (int step = 1; step <= 20; ++step) {
    for (const bool kill : {true, false}) {
      files_.Restart();
      files_.Put(kPath, "old content");
      if (kill) {
        files_.KillAtStep(step);
      } else {
        files_.FailAtStep(step, kDiskFull);
      }
      bool done = false;
      try {
        done = ReplaceContent(files_, kPath, "new") == kFileOk;
      } catch (const ProgramKilled&) {
      }
      steps = std::max(steps, files_.steps());
      EXPECT_EQ(files_.Content(kPath), done ? "new" : "old content") << step;
      if (!kill) {
        EXPECT_EQ(files_.Content(kPath + ".new"), std::nullopt) << step;
      }
      files_.Remove(kPath + ".new");
    }
  }
  EXPECT_GE(steps, 4);
}

TEST_F(SimFilesTest, AFileIsHeldAsLongAsTheTestSays) {
  bool held = true;
  files_.Put(kPath, "old");
  files_.HoldWhile("c:\\corvane\\A.TXT", [&held] { return held; });
  std::string content;
  EXPECT_EQ(files_.ReadAll(kPath, content), kPermissionDenied);
  EXPECT_EQ(files_.Delete(kPath), kPermissionDenied);
  EXPECT_EQ(files_.WriteAll(kPath + ".new", "new"), kFileOk);
  EXPECT_EQ(files_.MoveOver(kPath + ".new", kPath), kPermissionDenied);
  EXPECT_EQ(files_.MoveOver(kPath, kPath + ".new"), kPermissionDenied);
  held = false;
  EXPECT_EQ(files_.MoveOver(kPath + ".new", kPath), kFileOk);
}

TEST_F(SimFilesTest, AScannerHoldsWhatWasWrittenForItsTime) {
  std::int64_t now_ms = 0;
  std::string content;
  for (const bool lets_read : {true, false}) {
    files_.SetScanner([&now_ms] { return now_ms; }, 100, lets_read);
    EXPECT_EQ(files_.WriteAll(kPath, "x"), kFileOk);
    EXPECT_EQ(files_.ReadAll(kPath, content), lets_read ? kFileOk : kPermissionDenied);
    EXPECT_EQ(files_.Rename(kPath, kPath + "2"), kPermissionDenied);
    now_ms += 100;
    EXPECT_EQ(files_.Rename(kPath, kPath + "2"), kFileOk);
    EXPECT_EQ(files_.Delete(kPath + "2"), kPermissionDenied) << "a new name is a new file";
    now_ms += 100;
    EXPECT_EQ(files_.Delete(kPath + "2"), kFileOk);
  }
}

TEST_F(SimFilesTest, AMoveInTwoStepsCanLeaveTheNewNameWithoutAFile) {
  files_.SetMovesInTwoSteps(true);
  files_.Put(kPath, "old");
  files_.Put(kPath + ".new", "new");
  files_.CutPowerAtStep(2);
  EXPECT_THROW(static_cast<void>(files_.MoveOver(kPath + ".new", kPath)), PowerCut);
  EXPECT_FALSE(files_.Content(kPath));
  EXPECT_EQ(files_.Content(kPath + ".new"), "new");
  files_.Restart();
  EXPECT_EQ(files_.MoveOver(kPath + ".new", kPath), kFileOk);
  EXPECT_EQ(files_.Content(kPath), "new");
}

TEST_F(SimFilesTest, TheCodePageHasTheLettersOfWesternEurope) {
  EXPECT_EQ(files_.FromUtf8("f\xC3\xBCr \xE4\xB8\xAD \xF0\x9F\x94\xA5!"), "f\xFCr ? ?!");
  EXPECT_EQ(files_.FromUtf8("cut \xC3"), "cut ?");
}

TEST_F(SimFilesTest, TheDiskRunsFull) {
  files_.SetRoom(6);
  EXPECT_EQ(files_.WriteAll(kPath, "1234"), kFileOk);
  EXPECT_EQ(files_.Append(kPath, "5678"), kDiskFull);
  EXPECT_EQ(files_.Content(kPath), "1234");
  files_.SetRoom(std::nullopt);
  EXPECT_EQ(files_.Append(kPath, "5678"), kFileOk);
}

TEST_F(SimFilesTest, EveryStepOnAPathCanFail) {
  files_.FailPath("daily\\", kPermissionDenied);
  files_.PutDirectory("C:\\Corvane\\Daily");
  EXPECT_EQ(files_.WriteAll("C:\\Corvane\\Daily\\x.log", "x"), kPermissionDenied);
  EXPECT_EQ(files_.WriteAll(kPath, "x"), kFileOk);
  files_.FailPath("daily\\", kFileOk);
  EXPECT_EQ(files_.WriteAll("C:\\Corvane\\Daily\\x.log", "x"), kFileOk);
}

TEST_F(SimFilesTest, CallsAfterTheEndAreCounted) {
  static_cast<void>(files_.Exists(kPath));
  files_.NoteProgramEnd();
  EXPECT_EQ(files_.operations_after_end(), 0);
  static_cast<void>(files_.Exists(kPath));
  static_cast<void>(files_.WriteAll(kPath, "x"));
  EXPECT_EQ(files_.operations_after_end(), 2);
}

TEST_F(SimFilesTest, ListsWhatIsThere) {
  files_.Put("C:\\Corvane\\b.txt", "");
  files_.Put("C:\\Corvane\\Daily\\20261115\\a.csv", "");
  EXPECT_EQ(files_.List("C:\\Corvane"),
            (std::vector<std::string>{"Daily\\20261115\\a.csv", "b.txt"}));
}

TEST_F(SimFilesTest, NothingLeavesTheTemporaryFolder) {
  for (const std::string path : {"C:\\..\\..\\..\\tmp\\x", "..\\x", "C:\\Corvane\\..\\..\\x"}) {
    EXPECT_NE(files_.WriteAll(path, "x"), kFileOk) << path;
  }
}

TEST_F(SimFilesTest, TwoFileSystemsShareNothing) {
  SimFiles other;
  files_.Put(kPath, "x");
  EXPECT_FALSE(other.Exists(kPath));
}

}  // namespace
}  // namespace corvane::sim
