// The parts together: a press, a command or a PDU and what comes of it.
#include "standin/model.h"

#include <gtest/gtest.h>

#include "standin/net_remote_dialogue.h"

namespace corvane::standin {
namespace {

class ModelTest : public ::testing::Test {
 protected:
  void Make(Options options = {}, std::string_view text = {}) {
    Scenario scenario;
    ASSERT_EQ(ParseScenario(text, scenario), "");
    model_ = std::make_unique<Model>(std::move(options), scenario);
    model_->Advance(0);
  }
  // Playing on the control channel with the box open.
  void MakeReady() {
    Options options;
    options.info_open = true;
    options.playing = true;
    options.demodulator_checked = true;
    Make(options);
    (void)model_->Do("set DetectorType WFM");
  }
  void Tune(int carrier) {
    EXPECT_EQ(model_->Do("set Frequency " + std::to_string(model_->air().FrequencyOf(carrier))),
              "");
  }
  [[nodiscard]] std::string BoxText() const {
    return model_->tree().Find(model_->ids().info_box)->lines.text();
  }
  [[nodiscard]] std::string TextOf(WindowId id) const { return model_->tree().Find(id)->text; }
  void Do(std::string_view command) { EXPECT_EQ(model_->Do(command), "") << command; }

  std::unique_ptr<Model> model_;
};

TEST_F(ModelTest, TogglesListeningWithTheNetworkBox) {
  Make();
  const WindowId network = model_->ids().network;
  model_->tree().Press(network);
  EXPECT_TRUE(model_->server().Accepts(3383));
  EXPECT_EQ(TextOf(model_->ids().server), "Listening on port 3383");
  model_->tree().Press(network);
  EXPECT_FALSE(model_->server().listening());
  EXPECT_FALSE(model_->tree().Find(network)->checked);
}

TEST_F(ModelTest, OnlySwitchesOnWithAPlainButton) {
  Options options;
  options.network_plain = true;
  options.network_on = true;
  Make(options);
  EXPECT_TRUE(model_->server().listening());
  model_->tree().Press(model_->ids().network);
  EXPECT_TRUE(model_->server().listening());
}

TEST_F(ModelTest, ListensOnThePortOfThePortBox) {
  Make();
  model_->tree().EnterText(model_->ids().port, "4711");
  model_->tree().Press(model_->ids().network);
  EXPECT_TRUE(model_->server().Accepts(4711));
}

TEST_F(ModelTest, DoesNotListenOnWhatIsNoPort) {
  for (const char* text : {"", "x", "0", "65536", "-1"}) {
    Make();
    model_->tree().EnterText(model_->ids().port, text);
    model_->tree().Press(model_->ids().network);
    EXPECT_FALSE(model_->server().listening()) << text;
    EXPECT_FALSE(model_->tree().Find(model_->ids().network)->checked) << text;
    EXPECT_EQ(model_->log().Count("error"), 1u);
  }
}

TEST_F(ModelTest, WritesSetupsOfTheControlChannelIntoTheBox) {
  MakeReady();
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2");
  EXPECT_EQ(BoxText(),
            "SSI:9001 D_Setup Transmission Granted Call ID:7 Basic_service:Point_to_multipoint "
            "Party_SSI:5010 TimeSlot:2 Carrier:2610 \r\n");
  Do("pause id=7");
  EXPECT_EQ(model_->log().Count("pdu"), 1u);  // sent on the call's carrier alone
  EXPECT_EQ(model_->log().Count("air"), 2u);
}

TEST_F(ModelTest, WritesACallsLinesWhileItsCarrierIsTunedWhateverTheTimeslot) {
  MakeReady();
  Tune(2610);
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2");
  Do("speak id=7 party=5011");
  EXPECT_EQ(BoxText(),
            "SSI:9001 D_TX_Granted Call ID:7 Transmission_grant:Granted_to_another_user "
            "Party_SSI:5011\r\n");
}

TEST_F(ModelTest, WritesNothingUntilItPlaysWithTheDemodulatorOn) {
  Options options;
  options.info_open = true;
  Make(options);
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2 repeat=1");
  model_->Advance(3000);
  EXPECT_EQ(BoxText(), "");
  Do("set DetectorType WFM");
  Do("play");
  Do("check demodulator on");
  model_->Advance(4000);
  EXPECT_NE(BoxText(), "");
}

TEST_F(ModelTest, SoundsWhileTheFollowedCallHasVoice) {
  MakeReady();
  std::vector<std::optional<Tone>> tones;
  model_->SetListeners({{}, {}, [&](const std::optional<Tone>& tone) { tones.push_back(tone); }});
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2");
  Do("press \"Timeslot 2\"");
  Do("set AudioGain 45");
  Tune(2610);
  Do("pause id=7");
  Do("speak id=7 party=5012");
  Do("set AudioGain 25");
  ASSERT_EQ(tones.size(), 4u);
  EXPECT_EQ(tones[0], (Tone{9001, ToneHz(9001), 45}));
  EXPECT_EQ(tones[1], std::nullopt);
  EXPECT_EQ(tones[2], tones[0]);
  EXPECT_EQ(tones[3], std::nullopt);
  EXPECT_EQ(model_->log().Details("tone").front(), "group=9001 hz=1425 gain=45");
}

TEST_F(ModelTest, SelectsATimeslotAtTheMouseDown) {
  MakeReady();
  model_->tree().MouseDown(model_->ids().timeslots[2], 38, 13);
  EXPECT_EQ(model_->receiver().state().slot, 3);
  EXPECT_TRUE(model_->tree().Find(model_->ids().timeslots[2])->checked);
  EXPECT_FALSE(model_->tree().Find(model_->ids().timeslots[0])->checked);
  EXPECT_EQ(model_->log().Details("mouse-down"), std::vector<std::string>{"Timeslot 3"});
}

TEST_F(ModelTest, ShowsTheNetworkInTheLabels) {
  MakeReady();
  EXPECT_EQ(TextOf(model_->ids().mcc), "MCC:262");
  EXPECT_EQ(TextOf(model_->ids().mnc), "MNC:42");
  EXPECT_EQ(TextOf(model_->ids().la), "LA:101");
  Do("network 262 42 102");
  EXPECT_EQ(TextOf(model_->ids().la), "LA:102");
  Do("network none");
  EXPECT_EQ(TextOf(model_->ids().mcc), "MCC:?");
}

TEST_F(ModelTest, KeepsTheLabelsWhileNothingIsDecoded) {
  MakeReady();
  Do("stop");
  Do("network 262 42 102");
  EXPECT_EQ(TextOf(model_->ids().la), "LA:101");
}

TEST_F(ModelTest, HasEmptyLabelsUntilItPlaysWhenAskedTo) {
  Options options;
  options.labels_after_start = true;
  options.demodulator_checked = true;
  Make(options);
  EXPECT_EQ(TextOf(model_->ids().mcc), "");
  Do("set DetectorType WFM");
  EXPECT_EQ(TextOf(model_->ids().mcc), "");
  Do("play");
  EXPECT_EQ(TextOf(model_->ids().mcc), "MCC:262");
}

TEST_F(ModelTest, LocksAfterTheLockTime) {
  MakeReady();
  Do("lock 200");
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=1");
  Tune(2610);
  EXPECT_TRUE(model_->receiver().AudioIsMuted());
  model_->Advance(199);
  EXPECT_EQ(model_->log().Count("tone"), 0u);
  model_->Advance(200);
  EXPECT_EQ(model_->log().Count("tone"), 1u);
}

TEST_F(ModelTest, DoesNothingWhileItHangsAndEverythingAfterwards) {
  MakeReady();
  model_->Advance(1000);
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2 repeat=0.1");
  Do("hang 1000");
  EXPECT_EQ(model_->NextDueMs(), 2000);
  model_->Advance(1999);
  EXPECT_EQ(model_->log().Count("pdu"), 1u);
  model_->Advance(2000);
  EXPECT_EQ(model_->log().Count("pdu"), 2u);
}

TEST_F(ModelTest, DiesWithItsWindowsAndComesBackWithOthers) {
  MakeReady();
  model_->tree().Press(model_->ids().network);
  const WindowId main = model_->ids().main;
  Do("die");
  EXPECT_FALSE(model_->running());
  EXPECT_TRUE(model_->tree().top_level().empty());
  EXPECT_FALSE(model_->server().listening());
  EXPECT_EQ(model_->Do("die"), "SDR# does not run now");
  EXPECT_EQ(model_->Do("press \"Net Info\""), "there is no button \"Net Info\"");
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2");
  Do("revive");
  EXPECT_TRUE(model_->running());
  EXPECT_NE(model_->ids().main, main);
  EXPECT_EQ(model_->Do("revive"), "it runs already");
}

TEST_F(ModelTest, ReportsScenarioCommandsThatCannotBeDone) {
  Make({}, "at 1 pause id=5\n");
  model_->Advance(1000);
  EXPECT_EQ(model_->log().Details("error"),
            std::vector<std::string>{"scenario line 1: there is no call 5"});
}

TEST_F(ModelTest, PlaysAScenarioAtItsTimes) {
  Make({}, "at 1 note one\nat 2.5 note two\nat 3 end\n");
  model_->Advance(2499);
  EXPECT_EQ(model_->log().Count("note"), 1u);
  model_->Advance(2500);
  EXPECT_EQ(model_->log().entries().back().ms, 2500);
  EXPECT_FALSE(model_->finished());
  model_->Advance(10000);
  EXPECT_TRUE(model_->finished());
}

TEST_F(ModelTest, ReleasesACallAfterItsTime) {
  MakeReady();
  Do("call id=7 group=9001 party=5010 carrier=2604 slot=2 for=2");
  model_->Advance(1999);
  EXPECT_NE(model_->air().Find(7), nullptr);
  model_->Advance(2000);
  EXPECT_EQ(model_->air().Find(7), nullptr);
  EXPECT_NE(BoxText().find("D_Release Call ID:7 "), std::string::npos);
}

TEST_F(ModelTest, WritesLinesAsTheyAreGiven) {
  MakeReady();
  Do("partial \"half\"");
  EXPECT_EQ(BoxText(), "half");
  Do("line \"\" count=2");
  Do("line \"D_Release\"");
  Do("duplicate count=2");
  EXPECT_EQ(BoxText(), "half\r\n\r\nD_Release\r\nD_Release\r\nD_Release\r\n");
  Do("clear-box");
  EXPECT_EQ(BoxText(), "");
  Do("line \"other\" on=carrier carrier=2610");
  EXPECT_EQ(BoxText(), "");
  Do("line \"here\" on=control");
  EXPECT_EQ(BoxText(), "here\r\n");
}

TEST_F(ModelTest, SendsABurstOfSetups) {
  MakeReady();
  Do("burst count=50 id=100 group=9001 party=5010 carrier=2610 slot=2");
  EXPECT_EQ(model_->log().Count("pdu"), 50u);
  EXPECT_NE(BoxText().find("Call ID:149 "), std::string::npos);
  EXPECT_TRUE(model_->air().calls().empty());
}

TEST_F(ModelTest, CarriesOutWindowAndPanelCommands) {
  MakeReady();
  Do("window network-info minimise");
  EXPECT_EQ(model_->tree().Find(model_->ids().info_window)->show_state, ShowState::kMinimised);
  Do("window network-info hide");
  EXPECT_FALSE(model_->tree().IsVisible(model_->ids().info_window));
  Do("window network-info close");
  EXPECT_EQ(model_->ids().info_window, 0u);
  EXPECT_EQ(model_->Do("window network-info hide"), "there is no such window now");
  Do("window network-info open");
  EXPECT_NE(model_->ids().info_window, 0u);
  Do("panel tetra collapse");
  EXPECT_FALSE(model_->tree().IsVisible(model_->ids().demodulator));
  Do("panel tetra expand");
  EXPECT_TRUE(model_->tree().IsVisible(model_->ids().demodulator));
  Do("move main 5 6");
  EXPECT_EQ(model_->tree().Find(model_->ids().main)->box.left, 5);
  Do("paint demodulator other");
  EXPECT_EQ(model_->tree().Find(model_->ids().demodulator)->paint, Paint::kOther);
}

TEST_F(ModelTest, LetsAPersonStartAndEndCallsByHand) {
  MakeReady();
  Do("press \"Start a call\"");
  ASSERT_EQ(model_->air().calls().size(), 1u);
  const std::int32_t first = model_->air().calls().begin()->second.party;
  Do("press \"Next speaker\"");
  EXPECT_NE(model_->air().calls().begin()->second.party, first);
  Do("press Pause");
  EXPECT_FALSE(model_->air().calls().begin()->second.speaking);
  for (int i = 0; i < 4; ++i) Do("press \"Start a call\"");
  EXPECT_EQ(model_->air().calls().size(), 4u);  // the carrier has four timeslots
  for (int i = 0; i < 5; ++i) Do("press \"End the call\"");
  EXPECT_TRUE(model_->air().calls().empty());
}

TEST_F(ModelTest, AnswersNetRemoteCommandsThroughTheServer) {
  MakeReady();
  const ClientId client = model_->server().Accepted();
  model_->server().Received(client,
                            "{\"Command\": \"Set\", \"Method\": \"AudioGain\", "
                            "\"Value\": 33}");
  model_->Advance(1);
  EXPECT_EQ(model_->receiver().state().audio_gain, 33);
  EXPECT_EQ(model_->log().Details("reply").back(), "client=1 {\"Result\":\"OK\"}\r\n");
}

TEST_F(ModelTest, GivesTheSameRunForTheSameSeed) {
  const char* const text = "traffic calls-per-hour=600 missed=10\nnoise per-hour=300\n";
  Make({}, text);
  model_->Advance(600000);
  const auto first = model_->log().Details("air");
  EXPECT_GT(first.size(), 100u);
  Make({}, text);
  model_->Advance(600000);
  EXPECT_EQ(model_->log().Details("air"), first);
  Options other;
  other.seed = 99;
  Make(other, text);
  model_->Advance(600000);
  EXPECT_NE(model_->log().Details("air"), first);
}

}  // namespace
}  // namespace corvane::standin
