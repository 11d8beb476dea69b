#include "link/sdr_setup.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class SdrSetupTest : public LinkTest {
 protected:
  SdrSetupTest() { Connect(); }
  [[nodiscard]] WindowHandle Main() { return Handle(ids().main); }
  [[nodiscard]] bool Checked(standin::WindowId box) { return tree().Find(box)->checked; }
  void Ask(const std::string& position) {
    form.chkPositionSDRsharps.value = 1;
    form.lblPositionSdrSharpCC.caption = position;
  }
};

TEST_F(SdrSetupTest, SendsItsCommandsInOrder) {
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(sent(),
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
  desktop.socket().ForgetSent();
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(sent()[0], R"({"Command": "Set", "Method": "Frequency", "Value": 999968750})");
}

TEST_F(SdrSetupTest, APlayingSdrIsNotStarted) {
  desktop.Do("play");
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(sent().size(), 5u);
}

TEST_F(SdrSetupTest, WhatThePreviousSdrLastReportedDoesNotCount) {
  flags.mblnIsPlaying = true;
  Mute();  // nor does it answer in time
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(sent().size(), 6u) << "an SDR# that was started anew has to be started";
}

TEST_F(SdrSetupTest, EachAnswerIsReadByItself) {
  desktop.Do("play");
  desktop.Do("handling 180");  // late answers, behind the 50 ms pause
  EXPECT_TRUE(setup.Run());
  EXPECT_TRUE(flags.mblnIsPlaying) << "the reply was lost behind an acknowledgement";
}

TEST_F(SdrSetupTest, TakesItsTimesAndLetsEventsRunInAllOfThem) {
  int ticks = 0;
  const auto timer = loop.MakeTimer(10, [&] { ++ticks; });
  timer->SetEnabled(true);
  std::int64_t first = 0;
  desktop.socket().SetOnSend([&] {
    if (first == 0) first = loop.TickMs();
  });
  const auto start = loop.TickMs();
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(first - start, 100) << "it waits first, then tunes";
  // 100 + six commands of 50 + 1500 + 50 + 50
  EXPECT_EQ(loop.TickMs() - start, 2000);
  EXPECT_GE(ticks, 199);
}

TEST_F(SdrSetupTest, BringsSdrAndThenItselfToTheFront) {
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(sim().foregrounds(), ElementsAre(Main(), sim().OwnMainWindow()));
}

TEST_F(SdrSetupTest, MinimisesNetworkInfoAfterSdrWasBroughtToTheFront) {
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(sim().placed(), ElementsAre(Handle(ids().info_window)));
  EXPECT_EQ(tree().Find(ids().info_window)->show_state, standin::ShowState::kMinimised);
}

TEST_F(SdrSetupTest, PressesBoxesWhoseColourIsExactlyTheWrongOne) {
  ASSERT_FALSE(Checked(ids().demodulator));
  ASSERT_TRUE(Checked(ids().automatic));
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(Presses(ids().demodulator), 1);
  EXPECT_EQ(Presses(ids().automatic), 1);
  EXPECT_TRUE(Checked(ids().demodulator));
  EXPECT_FALSE(Checked(ids().automatic));
}

TEST_F(SdrSetupTest, LeavesBoxesAloneThatAreRightOrUnknown) {
  EXPECT_TRUE(setup.Run());
  sim().ForgetMessages();
  EXPECT_TRUE(setup.Run()) << "both are right";
  desktop.Do("check demodulator off");
  desktop.Do("check auto on");
  desktop.Do("paint demodulator other");
  desktop.Do("paint auto other");
  EXPECT_TRUE(setup.Run()) << "neither colour";
  desktop.Do("paint demodulator normal");
  desktop.Do("paint auto normal");
  ++presets.UnCheckedColour;
  --presets.CheckedColour;
  EXPECT_TRUE(setup.Run()) << "nearly the colours";
  EXPECT_EQ(Presses(ids().demodulator) + Presses(ids().automatic), 0);
}

// SDR# comes to the front in the set-up; what the user keeps above all windows stays there.
TEST_F(SdrSetupTest, LeavesBoxesAloneThatAreCoveredInTheWrongColour) {
  desktop.Do("check demodulator on");
  desktop.Do("check auto off");
  desktop.Do("cover demodulator unchecked");
  desktop.Do("cover auto checked");
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(Presses(ids().demodulator), 0);
  EXPECT_EQ(Presses(ids().automatic), 0);
  EXPECT_TRUE(flags.mblnSetupDone);
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(SdrSetupTest, AMissingAutoBoxIsNotPressed) {
  tree().Destroy(ids().automatic);
  presets.CheckedColour = -2;
  EXPECT_TRUE(setup.Run());
  EXPECT_EQ(Presses(ids().automatic), 0);
}

TEST_F(SdrSetupTest, ACollapsedPanelIsReportedAndTheSetupCompletes) {
  desktop.Do("panel tetra collapse");
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(StatusLog(), ElementsAre("*** You need to expand TETRA Demodulator panel ***"));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_EQ(Presses(ids().demodulator), 0);
  EXPECT_TRUE(flags.mblnSetupDone);
  EXPECT_THAT(sim().foregrounds(), ElementsAre(Main(), sim().OwnMainWindow()));
}

TEST_F(SdrSetupTest, AVisiblePanelIsNotReported) {
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(StatusLog(), IsEmpty());
}

// The socket is lost at each moment of the set-up in turn.
TEST_F(SdrSetupTest, EndsAtWhicheverMomentTheSocketIsLost) {
  for (int moment = 0; moment < 2000; moment += 5) {
    desktop.socket().PretendState(std::nullopt);
    desktop.Do("stop");
    flags.mblnSetupDone = false;
    const auto fronts = sim().foregrounds().size();
    const auto lost_at = loop.TickMs() + moment;
    At(moment, [this] { desktop.socket().PretendState(SocketState::kClosing); });
    EXPECT_FALSE(setup.Run()) << moment;
    EXPECT_FALSE(flags.mblnSetupDone) << moment;
    EXPECT_LE(loop.TickMs() - lost_at, 15) << moment;
    const auto& raised = sim().foregrounds();
    EXPECT_LE(raised.size(), fronts + 1) << moment;
    if (raised.size() > fronts) {
      EXPECT_EQ(raised.back(), Main()) << moment;
    }
    loop.AdvanceMs(300);
  }
}

TEST_F(SdrSetupTest, EndsWhenTheProgramShutsDown) {
  At(200, [this] { loop.Post(EventSource::kUser, [this] { flags.mblnShuttingDown = true; }); });
  const auto start = loop.TickMs();
  EXPECT_FALSE(setup.Run());
  EXPECT_LE(loop.TickMs() - start, 215);
  EXPECT_FALSE(flags.mblnSetupDone);
}

TEST_F(SdrSetupTest, ASocketThatIsLostBeforeTheFirstCommandGetsNone) {
  desktop.Do("cut");
  loop.AdvanceMs(10);
  EXPECT_FALSE(setup.Run());
  EXPECT_THAT(sent(), IsEmpty());
}

// --- Where SDR# stands ---

TEST_F(SdrSetupTest, FourIntegersMakeAPosition) {
  EXPECT_EQ(ParsePosition("1,2,300,400"), (ScreenRect{1, 2, 300, 400}));
  EXPECT_EQ(ParsePosition("-8,-8, 300 ,400"), (ScreenRect{-8, -8, 300, 400}));
  for (const char* text :
       {"", "1,2,3", "1,2,3,4,5", "1,2,3,x", "1,2,,4", "1;2;3;4", "1,2,3,99999999999"}) {
    EXPECT_EQ(ParsePosition(text), std::nullopt) << text;
  }
}

TEST_F(SdrSetupTest, TheDoubleClickTakesTheRectangleOfAWindowShownNormally) {
  tree().SetBox(ids().main, {-4, 20, 814, 600});
  TakeSdrPosition(context);
  EXPECT_EQ(form.lblPositionSdrSharpCC.caption, "-4,20,810,620");
}

TEST_F(SdrSetupTest, AMinimisedOrMaximisedWindowDoesNotChangeTheStoredPosition) {
  form.lblPositionSdrSharpCC.caption = "1,2,3,4";
  for (const std::uint32_t state : {2u, 3u, 6u}) {
    sim().PretendShowState(state);
    TakeSdrPosition(context);
    EXPECT_EQ(form.lblPositionSdrSharpCC.caption, "1,2,3,4");
  }
  sim().PretendShowState(sim::SimWindowOps::kNoShowState);
  desktop.Do("die");
  TakeSdrPosition(context);
  Discover();
  TakeSdrPosition(context);
  EXPECT_EQ(form.lblPositionSdrSharpCC.caption, "1,2,3,4");
}

TEST_F(SdrSetupTest, PositionsSdrFirst) {
  Ask("5,6,700,800");
  EXPECT_TRUE(setup.Run());
  EXPECT_THAT(sim().placed(), ElementsAre(Main(), Handle(ids().info_window)));
  EXPECT_EQ(tree().Find(ids().main)->box, (standin::Box{5, 6, 695, 794}));
  EXPECT_EQ(tree().Find(ids().main)->show_state, standin::ShowState::kNormal);
}

TEST_F(SdrSetupTest, SdrIsNotMovedUnaskedOrWithoutAPosition) {
  Ask("5,6,700,800");
  for (const int value : {0, 2}) {
    form.chkPositionSDRsharps.value = value;
    EXPECT_TRUE(setup.Run());
  }
  for (const char* text : {"", "5,6,700", "here"}) {
    Ask(text);
    EXPECT_TRUE(setup.Run());
  }
  EXPECT_THAT(sim().placed(), Not(Contains(Main())));
}

TEST_F(SdrSetupTest, SdrNotShownNormallyIsNotMoved) {
  Ask("5,6,700,800");
  for (const std::uint32_t state : {2u, 3u, 6u}) {
    sim().PretendShowState(state);
    EXPECT_TRUE(setup.Run());
  }
  EXPECT_TRUE(sim().placed().empty());
}

TEST_F(SdrSetupTest, ASocketThatIsLostWithACommandGetsNoOther) {
  for (std::size_t last = 1; last <= 6; ++last) {
    desktop.socket().PretendState(std::nullopt);
    desktop.socket().ForgetSent();
    flags.mblnSetupDone = false;
    desktop.socket().SetOnSend([&] {
      if (sent().size() + 1 >= last) desktop.socket().PretendState(SocketState::kClosing);
    });
    EXPECT_FALSE(setup.Run()) << last;
    EXPECT_LE(sent().size(), last);
    EXPECT_FALSE(flags.mblnSetupDone) << last;
    desktop.socket().SetOnSend(nullptr);
    desktop.Do("stop");
    loop.AdvanceMs(300);
  }
}

TEST_F(SdrSetupTest, ABoxThatStillDoesNotAnswerHoldsNothingUp) {
  desktop.Do("check demodulator off");
  sim().SetSilent(Handle(ids().demodulator), true);
  ASSERT_TRUE(setup.Run());
  const auto fronts = sim().foregrounds().size();
  EXPECT_TRUE(setup.FinishCheckBoxes());
  EXPECT_EQ(sim().foregrounds().size(), fronts) << "it is not pressed again yet";
}

TEST_F(SdrSetupTest, FinishingTheBoxesEndsAtWhicheverMomentTheSocketIsLost) {
  for (int moment = 0; moment < 150; moment += 5) {
    desktop.socket().PretendState(std::nullopt);
    desktop.Do("check demodulator off");
    sim().SetSilent(Handle(ids().demodulator), true);
    ASSERT_TRUE(setup.Run()) << moment;
    sim().SetSilent(Handle(ids().demodulator), false);
    const auto fronts = sim().foregrounds().size();
    At(moment, [this] { desktop.socket().PretendState(SocketState::kClosing); });
    EXPECT_FALSE(setup.FinishCheckBoxes()) << moment;
    EXPECT_EQ(sim().foregrounds().size(), fronts + 1) << moment;
    loop.AdvanceMs(300);
  }
}

// Each time events may run another tick is due, for its handler takes as long as its interval.
TEST_F(SdrSetupTest, EndsAtWhicheverEventTheProgramShutsDown) {
  constexpr int kTickMs = 10;
  int last_tick = 0;
  bool done = false;
  while (!done && ++last_tick < 1000) {
    flags.mblnShuttingDown = false;
    desktop.Do("stop");
    int tick = 0;
    std::size_t fronts = 0;
    const auto timer = loop.MakeTimer(kTickMs, [&] {
      loop.Sleep(kTickMs);
      if (++tick != last_tick) return;
      flags.mblnShuttingDown = true;
      fronts = sim().foregrounds().size();
    });
    timer->SetEnabled(true);
    done = setup.Run();
    EXPECT_EQ(tick, done ? last_tick - 1 : last_tick);
    if (!done) {
      EXPECT_EQ(sim().foregrounds().size(), fronts) << last_tick;
    }
    timer->SetEnabled(false);
    loop.AdvanceMs(300);
  }
  EXPECT_GT(last_tick, 50);
  EXPECT_TRUE(done);
}

}  // namespace
}  // namespace corvane::test
