#include "link/net_remote.h"

#include <stdexcept>

#include "link_fixture.h"
#include "panel/logs.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kRule = "==============";
constexpr const char* kErrors = "C:\\Corvane\\errors.txt";

class NetRemoteTest : public LinkTest {
 protected:
  // Connected to a server that answers nothing by itself.
  void ConnectMuted() {
    Connect();
    Mute();
  }
  [[nodiscard]] SocketState State() { return desktop.socket().State(); }
  // How much of the loop's time `call` takes.
  std::int64_t Duration(const std::function<void()>& call) {
    const std::int64_t begin = loop.TickMs();
    call();
    return loop.TickMs() - begin;
  }
  // Whether an event that waits is dispatched inside `call`.
  bool LetsEventsRun(const std::function<void()>& call) {
    bool ran = false;
    loop.Post(EventSource::kUser, [&] { ran = true; });
    call();
    const bool inside = ran;
    loop.DoEvents();
    return inside;
  }
  void Gain() { remote.SendNetRemoteSet("AudioGain", "25"); }
};

// --- Command texts ---

TEST_F(NetRemoteTest, CommandsAreOneWriteEachWithoutTerminator) {
  Connect();
  remote.SendNetRemoteSet("AudioGain", "25");
  remote.SendNetRemoteSet("DetectorType", "\"WFM\"");
  remote.SendNetRemoteSet("DetectorType", "WFM");
  remote.SendNetRemoteGet("IsPlaying");
  remote.SendNetRemoteExe("Start");
  EXPECT_THAT(sent(), ElementsAre(R"({"Command": "Set", "Method": "AudioGain", "Value": 25})",
                                  R"({"Command": "Set", "Method": "DetectorType", "Value": "WFM"})",
                                  R"({"Command": "Set", "Method": "DetectorType", "Value": WFM})",
                                  R"({"Command": "Get", "Method": "IsPlaying"})",
                                  R"({"Command": "Exe", "Method": "Start"})"));
}

TEST_F(NetRemoteTest, SetAndGetLetEventsRunAfterTheSendExeDoesNot) {
  ConnectMuted();
  EXPECT_TRUE(LetsEventsRun([&] { Gain(); }));
  Receive(kOk);
  EXPECT_TRUE(LetsEventsRun([&] { remote.SendNetRemoteGet("IsPlaying"); }));
  Receive(kOk);
  EXPECT_FALSE(LetsEventsRun([&] { remote.SendNetRemoteExe("Start"); }));
}

TEST_F(NetRemoteTest, NoEventRunsWhileACommandIsBeingSent) {
  Connect();
  bool sending = false;
  desktop.socket().SetOnSend([&] { sending = flags.mblnSending; });
  loop.Post(EventSource::kUser, [&] { EXPECT_FALSE(flags.mblnSending); });
  Gain();
  EXPECT_TRUE(sending);
  EXPECT_FALSE(flags.mblnSending);
}

TEST_F(NetRemoteTest, AFailedSendIsNotReported) {
  Connect();
  desktop.socket().RefuseNextSend();
  Gain();
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_FALSE(flags.mblnSending);
  EXPECT_TRUE(flags.NetRemoteLinkUp);
}

TEST_F(NetRemoteTest, ASendThatThrowsLeavesNobodySending) {
  Connect();
  desktop.socket().SetOnSend([] { throw std::runtime_error("no memory"); });
  EXPECT_THROW(Gain(), std::runtime_error);
  EXPECT_FALSE(flags.mblnSending);
}

TEST_F(NetRemoteTest, WithoutAConnectionACommandCostsOneLineAndTheLink) {
  flags.NetRemoteLinkUp = true;
  const auto commands = [&] {
    Gain();
    EXPECT_THAT(StatusLog(), ElementsAre("No SDR# NET connection"));
    EXPECT_FALSE(flags.NetRemoteLinkUp);
    EXPECT_FALSE(flags.mblnSending);
    remote.SendNetRemoteGet("IsPlaying");
    remote.SendNetRemoteExe("Start");
  };
  EXPECT_FALSE(LetsEventsRun([&] { EXPECT_EQ(Duration(commands), 0); }));
  EXPECT_EQ(StatusLog().size(), 3u);
  Connect();
  loop.AdvanceMs(1000);
  EXPECT_THAT(sent(), IsEmpty()) << "nothing is queued";
}

TEST_F(NetRemoteTest, ACommandThatCannotBeSentDoesNotWaitForTheOneBefore) {
  ConnectMuted();
  remote.SendNetRemoteGet("AudioIsMuted");
  flags.NetRemoteConnected = false;
  EXPECT_EQ(Duration([&] { Gain(); }), 0);
  EXPECT_THAT(StatusLog(), ElementsAre("No SDR# NET connection"));
}

// --- Senders that meet another one ---

TEST_F(NetRemoteTest, ASenderLooksEvery30MsWhetherTheOtherOneIsDone) {
  Connect();
  flags.mblnSending = true;
  At(75, [this] { flags.mblnSending = false; });
  EXPECT_EQ(Duration([&] { Gain(); }), 90);
  EXPECT_EQ(sent().size(), 1u);
}

TEST_F(NetRemoteTest, SetAndGetGiveUpOnShutdownWhileAnotherOneSends) {
  Connect();
  flags.mblnSending = true;
  flags.mblnShuttingDown = true;
  EXPECT_EQ(Duration([&] {
              Gain();
              remote.SendNetRemoteGet("IsPlaying");
            }),
            0);
  EXPECT_THAT(sent(), IsEmpty());
}

TEST_F(NetRemoteTest, ExeKeepsWaitingWhileShuttingDown) {
  Connect();
  flags.mblnSending = true;
  flags.mblnShuttingDown = true;
  At(140, [this] { flags.mblnSending = false; });
  EXPECT_EQ(Duration([&] { remote.SendNetRemoteExe("Start"); }), 150);
  EXPECT_EQ(sent().size(), 1u);
}

// --- One command under way ---

TEST_F(NetRemoteTest, ACommandIsUnderWayUntilItsResultWasHandled) {
  ConnectMuted();
  EXPECT_FALSE(remote.CommandUnderWay());
  Gain();
  EXPECT_TRUE(remote.CommandUnderWay());
  Receive("{\"Name\":\"Net Remote\",\"Version\":\"1\"}\r\n");
  EXPECT_TRUE(remote.CommandUnderWay()) << "the greeting answers no command";
  Receive(kOk);
  EXPECT_FALSE(remote.CommandUnderWay());
}

TEST_F(NetRemoteTest, AnyResultLineEndsTheWaitWhateverItSays) {
  ConnectMuted();
  for (const char* reply :
       {"{\"Result\":\"Error\"}\r\n", "{\"Result\":\"OK\",\"Method\":\"IsPlaying\"}\r\n",
        "{\"Result\":\"Odd\"}\r\n", "{\"Result\"}\r\n"}) {
    Gain();
    ASSERT_TRUE(remote.CommandUnderWay());
    Receive(reply);
    EXPECT_FALSE(remote.CommandUnderWay()) << reply;
  }
}

TEST_F(NetRemoteTest, TheNextCommandWaitsForTheAnswerOfTheOneBefore) {
  Connect();
  desktop.Do("handling 100");
  remote.SendNetRemoteSet("Frequency", "365112500");
  const std::int64_t waited = Duration([&] { Gain(); });
  EXPECT_EQ(waited, 100 + 2) << "the time of handling and the way there and back";
  EXPECT_EQ(sent().size(), 2u);
  EXPECT_TRUE(remote.CommandUnderWay());
}

TEST_F(NetRemoteTest, ASilentServerCosts200MsPerCommandAndNoMore) {
  ConnectMuted();
  EXPECT_EQ(Duration([&] {
              for (int i = 0; i < 11; ++i) Gain();
            }),
            10 * 200);
  EXPECT_EQ(sent().size(), 11u);
}

TEST_F(NetRemoteTest, NothingButSocketEventsRunsDuringTheWait) {
  ConnectMuted();
  remote.SendNetRemoteSet("Frequency", "365112500");
  int ticks = 0;
  int clicks = 0;
  const auto timer = loop.MakeTimer(10, [&] { ++ticks; });
  timer->SetEnabled(true);
  At(20, [&] { loop.Post(EventSource::kUser, [&] { ++clicks; }); });
  At(100, [&] { desktop.wire().SendToAll(kOk); });
  desktop.socket().SetOnSend([&] {
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(clicks, 0);
  });
  EXPECT_EQ(Duration([&] { Gain(); }), 101);
  EXPECT_EQ(sent().size(), 2u);
  EXPECT_GT(ticks, 0);
  EXPECT_EQ(clicks, 1);
}

TEST_F(NetRemoteTest, AnAnswerInTwoPiecesIsNotPutTogether) {
  ConnectMuted();
  remote.SendNetRemoteGet("IsPlaying");
  Receive("{\"Res");
  EXPECT_TRUE(remote.CommandUnderWay());
  Receive("ult\":\"OK\"}\r\n");
  EXPECT_TRUE(remote.CommandUnderWay());
  loop.AdvanceMs(200);
  EXPECT_FALSE(remote.CommandUnderWay());
}

TEST_F(NetRemoteTest, ShuttingDownEndsTheWaitAndTheCommandIsSent) {
  ConnectMuted();
  remote.SendNetRemoteSet("Frequency", "1");
  flags.mblnShuttingDown = true;
  EXPECT_EQ(Duration([&] { Gain(); }), 0);
  EXPECT_EQ(sent().size(), 2u);
}

TEST_F(NetRemoteTest, ALostSocketEndsTheWait) {
  ConnectMuted();
  remote.SendNetRemoteSet("Frequency", "1");
  At(50, [&] { desktop.Do("cut reset"); });
  EXPECT_EQ(Duration([&] { Gain(); }), 51);
}

TEST_F(NetRemoteTest, TwoCommandsNeverReachASlowServerTogether) {
  Connect();
  desktop.Do("handling 60");
  for (int i = 0; i < 20; ++i) {
    remote.SendNetRemoteSet("Frequency", "1");
    loop.Sleep(10);
    remote.SendNetRemoteSet("AudioGain", "47");
    remote.SendNetRemoteGet("AudioIsMuted");
    remote.SendNetRemoteExe("Start");
  }
  loop.AdvanceMs(500);
  EXPECT_EQ(sent().size(), 80u);
  EXPECT_THAT(StatusLog(), IsEmpty()) << "a syntax error";
}

// --- Selectors ---

TEST_F(NetRemoteTest, PressesTheTimeslotSelector) {
  tree().SetText(ids().timeslots[1], "No selector");
  Discover();
  sim().ForgetMessages();
  remote.PressTimeslot(3);
  EXPECT_THAT(sim().messages(),
              ElementsAre(Message{Handle(ids().timeslots[2]), Kind::kPressSelector}));
  EXPECT_EQ(desktop.model().receiver().state().slot, 3);
  sim().ForgetMessages();
  for (const int timeslot : {2, 0, 5}) remote.PressTimeslot(timeslot);
  EXPECT_TRUE(sim().messages().empty());
}

// --- The state check ---

TEST_F(NetRemoteTest, AClosedSocketIsConnectedToTheLocalMachine) {
  Discover();
  flags.NetRemoteConnected = true;
  form.ShapeWinsock_state.fill_colour = kGreen;
  EXPECT_EQ(Duration([&] { remote.CheckNetRemoteConnection(); }), 250);
  EXPECT_EQ(desktop.socket().connect_count(), 1);
  EXPECT_FALSE(flags.NetRemoteConnected);
  EXPECT_EQ(form.ShapeWinsock_state.fill_colour.get(), kButtonFace);
  EXPECT_EQ(State(), SocketState::kConnected);
}

TEST_F(NetRemoteTest, TheWaitAfterConnectingEndsOnShutdown) {
  At(50, [&] { loop.Post(EventSource::kUser, [&] { flags.mblnShuttingDown = true; }); });
  EXPECT_LE(Duration([&] { remote.CheckNetRemoteConnection(); }), 60);
}

TEST_F(NetRemoteTest, IntermediateStatesAreNamedAndNothingElse) {
  const std::pair<SocketState, const char*> names[] = {
      {SocketState::kOpen, "Open"},
      {SocketState::kListening, "Listening"},
      {SocketState::kConnectionPending, "Connection Pending"},
      {SocketState::kResolvingHost, "Resolving Host"},
      {SocketState::kHostResolved, "Host Resolved"}};
  Connect();
  for (const auto& [state, name] : names) {
    form.lstStatusLog.Clear();
    desktop.socket().PretendState(state);
    flags.NetRemoteConnected = true;
    remote.CheckNetRemoteConnection();
    EXPECT_THAT(StatusLog(), ElementsAre(name));
    EXPECT_FALSE(flags.NetRemoteConnected);
    EXPECT_TRUE(flags.NetRemoteLinkUp);
  }
  desktop.socket().PretendState(std::nullopt);
  EXPECT_EQ(State(), SocketState::kConnected) << "the connection was left alone";
}

TEST_F(NetRemoteTest, WhileConnectingNothingHappens) {
  flags.NetRemoteLinkUp = true;
  desktop.wire().SetLatencyMs(1000);
  remote.CheckNetRemoteConnection();
  ASSERT_EQ(State(), SocketState::kConnecting);
  EXPECT_EQ(Duration([&] { remote.CheckNetRemoteConnection(); }), 0);
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_EQ(desktop.socket().connect_count(), 1);
  EXPECT_EQ(State(), SocketState::kConnecting);
  EXPECT_FALSE(flags.NetRemoteConnected);
}

TEST_F(NetRemoteTest, ConnectedIsShownGreen) {
  Connect();
  EXPECT_TRUE(flags.NetRemoteConnected);
  EXPECT_EQ(form.ShapeWinsock_state.fill_colour.get(), kGreen);
}

TEST_F(NetRemoteTest, AClosingSocketIsClosedAndTheStatusLogWiped) {
  Connect();
  AddStatusLine(form, "old");
  desktop.Do("cut");
  loop.AdvanceMs(10);
  ASSERT_EQ(State(), SocketState::kClosing);
  remote.CheckNetRemoteConnection();
  EXPECT_EQ(State(), SocketState::kClosed);
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_FALSE(flags.NetRemoteConnected);
  EXPECT_EQ(form.ShapeWinsock_state.fill_colour.get(), kButtonFace);
  remote.CheckNetRemoteConnection();
  EXPECT_EQ(desktop.socket().connect_count(), 2);
}

TEST_F(NetRemoteTest, ASocketInErrorEndsTheCallAndIsClosed) {
  ASSERT_TRUE(StartAndSettle());
  ASSERT_TRUE(FollowsCall(1207));
  cycle.tmrStartup().SetEnabled(false);
  desktop.Do("cut reset");
  loop.AdvanceMs(10);
  ASSERT_EQ(State(), SocketState::kError);
  form.lstStatusLog.Clear();
  remote.CheckNetRemoteConnection();
  EXPECT_FALSE(Following());
  EXPECT_THAT(StatusLog(), ElementsAre("No SDR# NET connection", "No SDR# NET connection"))
      << "the call was ended before the connection was thought to be back";
  EXPECT_EQ(State(), SocketState::kClosed);
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_FALSE(flags.NetRemoteConnected);
  EXPECT_EQ(form.ShapeWinsock_state.fill_colour.get(), kButtonFace);
}

TEST_F(NetRemoteTest, ASocketInErrorWithoutACallIsOnlyClosed) {
  Connect();
  desktop.Do("cut reset");
  loop.AdvanceMs(10);
  form.lstStatusLog.Clear();
  remote.CheckNetRemoteConnection();
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_EQ(State(), SocketState::kClosed);
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(NetRemoteTest, ANewConnectionStartsWithNoCommandUnderWay) {
  ConnectMuted();
  remote.SendNetRemoteGet("AudioIsMuted");
  desktop.Do("cut");
  loop.AdvanceMs(10);
  ASSERT_TRUE(remote.CommandUnderWay());
  remote.CheckNetRemoteConnection();
  EXPECT_FALSE(remote.CommandUnderWay());
}

// --- Replies ---

TEST_F(NetRemoteTest, TheGreetingIsShown) {
  ConnectMuted();
  Receive("{\"Name\":\"Net Remote\",\"Version\":\"1.0.5282.28765\"}\r\n");
  EXPECT_THAT(StatusLog(), ElementsAre("Net Remote v1.0.5282.28765"));
  EXPECT_TRUE(LastStatusLineShown());
}

TEST_F(NetRemoteTest, TheFlagOfTheHandlerIsSetWhileAReplyIsHandled) {
  ConnectMuted();
  EXPECT_FALSE(flags.mblnReceiving);
  Receive(R"({"Result":"Error","Type":"Value error","Message":"x"})");
  EXPECT_TRUE(receiving);
  EXPECT_FALSE(flags.mblnReceiving);
}

TEST_F(NetRemoteTest, NoEventRunsWhileAReplyIsHandled) {
  ConnectMuted();
  bool seen = false;
  int events = 0;
  loop.SetAfterEvent([&] { seen = seen || flags.mblnReceiving; });
  const auto timer = loop.MakeTimer(10, [&] { ++events; });
  timer->SetEnabled(true);
  for (int i = 0; i < 20; ++i) {
    loop.Post(EventSource::kUser, [&] { ++events; });
    Receive(R"({"Result":"Error","Type":"Value error","Message":"x"})");
  }
  EXPECT_GT(events, 20);
  EXPECT_FALSE(seen) << "an event was dispatched inside the handler";
}

TEST_F(NetRemoteTest, TheFlagOfTheHandlerIsLoweredOnEveryWayOut) {
  ConnectMuted();
  for (const char* reply :
       {"x", "{}", kOk, "{\"Result\"}", "{\"Result\":\"OK\",\"a\":\"b\"}", "{\"Result\":\"Error\"}",
        "{\"Result\":\"Error\",\"a\":\"b\"}", "{\"Name\":\"x\"}", "\r\n"}) {
    Receive(reply);
    EXPECT_FALSE(flags.mblnReceiving) << reply;
  }
}

TEST_F(NetRemoteTest, StatesAreStoredAndKept) {
  ConnectMuted();
  Receive(R"({"Result":"OK","Method":"AudioIsMuted","Value":true})");
  Receive(R"({"Result":"OK","Method":"IsPlaying","Value":1})");
  EXPECT_TRUE(flags.mblnAudioMuted);
  EXPECT_TRUE(flags.mblnIsPlaying);
  Receive(kOk);
  Receive(R"({"Result":"OK","Method":"AudioIsMuted","Value":perhaps})");
  EXPECT_TRUE(flags.mblnAudioMuted);
  Receive(R"({"Result":"OK","Method":"AudioIsMuted","Value":"False"})");
  EXPECT_FALSE(flags.mblnAudioMuted);
  EXPECT_TRUE(flags.mblnIsPlaying);
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(NetRemoteTest, AnythingElseThatSucceededIsDumped) {
  ConnectMuted();
  Receive(R"({"Result":"OK","Method":"Frequency","Value":365112500})");
  EXPECT_THAT(StatusLog(), ElementsAre(kRule, "Unknown ERROR[RAW]: " + Now(),
                                       "Result:OK,Method:Frequency,Value:365112500", kRule));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
  EXPECT_EQ(files.Content(kErrors), std::nullopt);
}

TEST_F(NetRemoteTest, AnErrorIsDumpedReportedFiledAndAsksForAReset) {
  ConnectMuted();
  Receive(R"({"Result":"Error","Type":"Value error","Message":"Greater than 60"})");
  EXPECT_THAT(StatusLog(), ElementsAre(kRule, "Unknown ERROR[RAW]: " + Now(),
                                       "Result:Error,Type:Value error,Message:Greater than 60",
                                       kRule, kRule, "Value error inMessage:Greater than 60",
                                       "mblnCall_seen: False", "tmrSaveTimed: True", kRule,
                                       "ERROR: Net Remote - Attempting reset " + Now()));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  EXPECT_EQ(files.Content(kErrors),
            "==============\r\n" + Now() +
                "\r\nUnknown ERROR[RAW]:\r\n"
                "Last DATA: Result:Error,Type:Value error,Message:Greater than 60\r\n"
                "==============\r\nValue error inMessage:Greater than 60\r\n==============\r\n"
                "Call active: False\r\ntmrSaveTimed: True\r\n==============\r\n\r\n");
}

TEST_F(NetRemoteTest, TheReportOfAnErrorTellsOfTheCallAndIsAppendedToTheOnesBefore) {
  ASSERT_TRUE(StartAndSettle());
  ASSERT_TRUE(FollowsCall(1207));
  save_timer = false;
  files.Put(kErrors, "old\r\n");
  form.lstStatusLog.Clear();
  Receive(R"({"Result":"Error","Type":"Syntax error"})");
  EXPECT_EQ(files.Content(kErrors),
            "old\r\n==============\r\n" + Now() +
                "\r\nUnknown ERROR[RAW]:\r\n"
                "Last DATA: Result:Error,Type:Syntax error\r\n==============\r\n==============\r\n"
                "Call active: True\r\ntmrSaveTimed: False\r\n==============\r\n\r\n");
  EXPECT_THAT(StatusLog(), Contains("mblnCall_seen: True"));
  EXPECT_THAT(StatusLog(), Contains("tmrSaveTimed: False"));
}

TEST_F(NetRemoteTest, AnErrorThatCannotBeFiledStillAsksForAReset) {
  ConnectMuted();
  files.FailPath("errors.txt", kDiskFull);
  Receive(R"({"Result":"Error","Type":"Value error","Message":"x"})");
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  EXPECT_EQ(StatusLog().back(), "ERROR: Net Remote - Attempting reset " + Now());
}

TEST_F(NetRemoteTest, AnErrorWithoutASecondPairIsDumpedAndAsksForAReset) {
  ConnectMuted();
  Receive(R"({"Result":"Error"})");
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  EXPECT_EQ(StatusLog().size(), 5u);
  EXPECT_EQ(files.Content(kErrors), std::nullopt);
}

TEST_F(NetRemoteTest, OtherFirstKeysAreIgnored) {
  ConnectMuted();
  Receive(R"({"Error":"Error","a":"b"})");
  Receive("garbage\r\n");
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
}

TEST_F(NetRemoteTest, ASecondLineOfTheSameReadIsLost) {
  ConnectMuted();
  Receive(std::string(kOk) + "{\"Result\":\"OK\",\"Method\":\"IsPlaying\",\"Value\":true}\r\n");
  EXPECT_FALSE(flags.mblnIsPlaying);
}

// An answer with a refusal behind it in one read.
constexpr const char* kOkAndError =
    "{\"Result\":\"OK\"}\r\n{\"Result\":\"Error\",\"Type\":\"Syntax error\",\"Message\":\"\"}\r\n";

TEST_F(NetRemoteTest, ARefusalMayBeLostWhenAnswersLagAndAnErrorIsDropped) {
  ConnectMuted();
  Gain();
  Receive(kOkAndError);
  EXPECT_FALSE(remote.RefusalMayBeLost()) << "the first line answers the only command";
  Gain();
  Gain();
  Receive(kOk);
  EXPECT_FALSE(remote.RefusalMayBeLost()) << "nothing was dropped";
  Receive(std::string(kOk) + kOk);
  EXPECT_FALSE(remote.RefusalMayBeLost()) << "what was dropped is no error";
  Receive(kOkAndError);
  EXPECT_TRUE(remote.RefusalMayBeLost());
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested) << "dropped all the same";
  remote.ForgetLostRefusal();
  EXPECT_FALSE(remote.RefusalMayBeLost());
  Receive(kOkAndError);
  EXPECT_FALSE(remote.RefusalMayBeLost()) << "forgotten as a whole";
}

TEST_F(NetRemoteTest, AnErrorThatIsReadIsNotLost) {
  ConnectMuted();
  Gain();
  Gain();
  Receive("{\"Result\":\"Error\",\"Type\":\"Syntax error\",\"Message\":\"\"}\r\n");
  EXPECT_FALSE(remote.RefusalMayBeLost());
}

TEST_F(NetRemoteTest, ANewConnectionHasLostNoRefusal) {
  ConnectMuted();
  Gain();
  Gain();
  Receive(kOkAndError);
  ASSERT_TRUE(remote.RefusalMayBeLost());
  desktop.Do("cut");
  loop.AdvanceMs(10);
  remote.CheckNetRemoteConnection();
  EXPECT_FALSE(remote.RefusalMayBeLost());
}

// --- Errors of the socket ---

TEST_F(NetRemoteTest, ARefusedConnectionSwitchesNetRemoteOn) {
  Discover();
  tree().Press(ids().network);  // the user switches it off again
  form.lstStatusLog.Clear();
  sim().ForgetMessages();
  remote.CheckNetRemoteConnection();
  EXPECT_THAT(StatusLog(), ElementsAre("Is 'Net Remote' enabled in SDR#?"));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_THAT(sim().messages(), ElementsAre(Message{Handle(ids().port), Kind::kSetText, "3383"},
                                            Message{Handle(ids().network), Kind::kPress}));
  EXPECT_TRUE(desktop.model().server().listening());
  Discover();
  EXPECT_TRUE(desktop.model().server().listening()) << "the discovery that follows presses again";
}

TEST_F(NetRemoteTest, ARefusedConnectionWithoutHandlesPressesNothing) {
  remote.CheckNetRemoteConnection();
  EXPECT_THAT(StatusLog(), ElementsAre("Is 'Net Remote' enabled in SDR#?"));
  EXPECT_TRUE(sim().messages().empty());
}

TEST_F(NetRemoteTest, OtherSocketErrorsAreShown) {
  Connect();
  desktop.Do("cut reset");
  loop.AdvanceMs(10);
  EXPECT_THAT(
      StatusLog(),
      ElementsAre("WinSock error: 10054 - An existing connection was forcibly closed by the "
                  "remote host."));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_TRUE(sim().messages().empty());
}

TEST_F(NetRemoteTest, TheStatusLogIsClearedWhenASocketErrorMakesItLongerThan1000Lines) {
  for (const int lines : {999, 1000}) {
    Connect();
    for (int i = 0; i < lines; ++i) AddStatusLine(form, "x");
    desktop.Do("cut reset");
    loop.AdvanceMs(10);
    EXPECT_EQ(StatusLog().size(), lines == 999 ? 1000u : 0u);
    remote.CheckNetRemoteConnection();
    flags.NetRemoteConnected = false;
  }
}

TEST_F(NetRemoteTest, GivesTheSocketBackWithoutHandlers) {
  ConnectMuted();
  {
    NetRemote other{context, logs, "C:\\Corvane", follower, [] { return false; }};
  }
  Receive("{\"Name\":\"Net Remote\",\"Version\":\"1\"}\r\n");
  EXPECT_THAT(StatusLog(), IsEmpty());
}

}  // namespace
}  // namespace corvane::test
