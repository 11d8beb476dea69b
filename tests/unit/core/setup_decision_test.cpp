#include "core/setup_decision.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>

#include "base/text.h"
#include "sim/no_sink.h"

namespace corvane {
namespace {

// The rows of the table, in its order. Each case makes its own row apply and, as far as that can
// be, all rows below it too.
class SetupDecisionTest : public ::testing::Test {
 protected:
  SetupDecisionTest() {
    network_.CurrentMcc = "262";
    network_.CurrentMnc = "1";
    GssiRecord record;
    record.Gssi = 9002;
    record.Mcc = 262;
    record.Mnc = 1;
    record.Follow = false;
    groups_.Append(record);
  }

  static std::string Line(int gssi, int call_id = 1207, int timeslot = 2, int carrier = 2610) {
    return "SSI:" + std::to_string(gssi) +
           " D_Setup Transmission Granted Call ID:" + std::to_string(call_id) +
           " Basic_service:Point_to_multipoint Party_SSI:5010 TimeSlot:" +
           std::to_string(timeslot) + " Carrier:" + std::to_string(carrier) + " ";
  }
  [[nodiscard]] SetupDecision Decide(const std::string& line) const {
    return DecideSetup(line,
                       {call_, locks_, groups_, network_, presets_, log_mode_, highest_call_id_});
  }
  void FollowAnotherCall() { call_.BeginFollowing(); }

  sim::NoSink sink_;
  Form1 form_{sink_};
  Call call_{form_};
  GroupLocks locks_{form_};
  GssiTable groups_;
  NetworkIdentity network_;
  Presets presets_;
  bool log_mode_ = false;
  std::int16_t highest_call_id_ = -1;
};

TEST_F(SetupDecisionTest, AnEncryptedLineWhateverIsInIt) {
  FollowAnotherCall();
  log_mode_ = true;
  EXPECT_EQ(Decide(Line(9001) + "PDU encrypted").outcome, SetupOutcome::kEncrypted);
  const SetupDecision nothing = Decide("D_Setup Basic_service: PDU encrypted");
  EXPECT_EQ(nothing.outcome, SetupOutcome::kEncrypted);
  EXPECT_FALSE(nothing.IsWhole());
}

TEST_F(SetupDecisionTest, AMissingFieldIsNamed) {
  FollowAnotherCall();
  const struct {
    const char* key;
    SetupField field;
  } rows[] = {{"Basic_service:", SetupField::kBasicService},
              {"Call ID:", SetupField::kCallId},
              {"Party_SSI:5010", SetupField::kCallingParty},
              {"Transmission Granted Call", SetupField::kCallId},
              {"TimeSlot:", SetupField::kTimeslot},
              {"Carrier:", SetupField::kCarrier}};
  for (const auto& row : rows) {
    const SetupDecision decision = Decide(ReplaceAll(Line(9002), row.key, "x"));
    EXPECT_EQ(decision.outcome, SetupOutcome::kMalformed) << row.key;
    EXPECT_EQ(decision.malformed, row.field) << row.key;
    EXPECT_FALSE(decision.IsWhole());
  }
  EXPECT_EQ(Decide("Call ID:1 Basic_service:G Party_XSI:1 D_Setup Transmission Granted ").malformed,
            SetupField::kCallingParty);
  EXPECT_EQ(Decide("D_Setup Transmission Granted Call ID:1 Basic_service:G Party_SSI:x ").malformed,
            SetupField::kCallingParty);
  EXPECT_EQ(Decide("Call ID:1 Basic_service:G Party_SSI:1 D_Setup").malformed, SetupField::kStatus);
  EXPECT_EQ(Decide("xSSI:x D_Setup Transmission Granted Call ID:1 Basic_service:G Party_SSI:1 ")
                .malformed,
            SetupField::kGroup);
}

TEST_F(SetupDecisionTest, AnIndividualCall) {
  FollowAnotherCall();
  const SetupDecision decision =
      Decide(ReplaceAll(Line(9002), "Point_to_multipoint", "Individual"));
  EXPECT_EQ(decision.outcome, SetupOutcome::kIndividual);
  EXPECT_FALSE(decision.IsWhole());
}

TEST_F(SetupDecisionTest, ACallThatIsNotGrantedEvenWithoutAPlace) {
  log_mode_ = true;
  std::string line = ReplaceAll(Line(9002), "Granted", "Not_granted");
  EXPECT_EQ(Decide(line).outcome, SetupOutcome::kNotGranted);
  line = line.substr(0, line.find("TimeSlot"));
  EXPECT_EQ(Decide(line).outcome, SetupOutcome::kNotGranted);
}

TEST_F(SetupDecisionTest, AQueuedCallIsLikeAGrantedOne) {
  EXPECT_EQ(Decide(ReplaceAll(Line(9001), "Granted", "Request_queued")).outcome,
            SetupOutcome::kFollowed);
}

TEST_F(SetupDecisionTest, InLogModeACallIsCountedOncePerCallId) {
  log_mode_ = true;
  FollowAnotherCall();
  highest_call_id_ = 300;
  EXPECT_EQ(Decide(Line(9002, 301)).outcome, SetupOutcome::kCounted);
  for (const int repeat : {300, 260, 250}) {
    EXPECT_EQ(Decide(Line(9002, repeat)).outcome, SetupOutcome::kCountedBefore) << repeat;
  }
  for (const int wrapped : {249, 5, 0}) {
    EXPECT_EQ(Decide(Line(9002, wrapped)).outcome, SetupOutcome::kCounted) << wrapped;
  }
}

TEST_F(SetupDecisionTest, WhileAnotherCallIsFollowed) {
  FollowAnotherCall();
  locks_.Drop(9002);
  EXPECT_EQ(Decide(Line(9002, 1, 9, 99999)).outcome, SetupOutcome::kInCall);
}

TEST_F(SetupDecisionTest, AGroupDroppedByHand) {
  locks_.Drop(9002);
  locks_.ToggleHold(9001);
  EXPECT_EQ(Decide(Line(9002, 1, 9, 99999)).outcome, SetupOutcome::kDroppedByHand);
}

TEST_F(SetupDecisionTest, WhileAnotherGroupIsHeld) {
  locks_.ToggleHold(9001);
  EXPECT_EQ(Decide(Line(9002, 1, 9, 99999)).outcome, SetupOutcome::kHeldElsewhere);
  EXPECT_EQ(Decide(Line(9001)).outcome, SetupOutcome::kFollowed);
}

TEST_F(SetupDecisionTest, ALockedOutGroupEvenIfItIsHeld) {
  locks_.ToggleHold(9002);
  EXPECT_EQ(Decide(Line(9002, 1, 9, 99999)).outcome, SetupOutcome::kLockedOut);
  network_.CurrentMnc = "2";
  EXPECT_EQ(Decide(Line(9002)).outcome, SetupOutcome::kFollowed) << "another network's group";
}

TEST_F(SetupDecisionTest, ACarrierWhoseFrequencyDoesNotFit) {
  EXPECT_EQ(Decide(Line(9001, 1, 9, 99999)).outcome, SetupOutcome::kBadFrequency);
  presets_.BaseFrequency = std::numeric_limits<std::int32_t>::min();
  presets_.FrequencyOffset = 0;
  EXPECT_EQ(Decide(Line(9001, 1, 2, 0)).outcome, SetupOutcome::kFollowed);
  presets_.FrequencyOffset = -6250;
  EXPECT_EQ(Decide(Line(9001, 1, 2, 0)).outcome, SetupOutcome::kBadFrequency);
}

TEST_F(SetupDecisionTest, ATimeslotThatDoesNotExist) {
  for (const int timeslot : {0, 5, 9}) {
    EXPECT_EQ(Decide(Line(9001, 1, timeslot)).outcome, SetupOutcome::kBadTimeslot) << timeslot;
  }
  for (const int timeslot : {1, 2, 3, 4}) {
    EXPECT_EQ(Decide(Line(9001, 1, timeslot)).outcome, SetupOutcome::kFollowed) << timeslot;
  }
}

TEST_F(SetupDecisionTest, ItCarriesTheFieldsAndChangesNothing) {
  const SetupDecision decision = Decide(Line(9001));
  EXPECT_EQ(decision.outcome, SetupOutcome::kFollowed);
  EXPECT_TRUE(decision.IsWhole());
  EXPECT_EQ(decision.setup.call_id, 1207);
  EXPECT_EQ(decision.setup.party, 5010);
  EXPECT_EQ(decision.setup.status, "Transmission Granted");
  EXPECT_EQ(decision.setup.gssi, 9001);
  EXPECT_EQ(decision.setup.timeslot, 2);
  EXPECT_EQ(decision.setup.carrier, 2610);
  EXPECT_EQ(groups_.size(), 1U) << "the new group is not learnt by deciding";
  EXPECT_EQ(call_.state(), Call::State::kNone);
}

TEST_F(SetupDecisionTest, EveryOutcomeAndFieldHasANameOfItsOwn) {
  std::set<std::string> names;
  for (int i = 0; i < kSetupOutcomes; ++i) {
    const std::string name = NameOf(static_cast<SetupOutcome>(i));
    EXPECT_EQ(name.find_first_not_of("abcdefghijklmnopqrstuvwxyz_"), std::string::npos) << name;
    names.insert(name);
  }
  EXPECT_EQ(names.size(), 14U);
  names.clear();
  for (int i = 0; i <= static_cast<int>(SetupField::kCarrier); ++i) {
    names.insert(NameOf(static_cast<SetupField>(i)));
  }
  EXPECT_EQ(names.size(), 8U);
  names.clear();
  for (int i = 0; i <= static_cast<int>(BrokenBy::kFault); ++i) {
    names.insert(NameOf(static_cast<BrokenBy>(i)));
  }
  EXPECT_EQ(names.size(), 4U);
}

}  // namespace
}  // namespace corvane
