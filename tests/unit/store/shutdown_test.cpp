#include "store/shutdown.h"

#include <gtest/gtest.h>

#include "tests/unit/store/saving_run.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

class ShutdownTest : public ::testing::Test {
 protected:
  static FakePrompts::Box ErrorBox(const std::string& text) {
    return {text, "Error", BoxIcon::kCritical};
  }

  MemoryFiles files;
  SavingRun run{files};
  Texts& told = run.program.told;
};

TEST_F(ShutdownTest, EverythingIsSavedAndTheWindowsCloseEditorFirst) {
  run.AddOneOfEach();
  run.form.chkCreateCallActivityCvsFile.value = 1;
  run.shutdown.QueryUnload();
  EXPECT_TRUE(run.flags.mblnShuttingDown);
  EXPECT_TRUE(files.content.contains(kSubscriberPath));
  EXPECT_TRUE(files.content.contains(kGroupPath));
  EXPECT_TRUE(files.content.contains(kActivityPath));
  EXPECT_TRUE(files.content.contains(kSettingsPath));
  EXPECT_EQ(told, (Texts{"stop recording", "close editor", "close main window"}));
  EXPECT_TRUE(run.prompts.boxes.empty());
  EXPECT_FALSE(run.tmrSaveTimed.enabled());
  EXPECT_FALSE(run.tmrShutdown.enabled());
  EXPECT_EQ(run.tmrShutdown.switched, (std::vector<bool>{true, false}));
}

TEST_F(ShutdownTest, AFollowedCallIsEndedBeforeTheListsAreSaved) {
  run.program.followed = true;
  run.program.while_ending = [this] {
    EXPECT_TRUE(run.flags.mblnShuttingDown);
    EXPECT_TRUE(files.content.empty());
    run.AddOneOfEach();  // the ending call's group and subscribers
  };
  run.shutdown.QueryUnload();
  EXPECT_EQ(told, (Texts{"end call", "stop recording", "close editor", "close main window"}));
  EXPECT_TRUE(files.content.contains(kGroupPath));
  EXPECT_TRUE(files.content.contains(kSubscriberPath));
}

TEST_F(ShutdownTest, CountsAreNotSavedWhenLogModeIsOff) {
  run.AddOneOfEach();
  run.shutdown.QueryUnload();
  EXPECT_FALSE(files.content.contains(kActivityPath));
  EXPECT_TRUE(files.content.contains(kGroupPath));
}

TEST_F(ShutdownTest, WithoutCountsTheirFileIsNotTouchedThoughLogModeIsOn) {
  run.form.chkCreateCallActivityCvsFile.value = 1;
  run.shutdown.QueryUnload();
  EXPECT_EQ(files.content.size(), 1U) << "the settings alone";
  EXPECT_TRUE(run.prompts.boxes.empty());
}

TEST_F(ShutdownTest, EachWriterThatFailsShowsItsBoxAndTheRestGoesOn) {
  run.AddOneOfEach();
  run.form.chkCreateCallActivityCvsFile.value = 1;
  files.room = 0;
  run.shutdown.QueryUnload();
  EXPECT_EQ(run.prompts.boxes,
            (std::vector{ErrorBox("Error saving SSI list."), ErrorBox("Error saving GSSI list."),
                         ErrorBox("Error saving call activity log.")}));
  EXPECT_EQ(run.form.lstStatusLog.items(), Texts{"Error saving settings [61] - " + kNow});
  EXPECT_EQ(told.back(), "close main window");
}

TEST_F(ShutdownTest, ASecondCloseDoesNothingWhereverItComes) {
  run.AddOneOfEach();
  run.form.chkCreateCallActivityCvsFile.value = 1;
  run.program.followed = true;
  run.program.while_ending = [this] { run.shutdown.QueryUnload(); };
  run.prompts.while_open = [this] { run.shutdown.QueryUnload(); };
  files.room = 0;
  run.shutdown.QueryUnload();
  run.shutdown.QueryUnload();
  EXPECT_EQ(run.prompts.boxes.size(), 3U);
  EXPECT_EQ(told, (Texts{"end call", "stop recording", "close editor", "close main window"}));
}

TEST_F(ShutdownTest, APeriodicSaveUnderWayFinishesFirst) {
  run.AddOneOfEach();
  run.tmrSaveTimed.withhold_disabled = true;
  int rounds = 0;
  run.loop.events = [&] {
    EXPECT_TRUE(run.tmrShutdown.enabled());
    EXPECT_TRUE(files.content.empty());
    if (++rounds < 5) return;
    run.tmrSaveTimed.withhold_disabled = false;
    run.periodic.OnTick();
  };
  run.shutdown.QueryUnload();
  EXPECT_EQ(rounds, 5);
  EXPECT_FALSE(run.tmrShutdown.enabled());
  EXPECT_TRUE(files.content.contains(kGroupPath));
  EXPECT_EQ(told.back(), "close main window");
  EXPECT_TRUE(run.form.lstStatusLog.items().empty()) << "the tick saved nothing";
}

TEST_F(ShutdownTest, AWaitOfFiveSecondsIsCutOffWithAWarningAndSavesTheSettingsAlone) {
  run.AddOneOfEach();
  run.tmrSaveTimed.withhold_disabled = true;
  run.loop.events = [this] {
    if (run.tmrShutdown.enabled() && run.loop.now_ms >= kShutdownTickMs) {
      run.shutdown.OnShutdownTick();
    }
  };
  run.shutdown.QueryUnload();
  EXPECT_EQ(run.loop.now_ms, kShutdownTickMs);
  EXPECT_EQ(run.prompts.boxes,
            (std::vector<FakePrompts::Box>{
                {"Problem shutting down, Some of this sessions changes are lost, Sorry", "Warning",
                 BoxIcon::kCritical}}));
  EXPECT_EQ(run.prompts.ended, 1);
  EXPECT_FALSE(run.tmrShutdown.enabled());
  EXPECT_EQ(files.content.size(), 1U);
  EXPECT_TRUE(files.content.contains(kSettingsPath));
  EXPECT_EQ(told, Texts{"stop recording"}) << "nothing runs after the end";
}

TEST_F(ShutdownTest, ATickWhileTheWarningIsOpenIsDropped) {
  run.tmrSaveTimed.withhold_disabled = true;
  run.prompts.while_open = [this] {
    EXPECT_EQ(run.prompts.ended, 0);
    run.shutdown.OnShutdownTick();
  };
  run.loop.events = [this] { run.shutdown.OnShutdownTick(); };
  run.shutdown.QueryUnload();
  EXPECT_EQ(run.prompts.boxes.size(), 1U);
  EXPECT_EQ(run.prompts.ended, 1);
}

TEST_F(ShutdownTest, TicksAfterClosingNeverSave) {
  run.shutdown.QueryUnload();
  run.AddOneOfEach();
  const auto before = files.content;
  for (int i = 0; i < 20; ++i) run.periodic.OnTick();
  EXPECT_EQ(files.content, before);
  EXPECT_FALSE(run.tmrSaveTimed.enabled());
}

}  // namespace
}  // namespace corvane
