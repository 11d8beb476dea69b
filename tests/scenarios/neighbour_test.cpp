// The whole program beside neighbours that behave as documented for Windows and not under Wine 8:
// an SDR# with more rights, hung programs, covered boxes, slow refusals and resets, presses that
// act late, a Network Info window that is owned, toggled or wrapped. See docs/windows.md.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <tuple>

#include "scenarios/world.h"

namespace corvane::sim {
namespace {

using Sent = SimWindowOps::Sent;

constexpr std::string_view kElevatedLine =
    "SDR# runs with administrator rights - start this program in the same way";
constexpr std::string_view kSilentLine = "SDR# does not answer - ";
constexpr std::string_view kAgainLine = "SDR# answers again - ";
constexpr int kSendLimit_ms = 500;  // what a call to another program may take on Windows
constexpr int kNoticed_ms = 5000;   // from a neighbour's recovery to the next call

WorldOptions Usual(standin::Options sdr = {}) {
  WorldOptions options;
  options.sdr = std::move(sdr);
  options.scenario = "base 800000000\n";
  return options;
}

class Neighbour : public ::testing::Test {
 protected:
  void Make(WorldOptions options) {
    world_ = std::make_unique<World>(std::move(options));
    windows().SetSendLimitMs(kSendLimit_ms);
  }
  World& world() { return *world_; }
  SimWindowOps& windows() { return world().desktop->windows(); }
  standin::Model& model() { return world().desktop->model(); }
  const standin::SdrWindows::Ids& ids() { return world().desktop->ids(); }

  int Messages(standin::WindowId id, Sent sent) {
    const WindowHandle window = world().desktop->Handle(id);
    const auto& all = windows().messages();
    return static_cast<int>(std::count_if(all.begin(), all.end(), [&](const auto& message) {
      return message.window == window && message.sent == sent;
    }));
  }
  // How often it was carried out.
  int Pressed(std::string_view caption) {
    const auto& entries = model().log().entries();
    return static_cast<int>(std::count_if(entries.begin(), entries.end(), [&](const auto& entry) {
      return entry.kind == "press" && entry.detail == caption;
    }));
  }
  bool FollowsACall(int limit_ms = 1500) {
    const int id = ++call_;
    world().Do("call id=" + std::to_string(id) +
               " group=9001 party=5010 carrier=2610 slot=3 for=1");
    return world().RunUntil(
        [&] { return world().Following() && world().view().call.FollowedCallId() == id; },
        limit_ms);
  }
  // How long from now until a call that is set up is followed; one is set up every half second.
  std::int64_t RecoveryMs(const char* what) {
    const std::int64_t begin = world().loop.TickMs();
    while (!FollowsACall(500)) {
      if (world().loop.TickMs() - begin > 60000) break;
    }
    const std::int64_t took = world().loop.TickMs() - begin;
    std::printf("followed %5lld ms after: %s\n", static_cast<long long>(took), what);
    return took;
  }

  std::unique_ptr<World> world_;
  int call_ = 1000;
};

// --- SDR# with administrator rights ---

TEST_F(Neighbour, AnSdrWithMoreRightsIsNamedOnceAndItsEndToo) {
  for (const bool network_on : {true, false}) {
    standin::Options sdr;
    sdr.elevated = true;
    sdr.info_open = true;
    sdr.network_on = network_on;
    Make(Usual(sdr));
    world().Do("refusal 2000");  // or refusals soon fill the log, which is then cleared
    ASSERT_TRUE(world().Load());
    EXPECT_EQ(world().CountStatusLog(kElevatedLine), 1);
    world().Start();
    world().Run(60000);
    EXPECT_EQ(world().CountStatusLog(kElevatedLine), 1);
    EXPECT_EQ(world().CountStatusLog(kSilentLine), 0);
    EXPECT_EQ(world().CountStatusLog(kAgainLine), 0) << "a text that is read is no sign";
    world().Do("die");
    world().Do("elevated off");
    world().Run(2000);
    world().Do("revive");
    EXPECT_LE(RecoveryMs("SDR# started in the same way"), kNoticed_ms);
    EXPECT_EQ(world().CountStatusLog(kAgainLine), 1);
  }
}

TEST_F(Neighbour, AnSdrWithMoreRightsWhoseNetworkInfoIsClosedIsNamedToo) {
  standin::Options sdr;
  sdr.elevated = true;
  Make(Usual(sdr));
  ASSERT_TRUE(world().Load());
  EXPECT_EQ(world().CountStatusLog(kElevatedLine), 1);
  EXPECT_EQ(world().CountStatusLog("No 'Network Info' editbox found."), 1);
}

// --- Programs that hang ---

TEST_F(Neighbour, AHungSdrIsReportedOnceAndItsReturnOnce) {
  Make(Usual());
  world().BringUp();
  for (const int hang_ms : {700, 3000, 12000}) {
    const int before = world().CountStatusLog(kSilentLine);
    world().Do("hang " + std::to_string(hang_ms));
    world().Run(hang_ms);
    EXPECT_EQ(world().CountStatusLog(kSilentLine), before + 1) << hang_ms;
    EXPECT_EQ(world().CountStatusLog(kAgainLine), before) << hang_ms;
    EXPECT_LE(RecoveryMs("a hang"), kNoticed_ms);
    EXPECT_EQ(world().CountStatusLog(kAgainLine), before + 1) << hang_ms;
    world().Run(3000);
  }
}

TEST_F(Neighbour, AStartWithoutSdrOrWithAHungOneSaysNothingOfAnswersAtFirst) {
  Make(Usual());
  world().Do("stranger hang 3000");
  world().Do("hang 8000");
  ASSERT_TRUE(world().Load());
  EXPECT_EQ(world().CountStatusLog("SDR# is running"), 0);
  EXPECT_EQ(world().CountStatusLog(kSilentLine), 0);
  world().Start();
  world().Run(5000);
  EXPECT_EQ(world().CountStatusLog(kSilentLine), 1) << "found by its title, and nothing of it";
  ASSERT_TRUE(world().RunUntil([&] { return world().CountStatusLog(kAgainLine) == 1; }, 4000));
  EXPECT_LE(RecoveryMs("a hang at the start"), kNoticed_ms);

  Make(Usual());
  world().Do("die");
  world().Do("stranger hang 600000");
  ASSERT_TRUE(world().Load());
  world().Start();
  world().Run(60000);
  EXPECT_EQ(world().CountStatusLog(kSilentLine), 0) << "what strangers do is not SDR#'s fault";
}

TEST_F(Neighbour, AHungStrangerAboveSdrCostsOneLookAndHidesNothing) {
  Make(Usual());
  world().Do("stranger hang 600000");
  const std::int64_t begin = world().loop.TickMs();
  ASSERT_TRUE(world().Load());
  EXPECT_LE(world().loop.TickMs() - begin, kSendLimit_ms + 50);
  EXPECT_EQ(world().CountStatusLog("All hwnd found - Ready to start"), 1);
  world().Start();
  EXPECT_LE(RecoveryMs("a start beside a hung stranger"), kNoticed_ms);
}

TEST_F(Neighbour, AHungStrangerIsLookedAtAgainAfterHalfAMinute) {
  Make(Usual());
  world().Do("die");
  world().Do("stranger hang 600000");
  const standin::WindowId stranger = model().tree().top_level().front();
  ASSERT_TRUE(world().Load());
  world().Start();
  world().Run(29000);
  EXPECT_EQ(Messages(stranger, Sent::kText), 1);
  world().Run(35000);
  EXPECT_EQ(Messages(stranger, Sent::kText), 3);
  world().Do("revive");
  EXPECT_LE(RecoveryMs("SDR# started beside a hung stranger"), kNoticed_ms);
}

// --- Boxes that cannot be seen ---

TEST_F(Neighbour, ACoveredSdrKeepsItsBoxesThroughAnUnattendedReset) {
  Make(Usual());
  world().BringUp();
  world().Do("front kept");
  world().Do("cover demodulator unchecked");
  world().Do("cover auto checked");
  const std::size_t fronts = windows().foregrounds().size();
  windows().ForgetMessages();
  world().Do(
      R"(reply text "{\"Result\":\"Error\",\"Type\":\"Value error\",\"Message\":\"No\"}\r\n")");
  ASSERT_TRUE(world().RunUntil(
      [&] {
        (void)FollowsACall(200);
        return windows().foregrounds().size() >= fronts + 2;
      },
      60000))
      << "no reset came";
  EXPECT_EQ(Messages(ids().demodulator, Sent::kPress), 0);
  EXPECT_EQ(Messages(ids().automatic, Sent::kPress), 0);
  EXPECT_TRUE(model().receiver().state().demodulator_on);
  EXPECT_FALSE(model().receiver().state().auto_on);
  EXPECT_LE(RecoveryMs("a reset of a covered SDR#"), kNoticed_ms);
}

// --- Connections ---

class SlowRefusal : public Neighbour,
                    public ::testing::WithParamInterface<std::tuple<bool, bool>> {};

TEST_P(SlowRefusal, TheLinkComesBackAfterEveryKindOfLoss) {
  standin::Options sdr;
  sdr.network_on = std::get<0>(GetParam());
  sdr.network_plain = std::get<1>(GetParam());
  Make(Usual(sdr));
  world().Do("refusal 2000");
  ASSERT_TRUE(world().Load());
  world().Start();
  EXPECT_LE(RecoveryMs("the start"), kNoticed_ms);
  for (const char* loss : {"cut", "cut reset", "listen off", "die"}) {
    world().Run(4000);
    ASSERT_TRUE(FollowsACall()) << loss;
    world().Do(loss);
    world().Run(100);
    if (std::string_view(loss) == "die") {
      world().Run(4000);
      world().Do("revive");
    }
    EXPECT_LE(RecoveryMs(loss), kNoticed_ms);
  }
}

INSTANTIATE_TEST_SUITE_P(All, SlowRefusal, ::testing::Combine(::testing::Bool(), ::testing::Bool()),
                         [](const auto& kind) {
                           return std::string(std::get<1>(kind.param) ? "Plain" : "Toggling") +
                                  (std::get<0>(kind.param) ? "On" : "Off");
                         });

TEST_F(Neighbour, AResetIsAnErrorThatEndsTheCallAndIsReportedOnce) {
  Make(Usual());
  world().BringUp();
  ASSERT_TRUE(FollowsACall());
  world().Do("cut reset");
  ASSERT_TRUE(world().RunUntil([&] { return !world().Following(); }, 500));
  EXPECT_EQ(world().CountStatusLog("WinSock error: 10054 - "), 1);
  EXPECT_EQ(world().form().ShapeWinsock_state.fill_colour.get(), kButtonFace);
}

// --- Presses that act late, or never ---

class LatePress : public Neighbour, public ::testing::WithParamInterface<bool> {
 protected:
  // SDR# hangs as the first press of this button reaches it.
  void HangAtPress(standin::WindowId id, int hang_ms) {
    windows().SetActsLate(GetParam());
    const WindowHandle button = world().desktop->Handle(id);
    hung_ = false;
    windows().SetOnMessage([this, button, hang_ms](const SimWindowOps::Message& message) {
      if (hung_ || message.window != button || message.sent != Sent::kPress) return;
      hung_ = true;
      world().Do("hang " + std::to_string(hang_ms));
    });
  }

 private:
  bool hung_ = false;
};

TEST_P(LatePress, NetworkIsNotSwitchedOffByASecondPress) {
  for (const int refusal_ms : {1, 2000}) {
    Make(Usual());
    world().Do("refusal " + std::to_string(refusal_ms));
    HangAtPress(ids().network, 3000);
    ASSERT_TRUE(world().Load());
    world().Start();
    world().Run(2500);
    EXPECT_LE(RecoveryMs("a hang as Network is pressed"), kNoticed_ms);
    EXPECT_TRUE(model().server().listening());
    EXPECT_EQ(Pressed("Network"), 1) << refusal_ms;
  }
}

TEST_P(LatePress, TheBoxesAreSetInTheEnd) {
  for (const bool automatic : {false, true}) {
    Make(Usual());
    HangAtPress(automatic ? ids().automatic : ids().demodulator, 3000);
    ASSERT_TRUE(world().Load());
    world().Start();
    ASSERT_TRUE(world().RunUntil(
        [&] {
          return model().receiver().state().demodulator_on && !model().receiver().state().auto_on;
        },
        10000));
    EXPECT_LE(RecoveryMs("a hang as a box is pressed"), kNoticed_ms);
    world().Run(10000);
    EXPECT_EQ(Pressed("Demodulator"), 1);
    EXPECT_EQ(Pressed("Auto"), 1);
  }
}

TEST_P(LatePress, AToggledNetworkInfoIsShownInTheEnd) {
  standin::Options sdr;
  sdr.info_toggles = true;
  Make(Usual(sdr));
  world().BringUp();
  HangAtPress(ids().net_info, 3000);
  const int before = Pressed("Net Info");
  world().Do("window network-info hide");
  ASSERT_TRUE(world().RunUntil(
      [&] { return model().tree().IsVisible(ids().info_window) && Pressed("Net Info") > before; },
      8000));
  world().Run(10000);
  EXPECT_TRUE(model().tree().IsVisible(ids().info_window));
  EXPECT_EQ(Pressed("Net Info"), before + 1);
}

INSTANTIATE_TEST_SUITE_P(All, LatePress, ::testing::Bool(), [](const auto& late) {
  return std::string(late.param ? "CarriedOutLate" : "NeverCarriedOut");
});

// --- The Network Info window ---

TEST_F(Neighbour, ANetworkInfoThatIsHiddenWithSdrIsReadAndLeftHidden) {
  for (const bool toggles : {false, true}) {
    standin::Options sdr;
    sdr.info_owned = true;
    sdr.info_toggles = toggles;
    Make(Usual(sdr));
    world().BringUp();
    const int before = Pressed("Net Info");
    world().Do("window main minimise");
    ASSERT_FALSE(model().tree().IsVisible(ids().info_window));
    world().Run(30000);
    EXPECT_EQ(Pressed("Net Info"), before) << toggles;
    EXPECT_FALSE(model().tree().IsVisible(ids().info_window));
    EXPECT_TRUE(FollowsACall()) << toggles;
    world().Do("window main restore");
    world().Run(5000);
    EXPECT_TRUE(model().tree().IsVisible(ids().info_window));
    EXPECT_EQ(Pressed("Net Info"), before) << toggles;
    EXPECT_TRUE(FollowsACall()) << toggles;
  }
}

TEST_F(Neighbour, ANetInfoButtonThatShowsNothingIsPressedAFewTimesAndThenRarely) {
  Make(Usual());
  world().BringUp();
  model().tree().OnPress(ids().net_info, nullptr);
  windows().ForgetMessages();
  world().Do("window network-info hide");
  world().Run(10000);
  EXPECT_EQ(Messages(ids().net_info, Sent::kPress), 3);
  EXPECT_TRUE(FollowsACall()) << "it can be read all the same";
  int presses = 0;
  for (int half_minute = 0; half_minute < 4; ++half_minute) {
    windows().ForgetMessages();
    world().Run(30000);
    EXPECT_LE(Messages(ids().net_info, Sent::kPress), 1);
    presses += Messages(ids().net_info, Sent::kPress);
  }
  EXPECT_GE(presses, 3);
}

TEST_F(Neighbour, WrappedLinesAreReadWholeAndAChangedWidthBringsNoHistoryBack) {
  standin::Options sdr;
  sdr.info_wrap = standin::Wrap::kWords;
  Make(Usual(sdr));
  world().BringUp();
  world().Do("width 300");
  world().Run(1000);
  for (int call = 0; call < 5; ++call) {
    ASSERT_TRUE(FollowsACall());
    world().Run(4000);
  }
  EXPECT_GE(world().CountCallLog("Calling SSI: 5010"), 5);
  const int calls = world().CountCallLog("Calling SSI:");
  for (const char* width : {"width 640", "width 180", "width 900", "width 120"}) {
    world().Do(width);
    world().Run(10000);
    EXPECT_EQ(world().CountCallLog("Calling SSI:"), calls) << width;
  }
  EXPECT_TRUE(FollowsACall());
  EXPECT_EQ(world().CountStatusLog("'Network Info' wraps long lines"), 0);
}

TEST_F(Neighbour, NoLineIsMissedWhileAWrappedBoxIsMadeWiderAndNarrower) {
  standin::Options sdr;
  sdr.info_wrap = standin::Wrap::kWords;
  Make(Usual(sdr));
  world().BringUp();
  const char* const widths[] = {"width 300", "width 700", "width 180", "width 900"};
  int party = 6000;
  for (const char* width : widths) {
    const std::string number = std::to_string(++party);
    world().Do("call id=77 group=9001 party=" + number + " carrier=2610 slot=2 repeat=1");
    world().Do(width);
    ASSERT_TRUE(world().RunUntil([this] { return world().Following(); }, 500)) << width;
    world().Run(1000);
    // The end comes in the midst of a drag, with other lines before and behind it.
    for (int step = 0; step < 12; ++step) {
      world().Do("width " + std::to_string(250 + 37 * step));
      world().Do("line \"SSI:1 D_Status of radio " + std::to_string(100 * party + step) + "\"");
      if (step == 4) world().Do("release id=77");
      world().Run(20);
    }
    world().Run(1500);
    EXPECT_FALSE(world().Following()) << width;
    EXPECT_TRUE(world().Parked()) << width;
    EXPECT_EQ(world().CountCallLog("Call ID: 77 - VC D-Released"), party - 6000) << width;
  }
  EXPECT_EQ(world().CountCallLog("Did not see D-Release"), 0);
  EXPECT_EQ(world().CountCallLog("On carrier: 2610"), 4) << "none is followed twice";
  EXPECT_EQ(world().CountCallLog("D_Status of radio"), 48) << "each line counts once";
}

TEST_F(Neighbour, WhereWrappedLinesCannotBeToldTheUserIsToldWhatToSwitch) {
  standin::Options sdr;
  sdr.info_wrap = standin::Wrap::kSwallowing;
  Make(Usual(sdr));
  world().BringUp();
  for (int call = 0; call < 3; ++call) (void)FollowsACall();
  world().Run(10000);
  EXPECT_EQ(world().CountStatusLog(
                "'Network Info' wraps long lines - switch its word wrap off or make it wider"),
            1);
  world().Do("width 1500");
  world().Run(2000);
  EXPECT_TRUE(FollowsACall());
}

}  // namespace
}  // namespace corvane::sim
