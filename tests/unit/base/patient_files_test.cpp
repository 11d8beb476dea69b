#include "base/patient_files.h"

#include <gtest/gtest.h>

#include <string>

#include "sim/sim_files.h"
#include "sim/sim_loop.h"

namespace corvane {
namespace {

const std::string kPath = "C:\\Corvane\\a.txt";
const std::string kOther = "C:\\Corvane\\b.txt";

class PatientFilesTest : public ::testing::Test {
 protected:
  // From now on for `ms` nobody else gets at the file.
  void HoldFor(const std::string& path, int ms) {
    const std::int64_t until_ms = loop_.TickMs() + ms;
    disk_.HoldWhile(path, [this, until_ms] { return loop_.TickMs() < until_ms; });
  }
  void HoldForEver(const std::string& path) {
    disk_.HoldWhile(path, [] { return true; });
  }
  // How long `operation` takes and what it gives.
  template <typename Operation>
  std::pair<FileError, std::int64_t> Timed(const Operation& operation) {
    const std::int64_t begin_ms = loop_.TickMs();
    const FileError error = operation();
    return {error, loop_.TickMs() - begin_ms};
  }
  static constexpr std::int64_t kPatience_ms = PatientFiles::kPatience_ms;

  sim::SimLoop loop_;
  sim::SimFiles disk_;
  PatientFiles files_{disk_, loop_};
  std::string content_;
};

TEST_F(PatientFilesTest, EveryOperationOutlastsAMomentInWhichTheFileIsHeld) {
  const auto expect_done = [this](const char* what, const auto& operation) {
    SCOPED_TRACE(what);
    disk_.Remove(kOther);
    disk_.Put(kPath, "0123456789");
    HoldFor(kPath, 150);
    const auto [error, took_ms] = Timed(operation);
    EXPECT_EQ(error, kFileOk);
    EXPECT_GE(took_ms, 150);
    EXPECT_LE(took_ms, kPatience_ms);
  };
  expect_done("read", [&] { return files_.ReadAll(kPath, content_); });
  EXPECT_EQ(content_, "0123456789");
  expect_done("read a part", [&] { return files_.ReadPart(kPath, 3, 4, content_); });
  EXPECT_EQ(content_, "3456");
  expect_done("write", [&] { return files_.WriteAll(kPath, "new"); });
  EXPECT_EQ(disk_.Content(kPath), "new");
  expect_done("append", [&] { return files_.Append(kPath, "+"); });
  EXPECT_EQ(disk_.Content(kPath), "0123456789+") << "once";
  expect_done("patch", [&] { return files_.Patch(kPath, 1, "x"); });
  expect_done("rename", [&] { return files_.Rename(kPath, kOther); });
  EXPECT_EQ(disk_.Content(kOther), "0123456789");
  expect_done("move over", [&] {
    disk_.Put(kOther, "new");
    return files_.MoveOver(kOther, kPath);
  });
  EXPECT_EQ(disk_.Content(kPath), "new");
  expect_done("move from", [&] { return files_.MoveOver(kPath, kOther); });
  expect_done("delete", [&] { return files_.Delete(kPath); });
}

TEST_F(PatientFilesTest, WhatIsHeldLongerIsReportedAfterTheLimit) {
  disk_.Put(kPath, "old");
  HoldForEver(kPath);
  const auto [error, took_ms] = Timed([&] { return files_.WriteAll(kPath, "new"); });
  EXPECT_EQ(error, kPermissionDenied);
  EXPECT_GE(took_ms, kPatience_ms);
  EXPECT_LT(took_ms, kPatience_ms + 50);
  EXPECT_EQ(disk_.Content(kPath), "old");
}

TEST_F(PatientFilesTest, AFileThatIsKeptOpenDelaysNothingAfterTheFirstTime) {
  disk_.Put(kPath, "");
  HoldForEver(kPath);
  static_cast<void>(files_.Append(kPath, "1"));
  const auto at_once = Timed([&] { return files_.Append(kPath, "2"); });
  EXPECT_EQ(at_once, std::pair(kPermissionDenied, std::int64_t{0}));
  HoldFor(kOther, 100);
  EXPECT_EQ(Timed([&] { return files_.Append(kOther, "x"); }).first, kFileOk) << "other files";

  loop_.Sleep(PatientFiles::kDistrust_ms);
  HoldFor(kPath, 100);
  EXPECT_EQ(files_.Append(kPath, "3"), kFileOk) << "patient again after a while";
}

TEST_F(PatientFilesTest, ASuccessBringsThePatienceBack) {
  disk_.Put(kPath, "");
  HoldForEver(kPath);
  static_cast<void>(files_.Append(kPath, "1"));
  HoldFor(kPath, 0);
  EXPECT_EQ(files_.Append(kPath, "2"), kFileOk);
  HoldFor(kPath, 100);
  EXPECT_EQ(files_.Append(kPath, "3"), kFileOk);
  EXPECT_EQ(disk_.Content(kPath), "23");
}

TEST_F(PatientFilesTest, OtherFailuresAndReadOnlyFilesAreNotWaitedFor) {
  disk_.Put(kPath, "kept");
  disk_.SetReadOnly(kPath, true);
  EXPECT_EQ(Timed([&] { return files_.WriteAll(kPath, "x"); }),
            std::pair(kPermissionDenied, std::int64_t{0}));
  disk_.Put(kOther, "x");
  EXPECT_EQ(Timed([&] { return files_.MoveOver(kOther, kPath); }),
            std::pair(kPermissionDenied, std::int64_t{0}));
  EXPECT_EQ(Timed([&] { return files_.Delete("C:\\Corvane\\missing"); }),
            std::pair(kFileNotFound, std::int64_t{0}));
  disk_.SetRoom(0);
  EXPECT_EQ(Timed([&] { return files_.WriteAll(kOther, "x"); }),
            std::pair(kDiskFull, std::int64_t{0}));
}

TEST_F(PatientFilesTest, NothingIsDispatchedMeanwhile) {
  int ticks = 0;
  const auto timer = loop_.MakeTimer(10, [&ticks] { ++ticks; });
  timer->SetEnabled(true);
  disk_.Put(kPath, "");
  HoldFor(kPath, 150);
  EXPECT_EQ(files_.Append(kPath, "x"), kFileOk);
  EXPECT_EQ(ticks, 0);
}

TEST_F(PatientFilesTest, AScannerAfterEveryWriteKeepsNoFileFromBeingReplaced) {
  for (const bool lets_read : {true, false}) {
    disk_.SetScanner([this] { return loop_.TickMs(); }, 150, lets_read);
    for (const std::string text : {"one", "two", "three"}) {
      EXPECT_EQ(ReplaceContent(files_, kPath, text), kFileOk);
      EXPECT_EQ(disk_.Content(kPath), text);
      EXPECT_FALSE(files_.Exists(kPath + ".new"));
    }
  }
}

TEST_F(PatientFilesTest, AReadOnlyFileIsNotWaitedForAsTheOneThatIsMovedEither) {
  disk_.Put(kPath, "old");
  disk_.Put(kOther, "new");
  disk_.SetReadOnly(kOther, true);
  HoldForEver(kPath);
  EXPECT_EQ(Timed([&] { return files_.MoveOver(kOther, kPath); }),
            std::pair(kPermissionDenied, std::int64_t{0}));
}

TEST_F(PatientFilesTest, OfFilesThatAreKeptOpenOnlySoManyAreRemembered) {
  constexpr int kRemembered = 64;
  const auto name = [](int number) { return kPath + std::to_string(number); };
  const auto append_to = [&](int number) {
    return Timed([&] { return files_.Append(name(number), "x"); }).second;
  };
  for (int number = 0; number < kRemembered; ++number) {
    disk_.Put(name(number), "");
    HoldForEver(name(number));
    EXPECT_GE(append_to(number), kPatience_ms);
  }
  EXPECT_EQ(append_to(0), 0);
  disk_.Put(name(kRemembered), "");
  HoldForEver(name(kRemembered));
  EXPECT_GE(append_to(kRemembered), kPatience_ms);
  EXPECT_EQ(append_to(kRemembered), 0) << "the one that did not fit any more";
  EXPECT_GE(append_to(0), kPatience_ms) << "all others were forgotten";
}

TEST_F(PatientFilesTest, QuestionsArePassedOn) {
  disk_.Put(kPath, "");
  EXPECT_FALSE(files_.IsReadOnly(kPath));
  disk_.SetReadOnly(kPath, true);
  EXPECT_TRUE(files_.IsReadOnly(kPath));
  EXPECT_EQ(files_.FromUtf8("Stra\xC3\x9F"
                            "e"),
            "Stra\xDF"
            "e");
}

}  // namespace
}  // namespace corvane
