// The link as a whole against the stand-in: it must come up, and come back, by itself.
#include "link_world.h"

namespace corvane::test {
namespace {

using ::testing::Contains;

constexpr std::uint32_t kShownMinimised = 2;  // what a minimised window answers

struct Box {
  bool on;
  bool plain;
};

standin::Options With(Box box) {
  standin::Options options;
  options.network_on = box.on;
  options.network_plain = box.plain;
  return options;
}

class NetworkBoxTest : public ::testing::TestWithParam<Box> {};

TEST_P(NetworkBoxTest, ConnectsWithinTwoAttempts) {
  LinkWorld world(With(GetParam()));
  ASSERT_TRUE(world.StartAndSettle());
  EXPECT_LE(world.desktop.socket().connect_count(), 2);
  EXPECT_TRUE(world.desktop.model().server().listening());
  EXPECT_EQ(world.form.ShapeWinsock_state.fill_colour.get(), kGreen);
  world.loop.AdvanceMs(5000);
  EXPECT_LE(world.desktop.socket().connect_count(), 2);
  EXPECT_TRUE(world.FollowsCall(1207));
}

TEST_P(NetworkBoxTest, ComesBackAfterTheConnectionWasLostInMidCall) {
  for (const char* loss : {"cut", "cut reset", "listen off", "die"}) {
    LinkWorld world(With(GetParam()));
    ASSERT_TRUE(world.StartAndSettle()) << loss;
    ASSERT_TRUE(world.FollowsCall(1207)) << loss;
    const int connects = world.desktop.socket().connect_count();
    world.desktop.Do(loss);
    world.loop.AdvanceMs(1000);
    EXPECT_FALSE(world.Following()) << loss;
    if (std::string_view(loss) == "die") world.desktop.Do("revive");
    ASSERT_TRUE(world.Settle()) << loss;
    EXPECT_LE(world.desktop.socket().connect_count() - connects, 3) << loss;
    EXPECT_TRUE(world.FollowsCall(1300)) << loss;
  }
}

TEST_P(NetworkBoxTest, StaysConnectedThroughTheResetAfterAnErrorReply) {
  LinkWorld world(With(GetParam()));
  ASSERT_TRUE(world.StartAndSettle());
  const int connects = world.desktop.socket().connect_count();
  const std::size_t foregrounds = world.Foregrounds();
  bool listened = true;
  world.remote.SendNetRemoteSet("AudioGain", "99");
  ASSERT_TRUE(world.loop.RunUntil(
      [&] {
        listened = listened && world.desktop.model().server().listening();
        return world.Foregrounds() == foregrounds + 2;
      },
      10000));
  EXPECT_TRUE(listened) << "the port was closed";
  EXPECT_EQ(world.desktop.socket().connect_count(), connects);
  EXPECT_EQ(world.StatusLines("Value error inMessage:Greater than 60"), 1);
  EXPECT_EQ(world.StatusLines("ERROR: Net Remote - Attempting reset "), 1);
  EXPECT_TRUE(world.Reported("Value error inMessage:Greater than 60"));
  ASSERT_TRUE(world.Settle());
  EXPECT_TRUE(world.FollowsCall(1207));
}

INSTANTIATE_TEST_SUITE_P(All, NetworkBoxTest,
                         ::testing::Values(Box{false, false}, Box{true, false}, Box{false, true},
                                           Box{true, true}),
                         [](const auto& param) {
                           return std::string(param.param.plain ? "Plain" : "Toggling") +
                                  (param.param.on ? "On" : "Off");
                         });

// --- Start ---

TEST(SdrLinkTest, SdrThatIsStartedLaterIsFoundAndTheStatusStaysQuietUntilThen) {
  LinkWorld world;
  world.desktop.Do("die");
  world.loop.AdvanceMs(500);
  world.Start();
  world.loop.AdvanceMs(500);
  const int lines = world.form.lstStatusLog.count();
  world.loop.AdvanceMs(600000);
  EXPECT_EQ(world.form.lstStatusLog.count(), lines);
  EXPECT_EQ(world.form.lstStatusLog.Item(lines - 1),
            "No 'Network Info' editbox found. This not good.");
  world.desktop.Do("revive");
  ASSERT_TRUE(world.Settle());
  EXPECT_TRUE(world.FollowsCall(1207));
}

TEST(SdrLinkTest, TheSetupLeavesSdrTunedPlayingAndWithItsBoxesSet) {
  LinkWorld world;
  ASSERT_TRUE(world.StartAndSettle());
  EXPECT_THAT(world.sent(),
              Contains(R"({"Command": "Set", "Method": "Frequency", "Value": 365112500})"));
  const auto& ids = world.desktop.ids();
  const Presets& presets = world.presets;
  const SdrHandles& handles = world.context.handles;
  EXPECT_NE(ids.demodulator, 0u);
  EXPECT_EQ(ReadCheckboxColour(world.windows, handles[SdrRole::kDemodulatorBox]),
            presets.CheckedColour);
  EXPECT_EQ(ReadCheckboxColour(world.windows, handles[SdrRole::kAutoBox]), presets.UnCheckedColour);
  Placement placement;
  ASSERT_TRUE(world.windows.GetPlacement(handles[SdrRole::kNetworkInfoWindow], placement));
  EXPECT_EQ(placement.show_state, kShownMinimised);
  EXPECT_EQ(world.form.lblNetworkInfo.caption.get().substr(0, 4), "MNC:");
}

TEST(SdrLinkTest, LabelsThatAreEmptyUntilSdrPlaysAreFoundThen) {
  standin::Options options;
  options.labels_after_start = true;
  LinkWorld world(options);
  ASSERT_TRUE(world.flags.NetRemoteLinkUp);
  ASSERT_EQ(world.context.handles[SdrRole::kMccLabel], 0u);
  ASSERT_TRUE(world.StartAndSettle());
  EXPECT_NE(world.context.handles[SdrRole::kLaLabel], 0u);
  EXPECT_EQ(world.CallLines("No MCC/MNC/LA seen"), 0);
  EXPECT_TRUE(world.FollowsCall(1207));
}

TEST(SdrLinkTest, ACollapsedPanelIsReportedAndFollowingWorks) {
  standin::Options options;
  options.tetra_expanded = false;
  options.demodulator_checked = true;
  LinkWorld world(options);
  ASSERT_TRUE(world.StartAndSettle());
  EXPECT_EQ(world.StatusLines("*** You need to expand TETRA Demodulator panel ***"), 1);
}

// --- The Network Info window ---

TEST(SdrLinkTest, AClosedNetworkInfoIsOpenedAgainAndItsHistoryIsNotActedOn) {
  LinkWorld world;
  ASSERT_TRUE(world.StartAndSettle());
  ASSERT_TRUE(world.FollowsCall(1207));
  world.desktop.Do("release id=1207");
  ASSERT_TRUE(world.loop.RunUntil([&] { return !world.Following(); }, 5000));
  const WindowHandle old_box = world.context.handles[SdrRole::kNetworkInfoEdit];
  const int connects = world.desktop.socket().connect_count();
  const int setups = world.CallLines("Calling SSI:");

  world.desktop.Do("window network-info close");
  ASSERT_TRUE(world.loop.RunUntil(
      [&] {
        const WindowHandle box = world.context.handles[SdrRole::kNetworkInfoEdit];
        return box != 0 && box != old_box;
      },
      2000));
  world.loop.AdvanceMs(10000);
  EXPECT_EQ(world.CallLines("Calling SSI:"), setups) << "history was acted on";
  EXPECT_TRUE(world.flags.NetRemoteLinkUp);
  EXPECT_EQ(world.desktop.socket().connect_count(), connects);
  EXPECT_TRUE(world.FollowsCall(1300));
}

TEST(SdrLinkTest, AHiddenOrRestoredNetworkInfoIsPutBack) {
  LinkWorld world;
  ASSERT_TRUE(world.StartAndSettle());
  for (const char* action : {"hide", "restore"}) {
    world.desktop.Do(std::string("window network-info ") + action);
    world.loop.AdvanceMs(1500);
    const WindowHandle window = world.context.handles[SdrRole::kNetworkInfoWindow];
    Placement placement;
    ASSERT_TRUE(world.windows.GetPlacement(window, placement)) << action;
    EXPECT_TRUE(world.windows.IsVisible(window)) << action;
    EXPECT_EQ(placement.show_state, kShownMinimised) << action;
  }
}

// The box is emptied and filled again faster than it is looked at: as long as it is shorter than
// what was read, all of it is history; from the line at which reading stood it is new.
TEST(SdrLinkTest, ABoxThatShrinksAndGrowsBetweenTwoPollsIsReadOnWhereItStood) {
  LinkWorld world;
  ASSERT_TRUE(world.StartAndSettle());
  ASSERT_TRUE(world.FollowsCall(1207));
  world.desktop.Do("release id=1207");
  ASSERT_TRUE(world.loop.RunUntil([&] { return !world.Following(); }, 5000));
  world.loop.AdvanceMs(5000);
  standin::WindowTree& tree = world.desktop.model().tree();
  const auto box = world.desktop.ids().info_box;
  const std::string old = tree.Find(box)->lines.text();
  const std::size_t begin = old.rfind('\n', old.find("Call ID:1207")) + 1;
  const std::string setup = old.substr(begin, old.find("\r\n", begin) + 2 - begin);
  ASSERT_NE(setup.find("D_Setup"), std::string::npos) << setup;
  const auto setup_of = [&](int id) {
    std::string line = setup;
    return line.replace(line.find("1207"), 4, std::to_string(id));
  };
  for (int i = 0; i < 8; ++i) world.desktop.Do("line \"nothing " + std::to_string(i) + "\"");
  world.loop.AdvanceMs(2000);
  const int read = world.box.LineCount();
  ASSERT_GT(read, 8);
  const auto fill = [&](int lines) {
    std::string text;
    for (int i = 0; i < lines; ++i) text += setup_of(2000 + i);
    tree.SetText(box, text);
  };

  fill(read - 2);
  world.loop.AdvanceMs(2000);
  EXPECT_FALSE(world.Following());
  EXPECT_EQ(world.CallLines("Call ID: 20"), 0) << "shorter than before: history";

  fill(read + 1);
  ASSERT_TRUE(world.loop.RunUntil([&] { return world.Following(); }, 2000));
  EXPECT_EQ(world.form.lblCallID.caption, " " + std::to_string(2000 + read - 2));
}

// --- A stalled SDR# ---

TEST(SdrLinkTest, AHungSdrNeitherFreezesTheProgramNorReplaysHistory) {
  for (const int hang_ms : {300, 1900, 4000, 12000, 60000}) {
    LinkWorld world;
    ASSERT_TRUE(world.StartAndSettle());
    ASSERT_TRUE(world.FollowsCall(1207));
    world.desktop.Do("release id=1207");
    ASSERT_TRUE(world.loop.RunUntil([&] { return !world.Following(); }, 5000));
    world.loop.AdvanceMs(2000);
    const int setups = world.CallLines("Calling SSI:");
    const int network_changes = world.CallLines("MCC:");
    world.longest_stall_ms = 0;

    world.desktop.Do("hang " + std::to_string(hang_ms));
    world.loop.AdvanceMs(hang_ms);
    EXPECT_LE(world.longest_stall_ms, sim::SimWindowOps::kSendLimitMs + 20) << hang_ms;
    ASSERT_TRUE(world.Settle()) << hang_ms;
    world.loop.AdvanceMs(3000);
    EXPECT_EQ(world.CallLines("Calling SSI:"), setups) << hang_ms;
    EXPECT_EQ(world.CallLines("MCC:"), network_changes) << hang_ms;
    EXPECT_TRUE(world.FollowsCall(1300)) << hang_ms;
  }
}

TEST(SdrLinkTest, WhileSdrHangsAMessageIsTriedNoMoreThanOncePerPause) {
  LinkWorld world;
  ASSERT_TRUE(world.StartAndSettle());
  world.desktop.Do("hang 30000");
  const std::int64_t before = world.desktop.windows().send_count();
  world.loop.AdvanceMs(30000);
  EXPECT_LE(world.desktop.windows().send_count() - before, 30000 / PatientWindows::kPauseMs + 2);
}

// --- The connection ---

TEST(SdrLinkTest, ARefusedConnectionHealsByItselfWhenThePortOpens) {
  LinkWorld world;
  world.desktop.Do("refuse on");
  world.Start();
  world.loop.AdvanceMs(10000);
  EXPECT_GT(world.StatusLines("Is 'Net Remote' enabled in SDR#?"), 0);
  EXPECT_EQ(world.scans, 0);
  EXPECT_EQ(world.form.ShapeWinsock_state.fill_colour.get(), kButtonFace);
  world.desktop.Do("refuse off");
  ASSERT_TRUE(world.Settle());
  EXPECT_TRUE(world.FollowsCall(1207));
}

TEST(SdrLinkTest, ASlowRefusalIsWaitedFor) {
  standin::Options options;
  options.network_on = true;  // the press at load switches it off
  LinkWorld world(options);
  world.desktop.wire().SetRefusedAfterMs(2000);
  ASSERT_TRUE(world.StartAndSettle());
  EXPECT_LE(world.desktop.socket().connect_count(), 2);
}

TEST(SdrLinkTest, TheGreetingIsShownHoweverItArrives) {
  for (const char* fault : {"normal", "split 40", "delay 700", "join", "garble", "drop"}) {
    LinkWorld world;
    world.desktop.Do(std::string("greeting ") + fault + " count=all");
    ASSERT_TRUE(world.StartAndSettle()) << fault;
    const bool readable =
        std::string_view(fault) == "normal" || std::string_view(fault) == "delay 700";
    if (readable) {
      EXPECT_EQ(world.StatusLines("Net Remote v1.0.5282.28765"), 1) << fault;
    }
    EXPECT_TRUE(world.FollowsCall(1207)) << fault;
  }
}

TEST(SdrLinkTest, RepliesThatArriveBrokenAreSurvived) {
  for (const char* fault : {"split 40", "delay 150", "delay 700", "join", "garble", "drop",
                            "text \"\"", "text \"}{\"", "text \"{\\\"Result\\\"\""}) {
    LinkWorld world;
    world.desktop.Do(std::string("reply ") + fault + " count=all");
    ASSERT_TRUE(world.StartAndSettle()) << fault;
    EXPECT_TRUE(world.FollowsCall(1207)) << fault;
    world.loop.AdvanceMs(60000);
    EXPECT_FALSE(world.flags.mblnReceiving) << fault;
    EXPECT_FALSE(world.flags.mblnSending) << fault;
    world.desktop.Do("reply normal");
    EXPECT_TRUE(world.Settle(60000)) << fault;
  }
}

TEST(SdrLinkTest, ASilentServerCosts200MsPerCommand) {
  LinkWorld world;
  ASSERT_TRUE(world.StartAndSettle());
  world.loop.AdvanceMs(1000);
  world.desktop.Do("reply drop count=all");
  const std::int64_t start = world.loop.TickMs();
  for (int i = 0; i < 6; ++i) world.remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_EQ(world.loop.TickMs() - start, 5 * NetRemote::kAnswerLimitMs);
}

TEST(SdrLinkTest, CommandsNeverMeetAtASlowServer) {
  for (const int handling_ms : {0, 5, 60, 120, 180}) {
    LinkWorld world;
    world.desktop.Do("handling " + std::to_string(handling_ms));
    ASSERT_TRUE(world.StartAndSettle());
    for (int id = 1; id <= 40; ++id) {
      ASSERT_TRUE(world.FollowsCall(id)) << handling_ms << " " << id;
      world.loop.AdvanceMs(700 + 37 * id % 300);
      world.desktop.Do("release id=" + std::to_string(id));
      ASSERT_TRUE(world.loop.RunUntil([&] { return !world.Following(); }, 5000));
    }
    EXPECT_FALSE(world.Reported("Syntax error")) << handling_ms;
    EXPECT_EQ(world.StatusLines("Attempting reset"), 0) << handling_ms;
    EXPECT_EQ(world.desktop.socket().connect_count(), 1) << handling_ms;
  }
}

TEST(SdrLinkTest, OnlyTheKnownCommandsAreEverSent) {
  LinkWorld world;
  ASSERT_TRUE(world.StartAndSettle());
  for (int id = 1; id <= 5; ++id) {
    ASSERT_TRUE(world.FollowsCall(id));
    world.loop.AdvanceMs(2000);
    world.desktop.Do(id % 2 == 0 ? "cut" : "release id=" + std::to_string(id));
    ASSERT_TRUE(world.loop.RunUntil([&] { return !world.Following(); }, 5000));
    ASSERT_TRUE(world.Settle());
  }
  const std::string known[] = {R"({"Command": "Set", "Method": "Frequency", "Value": 365112500})",
                               R"({"Command": "Set", "Method": "Frequency", "Value": 365262500})",
                               R"({"Command": "Set", "Method": "DetectorType", "Value": "WFM"})",
                               R"({"Command": "Set", "Method": "FilterBandwidth", "Value": 26000})",
                               R"({"Command": "Set", "Method": "AudioGain", "Value": 25})",
                               R"({"Command": "Set", "Method": "AudioGain", "Value": 47})",
                               R"({"Command": "Get", "Method": "IsPlaying"})",
                               R"({"Command": "Get", "Method": "AudioIsMuted"})",
                               R"({"Command": "Exe", "Method": "Start"})"};
  for (const std::string& command : world.sent()) EXPECT_THAT(known, Contains(command));
  for (const std::string& command : known) EXPECT_THAT(world.sent(), Contains(command));
}

TEST(SdrLinkTest, ASourceThatCannotBeTunedCausesOneResetIn30Seconds) {
  LinkWorld world;
  world.desktop.Do("source error");
  world.Start();
  world.loop.AdvanceMs(5000);
  const std::size_t first = world.Foregrounds();
  EXPECT_GE(first, 2u);
  world.loop.AdvanceMs(300000);
  EXPECT_LE(world.Foregrounds() - first, 2u * 11);
  EXPECT_GE(world.Foregrounds() - first, 2u * 8);
  EXPECT_GT(world.CallLines("No MCC/MNC/LA seen"), 5) << "the network is watched meanwhile";
  world.desktop.Do("source ok");
  world.loop.AdvanceMs(35000);
  const std::size_t settled = world.Foregrounds();
  world.loop.AdvanceMs(120000);
  EXPECT_EQ(world.Foregrounds(), settled);
  EXPECT_TRUE(world.FollowsCall(1207));
}

TEST(SdrLinkTest, SdrThatIsClosedAndStartedAgainIsSetUpAgain) {
  LinkWorld world;
  ASSERT_TRUE(world.StartAndSettle());
  for (int round = 0; round < 5; ++round) {
    ASSERT_TRUE(world.FollowsCall(100 + round));
    world.desktop.Do("die");
    world.loop.AdvanceMs(5000);
    EXPECT_FALSE(world.Following());
    EXPECT_FALSE(world.flags.NetRemoteLinkUp);
    EXPECT_EQ(world.form.ShapeWinsock_state.fill_colour.get(), kButtonFace);
    world.desktop.Do("revive");
    ASSERT_TRUE(world.Settle()) << round;
  }
}

}  // namespace
}  // namespace corvane::test
