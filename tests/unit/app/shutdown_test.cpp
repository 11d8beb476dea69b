#include "app/shutdown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "scenarios/world.h"

namespace corvane::sim {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kSettings = "\\corvane_simple.dat";
constexpr const char* kActivity = "\\Daily\\20261115\\Call_Activity_15-11-2026.csv";

class ShutdownTest : public ::testing::Test {
 protected:
  static SimPrompts::Box ErrorBox(const std::string& text) {
    return {text, "Error", BoxIcon::kCritical};
  }
  void Follow() {
    world_.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=60");
    ASSERT_TRUE(world_.RunUntil([this] { return world_.Following(); }, 2000));
  }
  // A call that was followed and is over, so that there is something to save.
  void LearnAGroup() {
    Follow();
    world_.Do("release id=7");
    ASSERT_TRUE(world_.RunUntil([this] { return !world_.Following() && world_.Parked(); }, 2000));
  }
  // A group counted in LOG mode.
  void CountACall() {
    world_.user().Click(world_.form().chkCreateCallActivityCvsFile);
    world_.Do("call id=8 group=9002 party=5010 carrier=2610 slot=3 for=2");
    world_.Run(1000);
    ASSERT_EQ(world_.view().activity.CallActivityTable.size(), 1U);
  }
  [[nodiscard]] bool Saved(const char* name) { return !world_.FileText(name).empty(); }

  World world_{{.scenario = "base 800000000\n"}};
};

TEST_F(ShutdownTest, EverythingIsSavedAndTheWindowsCloseEditorFirst) {
  world_.BringUp();
  world_.user().Click(world_.form().mnuGSSIEditor);
  LearnAGroup();
  CountACall();
  world_.user().CloseRequested();
  EXPECT_TRUE(world_.app->flags().mblnShuttingDown);
  for (const char* name : {kSubscribersFile, kGroupsFile, kActivity, kSettings}) {
    EXPECT_TRUE(Saved(name)) << name;
  }
  EXPECT_THAT(world_.windows_closed, ElementsAre("editor", "main window"));
  EXPECT_THAT(world_.prompts.boxes(), IsEmpty());
  EXPECT_FALSE(world_.view().tmrSaveTimed.enabled());
  EXPECT_FALSE(world_.view().tmrShutdown.enabled());
}

TEST_F(ShutdownTest, AFollowedCallIsEndedBeforeTheListsAreSaved) {
  world_.BringUp();
  Follow();
  world_.user().CloseRequested();
  EXPECT_THAT(world_.FileText(kGroupsFile), HasSubstr("9001;262;42;"));
  EXPECT_EQ(world_.CountCallLog("Manual D-Release occured"), 1);
  EXPECT_TRUE(world_.closed);
}

TEST_F(ShutdownTest, AServerThatTakesItsTimeIsStillParked) {
  world_.BringUp();
  Follow();
  world_.Do("handling 120");
  // Whatever is under way when the window is closed.
  world_.Run(290);
  world_.user().CloseRequested();
  EXPECT_TRUE(world_.closed);
  world_.Run(2000);
  EXPECT_TRUE(world_.Parked()) << world_.TraceText();
  EXPECT_EQ(world_.CountStatusLog("Syntax error"), 0);
}

TEST_F(ShutdownTest, AtEveryMomentOfTheWatchdogASlowServerIsParked) {
  for (int moment = 0; moment < 320; moment += 10) {
    World world({.scenario = "base 800000000\n"});
    world.BringUp();
    world.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=60");
    ASSERT_TRUE(world.RunUntil([&] { return world.Following(); }, 2000));
    world.Do("handling 120");
    world.Run(600 + moment);
    world.user().CloseRequested();
    world.Run(2000);
    EXPECT_TRUE(world.Parked()) << moment;
  }
}

TEST_F(ShutdownTest, CountsAreNotSavedWhenLogModeIsOff) {
  world_.BringUp();
  LearnAGroup();
  CountACall();
  world_.user().Click(world_.form().chkCreateCallActivityCvsFile);
  world_.user().CloseRequested();
  EXPECT_FALSE(Saved(kActivity));
  EXPECT_TRUE(Saved(kGroupsFile));
}

TEST_F(ShutdownTest, WithNothingLearntTheSettingsAloneAreSaved) {
  ASSERT_TRUE(world_.Load());
  world_.user().Click(world_.form().chkCreateCallActivityCvsFile);
  world_.user().CloseRequested();
  EXPECT_THAT(world_.files.List(World::kProgramFolder), ElementsAre("corvane_simple.dat"));
  EXPECT_THAT(world_.prompts.boxes(), IsEmpty());
}

TEST_F(ShutdownTest, EachWriterThatFailsShowsItsBoxAndTheRestGoesOn) {
  world_.BringUp();
  LearnAGroup();
  CountACall();
  world_.files.SetRoom(0);
  world_.user().CloseRequested();
  EXPECT_THAT(world_.prompts.boxes(),
              ElementsAre(ErrorBox("Error saving SSI list."), ErrorBox("Error saving GSSI list."),
                          ErrorBox("Error saving call activity log.")));
  EXPECT_EQ(world_.CountStatusLog("Error saving settings [61] - "), 1);
  EXPECT_TRUE(world_.closed);
}

TEST_F(ShutdownTest, ASessionThatEndsWithAFailingWriterStillSavesTheRest) {
  world_.BringUp();
  LearnAGroup();
  world_.files.FailPath("TETRA_SSI", kDiskFull);
  world_.user().SessionEnding();
  EXPECT_THAT(world_.prompts.boxes(), IsEmpty()) << "nobody can answer it";
  EXPECT_EQ(world_.CountStatusLog("Error saving SSI list. - "), 1);
  EXPECT_TRUE(Saved(kGroupsFile));
  EXPECT_TRUE(Saved(kSettings));
  EXPECT_TRUE(world_.closed);
}

TEST_F(ShutdownTest, TheSystemIsToldToWaitUntilTheLastFileOfASessionIsWritten) {
  world_.BringUp();
  LearnAGroup();
  world_.files.ResetSteps();
  int not_held = 0;
  world_.files.SetOnStep([&] { not_held += world_.session_held ? 0 : 1; });
  world_.user().SessionEnding();
  EXPECT_GT(world_.files.steps(), 6);
  EXPECT_EQ(not_held, 0);
  EXPECT_FALSE(world_.session_held);
  EXPECT_TRUE(Saved(kSettings));
}

TEST_F(ShutdownTest, ASessionEndsSoonAndWholeOnASlowDiskWithARecorderThatHangs) {
  world_.BringUp();
  world_.user().Click(world_.form().optRecordMode[1]);
  Follow();
  ASSERT_TRUE(world_.mci.recording());
  for (const char* hanging : {"stop", "save", "status", "close"}) {
    world_.mci.SetSlow(hanging, 1'000'000);
  }
  world_.files.ResetSteps();
  world_.files.SetOnStep([this] { world_.loop.Sleep(100); });
  const std::int64_t begin_ms = world_.loop.TickMs();
  world_.user().SessionEnding();
  EXPECT_THAT(world_.prompts.boxes(), IsEmpty());
  EXPECT_TRUE(world_.closed);
  EXPECT_TRUE(Saved(kGroupsFile));
  EXPECT_TRUE(Saved(kSettings));
  // One second for the device, which is given up then; the rest is the disk.
  EXPECT_LE(world_.loop.TickMs() - begin_ms, 1000 + 100 * world_.files.steps() + 1000);
  world_.Run(2000);
  EXPECT_TRUE(world_.Parked());
}

TEST_F(ShutdownTest, TheWatchdogShowsNoBoxAtTheEndOfASessionEither) {
  world_.BringUp();
  LearnAGroup();
  world_.files.SetOnStep([this] {
    world_.files.SetOnStep(nullptr);
    world_.view().tmrShutdown.SetEnabled(true);
    world_.Run(kShutdownTickMs + 100);
  });
  world_.user().SessionEnding();
  EXPECT_THAT(world_.prompts.boxes(), IsEmpty());
  EXPECT_EQ(world_.prompts.times_ended(), 1);
  EXPECT_EQ(world_.CountStatusLog("Problem shutting down, "), 1);
  EXPECT_TRUE(Saved(kSettings));
}

// Scanners and synchronising clients open what was written, for some milliseconds.
TEST_F(ShutdownTest, AScannerThatHoldsEachNewFileForAMomentIsNoFailure) {
  for (const bool lets_read : {true, false}) {
    World world({.scenario = "base 800000000\n"});
    world.files.SetScanner([&world] { return world.loop.TickMs(); }, 150, lets_read);
    world.BringUp();
    world.user().Click(world.form().optRecordMode[1]);
    world.user().Click(world.form().chkCreateEventLog);
    world.user().Click(world.form().chkCreateCcVcLog);
    world.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=2");
    ASSERT_TRUE(world.RunUntil([&] { return world.Following(); }, 3000));
    ASSERT_TRUE(world.RunUntil([&] { return !world.Following() && world.Parked(); }, 6000));
    world.user().CloseRequested();
    EXPECT_THAT(world.prompts.boxes(), IsEmpty());
    EXPECT_EQ(world.CountStatusLog("Error"), 0);
    EXPECT_NE(world.FileText(kGroupsFile), "");
    EXPECT_NE(world.FileText(kSubscribersFile), "");
    EXPECT_NE(world.FileText(kSettings), "");
    int recordings = 0;
    for (const std::string& name : world.files.List(World::kProgramFolder)) {
      recordings += name.ends_with("_7_9001.wav") ? 1 : 0;
      EXPECT_FALSE(name.ends_with("newTmp.wav") || name.ends_with(".new")) << name;
    }
    EXPECT_EQ(recordings, 1);
  }
}

TEST_F(ShutdownTest, ASecondCloseDoesNothingWhereverItComes) {
  world_.BringUp();
  LearnAGroup();
  CountACall();
  world_.user().Click(world_.form().mnuGSSIEditor);
  world_.prompts.SetWhileOpen([this](const SimPrompts::Box&) { world_.user().CloseRequested(); });
  world_.files.SetRoom(0);
  world_.user().CloseRequested();
  world_.user().CloseRequested();
  EXPECT_EQ(world_.prompts.boxes().size(), 3U);
  EXPECT_THAT(world_.windows_closed, ElementsAre("editor", "main window"));
}

TEST_F(ShutdownTest, AWaitOfFiveSecondsIsCutOffWithAWarningAndSavesTheSettingsAlone) {
  world_.BringUp();
  LearnAGroup();
  world_.view().tmrShutdown.SetEnabled(true);
  const auto before = world_.files.List(World::kProgramFolder);
  world_.Run(kShutdownTickMs + 100);
  EXPECT_THAT(world_.prompts.boxes(),
              ElementsAre(SimPrompts::Box{
                  "Problem shutting down, Some of this sessions changes are lost, Sorry", "Warning",
                  BoxIcon::kCritical}));
  EXPECT_EQ(world_.prompts.times_ended(), 1);
  EXPECT_FALSE(world_.view().tmrShutdown.enabled());
  EXPECT_TRUE(Saved(kSettings));
  EXPECT_FALSE(Saved(kGroupsFile));
  EXPECT_EQ(world_.files.List(World::kProgramFolder).size(), before.size() + 1);
}

TEST_F(ShutdownTest, ATickWhileTheWarningIsOpenIsDropped) {
  world_.BringUp();
  world_.prompts.SetOpenMs(3 * kShutdownTickMs);
  world_.view().tmrShutdown.SetEnabled(true);
  world_.Run(5 * kShutdownTickMs);
  EXPECT_EQ(world_.prompts.boxes().size(), 1U);
  EXPECT_EQ(world_.prompts.times_ended(), 1);
}

TEST_F(ShutdownTest, TheListsOfACallCutShortByClosingAreThereAtTheNextStart) {
  world_.BringUp();
  Follow();
  world_.user().CloseRequested();
  World next({.scenario = "base 800000000\n",
              .files = {{kGroupsFile, world_.FileText(kGroupsFile)},
                        {kSettings, world_.FileText(kSettings)}}});
  ASSERT_TRUE(next.Load());
  EXPECT_EQ(next.CountStatusLog("Loaded 1 saved GSSIs"), 1);
  EXPECT_FALSE(Saved(kSubscribersFile)) << "a reset files no talkers";
}

TEST_F(ShutdownTest, ASessionThatEndsWhileAStartUpBoxIsOpenLeavesTheSettingsAlone) {
  SettingsRecord record;
  record.ParkCarrier = 1234;
  const std::string settings = EncodeSettings(record);
  World world({.scenario = "base 800000000\n", .files = {{kSettings, settings}}});
  const std::string path = std::string(World::kProgramFolder) + kSettings;
  world.files.SetLocked(path, true);
  int boxes = 0;
  world.prompts.SetWhileOpen([&](const SimPrompts::Box&) {
    ++boxes;
    world.files.SetLocked(path, false);
    world.user().SessionEnding();
  });
  EXPECT_FALSE(world.Load());
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(world.FileText(kSettings), settings);
}

TEST_F(ShutdownTest, NorDoesItWriteAnewWhatAStartHasRefused) {
  SettingsRecord refused;
  refused.OffsetIndex = 4;
  for (const std::string& content : {EncodeSettings(refused), std::string()}) {
    World world({.scenario = "base 800000000\n", .files = {{kSettings, content}}});
    world.prompts.SetWhileOpen([&world](const SimPrompts::Box&) { world.user().SessionEnding(); });
    EXPECT_FALSE(world.Load());
    EXPECT_FALSE(world.files.Content(std::string(World::kProgramFolder) + kSettings));
  }
}

TEST_F(ShutdownTest, TheWarningIsShownOnceHoweverLongItStandsOpen) {
  world_.BringUp();
  world_.view().tmrShutdown.SetEnabled(true);
  world_.prompts.SetWhileOpen([this](const SimPrompts::Box&) { world_.Run(3 * kShutdownTickMs); });
  world_.Run(kShutdownTickMs + 100);
  EXPECT_EQ(world_.prompts.boxes().size(), 1U);
  EXPECT_EQ(world_.prompts.times_ended(), 1);
}

}  // namespace
}  // namespace corvane::sim
