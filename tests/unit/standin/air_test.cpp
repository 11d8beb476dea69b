// Calls and the lines they send.
#include "standin/air.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane::standin {
namespace {

class AirTest : public ::testing::Test {
 protected:
  AirTest() {
    air_.SetEvents({[this](const Pdu& pdu) { sent_.push_back(pdu); }, [this] { ++changes_; }});
  }
  static Call ACall() {
    Call call;
    call.id = 1207;
    call.group = 9001;
    call.party = 5010;
    call.carrier = 2610;
    call.slot = 2;
    return call;
  }

  Air air_;
  std::vector<Pdu> sent_;
  int changes_ = 0;
};

TEST_F(AirTest, SendsTheLinesOfACall) {
  EXPECT_EQ(air_.Start(ACall()), "");
  EXPECT_EQ(air_.Pause(1207), "");
  EXPECT_EQ(air_.Speak(1207, 5011), "");
  EXPECT_EQ(air_.Release(1207, "User_requested", false), "");
  ASSERT_EQ(sent_.size(), 4u);
  EXPECT_EQ(sent_[0].line,
            "SSI:9001 D_Setup Transmission Granted Call ID:1207 Basic_service:Point_to_multipoint "
            "Party_SSI:5010 TimeSlot:2 Carrier:2610 ");
  EXPECT_EQ(sent_[1].line, "SSI:9001 D_TX_Ceased Call ID:1207 ");
  EXPECT_EQ(sent_[2].line,
            "SSI:9001 D_TX_Granted Call ID:1207 Transmission_grant:Granted_to_another_user "
            "Party_SSI:5011");
  EXPECT_EQ(sent_[3].line, "SSI:9001 D_Release Call ID:1207 Disconnect_cause:User_requested ");
  EXPECT_EQ(changes_, 4);
}

TEST_F(AirTest, SendsSetupsOnTheControlChannelAndTheRestOnTheCallsCarrier) {
  (void)air_.Start(ACall());
  (void)air_.Disconnect(1207, false);
  EXPECT_TRUE(sent_[0].on_control);
  EXPECT_EQ(sent_[0].carrier, std::nullopt);
  EXPECT_EQ(sent_[1].line, "SSI:9001 D_Disconnect Call ID:1207 ");
  EXPECT_FALSE(sent_[1].on_control);
  EXPECT_EQ(sent_[1].carrier, 2610);
}

TEST_F(AirTest, SendsEverythingOnTheControlChannelTooWhenAskedTo) {
  air_.signalling_on_control = true;
  (void)air_.Start(ACall());
  (void)air_.Pause(1207);
  EXPECT_TRUE(sent_[1].on_control);
  EXPECT_EQ(sent_[1].carrier, 2610);
}

TEST_F(AirTest, HasVoiceWhileSomebodySpeaks) {
  (void)air_.Start(ACall());
  ASSERT_NE(air_.VoiceOn(2610, 2), nullptr);
  EXPECT_EQ(air_.VoiceOn(2610, 1), nullptr);
  EXPECT_EQ(air_.VoiceOn(2611, 2), nullptr);
  (void)air_.Pause(1207);
  EXPECT_EQ(air_.VoiceOn(2610, 2), nullptr);
  (void)air_.Speak(1207, 5011);
  EXPECT_EQ(air_.VoiceOn(2610, 2)->party, 5011);
  (void)air_.Release(1207, "x", false);
  EXPECT_EQ(air_.VoiceOn(2610, 2), nullptr);
}

TEST_F(AirTest, HasNoVoiceOfAQueuedCallAndKeepsNoRefusedOne) {
  Call queued = ACall();
  queued.status = "Request_queued";
  (void)air_.Start(queued);
  EXPECT_EQ(air_.VoiceOn(2610, 2), nullptr);
  EXPECT_NE(air_.Find(1207), nullptr);
  Call refused = ACall();
  refused.id = 8;
  refused.status = "Not_granted";
  (void)air_.Start(refused);
  EXPECT_EQ(air_.Find(8), nullptr);
  EXPECT_NE(sent_.back().line.find("Transmission Not_granted "), std::string::npos);
}

TEST_F(AirTest, SendsNothingButTheMarkOfAnEncryptedCall) {
  Call call = ACall();
  call.encrypted = true;
  (void)air_.Start(call);
  (void)air_.Pause(1207);
  EXPECT_EQ(sent_[0].line, "SSI:9001 PDU encrypted ");
  EXPECT_EQ(sent_[1].line, "SSI:9001 PDU encrypted ");
}

TEST_F(AirTest, EndsACallWithoutALineWhenTheReleaseIsMissed) {
  (void)air_.Start(ACall());
  (void)air_.Release(1207, "x", true);
  EXPECT_EQ(sent_.size(), 1u);
  EXPECT_EQ(air_.Find(1207), nullptr);
}

TEST_F(AirTest, RefusesWhatCannotBe) {
  (void)air_.Start(ACall());
  EXPECT_EQ(air_.Start(ACall()), "call 1207 is on the air already");
  EXPECT_EQ(air_.Speak(1, 2), "there is no call 1");
  EXPECT_EQ(air_.Pause(1), "there is no call 1");
  EXPECT_EQ(air_.Release(1, "x", false), "there is no call 1");
  EXPECT_EQ(air_.Disconnect(1, true), "there is no call 1");
  EXPECT_EQ(air_.RepeatSetup(1), "there is no call 1");
  EXPECT_EQ(sent_.size(), 1u);
}

TEST_F(AirTest, TellsACallFromALaterOneWithTheSameCallId) {
  (void)air_.Start(ACall());
  const std::uint64_t serial = air_.Find(1207)->serial;
  EXPECT_TRUE(air_.IsOn(1207, serial));
  (void)air_.Release(1207, "x", false);
  EXPECT_FALSE(air_.IsOn(1207, serial));
  (void)air_.Start(ACall());
  EXPECT_FALSE(air_.IsOn(1207, serial));
}

TEST_F(AirTest, ComputesFrequenciesAndFindsCarriers) {
  EXPECT_EQ(air_.FrequencyOf(2604), 365112500);
  EXPECT_EQ(air_.CarrierAt(365112500), 2604);
  EXPECT_EQ(air_.CarrierAt(365112500 + 3000), 2604);
  EXPECT_EQ(air_.CarrierAt(365112500 - 3000), 2604);
  EXPECT_EQ(air_.CarrierAt(365112500 + 3001), std::nullopt);
  EXPECT_EQ(air_.CarrierAt(365112500 - 3001), std::nullopt);
  EXPECT_EQ(air_.CarrierAt(1), std::nullopt);
  EXPECT_EQ(air_.CarrierAt(999999999999), std::nullopt);
}

}  // namespace
}  // namespace corvane::standin
