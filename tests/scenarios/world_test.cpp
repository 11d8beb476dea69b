// The whole program in its simulated world: loading, the road of a call, and closing at any moment.
#include "scenarios/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "ui/main_layout.h"

namespace corvane::sim {
namespace {

using ::testing::HasSubstr;

WorldOptions OneNetwork() {
  WorldOptions options;
  options.scenario = "base 800000000\n";
  return options;
}

TEST(World, NothingRunsBeforeStartIsPressed) {
  World world(OneNetwork());
  ASSERT_TRUE(world.Load());
  world.Run(5000);
  EXPECT_FALSE(world.view().tmrStartup.enabled());
  EXPECT_TRUE(world.view().tmrCallWDT.enabled());
  EXPECT_TRUE(world.view().tmrSaveTimed.enabled());
  EXPECT_TRUE(world.view().tmrTmpGssiLockout.enabled());
  EXPECT_FALSE(world.view().tmrShutdown.enabled());
  EXPECT_FALSE(world.view().tmrDetectcheckbox.enabled());
  EXPECT_TRUE(world.desktop->socket().sent().empty());
  EXPECT_EQ(world.CountStatusLog("All hwnd found - Ready to start"), 1);
}

TEST(World, TheTimersHaveTheirIntervals) {
  World world(OneNetwork());
  const App::View view = world.view();
  EXPECT_EQ(view.tmrStartup.interval_ms(), 60);
  EXPECT_EQ(view.tmrCallWDT.interval_ms(), 300);
  EXPECT_EQ(view.tmrTmpGssiLockout.interval_ms(), 1000);
  EXPECT_EQ(view.tmrDetectcheckbox.interval_ms(), 500);
  EXPECT_EQ(view.tmrSaveTimed.interval_ms(), 60000);
  EXPECT_EQ(view.tmrShutdown.interval_ms(), 5000);
}

TEST(World, FilesAreLoadedInTheirOrderBeforeSdrSharpIsLookedFor) {
  WorldOptions options = OneNetwork();
  options.files = {{"\\TETRA_rec_gssi.txt", "9001\r\n"},
                   {"\\TETRA_mnc.txt", "262;42;Net\r\n"},
                   {"\\TETRA_la.txt", "262;42;101;Area\r\n"},
                   {"\\TETRA_mcc.txt", "262;Land\r\n"},
                   {"\\TETRA_GSSI.txt", "9001;262;42;Fire;0;True\r\n"},
                   {"\\TETRA_SSI.txt", "5010;9001;262;42;Car;2026-01-02 03:04:05\r\n"}};
  World world(options);
  ASSERT_TRUE(world.Load());
  const std::vector<std::string> expected = {"Loaded 1 REC GSSIs",
                                             "Loaded 1 network labels",
                                             "Loaded 1 location area labels",
                                             "Loaded 1 country code labels",
                                             "Loaded 1 saved GSSIs",
                                             "Loaded 1 saved SSIs",
                                             "SDR# is running"};
  const std::vector<std::string>& log = world.form().lstStatusLog.items();
  ASSERT_GE(log.size(), expected.size());
  EXPECT_EQ(std::vector<std::string>(log.begin(), log.begin() + 7), expected);
}

TEST(World, AStartUpErrorEndsTheProgramAfterItsBox) {
  WorldOptions options = OneNetwork();
  options.files = {{"\\TETRA_la.txt", "262;1\r\n"}};
  World world(options);
  EXPECT_FALSE(world.Load());
  ASSERT_EQ(world.prompts.boxes().size(), 1U);
  EXPECT_THAT(world.prompts.boxes()[0].text, HasSubstr("Error: [9]"));
  EXPECT_EQ(world.prompts.times_ended(), 1);
}

TEST(World, TheSetUpGoesOutInItsOrderByteForByte) {
  World world(OneNetwork());
  world.BringUp();
  const std::vector<std::string> expected = {
      R"({"Command": "Set", "Method": "Frequency", "Value": 865112500})",
      R"({"Command": "Set", "Method": "DetectorType", "Value": "WFM"})",
      R"({"Command": "Set", "Method": "FilterBandwidth", "Value": 26000})",
      R"({"Command": "Set", "Method": "AudioGain", "Value": 25})",
      R"({"Command": "Get", "Method": "IsPlaying"})",
      R"({"Command": "Exe", "Method": "Start"})"};
  EXPECT_EQ(world.desktop->socket().sent(), expected);
  EXPECT_TRUE(world.Parked());
  EXPECT_TRUE(world.desktop->model().receiver().state().demodulator_on);
  EXPECT_FALSE(world.desktop->model().receiver().state().auto_on);
}

TEST(World, ACallIsFollowedAndLeftAgain) {
  World world(OneNetwork());
  world.BringUp();
  world.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=5");
  ASSERT_TRUE(world.RunUntil([&] { return world.Following(); }, 1000)) << world.TraceText();
  world.Run(5);  // the last command is on its way
  EXPECT_EQ(world.desktop->model().receiver().state().slot, 3);
  EXPECT_EQ(world.desktop->model().receiver().state().audio_gain, 47);
  ASSERT_TRUE(world.RunUntil([&] { return !world.Following() && world.Parked(); }, 7000))
      << world.TraceText();
  EXPECT_EQ(world.CountCallLog("VC D-Released"), 1);
  EXPECT_EQ(world.view().subscribers.size(), 1U);
}

TEST(World, WhatWasLearntIsThereAfterARestart) {
  World world(OneNetwork());
  world.BringUp();
  world.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=2");
  world.Run(6000);
  world.user().CloseRequested();
  EXPECT_TRUE(world.closed);
  EXPECT_EQ(world.FileText("\\TETRA_GSSI.txt"), "9001;262;42;;0;True\r\n");
  EXPECT_THAT(world.FileText("\\TETRA_SSI.txt"), HasSubstr("5010;9001;262;42;;15/11/2026 14:2"));
  EXPECT_EQ(world.FileText("\\corvane_simple.dat").size(), 39U);
}

TEST(World, TheSaveComesEveryTenMinutes) {
  World world(OneNetwork());
  world.BringUp();
  world.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=2");
  world.Run(590 * 1000 - world.loop.TickMs() % 1000);
  EXPECT_EQ(world.FileText("\\TETRA_GSSI.txt"), "");
  world.Run(15 * 1000);
  EXPECT_NE(world.FileText("\\TETRA_GSSI.txt"), "");
  EXPECT_EQ(world.CountStatusLog("Saved GSSI list (0) "), 1);
}

// Closing at every moment of a recorded call's life, waits included.
TEST(World, ClosingAtAnyMomentSavesTheRecordingAndTheListsOnce) {
  constexpr int kStepMs = 7;
  for (int moment = 0; moment < 9000; moment += (moment < 1000 ? kStepMs : 301)) {
    SCOPED_TRACE(moment);
    World world(OneNetwork());
    world.BringUp();
    world.user().Click(world.form().optRecordMode[1]);
    world.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=5");
    bool asked = false;
    world.loop.PostAfter(moment, EventSource::kUser, [&] {
      asked = true;
      world.user().CloseRequested();
      world.user().CloseRequested();
    });
    world.Run(10000);
    ASSERT_TRUE(asked);
    EXPECT_TRUE(world.closed);
    EXPECT_FALSE(world.view().call.RecordingActive());
    EXPECT_FALSE(world.mci.recording());
    EXPECT_TRUE(world.prompts.boxes().empty());
    const auto saved = world.files.List("C:\\Corvane\\Daily");
    for (const std::string& name : saved) EXPECT_THAT(name, ::testing::Not(HasSubstr("newTmp")));
    EXPECT_EQ(static_cast<int>(saved.size()), world.mci.saved());
    EXPECT_NE(world.FileText("\\corvane_simple.dat"), "");
    if (HasFailure()) break;
  }
}

// Every event that lets others run, hit by the close itself: the socket's, the timers', the user's.
TEST(World, ClosingInsideAnyEventOfACallLeavesNothingUndone) {
  for (int event = 1; event < 400; ++event) {
    SCOPED_TRACE(event);
    World world(OneNetwork());
    world.BringUp();
    world.user().Click(world.form().optRecordMode[1]);
    world.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=1");
    int seen = 0;
    world.loop.SetAfterEvent([&] {
      if (++seen == event) world.user().CloseRequested();
    });
    world.Run(6000);
    if (seen < event) break;
    EXPECT_TRUE(world.closed);
    EXPECT_FALSE(world.view().call.RecordingActive());
    EXPECT_FALSE(world.mci.recording());
    EXPECT_EQ(world.mci.order_faults(), 0);
    if (HasFailure()) break;
  }
}

TEST(World, SdrSharpThatAppearsLaterIsFound) {
  WorldOptions options = OneNetwork();
  options.sdr_running = false;
  World world(options);
  ASSERT_TRUE(world.Load());
  world.Start();
  world.Run(3000);
  EXPECT_EQ(world.CountStatusLog("SDR# is NOT running with the two required plug-ins"), 2)
      << "at load and after Start, then quiet";
  world.Do("revive");
  EXPECT_TRUE(world.RunUntil([&] { return bool{world.app->flags().mblnSetupDone}; }, 8000))
      << world.TraceText();
}

TEST(World, ABusySoundDeviceIsReportedAndTheNextRecordingIsGood) {
  World world(OneNetwork());
  world.BringUp();
  world.user().Click(world.form().optRecordMode[1]);
  world.mci.FailCommand("open ", kMciInvalidDeviceName);
  world.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=2");
  ASSERT_TRUE(world.RunUntil([&] { return world.Following(); }, 1000));
  world.Run(6000);
  EXPECT_EQ(world.CountCallLog("VC D-Released"), 1);
  EXPECT_TRUE(world.Parked());
  // One line per failed command: eight of the start, three of the stop.
  EXPECT_EQ(world.CountStatusLog(world.mci.ErrorText(kMciInvalidDeviceName) + " Error"), 11);
  EXPECT_EQ(world.mci.saved(), 0);

  world.mci.FailCommand("open ", 0);
  world.Do("call id=8 group=9001 party=5010 carrier=2610 slot=3 for=2");
  world.Run(6000);
  EXPECT_EQ(world.CountCallLog("VC D-Released"), 2);
  EXPECT_EQ(world.mci.saved(), 1);
  EXPECT_EQ(
      std::ranges::count_if(world.files.List("C:\\Corvane\\Daily"),
                            [](const std::string& name) { return name.ends_with("_8_9001.wav"); }),
      1);
}

TEST(World, EveryControlHasItsOwnName) {
  World world(OneNetwork());
  std::set<std::string> names;
  for (const Control* control : MainWindowTable(world.form()).AllControls()) {
    EXPECT_TRUE(names.insert(control->name()).second) << control->name();
  }
  EXPECT_GE(names.size(), 70U);
}

}  // namespace
}  // namespace corvane::sim
