// Faults of the disk: files that cannot be used, every operation failing in turn, and a power cut
// at every single change of the disk. Whatever happens, every file loads afterwards and none is
// older than the last completed save.
#include <gtest/gtest.h>

#include <array>

#include "tests/unit/store/saving_run.h"

namespace corvane {
namespace {

const std::array<std::string, 7> kStartFiles = {kSettingsPath,  kRecOnlyPath, kNetworkPath,
                                                kAreaPath,      kCountryPath, kGroupPath,
                                                kSubscriberPath};

void PutGoodFiles(MemoryFiles& files) {
  files.content[kSettingsPath] = EncodeSettings(SettingsRecord());
  files.content[kRecOnlyPath] = "9001\r\n";
  files.content[kNetworkPath] = "262;1;Net\r\n";
  files.content[kAreaPath] = "262;1;100;Area\r\n";
  files.content[kCountryPath] = "262;Land\r\n";
  files.content[kGroupPath] = "9001;262;1;Fire;0;True\r\n";
  files.content[kSubscriberPath] = "5010;9001;262;1;Car;15/11/2026 14:23:05\r\n";
}

TEST(Faults, AStartFileThatCannotBeReadEndsTheProgramWithItsNumber) {
  for (const std::string& path : kStartFiles) {
    for (const FileError number : {kPermissionDenied, kPathAccess, kPathNotFound}) {
      SCOPED_TRACE(path + " " + std::to_string(number));
      MemoryFiles files;
      PutGoodFiles(files);
      files.locked[path] = number;
      const auto before = files.content;
      StoreRun run(files);
      EXPECT_FALSE(run.Start());
      EXPECT_EQ(run.prompts.boxes, std::vector{FileAccessBox(number)});
      EXPECT_EQ(run.prompts.ended, 1);
      EXPECT_EQ(files.content, before);
    }
  }
}

TEST(Faults, AFolderInPlaceOfAStartFileEndsTheProgram) {
  for (const std::string& path : kStartFiles) {
    SCOPED_TRACE(path);
    MemoryFiles files;
    PutGoodFiles(files);
    files.content.erase(path);
    files.directories.insert(path);
    StoreRun run(files);
    EXPECT_FALSE(run.Start());
    EXPECT_EQ(run.prompts.boxes, std::vector{FileAccessBox(kPathAccess)});
    EXPECT_TRUE(files.directories.contains(path));
  }
}

TEST(Faults, TheOldNetworkFileThatCannotBeRenamedEndsTheProgramWithoutTheNotice) {
  for (const FileError number : {kPermissionDenied, kPathAccess}) {
    MemoryFiles files;
    files.content[kOldNetworkPath] = "262;1;Net\r\n";
    files.locked[kOldNetworkPath] = number;
    StoreRun run(files);
    EXPECT_FALSE(run.Start());
    EXPECT_EQ(run.prompts.boxes, std::vector{FileAccessBox(number)});
    EXPECT_TRUE(files.content.contains(kOldNetworkPath));
  }
}

TEST(Faults, EveryOperationOfAStartFailsInTurn) {
  int n = 1;
  for (;; ++n) {
    SCOPED_TRACE(n);
    MemoryFiles files;
    PutGoodFiles(files);
    files.content[kOldNetworkPath] = files.content[kNetworkPath];
    files.content.erase(kNetworkPath);
    files.fail_at = n;
    StoreRun run(files);
    const bool started = run.Start();
    if (files.operations < n) break;  // there is no n-th operation
    EXPECT_FALSE(started);
    EXPECT_EQ(run.prompts.ended, 1);
    EXPECT_EQ(run.prompts.boxes.back(), FileAccessBox(kPathAccess));
    files.fail_at = 0;
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
  subscriber.LastSeen = run.clock.now;
  run.subscriber_table.Append(subscriber);
  run.folders.CreateDayFolders(run.clock.now);
  run.activity.LoadCallActivity();
  run.activity.CallActivityTable.Count(9001);
  run.presets.ParkCarrier = static_cast<std::int16_t>(100 + round);
  run.form.txtRecOnlyGSSI.text = std::to_string(30000 + round);
  run.rec_only.AddRecOnlyGssi();
  for (int tick = 0; tick < 10; ++tick) run.periodic.OnTick();
}

using Contents = std::map<std::string, std::string>;

// The saved files of `disk`, without what a broken save left beside them.
Contents SavedFiles(const MemoryFiles& disk) {
  Contents saved;
  for (const auto& [path, text] : disk.content) {
    if (!path.ends_with(".new")) saved.emplace(path, text);
  }
  return saved;
}

// Every file is as `before` or as `after`, and all load.
void ExpectOldOrNew(MemoryFiles& disk, const Contents& before, const Contents& after) {
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
  disk.cut_at = disk.fail_at = 0;
  StoreRun next(disk);
  EXPECT_TRUE(next.Start());
  next.folders.CreateDayFolders(next.clock.now);
  next.activity.LoadCallActivity();
  EXPECT_TRUE(next.prompts.boxes.empty());
  EXPECT_FALSE(disk.content.contains(kActivityPath + ".bad"));
}

class SaveFaults : public ::testing::Test {
 protected:
  // One completed save is on the disk; `before` and `after` bracket the next one.
  void SetUp() override {
    PutGoodFiles(good);
    SavingRun first(good);
    ASSERT_TRUE(first.Start());
    SaveAll(first, 0);
    before = SavedFiles(good);
    MemoryFiles disk = good;
    SavingRun second(disk);
    ASSERT_TRUE(second.Start());
    SaveAll(second, 1);
    after = SavedFiles(disk);
    ASSERT_NE(before, after);
  }

  MemoryFiles good;
  Contents before;
  Contents after;
};

TEST_F(SaveFaults, EveryOperationOfASaveFailsInTurn) {
  for (const FileError number : {kPathAccess, kPermissionDenied, kDiskFull}) {
    int n = 1;
    for (;; ++n) {
      SCOPED_TRACE(n);
      MemoryFiles disk = good;
      SavingRun run(disk);
      ASSERT_TRUE(run.Start());
      disk.operations = 0;
      disk.fail_at = n;
      disk.fail_with = number;
      SaveAll(run, 1);
      if (disk.operations < n) break;
      EXPECT_TRUE(run.tmrSaveTimed.enabled());
      EXPECT_TRUE(run.prompts.boxes.empty());
      ExpectOldOrNew(disk, before, after);
    }
    EXPECT_GT(n, 10);
  }
}

TEST_F(SaveFaults, ThePowerFailsAtEveryStepOfASave) {
  int step = 1;
  for (;; ++step) {
    SCOPED_TRACE(step);
    MemoryFiles disk = good;
    SavingRun run(disk);
    ASSERT_TRUE(run.Start());
    disk.steps = 0;
    disk.cut_at = step;
    bool cut = false;
    try {
      SaveAll(run, 1);
    } catch (const PowerCut&) {
      cut = true;
    }
    if (!cut) break;
    ExpectOldOrNew(disk, before, after);
  }
  EXPECT_GE(step, 20) << "five files, each with at least four steps";
}

// A run on `disk` that saves, learns more and is then closed, the power failing before `step`.
// `saved` gets the files as they were before the closing. False when there was no such step.
bool CloseWithPowerCut(MemoryFiles& disk, int step, Contents& saved) {
  SavingRun run(disk);
  EXPECT_TRUE(run.Start());
  SaveAll(run, 1);
  saved = SavedFiles(disk);
  run.form.chkCreateCallActivityCvsFile.value = 1;
  run.AddOneOfEach();
  disk.steps = 0;
  disk.cut_at = step;
  try {
    run.shutdown.QueryUnload();
  } catch (const PowerCut&) {
    return true;
  }
  return false;
}

TEST_F(SaveFaults, ThePowerFailsAtEveryStepOfAShutdown) {
  MemoryFiles whole = good;
  Contents last_save;
  ASSERT_FALSE(CloseWithPowerCut(whole, 0, last_save));
  const Contents closed = SavedFiles(whole);
  int step = 1;
  for (;; ++step) {
    SCOPED_TRACE(step);
    MemoryFiles disk = good;
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
    MemoryFiles disk = good;
    SavingRun run(disk);
    ASSERT_TRUE(run.Start());
    disk.room = room;
    SaveAll(run, 1);
    EXPECT_EQ(SavedFiles(disk).size(), disk.content.size()) << "a temporary file is left";
    disk.room.reset();
    ExpectOldOrNew(disk, before, after);
    for (int tick = 0; tick < 10; ++tick) run.periodic.OnTick();
    run.rec_only.SaveRecOnlyGssiList();
    EXPECT_EQ(SavedFiles(disk), after) << "the next save catches up";
  }
}

TEST_F(SaveFaults, AReadOnlyFolderKeepsTheOldFilesAndTheProgramRunning) {
  MemoryFiles disk = good;
  SavingRun run(disk);
  ASSERT_TRUE(run.Start());
  for (const auto& [path, text] : before) disk.locked[path + ".new"] = kPermissionDenied;
  SaveAll(run, 1);
  EXPECT_EQ(SavedFiles(disk), before);
  EXPECT_TRUE(run.prompts.boxes.empty());
  run.form.chkCreateCallActivityCvsFile.value = 1;
  run.shutdown.QueryUnload();
  EXPECT_EQ(run.prompts.boxes.size(), 3U);
  EXPECT_EQ(SavedFiles(disk), before);
}

}  // namespace
}  // namespace corvane
