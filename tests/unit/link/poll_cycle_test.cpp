#include "link/poll_cycle.h"

#include <stdexcept>

#include "link_fixture.h"
#include "panel/logs.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kOk = "{\"Result\":\"OK\"}\r\n";
constexpr const char* kError = R"({"Result":"Error","Type":"Source error","Message":"none"})";

class PollCycleTest : public LinkTest {
 protected:
  void SetUp() override {
    AddSdr();
    AddNetworkInfo();
    flags.mblnFormLoaded = true;
    socket.on_connect = [this] { loop.At(5, [this] { socket.state = SocketState::kConnected; }); };
    socket.on_send = [this](const std::string&) { loop.At(5, [this] { socket.Arrive(reply); }); };
    remote.SetEndpoint();
  }
  // Everything is connected and set up; the next cycle goes straight to the network.
  void Ready() {
    FillHandles();
    flags.NetRemoteLinkUp = true;
    flags.mblnSetupDone = true;
    socket.state = SocketState::kConnected;
  }
  int Presses(WindowHandle button) { return windows.CountOf(button, kBmClick); }

  std::string reply = kOk;
  MemoryFiles files;
  FakeMci mci;
  FakeFollower follower;
  Presets presets;
  NetworkIdentity identity;
  NetworkNames names;
  GssiTable groups;
  LogFiles logs{files, clock, form};
  DayFolders folders{files, form, "C:\\Corvane"};
  CallActivity activity{files, clock, folders, form};
  Recorder recorder{mci, files, form, [this] { return folders.DayFolder(); }};
  NetRemote remote{context, logs, "C:\\Corvane", follower, [] { return true; }};
  Discovery discovery{context};
  NetworkInfoWindow info{context, discovery};
  SdrSetup setup{context, remote, info, presets};
  NetworkWatch network{context, discovery, identity, names, groups, follower};
  PollCycle cycle{context, {discovery, remote, info, setup, network, recorder, folders, activity}};
};

// --- The timer ---

TEST_F(PollCycleTest, DoesNotRunBeforeStart) {
  EXPECT_EQ(cycle.tmrStartup().interval_ms(), 60);
  EXPECT_FALSE(cycle.tmrStartup().enabled());
  loop.Run(10000);
  EXPECT_EQ(socket.connects, 0);
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(PollCycleTest, StartArmsTheTimerAndCyclesFollow60MsApart) {
  Ready();
  std::vector<std::int64_t> times;
  follower.on_scan = [&] { times.push_back(loop.now_ms); };
  const auto start = loop.now_ms;
  cycle.Start();
  loop.Run(185);
  EXPECT_THAT(times, ElementsAre(start + 60, start + 120, start + 180));
}

TEST_F(PollCycleTest, ATickBeforeTheFormIsLoadedDoesNothing) {
  Ready();
  flags.mblnFormLoaded = false;
  cycle.Start();
  loop.Run(600);
  EXPECT_EQ(follower.scans, 0);
  EXPECT_TRUE(cycle.tmrStartup().enabled());
  flags.mblnFormLoaded = true;
  loop.Run(60);
  EXPECT_EQ(follower.scans, 1);
}

TEST_F(PollCycleTest, TheTimerIsDisarmedDuringACycleAndCyclesNeverOverlap) {
  Ready();
  int depth = 0;
  int deepest = 0;
  follower.on_scan = [&] {
    EXPECT_FALSE(cycle.tmrStartup().enabled());
    deepest = std::max(deepest, ++depth);
    (void)SleepAndYield(loop, 500, nullptr);
    --depth;
  };
  cycle.Start();
  loop.Run(3000);
  EXPECT_EQ(deepest, 1);
  EXPECT_GT(follower.scans, 3);
  EXPECT_TRUE(cycle.tmrStartup().enabled());
}

TEST_F(PollCycleTest, ATickInsideItsOwnHandlerIsDropped) {
  Ready();
  follower.on_scan = [&] {
    cycle.tmrStartup().SetEnabled(true);
    (void)SleepAndYield(loop, 500, nullptr);
  };
  cycle.Start();
  loop.Run(100);
  EXPECT_EQ(follower.scans, 1);
}

TEST_F(PollCycleTest, ShuttingDownEndsTheChain) {
  Ready();
  follower.on_scan = [&] { flags.mblnShuttingDown = true; };
  cycle.Start();
  loop.Run(1000);
  EXPECT_EQ(follower.scans, 1);
  EXPECT_FALSE(cycle.tmrStartup().enabled());
}

TEST_F(PollCycleTest, ATickWhileShuttingDownDoesNothing) {
  Ready();
  cycle.Start();
  flags.mblnShuttingDown = true;
  loop.Run(1000);
  EXPECT_EQ(follower.scans, 0);
  EXPECT_TRUE(windows.messages.empty());
  EXPECT_TRUE(files.folders.empty());
}

TEST_F(PollCycleTest, AnExceptionBecomesOneLineAndTheNextCycleRuns) {
  Ready();
  follower.on_scan = [&] {
    if (follower.scans <= 5) throw std::runtime_error("no such luck");
  };
  cycle.Start();
  loop.Run(620);
  EXPECT_EQ(follower.scans, 10);
  EXPECT_THAT(StatusLog(),
              ElementsAre("GSSI for this MNC network: 0", "Error in poll cycle: no such luck"));
}

TEST_F(PollCycleTest, AnUnknownExceptionDoesNotStopTheHeartbeatEither) {
  Ready();
  follower.on_scan = [&] {
    if (follower.scans == 1) throw 42;
  };
  cycle.Start();
  loop.Run(185);
  EXPECT_EQ(follower.scans, 3);
}

// --- The reset ---

TEST_F(PollCycleTest, ALostLinkClearsTheDisplayOfTheCall) {
  flags.FollowingCall = true;
  for (Label* label :
       {&form.lblCarrierNumber, &form.lblTimeSlotNumber, &form.lblCurrentSSI, &form.lblGroupNumber,
        &form.lblSSI_label, &form.lblSsiLastSeen, &form.lblGSSI_label, &form.lblCallID}) {
    label->caption = std::string("x");
  }
  form.lstCurrentSSI_Users.Add("5010");
  form.ShapeBusy_state.fill_colour = kGreen;
  form.lblGroupHold.tool_tip = std::string("Holding GSSI:  9001");
  form.lblGroupNumber.tool_tip = std::string("Holding GSSI:  9001");
  form.lblGroupHold.tag = std::string(" 9001");
  form.lblGroupHold.fore_colour = kHoldOrange;
  form.lblGroupHold.bold = true;

  cycle.RunStartupCycle();

  EXPECT_FALSE(flags.FollowingCall);
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
  EXPECT_EQ(follower.resets, 0);
}

TEST_F(PollCycleTest, ALinkThatIsUpLeavesTheDisplayAlone) {
  Ready();
  flags.FollowingCall = true;
  form.lblGroupNumber.caption = std::string(" 9001");
  form.lblGroupHold.tag = std::string(" 9001");
  cycle.RunStartupCycle();
  EXPECT_TRUE(flags.FollowingCall);
  EXPECT_EQ(form.lblGroupNumber.caption.get(), " 9001");
  EXPECT_EQ(form.lblGroupHold.tag.get(), " 9001");
  EXPECT_THAT(StatusLog(), Not(Contains("SDR# is running")));
}

TEST_F(PollCycleTest, TheResetStopsARecording) {
  folders.CreateDayFolders(clock.Now());
  recorder.StartRecording("142305_1207_9001");
  recorder.RecordingActive = true;
  ShowRecording(form, true);
  mci.commands.clear();
  cycle.RunStartupCycle();
  EXPECT_FALSE(recorder.RecordingActive);
  EXPECT_THAT(mci.commands, Contains("stop recsound"));
  EXPECT_EQ(form.ShapeBusy_state.border_colour.get(), kWindowText);
  EXPECT_EQ(form.ShapeBusy_state.border_width.get(), 1);
}

TEST_F(PollCycleTest, TheResetDoesNotTouchTheRecorderWithoutARecording) {
  cycle.RunStartupCycle();
  EXPECT_THAT(mci.commands, IsEmpty());
}

TEST_F(PollCycleTest, TheResetForgetsSetupAndNetwork) {
  flags.mblnSetupDone = true;
  network.NetworkKey = "2621100";
  windows.Destroy(kSdr);
  cycle.RunStartupCycle();
  EXPECT_FALSE(flags.mblnSetupDone);
  EXPECT_EQ(network.NetworkKey, "");
  EXPECT_EQ(socket.connects, 0) << "no link, no connection";
  EXPECT_TRUE(cycle.tmrStartup().enabled());
}

TEST_F(PollCycleTest, AfterADiscoveryThatSucceedsTheSameCycleConnects) {
  cycle.RunStartupCycle();
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  EXPECT_EQ(socket.connects, 1);
  EXPECT_EQ(follower.scans, 0);
}

TEST_F(PollCycleTest, WithoutSdrItAsksAgainEveryCycleAndStaysQuiet) {
  windows.Destroy(kSdr);
  windows.Destroy(kInfoWindow);
  cycle.Start();
  loop.Run(600);
  EXPECT_EQ(StatusLog().size(), 5u);
  AddSdr();
  AddNetworkInfo();
  loop.Run(60);
  EXPECT_TRUE(flags.NetRemoteLinkUp);
}

TEST_F(PollCycleTest, TheFirstRunAfterStartIsLoggedWhole) {
  windows.Destroy(kSdr);
  windows.Destroy(kInfoWindow);
  discovery.DiscoverSdrWindows(Discovery::Log::kWhole);
  ASSERT_EQ(StatusLog().size(), 5u);
  cycle.Start();
  loop.Run(60);
  EXPECT_EQ(StatusLog().size(), 10u);
  loop.Run(600);
  EXPECT_EQ(StatusLog().size(), 10u);
}

// --- The poll ---

TEST_F(PollCycleTest, FromStartToTheFirstScan) {
  cycle.Start();
  loop.Run(3000);
  EXPECT_TRUE(flags.mblnSetupDone);
  EXPECT_GT(follower.scans, 0);
  EXPECT_EQ(socket.sent.size(), 6u) << "the set-up runs once";
  EXPECT_THAT(windows.foregrounds, ElementsAre(kSdr, windows.own));
}

TEST_F(PollCycleTest, WithoutAConnectionNothingIsPolled) {
  Ready();
  socket.state = SocketState::kConnecting;
  cycle.RunStartupCycle();
  EXPECT_EQ(follower.scans, 0);
  EXPECT_TRUE(files.folders.empty());
  EXPECT_TRUE(windows.messages.empty());
}

TEST_F(PollCycleTest, TheFoldersOfTheDayComeFirst) {
  Ready();
  follower.on_scan = [&] { EXPECT_TRUE(files.IsDirectory("C:\\Corvane\\Daily\\20261115")); };
  cycle.RunStartupCycle();
  EXPECT_EQ(follower.scans, 1);
  EXPECT_EQ(folders.DayFolder(), "C:\\Corvane\\Daily\\20261115");
}

TEST_F(PollCycleTest, CallActivityIsLoadedOnlyInLogModeAndOnlyOnce) {
  Ready();
  const std::string path = "C:\\Corvane\\Daily\\20261115\\Call_Activity_15-11-2026.csv";
  files.content[path] = "GSSI;Call Activity\r\n9001;3\r\n";
  cycle.RunStartupCycle();
  EXPECT_FALSE(activity.CallActivityLoaded);
  form.chkCreateCallActivityCvsFile.value = 1;
  cycle.RunStartupCycle();
  EXPECT_TRUE(activity.CallActivityLoaded);
  ASSERT_EQ(activity.CallActivityTable.size(), 1u);
  EXPECT_EQ(activity.CallActivityTable[0].Calls, 3);
  cycle.RunStartupCycle();
  EXPECT_EQ(activity.CallActivityTable[0].Calls, 3);
}

TEST_F(PollCycleTest, KeepsNetworkInfoOpenAndMinimisedInEveryCycle) {
  Ready();
  cycle.RunStartupCycle();
  windows.At(kInfoWindow).placement.show_state = kShowNormal;
  cycle.RunStartupCycle();
  EXPECT_EQ(windows.placements.size(), 2u);
  windows.Destroy(kInfoWindow);
  cycle.RunStartupCycle();
  EXPECT_TRUE(windows.IsAlive(kInfoWindow));
  EXPECT_EQ(Presses(kNetInfo), 1);
}

TEST_F(PollCycleTest, ASetupThatIsCutShortEndsTheCycle) {
  Ready();
  flags.mblnSetupDone = false;
  loop.At(300, [this] { socket.state = SocketState::kClosing; });
  cycle.RunStartupCycle();
  EXPECT_EQ(follower.scans, 0);
  EXPECT_FALSE(flags.mblnSetupDone);
  EXPECT_TRUE(cycle.tmrStartup().enabled());
}

TEST_F(PollCycleTest, ACollapsedPanelIsReportedAtEachSetupAndNotBetween) {
  windows.At(kDemodulator).visible = false;
  cycle.Start();
  loop.Run(5000);
  const std::string line = "*** You need to expand TETRA Demodulator panel ***";
  const auto count = [&] {
    const auto shown = StatusLog();
    return std::count(shown.begin(), shown.end(), line);
  };
  EXPECT_EQ(count(), 1);
  flags.NetRemoteLinkUp = false;
  loop.Run(5000);
  EXPECT_EQ(count(), 2);
}

TEST_F(PollCycleTest, AfterALostLinkTheSetupRunsAgain) {
  cycle.Start();
  loop.Run(3000);
  const auto sent = socket.sent.size();
  socket.state = SocketState::kClosing;
  loop.Run(5000);
  EXPECT_TRUE(flags.mblnSetupDone);
  EXPECT_EQ(socket.sent.size(), 2 * sent);
  EXPECT_EQ(socket.connects, 2);
}

// --- Resets asked for by error replies ---

TEST_F(PollCycleTest, ARequestedResetHappensInTheNextCycleUnderTheSameConnection) {
  cycle.Start();
  loop.Run(3000);
  const int presses = Presses(kNetwork);
  flags.FollowingCall = true;
  form.lblGroupNumber.caption = std::string(" 9001");
  socket.sent.clear();
  socket.Arrive(kError);
  loop.Run(60);
  EXPECT_FALSE(flags.FollowingCall);
  EXPECT_EQ(form.lblGroupNumber.caption.get(), "");
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
  EXPECT_EQ(Presses(kNetwork), presses);
  EXPECT_EQ(socket.closes, 0);
  loop.Run(3000);
  EXPECT_TRUE(flags.mblnSetupDone);
  EXPECT_EQ(socket.sent.size(), 6u);
  EXPECT_THAT(StatusLog(), Contains("Source error inMessage:none"));
}

TEST_F(PollCycleTest, RequestsWithin30SecondsOfARequestedResetWaitUntilTheyAreOver) {
  cycle.Start();
  loop.Run(3000);
  socket.Arrive(kError);
  loop.Run(3000);
  windows.foregrounds.clear();
  socket.Arrive(kError);
  const int scans = follower.scans;
  loop.Run(26000);
  EXPECT_THAT(windows.foregrounds, IsEmpty());
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  EXPECT_GT(follower.scans, scans + 300) << "meanwhile the cycles go on";
  loop.Run(4000);
  EXPECT_THAT(windows.foregrounds, ElementsAre(kSdr, windows.own));
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
}

TEST_F(PollCycleTest, AnSdrThatAnswersTheSetupWithErrorsIsResetOnceIn30Seconds) {
  reply = kError;
  cycle.Start();
  loop.Run(3000);
  EXPECT_EQ(windows.foregrounds.size(), 2u);
  loop.Run(25000);
  EXPECT_EQ(windows.foregrounds.size(), 2u) << "no focus is taken in between";
  loop.Run(572000);
  // 600 s in all: at the start, then every 30 s counted from the end of the first set-up.
  EXPECT_EQ(windows.foregrounds.size(), 2u * 20);
  EXPECT_GT(follower.scans, 6000);
}

TEST_F(PollCycleTest, AConnectionLostForRealResetsAtOnceAndSettlesAWaitingRequest) {
  cycle.Start();
  loop.Run(3000);
  socket.Arrive(kError);
  loop.Run(3000);
  socket.Arrive(kError);
  loop.Run(60);
  ASSERT_TRUE(flags.mblnNetRemoteResetRequested);
  socket.state = SocketState::kClosing;
  loop.Run(200);
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
  EXPECT_FALSE(flags.mblnSetupDone);
  loop.Run(4000);
  EXPECT_TRUE(flags.mblnSetupDone);
}

}  // namespace
}  // namespace corvane::test
