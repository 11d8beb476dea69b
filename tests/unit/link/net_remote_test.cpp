#include "link/net_remote.h"

#include "link_fixture.h"
#include "panel/logs.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kRule = "==============";
constexpr const char* kErrors = "C:\\Corvane\\errors.txt";
constexpr const char* kOk = "{\"Result\":\"OK\"}\r\n";

class NetRemoteTest : public LinkTest {
 protected:
  void SetUp() override {
    AddSdr();
    AddNetworkInfo();
    FillHandles();
  }
  void Connected() {
    socket.state = SocketState::kConnected;
    flags.NetRemoteConnected = true;
    flags.NetRemoteLinkUp = true;
  }
  void Receive(const std::string& bytes) {
    socket.Arrive(bytes);
    loop.DoEvents();
  }
  // From now on the server answers each command after `ms`.
  void AnswerAfter(int ms, const std::string& reply = kOk) {
    socket.on_send = [this, ms, reply](const std::string&) {
      loop.At(ms, [this, reply] { socket.Arrive(reply); });
    };
  }

  MemoryFiles files;
  LogFiles logs{files, clock, form};
  FakeFollower follower;
  bool save_timer = true;
  NetRemote remote{context, logs, "C:\\Corvane", follower, [this] { return save_timer; }};
};

// --- Command texts ---

TEST_F(NetRemoteTest, TalksToTheLocalMachineAlone) {
  remote.SetEndpoint();
  EXPECT_EQ(socket.host, "127.0.0.1");
  EXPECT_EQ(socket.port, 3383);
}

TEST_F(NetRemoteTest, CommandsAreOneWriteEachWithoutTerminator) {
  Connected();
  AnswerAfter(1);
  remote.SendNetRemoteSet("AudioGain", "25");
  remote.SendNetRemoteSet("DetectorType", "\"WFM\"");
  remote.SendNetRemoteSet("DetectorType", "WFM");
  remote.SendNetRemoteGet("IsPlaying");
  remote.SendNetRemoteExe("Start");
  EXPECT_THAT(socket.sent,
              ElementsAre(R"({"Command": "Set", "Method": "AudioGain", "Value": 25})",
                          R"({"Command": "Set", "Method": "DetectorType", "Value": "WFM"})",
                          R"({"Command": "Set", "Method": "DetectorType", "Value": WFM})",
                          R"({"Command": "Get", "Method": "IsPlaying"})",
                          R"({"Command": "Exe", "Method": "Start"})"));
}

TEST_F(NetRemoteTest, SetAndGetLetEventsRunOnceAfterTheSendExeDoesNot) {
  Connected();
  remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_EQ(loop.do_events_count, 1);
  Receive(kOk);
  remote.SendNetRemoteGet("IsPlaying");
  EXPECT_EQ(loop.do_events_count, 3);
  Receive(kOk);
  loop.do_events_count = 0;
  remote.SendNetRemoteExe("Start");
  EXPECT_EQ(loop.do_events_count, 0);
}

TEST_F(NetRemoteTest, NoEventRunsWhileACommandIsBeingSent) {
  Connected();
  bool sending = false;
  socket.on_send = [&](const std::string&) { sending = flags.mblnSending; };
  loop.Post(EventSource::kUser, [&] { EXPECT_FALSE(flags.mblnSending); });
  remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_TRUE(sending);
  EXPECT_FALSE(flags.mblnSending);
}

TEST_F(NetRemoteTest, AFailedSendIsNotReported) {
  Connected();
  socket.take_sends = false;
  remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_FALSE(flags.mblnSending);
  EXPECT_TRUE(flags.NetRemoteLinkUp);
}

TEST_F(NetRemoteTest, WithoutAConnectionACommandCostsOneLineAndTheLink) {
  flags.NetRemoteLinkUp = true;
  remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_THAT(StatusLog(), ElementsAre("No SDR# NET connection"));
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_FALSE(flags.mblnSending);
  remote.SendNetRemoteGet("IsPlaying");
  remote.SendNetRemoteExe("Start");
  EXPECT_EQ(StatusLog().size(), 3u);
  EXPECT_THAT(socket.sent, IsEmpty());
  EXPECT_EQ(loop.socket_waits, 0);
  EXPECT_EQ(loop.do_events_count, 0);
  Connected();
  loop.Run(1000);
  EXPECT_THAT(socket.sent, IsEmpty()) << "nothing is queued";
}

TEST_F(NetRemoteTest, ACommandThatCannotBeSentDoesNotWaitForTheOneBefore) {
  Connected();
  remote.SendNetRemoteGet("AudioIsMuted");
  flags.NetRemoteConnected = false;
  const auto start = loop.now_ms;
  remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_EQ(loop.now_ms, start);
  EXPECT_THAT(StatusLog(), ElementsAre("No SDR# NET connection"));
}

// --- Senders that meet another one ---

TEST_F(NetRemoteTest, ASenderLooksEvery30MsWhetherTheOtherOneIsDone) {
  Connected();
  flags.mblnSending = true;
  loop.on_sleep = [this](int) {
    if (loop.sleeps.size() == 3) flags.mblnSending = false;
  };
  remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_THAT(loop.sleeps, ElementsAre(30, 30, 30));
  EXPECT_EQ(socket.sent.size(), 1u);
}

TEST_F(NetRemoteTest, SetAndGetGiveUpOnShutdownWhileAnotherOneSends) {
  Connected();
  flags.mblnSending = true;
  flags.mblnShuttingDown = true;
  remote.SendNetRemoteSet("AudioGain", "25");
  remote.SendNetRemoteGet("IsPlaying");
  EXPECT_THAT(socket.sent, IsEmpty());
  EXPECT_THAT(loop.sleeps, IsEmpty());
}

TEST_F(NetRemoteTest, ExeKeepsWaitingWhileShuttingDown) {
  Connected();
  flags.mblnSending = true;
  flags.mblnShuttingDown = true;
  loop.on_sleep = [this](int) {
    if (loop.sleeps.size() == 5) flags.mblnSending = false;
  };
  remote.SendNetRemoteExe("Start");
  EXPECT_EQ(loop.sleeps.size(), 5u);
  EXPECT_EQ(socket.sent.size(), 1u);
}

// --- One command under way ---

TEST_F(NetRemoteTest, ACommandIsUnderWayUntilItsResultWasHandled) {
  Connected();
  EXPECT_FALSE(remote.CommandUnderWay());
  remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_TRUE(remote.CommandUnderWay());
  Receive("{\"Name\":\"Net Remote\",\"Version\":\"1\"}\r\n");
  EXPECT_TRUE(remote.CommandUnderWay()) << "the greeting answers no command";
  Receive(kOk);
  EXPECT_FALSE(remote.CommandUnderWay());
}

TEST_F(NetRemoteTest, AnyResultLineEndsTheWaitWhateverItSays) {
  Connected();
  for (const char* reply :
       {"{\"Result\":\"Error\"}\r\n", "{\"Result\":\"OK\",\"Method\":\"IsPlaying\"}\r\n",
        "{\"Result\":\"Odd\"}\r\n", "{\"Result\"}\r\n"}) {
    remote.SendNetRemoteSet("AudioGain", "25");
    ASSERT_TRUE(remote.CommandUnderWay());
    Receive(reply);
    EXPECT_FALSE(remote.CommandUnderWay()) << reply;
  }
}

TEST_F(NetRemoteTest, TheNextCommandWaitsForTheAnswerOfTheOneBefore) {
  Connected();
  AnswerAfter(100);
  remote.SendNetRemoteSet("Frequency", "365112500");
  const auto start = loop.now_ms;
  remote.SendNetRemoteSet("AudioGain", "47");
  EXPECT_EQ(loop.now_ms - start, 100);
  EXPECT_EQ(socket.sent.size(), 2u);
  EXPECT_TRUE(remote.CommandUnderWay());
}

TEST_F(NetRemoteTest, ASilentServerCosts200MsPerCommandAndNoMore) {
  Connected();
  const auto start = loop.now_ms;
  for (int i = 0; i < 11; ++i) remote.SendNetRemoteSet("AudioGain", "47");
  EXPECT_EQ(loop.now_ms - start, 10 * 200);
  EXPECT_EQ(socket.sent.size(), 11u);
}

TEST_F(NetRemoteTest, NothingButSocketEventsRunsDuringTheWait) {
  Connected();
  remote.SendNetRemoteSet("Frequency", "365112500");
  AnswerAfter(1);
  int ticks = 0;
  int clicks = 0;
  auto timer = loop.MakeTimer(10, [&] { ++ticks; });
  timer->SetEnabled(true);
  loop.At(20, [&] { loop.Post(EventSource::kUser, [&] { ++clicks; }); });
  loop.At(100, [&] { socket.Arrive(kOk); });
  socket.on_send = [&](const std::string&) {
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(clicks, 0);
  };
  remote.SendNetRemoteSet("AudioGain", "47");
  EXPECT_EQ(socket.sent.size(), 2u);
  EXPECT_GT(ticks, 0);
  EXPECT_EQ(clicks, 1);
}

TEST_F(NetRemoteTest, AnAnswerThatComesInTwoPiecesEndsTheWaitAtThePieceThatSaysResult) {
  Connected();
  remote.SendNetRemoteGet("IsPlaying");
  Receive("{\"Res");
  EXPECT_TRUE(remote.CommandUnderWay());
  Receive("ult\":\"OK\"}\r\n");
  EXPECT_TRUE(remote.CommandUnderWay()) << "pieces are not put together";
  loop.Run(200);
  EXPECT_FALSE(remote.CommandUnderWay());
}

TEST_F(NetRemoteTest, ShuttingDownEndsTheWaitAndTheCommandIsSent) {
  Connected();
  remote.SendNetRemoteSet("Frequency", "1");
  flags.mblnShuttingDown = true;
  const auto start = loop.now_ms;
  remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_EQ(loop.now_ms, start);
  EXPECT_EQ(socket.sent.size(), 2u);
}

TEST_F(NetRemoteTest, ALostSocketEndsTheWait) {
  Connected();
  remote.SendNetRemoteSet("Frequency", "1");
  loop.At(50, [&] { socket.Fail(10054, "reset"); });
  const auto start = loop.now_ms;
  remote.SendNetRemoteSet("AudioGain", "25");
  EXPECT_EQ(loop.now_ms - start, 50);
}

TEST_F(NetRemoteTest, TwoCommandsNeverReachASlowServerTogether) {
  Connected();
  int unanswered = 0;
  socket.on_send = [&](const std::string&) {
    EXPECT_EQ(++unanswered, 1);
    loop.At(60, [&] {
      --unanswered;
      socket.Arrive(kOk);
    });
  };
  for (int i = 0; i < 20; ++i) {
    remote.SendNetRemoteSet("Frequency", "1");
    loop.Sleep(10);
    remote.SendNetRemoteSet("AudioGain", "47");
    remote.SendNetRemoteGet("AudioIsMuted");
    remote.SendNetRemoteExe("Start");
  }
  EXPECT_EQ(socket.sent.size(), 80u);
}

// --- Selectors ---

TEST_F(NetRemoteTest, PressesTheTimeslotSelectorAtItsPoint) {
  remote.PressTimeslot(3);
  EXPECT_THAT(windows.messages, ElementsAre(FakeWindows::Message{kSlot1 + 2, 513, 1, 852006, ""}));
  windows.messages.clear();
  context.handles[SdrRole::kTimeslot2] = 0;
  remote.PressTimeslot(2);
  remote.PressTimeslot(0);
  remote.PressTimeslot(5);
  EXPECT_TRUE(windows.messages.empty());
}

// --- The state check ---

TEST_F(NetRemoteTest, AClosedSocketIsConnected) {
  flags.NetRemoteConnected = true;
  form.ShapeWinsock_state.fill_colour = kGreen;
  const auto start = loop.now_ms;
  remote.CheckNetRemoteConnection();
  EXPECT_EQ(socket.connects, 1);
  EXPECT_EQ(loop.now_ms - start, 250);
  EXPECT_FALSE(flags.NetRemoteConnected);
  EXPECT_EQ(form.ShapeWinsock_state.fill_colour.get(), kButtonFace);
}

TEST_F(NetRemoteTest, TheWaitAfterConnectingEndsOnShutdown) {
  loop.At(50, [&] { loop.Post(EventSource::kUser, [&] { flags.mblnShuttingDown = true; }); });
  const auto start = loop.now_ms;
  remote.CheckNetRemoteConnection();
  EXPECT_LE(loop.now_ms - start, 60);
}

TEST_F(NetRemoteTest, TheWaitAfterConnectingGoesOnWhileAReplyIsHandled) {
  flags.mblnReceiving = true;
  loop.At(1000, [&] { flags.mblnReceiving = false; });
  const auto start = loop.now_ms;
  remote.CheckNetRemoteConnection();
  EXPECT_GE(loop.now_ms - start, 1000);
  EXPECT_LE(loop.now_ms - start, 1050);
}

TEST_F(NetRemoteTest, IntermediateStatesAreNamedAndNothingElse) {
  const std::pair<SocketState, const char*> names[] = {
      {SocketState::kOpen, "Open"},
      {SocketState::kListening, "Listening"},
      {SocketState::kConnectionPending, "Connection Pending"},
      {SocketState::kResolvingHost, "Resolving Host"},
      {SocketState::kHostResolved, "Host Resolved"}};
  flags.NetRemoteLinkUp = true;
  for (const auto& [state, name] : names) {
    form.lstStatusLog.Clear();
    socket.state = state;
    flags.NetRemoteConnected = true;
    remote.CheckNetRemoteConnection();
    EXPECT_THAT(StatusLog(), ElementsAre(name));
    EXPECT_FALSE(flags.NetRemoteConnected);
    EXPECT_TRUE(flags.NetRemoteLinkUp);
    EXPECT_EQ(socket.state, state);
  }
}

TEST_F(NetRemoteTest, WhileConnectingNothingHappens) {
  socket.state = SocketState::kConnecting;
  flags.NetRemoteLinkUp = true;
  remote.CheckNetRemoteConnection();
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_EQ(socket.connects + socket.closes, 0);
  EXPECT_FALSE(flags.NetRemoteConnected);
}

TEST_F(NetRemoteTest, ConnectedIsShownGreen) {
  socket.state = SocketState::kConnected;
  remote.CheckNetRemoteConnection();
  EXPECT_TRUE(flags.NetRemoteConnected);
  EXPECT_EQ(form.ShapeWinsock_state.fill_colour.get(), kGreen);
}

TEST_F(NetRemoteTest, AClosingSocketIsClosedAndTheStatusLogWiped) {
  AddStatusLine(form, "old");
  form.ShapeWinsock_state.fill_colour = kGreen;
  Connected();
  socket.state = SocketState::kClosing;
  remote.CheckNetRemoteConnection();
  EXPECT_EQ(socket.closes, 1);
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_FALSE(flags.NetRemoteConnected);
  EXPECT_EQ(form.ShapeWinsock_state.fill_colour.get(), kButtonFace);
  remote.CheckNetRemoteConnection();
  EXPECT_EQ(socket.connects, 1);
}

TEST_F(NetRemoteTest, ASocketInErrorEndsTheCallAndIsClosed) {
  Connected();
  form.ShapeWinsock_state.fill_colour = kGreen;
  flags.FollowingCall = true;
  socket.state = SocketState::kError;
  follower.on_reset = [this] {
    EXPECT_EQ(socket.closes, 0);
    EXPECT_FALSE(flags.NetRemoteConnected);
    flags.FollowingCall = false;
  };
  remote.CheckNetRemoteConnection();
  EXPECT_EQ(follower.resets, 1);
  EXPECT_EQ(socket.closes, 1);
  EXPECT_FALSE(flags.NetRemoteLinkUp);
  EXPECT_EQ(form.ShapeWinsock_state.fill_colour.get(), kButtonFace);

  flags.NetRemoteLinkUp = true;
  socket.state = SocketState::kError;
  remote.CheckNetRemoteConnection();
  EXPECT_EQ(follower.resets, 1) << "no call, no reset";
  EXPECT_FALSE(flags.NetRemoteLinkUp);
}

TEST_F(NetRemoteTest, ANewConnectionStartsWithNoCommandUnderWay) {
  Connected();
  remote.SendNetRemoteGet("AudioIsMuted");
  socket.state = SocketState::kClosing;
  remote.CheckNetRemoteConnection();
  EXPECT_FALSE(remote.CommandUnderWay());
}

// --- Replies ---

TEST_F(NetRemoteTest, TheGreetingIsShown) {
  Receive("{\"Name\":\"Net Remote\",\"Version\":\"1.0.5282.28765\"}\r\n");
  EXPECT_THAT(StatusLog(), ElementsAre("Net Remote v1.0.5282.28765"));
  EXPECT_TRUE(LastStatusLineShown());
}

TEST_F(NetRemoteTest, TheFlagOfTheHandlerIsLoweredOnEveryWayOut) {
  for (const char* reply :
       {"", "x", "{}", kOk, "{\"Result\"}", "{\"Result\":\"OK\",\"a\":\"b\"}",
        "{\"Result\":\"Error\"}", "{\"Result\":\"Error\",\"a\":\"b\"}", "{\"Name\":\"x\"}"}) {
    socket.Arrive(reply);
    socket.Arrive("\r\n");
    loop.DoEvents();
    EXPECT_FALSE(flags.mblnReceiving) << reply;
  }
}

TEST_F(NetRemoteTest, StatesAreStoredAndKept) {
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
  Receive(R"({"Result":"OK","Method":"Frequency","Value":365112500})");
  EXPECT_THAT(StatusLog(), ElementsAre(kRule, std::string("Unknown ERROR[RAW]: ") + kNow,
                                       "Result:OK,Method:Frequency,Value:365112500", kRule));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
  EXPECT_TRUE(files.content.empty());
}

TEST_F(NetRemoteTest, AnErrorIsDumpedReportedFiledAndAsksForAReset) {
  flags.FollowingCall = true;
  Receive(R"({"Result":"Error","Type":"Value error","Message":"Greater than 60"})");
  EXPECT_THAT(StatusLog(),
              ElementsAre(kRule, std::string("Unknown ERROR[RAW]: ") + kNow,
                          "Result:Error,Type:Value error,Message:Greater than 60", kRule, kRule,
                          "Value error inMessage:Greater than 60", "mblnCall_seen: True",
                          "tmrSaveTimed: True", kRule,
                          std::string("ERROR: Net Remote - Attempting reset ") + kNow));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  EXPECT_EQ(files.content[kErrors],
            "==============\r\n15/11/2026 14:23:05\r\nUnknown ERROR[RAW]:\r\n"
            "Last DATA: Result:Error,Type:Value error,Message:Greater than 60\r\n"
            "==============\r\nValue error inMessage:Greater than 60\r\n==============\r\n"
            "Call active: True\r\ntmrSaveTimed: True\r\n==============\r\n\r\n");
}

TEST_F(NetRemoteTest, TheReportOfAnErrorIsAppendedToTheOnesBefore) {
  save_timer = false;
  files.content[kErrors] = "old\r\n";
  Receive(R"({"Result":"Error","Type":"Syntax error"})");
  EXPECT_EQ(files.content[kErrors],
            "old\r\n==============\r\n15/11/2026 14:23:05\r\nUnknown ERROR[RAW]:\r\n"
            "Last DATA: Result:Error,Type:Syntax error\r\n==============\r\n==============\r\n"
            "Call active: False\r\ntmrSaveTimed: False\r\n==============\r\n\r\n");
  EXPECT_THAT(StatusLog(), Contains("mblnCall_seen: False"));
  EXPECT_THAT(StatusLog(), Contains("tmrSaveTimed: False"));
}

TEST_F(NetRemoteTest, AnErrorThatCannotBeFiledStillAsksForAReset) {
  files.append_error = kDiskFull;
  Receive(R"({"Result":"Error","Type":"Value error","Message":"x"})");
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  EXPECT_EQ(StatusLog().back(), std::string("ERROR: Net Remote - Attempting reset ") + kNow);
}

TEST_F(NetRemoteTest, AnErrorWithoutASecondPairIsDumpedAndAsksForAReset) {
  Receive(R"({"Result":"Error"})");
  EXPECT_TRUE(flags.mblnNetRemoteResetRequested);
  EXPECT_EQ(StatusLog().size(), 5u);
  EXPECT_TRUE(files.content.empty());
}

TEST_F(NetRemoteTest, OtherFirstKeysAreIgnored) {
  Receive(R"({"Error":"Error","a":"b"})");
  Receive("garbage\r\n");
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_FALSE(flags.mblnNetRemoteResetRequested);
}

TEST_F(NetRemoteTest, ASecondLineOfTheSameReadIsLost) {
  Receive(std::string(kOk) + "{\"Result\":\"OK\",\"Method\":\"IsPlaying\",\"Value\":true}\r\n");
  EXPECT_FALSE(flags.mblnIsPlaying);
}

// --- Errors of the socket ---

TEST_F(NetRemoteTest, ARefusedConnectionSwitchesNetRemoteOn) {
  socket.Fail(10061, "refused");
  loop.DoEvents();
  EXPECT_THAT(StatusLog(), ElementsAre("Is 'Net Remote' enabled in SDR#?"));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_THAT(windows.messages, ElementsAre(FakeWindows::Message{kPort, 12, 0, 0, "3383"},
                                            FakeWindows::Message{kNetwork, 245, 0, 0, ""}));
  EXPECT_EQ(context.pressed_after_refusal, kNetwork);
}

TEST_F(NetRemoteTest, ARefusedConnectionWithoutHandlesPressesNothing) {
  context.handles.Clear();
  socket.Fail(10061, "refused");
  loop.DoEvents();
  EXPECT_TRUE(windows.messages.empty());
  EXPECT_EQ(context.pressed_after_refusal, 0u);
  EXPECT_EQ(StatusLog().size(), 1u);
}

TEST_F(NetRemoteTest, APressThatDidNotArriveDoesNotCount) {
  windows.HangAll(true);
  socket.Fail(10061, "refused");
  loop.DoEvents();
  EXPECT_EQ(context.pressed_after_refusal, 0u);
}

TEST_F(NetRemoteTest, OtherSocketErrorsAreShown) {
  socket.Fail(10054, "Connection reset by peer");
  loop.DoEvents();
  EXPECT_THAT(StatusLog(), ElementsAre("WinSock error: 10054 - Connection reset by peer"));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_TRUE(windows.messages.empty());
}

TEST_F(NetRemoteTest, TheStatusLogIsClearedWhenASocketErrorMakesItLongerThan1000Lines) {
  for (int i = 0; i < 999; ++i) AddStatusLine(form, "x");
  socket.Fail(10054, "reset");
  loop.DoEvents();
  EXPECT_EQ(StatusLog().size(), 1000u);
  socket.Fail(10054, "reset");
  loop.DoEvents();
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST(NetRemoteLifeTest, GivesTheSocketBackWithoutHandlers) {
  SilentSink sink;
  Form1 form{sink};
  FakeLoop loop;
  FakeClock clock;
  FakeWindows windows;
  FakeSocket socket{loop};
  ProgramFlags flags;
  LinkContext context{loop, clock, windows, socket, form, flags};
  MemoryFiles files;
  LogFiles logs{files, clock, form};
  FakeFollower follower;
  {
    NetRemote remote{context, logs, "C:\\Corvane", follower, [] { return false; }};
    EXPECT_TRUE(socket.HasEvents());
  }
  socket.Arrive("x");
  loop.DoEvents();
  EXPECT_FALSE(socket.HasEvents());
}

}  // namespace
}  // namespace corvane::test
