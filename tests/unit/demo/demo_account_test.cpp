// What the demonstration tells of the programs' lines.
#include "demo/demo_account.h"

#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

constexpr const char* kSetControl =
    "client=1 {\"Command\": \"Set\", \"Method\": \"Frequency\", \"Value\": 365112500}";
constexpr const char* kSetVoice =
    "client=1 {\"Command\": \"Set\", \"Method\": \"Frequency\", \"Value\": 365262500}";

class DemoAccountTest : public ::testing::Test {
 protected:
  using Strings = std::vector<std::string>;
  // What is told of lines that come now.
  Strings Told(const Strings& calls, const std::vector<LogLine>& log = {}) {
    told_.clear();
    calls_.insert(calls_.end(), calls.begin(), calls.end());
    log_.insert(log_.end(), log.begin(), log.end());
    account_.Look(calls_, log_);
    return told_;
  }

  Strings told_;
  Strings calls_;
  std::vector<LogLine> log_;
  DemoAccount account_{[this](const std::string& text) { told_.push_back(text); }};
};

TEST_F(DemoAccountTest, TellsACallFromItsSetupToItsRelease) {
  EXPECT_EQ(Told({"Call ID: 1207 - On carrier: 2610 - Group: 9001 ",
                  "Call ID: 1207 - Calling SSI: 5010"}),
            (Strings{"call 1207 set up on group 9001, carrier 2610", "    5010 speaks"}));
  EXPECT_EQ(account_.calls_begun(), 1);
  EXPECT_EQ(Told({"Call ID: 1207 - VC D-TX-Ceased SSI: 5010",
                  "Call ID: 1207 - VC D-TX-Granted SSI: 5011"}),
            (Strings{"    5010 stops speaking", "    now 5011 speaks"}));
  EXPECT_EQ(account_.calls_ended(), 0);
  EXPECT_EQ(Told({"Call ID: 1207 - VC D-Released"}),
            Strings{"    call 1207 released by the network"});
  EXPECT_EQ(account_.calls_ended(), 1);
  EXPECT_EQ(Told({}), Strings{});
}

TEST_F(DemoAccountTest, TellsCallsThatAreSkippedOrFallSilent) {
  EXPECT_EQ(
      Told({"MCC:262 MNC:42 LA:101", "Skipping Call, lockout found GSSI: 9003 [Taxi]",
            "Call timeout occured - Did not see D-Release for Call ID: 1210", "of no interest"}),
      (Strings{"network seen: MCC:262 MNC:42 LA:101",
               "call on group 9003 [Taxi] skipped: the group is locked out",
               "    call 1210 has fallen silent and is given up"}));
  EXPECT_EQ(account_.calls_begun(), 0);
  EXPECT_EQ(account_.calls_ended(), 1);
}

TEST_F(DemoAccountTest, TakesTheFirstFrequencyForTheControlChannels) {
  EXPECT_EQ(Told({}, {{10, "command", kSetControl}}),
            Strings{"parked on the control channel, 365.1125 MHz"});
  EXPECT_EQ(Told({}, {{1000, "pdu", "SSI:9001 D_Setup Transmission Granted"},
                      {1007, "command", kSetVoice}}),
            Strings{"    tuned to 365.2625 MHz, 7 ms after the setup was decoded"});
  EXPECT_EQ(Told({}, {{2000, "command", kSetControl}}),
            Strings{"    back on the control channel, 365.1125 MHz"});
}

TEST_F(DemoAccountTest, TellsTheVoiceOnceACall) {
  const std::vector<LogLine> tones = {{1, "tone", "group=9001 hz=1425 gain=40"},
                                      {2, "tone", "off"},
                                      {3, "tone", "group=9001 hz=1425 gain=40"}};
  EXPECT_EQ(Told({}, tones), Strings{"    voice of group 9001 is heard"});
  EXPECT_EQ(Told({"Call ID: 8 - On carrier: 2610 - Group: 9001 "}, tones).size(), 2u);
}

TEST_F(DemoAccountTest, BeginsAnewWithACallLogThatWasEmptied) {
  Told({"a", "b", "VC D-TX-Granted SSI: 5011"});
  calls_.clear();
  EXPECT_EQ(Told({"VC D-TX-Granted SSI: 5012"}), Strings{"    now 5012 speaks"});
}

}  // namespace
}  // namespace corvane::desktop
