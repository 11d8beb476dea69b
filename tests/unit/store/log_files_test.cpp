#include "store/log_files.h"

#include <gtest/gtest.h>

#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

class LogFilesTest : public ::testing::Test {
 protected:
  const Texts& Status() const { return run.form.lstStatusLog.items(); }

  sim::SimFiles files;
  StoreRun run{files};
  LogFiles logs{files, run.clock, run.form};
  const std::string cc_log = kFolder + "\\TETRA_cc.log";
  const std::string event_log = kFolder + "\\TETRA_event.log";
};

TEST_F(LogFilesTest, LinesAreAppended) {
  EXPECT_TRUE(logs.Append(LogKind::kCcLog, cc_log, "one\r\n"));
  EXPECT_TRUE(logs.Append(LogKind::kCcLog, cc_log, "two\r\n"));
  EXPECT_EQ(files.Content(cc_log), "one\r\ntwo\r\n");
  EXPECT_TRUE(Status().empty());
}

TEST_F(LogFilesTest, WithoutAFolderNothingIsWrittenOrReported) {
  EXPECT_FALSE(logs.Append(LogKind::kCcLog, "\\TETRA_cc.log", "one\r\n"));
  EXPECT_FALSE(logs.Append(LogKind::kCcLog, "TETRA_cc.log", "one\r\n"));
  EXPECT_FALSE(logs.Append(LogKind::kCcLog, "", "one\r\n"));
  EXPECT_TRUE(files.List(kFolder).empty());
  EXPECT_EQ(files.steps(), 0);
  EXPECT_TRUE(Status().empty());
}

TEST_F(LogFilesTest, AFullDiskIsReportedOncePerKindUntilItWorksAgain) {
  EXPECT_TRUE(logs.Append(LogKind::kCcLog, cc_log, "one\r\n"));
  files.SetRoom(2);
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(logs.Append(LogKind::kCcLog, cc_log, "lost\r\n"));
    EXPECT_FALSE(logs.Append(LogKind::kEventLog, event_log, "lost\r\n"));
  }
  EXPECT_EQ(Status(), (Texts{"Error writing TETRA_cc.log [61] - " + kNow,
                             "Error writing TETRA_event.log [61] - " + kNow}));
  EXPECT_EQ(files.Content(cc_log), "one\r\n") << "no half line";
  files.SetRoom(std::nullopt);
  EXPECT_TRUE(logs.Append(LogKind::kCcLog, cc_log, "two\r\n"));
  EXPECT_EQ(files.Content(cc_log), "one\r\ntwo\r\n");
  files.SetRoom(0);
  EXPECT_FALSE(logs.Append(LogKind::kCcLog, cc_log, "lost\r\n"));
  EXPECT_FALSE(logs.Append(LogKind::kEventLog, event_log, "lost\r\n"));
  EXPECT_EQ(Status().size(), 3U) << "the event log never worked in between";
}

TEST_F(LogFilesTest, WhatTheCallerReportsGivesNoLineAndLeavesTheKindsNextReport) {
  files.SetRoom(0);
  EXPECT_FALSE(logs.AppendUnreported(LogKind::kDailyCalls, cc_log, "lost\r\n"));
  EXPECT_FALSE(logs.AppendUnreported(LogKind::kDailyCalls, "\\TETRA_cc.log", "lost\r\n"));
  EXPECT_TRUE(Status().empty());
  EXPECT_FALSE(logs.Append(LogKind::kDailyCalls, cc_log, "lost\r\n"));
  EXPECT_EQ(Status().size(), 1U);
  files.SetRoom(std::nullopt);
  EXPECT_TRUE(logs.AppendUnreported(LogKind::kDailyCalls, cc_log, "one\r\n"));
  EXPECT_EQ(files.Content(cc_log), "one\r\n");
  files.SetRoom(0);
  EXPECT_FALSE(logs.Append(LogKind::kDailyCalls, cc_log, "lost\r\n"));
  EXPECT_EQ(Status().size(), 2U) << "it had worked again";
}

TEST_F(LogFilesTest, ALockedFileIsReportedWithItsNumber) {
  files.SetLocked(cc_log, true);
  EXPECT_FALSE(logs.Append(LogKind::kCcLog, cc_log, "x\r\n"));
  EXPECT_EQ(Status(), Texts{"Error writing TETRA_cc.log [70] - " + kNow});
}

}  // namespace
}  // namespace corvane
