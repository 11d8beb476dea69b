// Faults of the disk: files that cannot be used, every step failing in turn, and a power cut and a
// killed program at every step. Whatever happens, every file loads afterwards and none is
// older than the last completed save.
#include <gtest/gtest.h>

#include <array>

#include "tests/unit/store/saving_run.h"

namespace corvane {
namespace {

const std::array<std::string, 7> kStartFiles = {kSettingsPath,  kRecOnlyPath, kNetworkPath,
                                                kAreaPath,      kCountryPath, kGroupPath,
                                                kSubscriberPath};

TEST(Faults, AStartFileThatCannotBeReadEndsTheProgramWithItsNumber) {
  for (const std::string& path : kStartFiles) {
    for (const FileError number : {kPermissionDenied, kPathAccess, kPathNotFound}) {
      SCOPED_TRACE(path + " " + std::to_string(number));
      sim::SimFiles files;
      PutGoodFiles(files);
      files.FailPath(path, number);
      const Contents before = AllFiles(files);
      StoreRun run(files);
      EXPECT_FALSE(run.Start());
      EXPECT_EQ(run.prompts.boxes(), std::vector{FileAccessBox(number)});
      EXPECT_EQ(run.prompts.times_ended(), 1);
      EXPECT_EQ(AllFiles(files), before);
    }
  }
}

TEST(Faults, AFolderInPlaceOfAStartFileEndsTheProgram) {
  for (const std::string& path : kStartFiles) {
    SCOPED_TRACE(path);
    sim::SimFiles files;
    PutGoodFiles(files);
    files.Remove(path);
    files.PutDirectory(path);
    StoreRun run(files);
    EXPECT_FALSE(run.Start());
    EXPECT_EQ(run.prompts.boxes(), std::vector{FileAccessBox(kPathAccess)});
    EXPECT_TRUE(files.IsDirectory(path));
  }
}

TEST(Faults, TheOldNetworkFileThatCannotBeRenamedEndsTheProgramWithoutTheNotice) {
  for (const FileError number : {kPermissionDenied, kPathAccess}) {
    sim::SimFiles files;
    files.Put(kOldNetworkPath, "262;1;Net\r\n");
    files.FailPath(kOldNetworkPath, number);
    StoreRun run(files);
    EXPECT_FALSE(run.Start());
    EXPECT_EQ(run.prompts.boxes(), std::vector{FileAccessBox(number)});
    EXPECT_TRUE(Has(files, kOldNetworkPath));
  }
}

TEST(Faults, EveryOperationOfAStartFailsInTurn) {
  int n = 1;
  for (;; ++n) {
    SCOPED_TRACE(n);
    sim::SimFiles files;
    PutGoodFiles(files);
    files.Put(kOldNetworkPath, files.Content(kNetworkPath).value());
    files.Remove(kNetworkPath);
    files.FailAtStep(n, kPathAccess);
    StoreRun run(files);
    const bool started = run.Start();
    if (files.steps() < n) break;  // there is no n-th operation
    EXPECT_FALSE(started);
    EXPECT_EQ(run.prompts.times_ended(), 1);
    EXPECT_EQ(run.prompts.boxes().back(), FileAccessBox(kPathAccess));
    files.FailAtStep(0, kFileOk);
    StoreRun next(files);
    EXPECT_TRUE(next.Start()) << "the start after the fault";
  }
  EXPECT_GT(n, 7);
}

// Loads, changes everything and saves everything, as a periodic save and a change of the list do.
void SaveAll(SavingRun& run, int round) {
  GssiRecord group;
  group.Gssi = 10000 + round;
  run.group_table.Append(group);
  SsiRecord subscriber;
  subscriber.Ssi = 20000 + round;
  subscriber.LastSeen = run.clock.Now();
  run.subscriber_table.Append(subscriber);
  run.folders.CreateDayFolders(run.clock.Now());
  run.activity.LoadCallActivity();
  run.activity.CallActivityTable.Count(9001);
  run.presets.ParkCarrier = static_cast<std::int16_t>(100 + round);
  run.form.txtRecOnlyGSSI.text = std::to_string(30000 + round);
  run.rec_only.AddRecOnlyGssi();
  run.SavePeriodically();
}

// The saved files of `disk`, without what a broken save left beside them.
Contents SavedFiles(const sim::SimFiles& disk) {
  Contents saved;
  for (const auto& [path, text] : AllFiles(disk)) {
    if (!path.ends_with(".new")) saved.emplace(path, text);
  }
  return saved;
}

// Every file is as `before` or as `after`, and all load.
void ExpectOldOrNew(sim::SimFiles& disk, const Contents& before, const Contents& after) {
  const Contents saved = SavedFiles(disk);
  for (const auto& [path, text] : after) {
    const auto old = before.find(path);
    const auto now = saved.find(path);
    if (now == saved.end()) {
      EXPECT_TRUE(old == before.end()) << path << " is lost";
      continue;
    }
    const bool is_old = old != before.end() && now->second == old->second;
    EXPECT_TRUE(is_old || now->second == text) << path << ": " << now->second;
  }
  EXPECT_LE(saved.size(), after.size());
  disk.Restart();
  StoreRun next(disk);
  EXPECT_TRUE(next.Start());
  next.folders.CreateDayFolders(next.clock.Now());
  next.activity.LoadCallActivity();
  EXPECT_TRUE(next.prompts.boxes().empty());
  EXPECT_FALSE(Has(disk, kActivityPath + ".bad"));
}

class SaveFaults : public ::testing::Test {
 protected:
  // One completed save is on the disk; `before` and `after` bracket the next one.
  void SetUp() override {
    sim::SimFiles disk;
    PutGoodFiles(disk);
    SavingRun first(disk);
    ASSERT_TRUE(first.Start());
    SaveAll(first, 0);
    before = SavedFiles(disk);
    SavingRun second(disk);
    ASSERT_TRUE(second.Start());
    SaveAll(second, 1);
    after = SavedFiles(disk);
    ASSERT_NE(before, after);
  }

  Contents before;
  Contents after;
};

TEST_F(SaveFaults, EveryStepOfASaveFailsInTurn) {
  for (const FileError number : {kPathAccess, kPermissionDenied, kDiskFull}) {
    int n = 1;
    for (;; ++n) {
      SCOPED_TRACE(n);
      sim::SimFiles disk;
      PutAll(disk, before);
      SavingRun run(disk);
      ASSERT_TRUE(run.Start());
      disk.ResetSteps();
      disk.FailAtStep(n, number);
      SaveAll(run, 1);
      if (disk.steps() < n) break;
      EXPECT_TRUE(run.tmrSaveTimed->enabled());
      EXPECT_TRUE(run.prompts.boxes().empty());
      ExpectOldOrNew(disk, before, after);
    }
    EXPECT_GT(n, 20) << "five files, each opened, written, flushed and moved";
  }
}

// A run on `disk` that saves while the power fails, or the program is killed, before step `step`.
// False when there was no such step.
bool SaveUntil(sim::SimFiles& disk, void (sim::SimFiles::*end_at)(int), int step) {
  SavingRun run(disk);
  EXPECT_TRUE(run.Start());
  disk.ResetSteps();
  (disk.*end_at)(step);
  try {
    SaveAll(run, 1);
  } catch (const sim::PowerCut&) {
    return true;
  } catch (const sim::ProgramKilled&) {
    return true;
  }
  return false;
}

TEST_F(SaveFaults, ThePowerFailsAtEveryStepOfASave) {
  int step = 1;
  for (;; ++step) {
    SCOPED_TRACE(step);
    sim::SimFiles disk;
    PutAll(disk, before);
    if (!SaveUntil(disk, &sim::SimFiles::CutPowerAtStep, step)) break;
    ExpectOldOrNew(disk, before, after);
  }
  EXPECT_GT(step, 20);
}

// Where moving over a file takes two steps, as on FAT: the start that follows finds the rest.
TEST_F(SaveFaults, WhereAMoveIsNotSafeTheNextStartCompletesWhatWasCutShort) {
  int restored = 0;
  int step = 1;
  for (;; ++step) {
    SCOPED_TRACE(step);
    sim::SimFiles disk;
    disk.SetMovesInTwoSteps(true);
    PutAll(disk, before);
    if (!SaveUntil(disk, &sim::SimFiles::CutPowerAtStep, step)) break;
    const std::size_t found = SavedFiles(disk).size();
    disk.Restart();
    StoreRun next(disk);
    EXPECT_TRUE(next.Start());
    next.folders.CreateDayFolders(next.clock.Now());
    next.activity.LoadCallActivity();
    ExpectOldOrNew(disk, before, after);
    if (SavedFiles(disk).size() == found) continue;
    ++restored;
    int lines = 0;
    for (const std::string& line : next.form.lstStatusLog.items()) {
      lines += line.starts_with("Restored ") && line.ends_with(" - its last save was cut short");
    }
    EXPECT_EQ(lines, 1);
  }
  EXPECT_EQ(restored, 5) << "settings, groups, subscribers, groups to record, call activity";
}

TEST_F(SaveFaults, TheProgramIsKilledAtEveryStepOfASave) {
  int step = 1;
  for (;; ++step) {
    SCOPED_TRACE(step);
    sim::SimFiles disk;
    PutAll(disk, before);
    if (!SaveUntil(disk, &sim::SimFiles::KillAtStep, step)) break;
    ExpectOldOrNew(disk, before, after);
  }
  EXPECT_GT(step, 20);
}

// A run on `disk` that saves, learns more and is then closed, the power failing before `step`.
// `saved` gets the files as they were before the closing. False when there was no such step.
bool CloseWithPowerCut(sim::SimFiles& disk, int step, Contents& saved) {
  SavingRun run(disk);
  EXPECT_TRUE(run.Start());
  SaveAll(run, 1);
  saved = SavedFiles(disk);
  run.form.chkCreateCallActivityCvsFile.value = 1;
  run.AddOneOfEach();
  disk.ResetSteps();
  disk.CutPowerAtStep(step);
  try {
    run.shutdown.QueryUnload();
  } catch (const sim::PowerCut&) {
    return true;
  }
  return false;
}

TEST_F(SaveFaults, ThePowerFailsAtEveryStepOfAShutdown) {
  sim::SimFiles whole;
  PutAll(whole, before);
  Contents last_save;
  ASSERT_FALSE(CloseWithPowerCut(whole, 0, last_save));
  const Contents closed = SavedFiles(whole);
  int step = 1;
  for (;; ++step) {
    SCOPED_TRACE(step);
    sim::SimFiles disk;
    PutAll(disk, before);
    if (!CloseWithPowerCut(disk, step, last_save)) break;
    ExpectOldOrNew(disk, last_save, closed);
  }
  EXPECT_GE(step, 16);
}

TEST_F(SaveFaults, TheDiskIsFullAtEveryByte) {
  std::size_t total = 0;
  for (const auto& [path, text] : after) total += text.size();
  for (std::size_t room = 0; room < total; ++room) {
    SCOPED_TRACE(room);
    sim::SimFiles disk;
    PutAll(disk, before);
    SavingRun run(disk);
    ASSERT_TRUE(run.Start());
    disk.SetRoom(room);
    SaveAll(run, 1);
    EXPECT_EQ(SavedFiles(disk), AllFiles(disk)) << "a temporary file is left";
    disk.SetRoom(std::nullopt);
    ExpectOldOrNew(disk, before, after);
    run.SavePeriodically();
    run.rec_only.SaveRecOnlyGssiList();
    EXPECT_EQ(SavedFiles(disk), after) << "the next save catches up";
  }
}

TEST_F(SaveFaults, AReadOnlyFolderKeepsTheOldFilesAndTheProgramRunning) {
  sim::SimFiles disk;
  PutAll(disk, before);
  SavingRun run(disk);
  ASSERT_TRUE(run.Start());
  disk.FailPath(".new", kPermissionDenied);
  SaveAll(run, 1);
  EXPECT_EQ(SavedFiles(disk), before);
  EXPECT_TRUE(run.prompts.boxes().empty());
  run.form.chkCreateCallActivityCvsFile.value = 1;
  run.shutdown.QueryUnload();
  EXPECT_EQ(run.prompts.boxes().size(), 3U);
  EXPECT_EQ(SavedFiles(disk), before);
}

}  // namespace
}  // namespace corvane
