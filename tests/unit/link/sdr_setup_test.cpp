#include "link/sdr_setup.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kOk = "{\"Result\":\"OK\"}\r\n";
constexpr std::pair<std::int32_t, std::int32_t> kDemodulatorPixel{307, 407};
constexpr std::pair<std::int32_t, std::int32_t> kAutoPixel{307, 437};

class SdrSetupTest : public LinkTest {
 protected:
  void SetUp() override {
    AddSdr();
    AddNetworkInfo();
    FillHandles();
    socket.state = SocketState::kConnected;
    flags.NetRemoteConnected = true;
    flags.NetRemoteLinkUp = true;
    presets.BaseFrequency = 300000000;
    socket.on_send = [this](const std::string& command) {
      const bool asks = command.find("\"Get\"") != std::string::npos;
      const std::string playing = std::string(R"({"Result":"OK","Method":"IsPlaying","Value":)") +
                                  (sdr_plays ? "true" : "false") + "}\r\n";
      loop.At(5, [this, reply = asks ? playing : kOk] { socket.Arrive(reply); });
    };
  }
  int Presses(WindowHandle button) { return windows.CountOf(button, kBmClick); }

  bool sdr_plays = false;
  Presets presets;
  MemoryFiles files;
  LogFiles logs{files, clock, form};
  FakeFollower follower;
  NetRemote remote{context, logs, "C:\\Corvane", follower, [] { return true; }};
  Discovery discovery{context};
  NetworkInfoWindow info{context, discovery};
  SdrSetup setup{context, remote, info, presets};
};

TEST_F(SdrSetupTest, SendsItsCommandsInOrder) {
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(socket.sent,
              ElementsAre(R"({"Command": "Set", "Method": "Frequency", "Value": 365112500})",
                          R"({"Command": "Set", "Method": "DetectorType", "Value": "WFM"})",
                          R"({"Command": "Set", "Method": "FilterBandwidth", "Value": 26000})",
                          R"({"Command": "Set", "Method": "AudioGain", "Value": 25})",
                          R"({"Command": "Get", "Method": "IsPlaying"})",
                          R"({"Command": "Exe", "Method": "Start"})"));
  EXPECT_TRUE(flags.mblnSetupDone);
}

TEST_F(SdrSetupTest, TunesByThePresetsOfTheMoment) {
  EXPECT_TRUE(setup.Run());
  presets.ParkCarrier = 3999;
  presets.BaseFrequency = 900000000;
  presets.FrequencyOffset = -6250;
  socket.sent.clear();
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(socket.sent[0], R"({"Command": "Set", "Method": "Frequency", "Value": 999968750})");
}

TEST_F(SdrSetupTest, APlayingSdrIsNotStarted) {
  sdr_plays = true;
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(socket.sent.size(), 5u);
}

TEST_F(SdrSetupTest, WhatThePreviousSdrLastReportedDoesNotCount) {
  flags.mblnIsPlaying = true;
  socket.on_send = nullptr;  // nor does it answer in time
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(socket.sent.size(), 6u) << "an SDR# that was started anew has to be started";
}

TEST_F(SdrSetupTest, EachAnswerIsReadByItself) {
  std::vector<std::string> reads;
  int arrived = 0;
  socket.on_send = [&](const std::string& command) {
    const bool asks = command.find("\"Get\"") != std::string::npos;
    // Late answers: each comes 180 ms after its command, behind the 50 ms pause.
    loop.At(180, [&, reply = asks ? std::string("{\"Result\":\"OK\",\"Method\":\"IsPlaying\","
                                                "\"Value\":true}\r\n")
                                  : std::string(kOk)] {
      ++arrived;
      socket.Arrive(reply);
    });
  };
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(arrived, static_cast<int>(socket.sent.size()));
  EXPECT_TRUE(flags.mblnIsPlaying) << "the reply was lost behind an acknowledgement";
}

TEST_F(SdrSetupTest, TakesItsTimesAndLetsEventsRunInAllOfThem) {
  int ticks = 0;
  auto timer = loop.MakeTimer(10, [&] { ++ticks; });
  timer->SetEnabled(true);
  const auto start = loop.now_ms;
  EXPECT_TRUE(setup.Run());
  // 100 + six commands of 50 + 1500 + 50 + 50
  EXPECT_EQ(loop.now_ms - start, 2000);
  EXPECT_GE(ticks, 199);
}

TEST_F(SdrSetupTest, WaitsFirstThenTunes) {
  std::int64_t first = 0;
  socket.on_send = [&](const std::string&) {
    if (first == 0) first = loop.now_ms;
  };
  const auto start = loop.now_ms;
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(first - start, 100);
}

TEST_F(SdrSetupTest, BringsSdrAndThenItselfToTheFront) {
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(windows.foregrounds, ElementsAre(kSdr, windows.own));
}

TEST_F(SdrSetupTest, MinimisesNetworkInfoAfterSdrWasBroughtToTheFront) {
  EXPECT_TRUE(setup.Run());
  ASSERT_EQ(windows.placements.size(), 1u);
  EXPECT_EQ(windows.placements[0].first, kInfoWindow);
  EXPECT_EQ(windows.placements[0].second.show_state, kShowMinimised);
}

TEST_F(SdrSetupTest, PositionsSdrFirst) {
  form.chkPositionSDRsharps.value = 1;
  form.lblPositionSdrSharpCC.caption = std::string("1,2,3,4");
  EXPECT_TRUE(setup.Run());
  ASSERT_EQ(windows.placements.size(), 2u);
  EXPECT_EQ(windows.placements[0].first, kSdr);
  EXPECT_EQ(windows.placements[0].second.normal_position, (ScreenRect{1, 2, 3, 4}));
}

TEST_F(SdrSetupTest, PressesBoxesWhoseColourIsExactlyTheWrongOne) {
  windows.pixels[kDemodulatorPixel] = presets.UnCheckedColour;
  windows.pixels[kAutoPixel] = presets.CheckedColour;
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(Presses(kDemodulator), 1);
  EXPECT_EQ(Presses(kAuto), 1);
}

TEST_F(SdrSetupTest, LeavesBoxesAloneThatAreRightOrUnknown) {
  const std::pair<std::int32_t, std::int32_t> colours[] = {
      {presets.CheckedColour, presets.UnCheckedColour},
      {-1, -1},
      {0, 0},
      {presets.UnCheckedColour + 1, presets.CheckedColour - 1}};
  for (const auto& [demodulator, automatic] : colours) {
    windows.pixels[kDemodulatorPixel] = demodulator;
    windows.pixels[kAutoPixel] = automatic;
    EXPECT_TRUE(setup.Run());
  }
  EXPECT_EQ(Presses(kDemodulator) + Presses(kAuto), 0);
}

TEST_F(SdrSetupTest, AMissingAutoBoxIsNotPressed) {
  context.handles[SdrRole::kAutoBox] = 0;
  presets.CheckedColour = -2;
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(windows.CountOf(0, kBmClick), 0);
}

TEST_F(SdrSetupTest, ACollapsedPanelIsReportedAndTheSetupCompletes) {
  windows.At(kDemodulator).visible = false;
  windows.pixels[kDemodulatorPixel] = presets.UnCheckedColour;
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(StatusLog(), ElementsAre("*** You need to expand TETRA Demodulator panel ***"));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_EQ(Presses(kDemodulator), 0);
  EXPECT_TRUE(flags.mblnSetupDone);
  EXPECT_THAT(windows.foregrounds, ElementsAre(kSdr, windows.own));
}

TEST_F(SdrSetupTest, AVisiblePanelIsNotReported) {
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(StatusLog(), IsEmpty());
}

// The socket is lost, or the program closed, at each moment of the set-up in turn.
TEST_F(SdrSetupTest, EndsAtWhicheverMomentTheSocketIsLost) {
  for (int moment = 0; moment < 2000; moment += 5) {
    socket.state = SocketState::kConnected;
    flags.mblnSetupDone = false;
    windows.foregrounds.clear();
    const auto lost_at = loop.now_ms + moment;
    loop.At(moment, [this] { socket.state = SocketState::kClosing; });
    EXPECT_FALSE(setup.Run()) << moment;
    EXPECT_FALSE(flags.mblnSetupDone) << moment;
    EXPECT_LE(loop.now_ms - lost_at, 15) << moment;
    EXPECT_THAT(windows.foregrounds, Not(Contains(windows.own))) << moment;
    loop.Run(300);
  }
}

TEST_F(SdrSetupTest, EndsWhenTheProgramShutsDown) {
  loop.At(200,
          [this] { loop.Post(EventSource::kUser, [this] { flags.mblnShuttingDown = true; }); });
  const auto start = loop.now_ms;
  EXPECT_FALSE(setup.Run());
  EXPECT_LE(loop.now_ms - start, 215);
  EXPECT_FALSE(flags.mblnSetupDone);
}

TEST_F(SdrSetupTest, ASocketThatIsLostBeforeTheFirstCommandGetsNone) {
  socket.state = SocketState::kClosing;
  EXPECT_FALSE(setup.Run());
  EXPECT_THAT(socket.sent, IsEmpty());
}

TEST_F(SdrSetupTest, WaitsWhileAReplyIsBeingHandled) {
  flags.mblnReceiving = true;
  loop.At(500, [this] { flags.mblnReceiving = false; });
  std::vector<std::int64_t> times;
  socket.on_send = [&](const std::string&) { times.push_back(loop.now_ms); };
  const auto start = loop.now_ms;
  EXPECT_TRUE(setup.Run());
  EXPECT_GE(times[1] - start, 550);
}

TEST_F(SdrSetupTest, TheWaitForAReplyEndsWithTheSocket) {
  flags.mblnReceiving = true;
  socket.on_send = nullptr;
  loop.At(500, [this] { socket.state = SocketState::kError; });
  const auto start = loop.now_ms;
  EXPECT_FALSE(setup.Run());
  EXPECT_LE(loop.now_ms - start, 520);
  EXPECT_EQ(socket.sent.size(), 1u);
}

}  // namespace
}  // namespace corvane::test
