// What goes wrong between Corvane and SDR#: the link heals by itself, the window keeps answering,
// the status log says what the user needs and no more, and calls are followed again.
#include <chrono>
#include <cstdio>

#include "desktop/call_test.h"

namespace corvane::desktop {
namespace {

using enum ControlId;
using Lines = std::vector<std::string>;

// How long the window may take to answer, whatever state SDR# is in.
constexpr int kResponsive_ms = 3'000;
// A line takes a poll: these must not pile up before the others.
constexpr int kNextLine_ms = 250;
// Long enough for dozens of poll cycles.
constexpr int kWatch_ms = 4'000;

constexpr std::string_view kExpandLine = "*** You need to expand TETRA Demodulator panel ***";
constexpr std::string_view kLoadedLine = "No saved GSSIs to loaded";
constexpr std::string_view kRefusedLine = "Is 'Net Remote' enabled in SDR#?";

class LinkTest : public CallTest {
 protected:
  // Watches the program for a while: it answers all the time.
  void ExpectStaysResponsive(int for_ms = kWatch_ms) {
    EXPECT_FALSE(WaitFor([this] { return !Corvane().Responds(kResponsive_ms); }, for_ms))
        << "the window did not answer";
  }

  // The status log does not grow by more than `lines` while it is watched.
  void ExpectQuietStatusLog(int lines, int for_ms = kWatch_ms) {
    const Lines before = Corvane().StatusLog();
    ExpectStaysResponsive(for_ms);
    const Lines after = Corvane().StatusLog();
    EXPECT_LE(after.size(), before.size() + static_cast<std::size_t>(lines))
        << "last line: " << (after.empty() ? "" : after.back());
  }

  // After SDR# is `back` a call is followed. How soon is no matter of a machine that has much else
  // to do: the reviewed runs on the virtual clock tell it to the millisecond.
  void ExpectFollowsAfter(const std::function<void()>& back, int call_id) {
    back();
    const auto begin = std::chrono::steady_clock::now();
    SetUpUntilFollowed(call_id, 9050, 2612, 2);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    std::printf("followed again after %.1f s\n", took.count());
    Do("release id=" + std::to_string(call_id));
    AwaitParked();
  }

  void BeginACall(int call_id) {
    Do("call id=" + std::to_string(call_id) + " group=9001 party=5010 carrier=2610 slot=2");
    AwaitFollowing(call_id);
  }
};

// The "Network" box in all its kinds.
struct NetworkBox {
  const char* name;
  std::vector<std::string> options;
};
class NetworkBoxTest : public LinkTest, public ::testing::WithParamInterface<NetworkBox> {};

TEST_P(NetworkBoxTest, ConnectsWithinTwoAttempts) {
  Begin({}, GetParam().options);
  EXPECT_EQ(Sdr().Count("accept"), 1u);
  EXPECT_LE(CountContaining(Corvane().StatusLog(), kRefusedLine), 1);
  ExpectFollowsACall(50);
}

TEST_P(NetworkBoxTest, ConnectsAgainAfterTheLinkWasLostInMidCall) {
  Begin({}, GetParam().options);
  BeginACall(51);
  Do("cut");
  Await("the call to be given up", [this] { return Corvane().Caption(lblCallID).empty(); });
  ExpectFollowsACall(52);
}

TEST_P(NetworkBoxTest, KeepsTheConnectionAfterAnErrorReply) {
  Begin({}, GetParam().options);
  Do("reply text \"{\\\"Result\\\":\\\"Error\\\",\\\"Type\\\":\\\"Value error\\\","
     "\\\"Message\\\":\\\"Greater than 60\\\"}\\r\\n\"");
  Do("call id=53 group=9001 party=5010 carrier=2610 slot=2");
  AwaitInStatusLog("ERROR: Net Remote - Attempting reset ");
  ExpectFollowsACall(54);
  EXPECT_EQ(Sdr().Count("accept"), 1u);
  EXPECT_TRUE(Corvane().InStatusLog("ERROR: Net Remote - Attempting reset "));
  EXPECT_NE(Folder().Read("errors.txt").find("Greater than 60"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(
    All, NetworkBoxTest,
    ::testing::Values(NetworkBox{"ToggleOff", {"--network-off"}},
                      NetworkBox{"ToggleOn", {"--network-on", "--port", "3383"}},
                      NetworkBox{"PlainOff", {"--network-off", "--network-plain"}},
                      NetworkBox{"PlainOn", {"--network-on", "--network-plain", "--port", "3383"}}),
    [](const auto& box) { return std::string(box.param.name); });

TEST_F(LinkTest, WaitsForAnSdrThatIsNotThereYet) {
  StartCorvane();
  PressStart();
  // Once when it was started and once more when "Start" was pressed.
  Await("what is missing to be said twice", [this] {
    return CountContaining(Corvane().StatusLog(), "No 'Network Info' editbox found.") == 2;
  });
  ExpectQuietStatusLog(0);
  ExpectFollowsAfter(
      [this] {
        StartSdr();
        AwaitInStatusLog("All hwnd found - Ready to start");
      },
      55);
}

TEST_F(LinkTest, FindsIdentityLabelsThatFillLater) {
  Begin({}, {"--labels-after-start"});
  ExpectFollowsACall(56);
}

TEST_F(LinkTest, FindsAnSdrThatWasKilledAndStartedAgainInMidCall) {
  Begin();
  BeginACall(57);
  Sdr().Kill();
  Await("the call to be given up", [this] { return Corvane().Caption(lblCallID).empty(); });
  AwaitInStatusLog("No 'Network Info' editbox found.");
  ExpectStaysResponsive();
  ExpectQuietStatusLog(5);
  ExpectFollowsAfter([this] { StartSdr(); }, 58);
}

// It hangs as long as the case takes.
TEST_F(LinkTest, FindsSdrBelowAHungWindowOfAnotherProgram) {
  StartSdr({"--info-open"});
  Do("stranger hang 600000");
  StartCorvane();
  PressStart();
  AwaitScanning();
  ExpectStaysResponsive();
  ExpectFollowsACall(69);
}

TEST_F(LinkTest, StaysResponsiveWhileSdrHangsForTenSeconds) {
  Begin();
  BeginACall(59);
  Do("hang 10000");
  ExpectStaysResponsive(8'000);
  Click(Corvane().Control(cmdSettingTab_2));
  Await("the options page", [this] { return Visible(Corvane().Control(fraOptions)); });
  // The call outlives the hang, unless SDR# then reads what came meanwhile as one faulty command.
  Do("release id=59");
  Await("the call to end", [this] { return Corvane().Caption(lblCallID).empty(); });
  if (CountContaining(Sdr().Details("reply"), "Syntax error") == 0) {
    AwaitInCallLog("Call ID: 59 - VC D-Released");
  }
  ExpectFollowsACall(60);
}

TEST_F(LinkTest, StaysResponsiveWhileSdrIsFrozen) {
  Begin();
  ASSERT_TRUE(Sdr().TheProcess().Suspend());
  ExpectStaysResponsive(8'000);
  ASSERT_TRUE(Sdr().TheProcess().Resume());
  ExpectFollowsACall(61);
}

TEST_F(LinkTest, FindsANetworkInfoWindowThatWasClosed) {
  Begin();
  Do("window network-info close");
  ExpectFollowsACall(62);
  EXPECT_EQ(Sdr().Count("accept"), 1u);
}

TEST_F(LinkTest, FindsANetworkInfoWindowThatWasClosedAndOpenedInMidCall) {
  Begin();
  BeginACall(63);
  Do("window network-info close");
  Do("window network-info open");
  Await("the box to be read again", [this] {
    Do("speak id=63 party=5099");
    return WaitFor([this] { return Corvane().Caption(lblCurrentSSI) == "5099"; }, kNextLine_ms);
  });
  Do("release id=63");
  AwaitInCallLog("Call ID: 63 - VC D-Released");
}

TEST_F(LinkTest, AsksForACollapsedPanelToBeExpanded) {
  StartSdr({"--tetra-collapsed"});
  StartCorvane();
  PressStart();
  AwaitInStatusLog(kExpandLine);
  ExpectQuietStatusLog(3);
  EXPECT_EQ(CountContaining(Corvane().StatusLog(), kExpandLine), 1);
}

TEST_F(LinkTest, HealsARefusedPort) {
  Begin();
  ASSERT_TRUE(Corvane().InStatusLog(kLoadedLine));
  Do("refuse on");
  Do("cut");
  // The end of the connection empties the log; the refusal of the first attempt of all goes with
  // it.
  Await("the next refusal", [this] {
    const Lines log = Corvane().StatusLog();
    return CountContaining(log, kLoadedLine) == 0 && CountContaining(log, kRefusedLine) > 0;
  });
  ExpectStaysResponsive();
  ExpectFollowsAfter([this] { Do("refuse off"); }, 64);
}

TEST_F(LinkTest, HealsAConnectionThatWasReset) {
  Begin();
  BeginACall(65);
  ExpectFollowsAfter([this] { Do("cut reset"); }, 66);
}

// Greetings and replies that arrive otherwise than they should.
class ReplyTest : public LinkTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(ReplyTest, CallsAreFollowedAllTheSame) {
  StartSdr();
  Do("greeting " + std::string(GetParam()) + " count=all");
  StartCorvane();
  PressStart();
  AwaitScanning();
  Do("reply " + std::string(GetParam()) + " count=20");
  Do("call id=67 group=9001 party=5010 carrier=2610 slot=2");
  ExpectStaysResponsive();
  Do("release id=67");
  Do("reply normal");
  ExpectFollowsACall(68);
}

INSTANTIATE_TEST_SUITE_P(All, ReplyTest,
                         ::testing::Values("split 40", "join", "delay 300", "garble", "drop"),
                         [](const auto& fault) {
                           const std::string words = fault.param;
                           return words.substr(0, words.find(' '));
                         });

}  // namespace
}  // namespace corvane::desktop
