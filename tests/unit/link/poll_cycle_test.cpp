#include "link/poll_cycle.h"

#include <algorithm>
#include <stdexcept>

#include "link_fixture.h"
#include "panel/logs.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kError = R"({"Result":"Error","Type":"Source error","Message":"none"})";
constexpr const char* kDayFolder = "C:\\Corvane\\Daily\\20261115";

class PollCycleTest : public LinkTest {
 protected:
  // One cycle by itself.
  void Cycle() {
    cycle.RunStartupCycle();
    cycle.tmrStartup().SetEnabled(false);
  }
  // Connected, set up and scanning, between two cycles.
  void Settled() {
    ASSERT_TRUE(StartAndSettle());
    scans = 0;
  }
};

// --- The timer ---

TEST_F(PollCycleTest, DoesNotRunBeforeStart) {
  EXPECT_EQ(cycle.tmrStartup().interval_ms(), 60);
  EXPECT_FALSE(cycle.tmrStartup().enabled());
  loop.AdvanceMs(10000);
  EXPECT_EQ(desktop.socket().connect_count(), 0);
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(PollCycleTest, StartArmsTheTimerAndCyclesFollow60MsApart) {
  std::int64_t asked = 0;
  desktop.Do("die");
  on_scan = nullptr;
  cycle.Start();
  EXPECT_TRUE(cycle.tmrStartup().enabled());
  loop.AdvanceMs(59);
  EXPECT_THAT(StatusLog(), IsEmpty());
  loop.AdvanceMs(1);
  EXPECT_FALSE(StatusLog().empty());
  desktop.Do("revive");
  ASSERT_TRUE(Settle());
  std::vector<std::int64_t> gaps;
  asked = loop.TickMs();
  on_scan = [&] {
    gaps.push_back(loop.TickMs() - asked);
    asked = loop.TickMs();
  };
  loop.AdvanceMs(600);
  EXPECT_EQ(gaps.size(), 10u);
  EXPECT_THAT(gaps, Each(60));
}

TEST_F(PollCycleTest, ATickBeforeTheFormIsLoadedDoesNothing) {
  flags.mblnFormLoaded = false;
  cycle.Start();
  loop.AdvanceMs(600);
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_TRUE(cycle.tmrStartup().enabled());
  flags.mblnFormLoaded = true;
  loop.AdvanceMs(60);
  EXPECT_FALSE(StatusLog().empty());
}

TEST_F(PollCycleTest, TheTimerIsDisarmedDuringACycleAndCyclesNeverOverlap) {
  Settled();
  int depth = 0;
  int deepest = 0;
  on_scan = [&] {
    EXPECT_FALSE(cycle.tmrStartup().enabled());
    deepest = std::max(deepest, ++depth);
    (void)SleepAndYield(loop, 500, nullptr);
    --depth;
  };
  loop.AdvanceMs(3000);
  EXPECT_EQ(deepest, 1);
  EXPECT_GT(scans, 3);
  EXPECT_TRUE(cycle.tmrStartup().enabled());
}

TEST_F(PollCycleTest, ATickInsideItsOwnHandlerIsDropped) {
  Settled();
  on_scan = [&] {
    cycle.tmrStartup().SetEnabled(true);
    (void)SleepAndYield(loop, 500, nullptr);
  };
  loop.AdvanceMs(100);
  EXPECT_EQ(scans, 1);
}

TEST_F(PollCycleTest, ShuttingDownEndsTheChain) {
  Settled();
  on_scan = [&] { flags.mblnShuttingDown = true; };
  loop.AdvanceMs(1000);
  EXPECT_EQ(scans, 1);
  EXPECT_FALSE(cycle.tmrStartup().enabled());
}

TEST_F(PollCycleTest, ATickWhileShuttingDownDoesNothing) {
  cycle.Start();
  flags.mblnShuttingDown = true;
  loop.AdvanceMs(1000);
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_TRUE(sim().messages().empty());
  EXPECT_THAT(files.List("C:\\Corvane"), IsEmpty());
}

TEST_F(PollCycleTest, AnExceptionBecomesOneLineAndTheNextCycleRuns) {
  Settled();
  form.lstStatusLog.Clear();
  on_scan = [&] {
    if (scans <= 5) throw std::runtime_error("no such luck");
  };
  loop.AdvanceMs(600);
  EXPECT_EQ(scans, 10);
  EXPECT_THAT(StatusLog(), ElementsAre("Error in poll cycle: no such luck"));
}

TEST_F(PollCycleTest, AnUnknownExceptionDoesNotStopTheHeartbeatEither) {
  Settled();
  on_scan = [&] {
    if (scans == 1) throw 42;
  };
  loop.AdvanceMs(180);
  EXPECT_EQ(scans, 3);
}

// --- The reset ---

TEST_F(PollCycleTest, ALostLinkClearsTheDisplayOfTheCall) {
  Settled();
  ASSERT_TRUE(FollowsCall(1207));
  form.lblGroupHold.tool_tip = "Holding GSSI:  9001";
  form.lblGroupNumber.tool_tip = "Holding GSSI:  9001";
  form.lblGroupHold.tag = " 9001";
  form.lblGroupHold.fore_colour = kHoldOrange;
  form.lblGroupHold.bold = true;
  ASSERT_NE(form.lblCallID.caption, "");
  ASSERT_GT(form.lstCurrentSSI_Users.count(), 0);
  desktop.Do("die");
  flags.NetRemoteLinkUp = false;
  Cycle();

  EXPECT_FALSE(Following());
  for (const Label* label :
       {&form.lblCarrierNumber, &form.lblTimeSlotNumber, &form.lblCurrentSSI, &form.lblGroupNumber,
        &form.lblSSI_label, &form.lblSsiLastSeen, &form.lblGSSI_label, &form.lblCallID}) {
    EXPECT_EQ(label->caption.get(), "") << label->name();
  }
  EXPECT_EQ(form.lstCurrentSSI_Users.count(), 0);
  EXPECT_EQ(form.ShapeBusy_state.fill_colour.get(), kButtonFace);
  EXPECT_EQ(form.lblGroupHold.tool_tip.get(), "Right click to hold a GSSI");
  EXPECT_EQ(form.lblGroupNumber.tool_tip.get(), "");
  EXPECT_EQ(form.lblGroupHold.tag.get(), "0");
  EXPECT_EQ(form.lblGroupHold.fore_colour.get(), kButtonText);
  EXPECT_FALSE(form.lblGroupHold.bold);
  EXPECT_FALSE(flags.mblnSetupDone);
  EXPECT_EQ(network.NetworkKey, "");
}

TEST_F(PollCycleTest, ALinkThatIsUpLeavesTheDisplayAlone) {
  Settled();
  ASSERT_TRUE(FollowsCall(1207));
  form.lblGroupHold.tag = " 9001";
  form.lstStatusLog.Clear();
  loop.AdvanceMs(600);
  EXPECT_TRUE(Following());
  EXPECT_EQ(form.lblGroupNumber.caption.get(), " 9001");
  EXPECT_EQ(form.lblGroupHold.tag.get(), " 9001");
  EXPECT_THAT(StatusLog(), Not(Contains("SDR# is running")));
}

TEST_F(PollCycleTest, TheResetStopsARecording) {
  form.optRecordMode[1].value = true;
  Settled();
  ASSERT_TRUE(FollowsCall(1207));
  ASSERT_TRUE(follower.call().RecordingActive());
  mci.ForgetCommands();
  desktop.Do("die");
  flags.NetRemoteLinkUp = false;
  Cycle();
  EXPECT_FALSE(follower.call().RecordingActive());
  EXPECT_THAT(mci.commands(),
              Contains(::testing::Field(&sim::SimMci::Command::text, "stop recsound")));
  EXPECT_EQ(form.ShapeBusy_state.border_colour.get(), kWindowText);
  EXPECT_EQ(form.ShapeBusy_state.border_width.get(), 1);
}

TEST_F(PollCycleTest, TheResetDoesNotTouchTheRecorderWithoutARecording) {
  Cycle();
  EXPECT_THAT(mci.commands(), IsEmpty());
}

TEST_F(PollCycleTest, WithoutALinkNothingIsConnected) {
  desktop.Do("die");
  cycle.RunStartupCycle();
  EXPECT_EQ(desktop.socket().connect_count(), 0);
  EXPECT_TRUE(cycle.tmrStartup().enabled());
}

TEST_F(PollCycleTest, AfterADiscoveryThatSucceedsTheSameCycleConnects) {
  Cycle();
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  EXPECT_EQ(desktop.socket().connect_count(), 1);
  EXPECT_EQ(scans, 0);
}

TEST_F(PollCycleTest, WithoutSdrItAsksAgainEveryCycleAndStaysQuiet) {
  desktop.Do("die");
  cycle.Start();
  loop.AdvanceMs(600);
  EXPECT_EQ(StatusLog().size(), 5u);
  desktop.Do("revive");
  loop.AdvanceMs(60);
  EXPECT_TRUE(flags.NetRemoteLinkUp);
}

TEST_F(PollCycleTest, TheFirstRunAfterStartIsLoggedWhole) {
  desktop.Do("die");
  Discover();
  ASSERT_EQ(StatusLog().size(), 5u);
  cycle.Start();
  loop.AdvanceMs(60);
  EXPECT_EQ(StatusLog().size(), 10u);
  loop.AdvanceMs(600);
  EXPECT_EQ(StatusLog().size(), 10u);
}

// --- The poll ---

TEST_F(PollCycleTest, FromStartToTheFirstScan) {
  Settled();
  EXPECT_TRUE(flags.mblnSetupDone);
  loop.AdvanceMs(3000);
  EXPECT_EQ(sent().size(), 6u) << "the set-up runs once";
  EXPECT_THAT(sim().foregrounds(), ElementsAre(Handle(ids().main), sim().OwnMainWindow()));
}

TEST_F(PollCycleTest, WithoutAConnectionNothingIsPolled) {
  Discover();
  desktop.socket().PretendState(SocketState::kConnecting);
  sim().ForgetMessages();
  Cycle();
  EXPECT_THAT(files.List("C:\\Corvane"), IsEmpty());
  EXPECT_TRUE(sim().messages().empty());
}

TEST_F(PollCycleTest, TheFoldersOfTheDayAreThereOnceThereIsANetwork) {
  Settled();
  EXPECT_TRUE(files.IsDirectory(kDayFolder));
  EXPECT_EQ(folders.DayFolder(), kDayFolder);
}

TEST_F(PollCycleTest, CallActivityIsLoadedOnlyInLogModeAndOnlyOnce) {
  files.Put(std::string(kDayFolder) + "\\Call_Activity_15-11-2026.csv",
            "GSSI;Call Activity\r\n9001;3\r\n");
  Settled();
  EXPECT_FALSE(activity.CallActivityLoaded);
  form.chkCreateCallActivityCvsFile.value = 1;
  for (int times = 0; times < 2; ++times) {
    loop.AdvanceMs(60);
    EXPECT_TRUE(activity.CallActivityLoaded);
    ASSERT_EQ(activity.CallActivityTable.size(), 1u);
    EXPECT_EQ(activity.CallActivityTable[0].Calls, 3);
  }
}

TEST_F(PollCycleTest, KeepsNetworkInfoOpenAndMinimisedInEveryCycle) {
  Settled();
  desktop.Do("window network-info restore");
  loop.AdvanceMs(60);
  EXPECT_EQ(tree().Find(ids().info_window)->show_state, standin::ShowState::kMinimised);
  desktop.Do("window network-info close");
  loop.AdvanceMs(60);
  EXPECT_NE(ids().info_window, 0u);
  EXPECT_EQ(Presses(ids().net_info), 1);
}

TEST_F(PollCycleTest, ASetupThatIsCutShortEndsTheCycle) {
  Connect();
  At(300, [this] { desktop.socket().PretendState(SocketState::kClosing); });
  cycle.RunStartupCycle();
  EXPECT_EQ(scans, 0);
  EXPECT_FALSE(flags.mblnSetupDone);
  EXPECT_TRUE(cycle.tmrStartup().enabled());
}

TEST_F(PollCycleTest, ACollapsedPanelIsReportedAtEachSetupAndNotBetween) {
  desktop.Do("panel tetra collapse");
  cycle.Start();
  loop.AdvanceMs(5000);
  const char* line = "*** You need to expand TETRA Demodulator panel ***";
  EXPECT_EQ(StatusLines(line), 1);
  flags.NetRemoteLinkUp = false;
  loop.AdvanceMs(5000);
  EXPECT_EQ(StatusLines(line), 2);
}

TEST_F(PollCycleTest, AfterALostLinkTheSetupRunsAgain) {
  Settled();
  const auto once = sent().size();
  desktop.Do("stop");  // it does not play any more
  desktop.Do("cut");
  loop.AdvanceMs(200);
  ASSERT_TRUE(Settle());
  EXPECT_EQ(sent().size(), 2 * once);
}

// --- Refusals that were dropped ---

class LostRefusalTest : public PollCycleTest {
 protected:
  static constexpr const char* kParkedAt = "365112500";
  // Follows a call, and SDR# does not answer any more.
  void FollowUnheard() {
    Settled();
    ASSERT_TRUE(FollowsCall(1207));
    loop.AdvanceMs(20);
    Mute();
    remote.SendNetRemoteGet("AudioIsMuted");
  }
  // Ends it while that answer lags.
  void EndCallUnheard() {
    FollowUnheard();
    desktop.Do("release id=1207");
    ASSERT_TRUE(loop.RunUntil([this] { return !Following(); }, 5000));
    loop.AdvanceMs(500);
  }
  void DropRefusal() {
    desktop.Do("reply normal");
    Receive(std::string(kOk) + kError + "\r\n");
  }
  [[nodiscard]] int Parkings() {
    return static_cast<int>(std::count_if(sent().begin(), sent().end(), [](const auto& command) {
      return command.find(kParkedAt) != std::string::npos;
    }));
  }
};

TEST_F(LostRefusalTest, TheControlChannelIsTunedToOnceMore) {
  EndCallUnheard();
  const int before = Parkings();
  const auto sent_before = static_cast<std::ptrdiff_t>(sent().size());
  const auto calls_logged = CallLog();
  DropRefusal();
  loop.AdvanceMs(5000);
  EXPECT_EQ(Parkings(), before + 1);
  EXPECT_THAT(std::vector<std::string>(sent().begin() + sent_before, sent().end()),
              ElementsAre(R"({"Command": "Set", "Method": "Frequency", "Value": 365112500})",
                          R"({"Command": "Set", "Method": "AudioGain", "Value": 25})"));
  EXPECT_EQ(CallLog(), calls_logged);
  EXPECT_EQ(StatusLines("Attempting reset"), 0);
}

TEST_F(LostRefusalTest, ACycleInsideTheWayBackDoesNotCutIn) {
  FollowUnheard();
  remote.SendNetRemoteGet("AudioIsMuted");
  DropRefusal();
  ASSERT_TRUE(remote.RefusalMayBeLost());
  desktop.socket().ForgetSent();
  bool inside = false;
  desktop.socket().SetOnSend([&] {
    if (inside) return;
    inside = true;
    loop.Post(EventSource::kUser, [&] {
      EXPECT_TRUE(follower.InSequence());
      cycle.RunStartupCycle();
    });
  });
  follower.ManualRelease();
  loop.AdvanceMs(1000);
  EXPECT_TRUE(inside);
  const auto* frequency = R"({"Command": "Set", "Method": "Frequency", "Value": 365112500})";
  const auto* gain = R"({"Command": "Set", "Method": "AudioGain", "Value": 25})";
  EXPECT_THAT(sent(), ElementsAre(frequency, gain, frequency, gain));
}

TEST_F(LostRefusalTest, ACallThatIsFollowedThenIsNotLeftForIt) {
  EndCallUnheard();
  desktop.Do("reply normal");
  ASSERT_TRUE(FollowsCall(1208));
  const int before = Parkings();
  DropRefusal();
  loop.AdvanceMs(2000);
  EXPECT_TRUE(Following());
  EXPECT_EQ(Parkings(), before);
  desktop.Do("release id=1208");
  ASSERT_TRUE(loop.RunUntil([this] { return !Following(); }, 5000));
  loop.AdvanceMs(5000);
  EXPECT_EQ(Parkings(), before + 2);
}

// --- Resets asked for by error replies ---

TEST_F(PollCycleTest, ARequestedResetHappensInTheNextCycleUnderTheSameConnection) {
  Settled();
  ASSERT_TRUE(FollowsCall(1207));
  const int presses = Presses(ids().network);
  const auto before = sent().size();
  Receive(kError);
  loop.AdvanceMs(60);
  EXPECT_FALSE(Following());
  EXPECT_EQ(form.lblGroupNumber.caption.get(), "");
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
  EXPECT_THAT(StatusLog(), Contains("Source error inMessage:none"));
  ASSERT_TRUE(Settle());
  EXPECT_EQ(Presses(ids().network), presses);
  EXPECT_EQ(desktop.socket().connect_count(), 1);
  EXPECT_EQ(sent().size(), before + 5) << "the set-up of an SDR# that plays";
}

TEST_F(PollCycleTest, RequestsWithin30SecondsOfARequestedResetWaitUntilTheyAreOver) {
  Settled();
  Receive(kError);
  loop.AdvanceMs(3000);
  const auto fronts = Foregrounds();
  Receive(kError);
  scans = 0;
  loop.AdvanceMs(26000);
  EXPECT_EQ(Foregrounds(), fronts);
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  EXPECT_GT(scans, 300) << "meanwhile the cycles go on";
  loop.AdvanceMs(4000);
  EXPECT_EQ(Foregrounds(), fronts + 2);
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
}

TEST_F(PollCycleTest, AnSdrThatAnswersTheSetupWithErrorsIsResetOnceIn30Seconds) {
  desktop.Do("reply text \"{\\\"Result\\\":\\\"Error\\\",\\\"Type\\\":\\\"x\\\"}\" count=all");
  cycle.Start();
  loop.AdvanceMs(3000);
  EXPECT_EQ(Foregrounds(), 2u);
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  loop.AdvanceMs(25000);
  EXPECT_EQ(Foregrounds(), 2u) << "no focus is taken in between";
  loop.AdvanceMs(572000);
  // 600 s in all: at the start, then every 30 s counted from the end of the first set-up.
  EXPECT_EQ(Foregrounds(), 2u * 20);
  EXPECT_GT(scans, 6000);
}

TEST_F(PollCycleTest, AConnectionLostForRealResetsAtOnceAndSettlesAWaitingRequest) {
  Settled();
  Receive(kError);
  loop.AdvanceMs(3000);
  Receive(kError);
  loop.AdvanceMs(60);
  ASSERT_TRUE(flags.mblnNetRemoteResetRequested);
  desktop.Do("cut");
  loop.AdvanceMs(200);
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
  EXPECT_FALSE(flags.mblnSetupDone);
  ASSERT_TRUE(Settle());
}

// A set-up that is broken off is begun anew while the request of an earlier one still waits.
TEST_F(PollCycleTest, ARequestThatWaitsAlreadyDoesNotWaitLongerForAnotherSetup) {
  Connect();
  flags.mblnNetRemoteResetRequested = true;
  const auto reset_ms = loop.TickMs();
  Cycle();
  ASSERT_TRUE(flags.mblnSetupDone);
  flags.mblnSetupDone = false;
  flags.mblnNetRemoteResetRequested = true;
  Cycle();
  EXPECT_TRUE(flags.mblnSetupDone);
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  loop.AdvanceMs(PollCycle::kResetPauseMs - (loop.TickMs() - reset_ms));
  Cycle();
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
}

TEST_F(PollCycleTest, ACycleEndsWhenTheSocketIsLostWhileTheBoxesAreFinished) {
  Connect();
  sim().SetSilent(Handle(ids().demodulator), true);
  Cycle();
  ASSERT_TRUE(flags.mblnSetupDone);
  sim().SetSilent(Handle(ids().demodulator), false);
  loop.AdvanceMs(PatientWindows::kPauseMs);
  scans = 0;
  At(50, [this] { desktop.socket().PretendState(SocketState::kClosing); });
  Cycle();
  EXPECT_EQ(scans, 0);
}

}  // namespace
}  // namespace corvane::test
