#include "core/call_follower.h"

#include <gmock/gmock.h>

#include "base/text.h"

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CallSetupTest : public CoreTest {
 protected:
  // Holds the group of a call that is over.
  void Hold(int gssi) {
    FollowCall(gssi, 30000);
    follower.ToggleGroupHold();
    Poll(Event("D_Release", gssi, 30000));
    link.trace.clear();
  }
};

TEST_F(CallSetupTest, AGrantedGroupCallIsTunedShownAndLogged) {
  AddGroup(9001, "Fire & Rescue", true);
  AddSubscriber(5010, 9001, "Car & 3");
  Prime();
  link.trace.clear();
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_THAT(link.trace,
              ElementsAre("timeslot 2", "Set Frequency 865262500", "sleep 10", "Set AudioGain 47"));
  EXPECT_TRUE(follower.FollowingCall());
  EXPECT_EQ(follower.call().FollowedCallId(), 1207);
  EXPECT_EQ(follower.call().CallTimeoutTicks, 16);
  EXPECT_EQ(form.lblGroupNumber.caption.get(), " 9001");
  EXPECT_EQ(form.lblGSSI_label.caption.get(), "Fire && Rescue");
  EXPECT_EQ(form.lblCarrierNumber.caption.get(), " 2610");
  EXPECT_EQ(form.lblTimeSlotNumber.caption.get(), " 2");
  EXPECT_EQ(form.lblCurrentSSI.caption.get(), " 5010");
  EXPECT_EQ(form.lblSSI_label.caption.get(), "Car && 3");
  EXPECT_EQ(form.lblSsiLastSeen.caption.get(), "02/01/2025 03:04:05");
  EXPECT_EQ(form.lblCallID.caption.get(), " 1207");
  EXPECT_EQ(form.ShapeBusy_state.fill_colour.get(), kGreen);
  EXPECT_THAT(form.lstCurrentSSI_Users.items(), ElementsAre("5010"));
  EXPECT_THAT(CallLog(),
              ElementsAre(" - Call ID: 1207 - On carrier: 2610 - Group: 9001 [Fire & Rescue]",
                          " - Call ID: 1207 - Calling SSI: 5010 [Car & 3]"));
}

TEST_F(CallSetupTest, WithoutLabelsTheLinesEndWithTheNumbers) {
  FollowCall();
  EXPECT_THAT(CallLog(), ElementsAre(" - Call ID: 1207 - On carrier: 2610 - Group: 9001 ",
                                     " - Call ID: 1207 - Calling SSI: 5010"));
  EXPECT_EQ(form.lblGSSI_label.caption.get(), "");
}

TEST_F(CallSetupTest, AnUnknownGroupIsAddedAndFollowed) {
  FollowCall();
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_TRUE(groups[0].Follow);
  EXPECT_EQ(groups[0].Label.trimmed(), "");
}

TEST_F(CallSetupTest, AQueuedCallIsFollowedLikeAGrantedOne) {
  Prime();
  Poll(Setup(9001, 1207, 5010, 2, 2610, "Transmission Request_queued"));
  EXPECT_TRUE(follower.FollowingCall());
}

TEST_F(CallSetupTest, ANotGrantedCallIsNotFollowedAndWritesNothing) {
  Prime();
  Poll(Setup(9001, 1207, 5010, 2, 2610, "Transmission Not_granted"));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_THAT(CallLog(), IsEmpty());
  EXPECT_TRUE(groups.empty());
  EXPECT_THAT(files.List("C:\\Corvane"), IsEmpty());
}

TEST_F(CallSetupTest, AnIndividualCallIsIgnoredAndItsNumberIsNoGroup) {
  Prime();
  Poll(
      "SSI:9001 D_Setup Transmission Granted Call ID:1207 Basic_service:Individual Party_SSI:5010 "
      "TimeSlot:2 Carrier:2610 ");
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_THAT(CallLog(), IsEmpty());
  EXPECT_TRUE(groups.empty());
}

TEST_F(CallSetupTest, ALineWithoutANeededFieldIsIgnored) {
  Prime();
  const std::string whole = Setup(9001, 1207, 5010, 2, 2610);
  for (const char* key : {"Call ID:", "Party_SSI:", "TimeSlot:", "Carrier:"}) {
    Poll(ReplaceAll(whole, key, "x"));
    Poll(whole.substr(0, whole.find(key)) + key);
  }
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_THAT(CallLog(), IsEmpty());
}

TEST_F(CallSetupTest, OverflowingFieldsAreIgnoredWithoutATrace) {
  Prime();
  Poll(
      "SSI:9001 D_Setup Transmission Granted Call ID:40000 Basic_service:G Party_SSI:5010 "
      "TimeSlot:2 Carrier:2610 ");
  Poll(
      "SSI:9001 D_Setup Transmission Granted Call ID:1 Basic_service:G Party_SSI:5010 "
      "TimeSlot:99999 Carrier:2610 ");
  Poll(
      "SSI:99999999999 D_Setup Transmission Granted Call ID:1 Basic_service:G Party_SSI:5010 "
      "TimeSlot:2 Carrier:2610 ");
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_THAT(CallLog(), IsEmpty());
  EXPECT_TRUE(groups.empty());
}

TEST_F(CallSetupTest, ACarrierBeyondEveryFrequencyIsIgnoredBeforeAnythingIsShown) {
  Prime();
  Poll(Setup(9001, 1207, 5010, 2, 99999));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_EQ(form.lblGroupNumber.caption.get(), "");
  EXPECT_THAT(CallLog(), IsEmpty());
}

TEST_F(CallSetupTest, TheGroupIsTheFirstSsiOfTheLine) {
  Prime();
  Poll(
      "Party_SSI:5010 D_Setup Transmission Granted Call ID:1 Basic_service:G SSI:9001 TimeSlot:2 "
      "Carrier:2610 ");
  EXPECT_EQ(form.lblGroupNumber.caption.get(), " 5010");
}

TEST_F(CallSetupTest, ASecondSetupIsIgnoredWhateverItsPriority) {
  groups.SetPriority(AddGroup(9002, "Chief", true), 9);
  FollowCall();
  link.trace.clear();
  Poll(Setup(9002, 1300, 5020, 1, 2611));
  EXPECT_EQ(follower.call().FollowedCallId(), 1207);
  EXPECT_THAT(link.trace, IsEmpty());
  form.chkIgnorePriority.value = 1;
  Poll(Setup(9002, 1301, 5020, 1, 2611));
  EXPECT_EQ(follower.call().FollowedCallId(), 1207);
}

TEST_F(CallSetupTest, TheFollowedGroupsPriorityIsRemembered) {
  groups.SetPriority(AddGroup(9001, "", true), 7);
  FollowCall();
  EXPECT_EQ(follower.call().CurrentPriority(), 7);
}

TEST_F(CallSetupTest, AGroupReleasedByHandIsSkipped) {
  DropByHand(9001);
  Poll(Setup(9001, 1, 5010, 2, 2610));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_THAT(CallLog(), IsEmpty());
  Poll(Setup(9002, 2, 5010, 2, 2610));
  EXPECT_TRUE(follower.FollowingCall());
}

TEST_F(CallSetupTest, TheEmptyLockoutRowLocksNoGroupNotEvenZero) {
  Prime();
  Poll(Setup(0, 1, 5010, 2, 2610));
  EXPECT_TRUE(follower.FollowingCall());
}

TEST_F(CallSetupTest, WhileAGroupIsHeldOnlyItsCallsAreFollowed) {
  Hold(9002);
  Poll(Setup(9001, 1, 5010, 2, 2610));
  EXPECT_FALSE(follower.FollowingCall());
  Poll(Setup(9002, 2, 5010, 2, 2610));
  EXPECT_TRUE(follower.FollowingCall());
}

TEST_F(CallSetupTest, ALockedOutGroupGivesNoMessageWhileAnotherIsHeld) {
  AddGroup(9001, "Taxi", false);
  Hold(9002);
  form.lstCallLog.Clear();
  Poll(Setup(9001, 1, 5010, 2, 2610));
  EXPECT_THAT(CallLog(), IsEmpty());
}

TEST_F(CallSetupTest, AHeldGroupThatIsLockedOutIsStillSkipped) {
  const std::size_t group = AddGroup(9002, "", true);
  Hold(9002);
  groups.SetFollow(group, false);
  Poll(Setup(9002, 2, 5010, 2, 2610));
  EXPECT_FALSE(follower.FollowingCall());
}

TEST_F(CallSetupTest, ALockedOutGroupIsReportedTwiceAndThenNoMore) {
  AddGroup(9001, "Taxi", false);
  Prime();
  for (int id = 1; id <= 5; ++id) Poll(Setup(9001, id, 5010, 2, 2610));
  EXPECT_THAT(CallLog(), ElementsAre(" - Skipping Call, lockout found GSSI: 9001 [Taxi]",
                                     " - Skipping Call, lockout found GSSI: 9001 [Taxi]"));
  EXPECT_FALSE(follower.FollowingCall());
}

TEST_F(CallSetupTest, LockoutReportsCanBeSuppressed) {
  AddGroup(9001, "", false);
  form.chkSuppressLockoutMessages.value = 1;
  Prime();
  Poll(Setup(9001, 1, 5010, 2, 2610));
  EXPECT_THAT(CallLog(), IsEmpty());
}

TEST_F(CallSetupTest, AHandReleasedGroupIsNotReportedAsLockedOut) {
  const std::size_t group = AddGroup(9001, "", true);
  DropByHand(9001);
  groups.SetFollow(group, false);
  Poll(Setup(9001, 1, 5010, 2, 2610));
  EXPECT_THAT(CallLog(), IsEmpty());
}

TEST_F(CallSetupTest, TheZeroOffsetCountsFromTheNextTuningOn) {
  for (auto& option : form.optOffsets) option.value = false;
  form.optOffsets[0].value = true;
  FollowCall();
  EXPECT_THAT(link.trace, ::testing::Contains("Set Frequency 865262500"));
  EXPECT_EQ(presets.FrequencyOffset, 0);
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_THAT(link.trace, ::testing::Contains("Set Frequency 865100000"));
}

TEST_F(CallSetupTest, ABadTimeslotAbortsBeforeAnythingIsSent) {
  for (const int timeslot : {0, 5}) {
    Prime();
    link.trace.clear();
    Poll(Setup(9001, 10 + timeslot, 5010, timeslot, 2610));
    EXPECT_FALSE(follower.FollowingCall());
    EXPECT_THAT(link.trace, IsEmpty());
    EXPECT_EQ(LastCallLine(), kNow + " - Timeslot is not valid - call setup aborted");
    for (const Label* label :
         {&form.lblCallID, &form.lblCarrierNumber, &form.lblTimeSlotNumber, &form.lblCurrentSSI,
          &form.lblGroupNumber, &form.lblSSI_label, &form.lblSsiLastSeen, &form.lblGSSI_label}) {
      EXPECT_EQ(label->caption.get(), "") << label->name();
    }
    EXPECT_EQ(form.lstCurrentSSI_Users.count(), 0);
  }
}

TEST_F(CallSetupTest, ALostSocketEndsThePollStepWithTheLabelsStanding) {
  Prime();
  link.connected = false;
  link.trace.clear();
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_THAT(link.trace, ElementsAre("timeslot 2", "lost Set Frequency 865262500"));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_EQ(form.lblGroupNumber.caption.get(), " 9001");
  EXPECT_EQ(form.lblTimeoutCountdown.caption.get(), "0") << "shown before, not by this step";
  EXPECT_FALSE(follower.InSequence());
}

TEST_F(CallSetupTest, ShuttingDownInTheMiddleSendsNothingMore) {
  Prime();
  link.trace.clear();
  link.on_wait = [&] { flags.mblnShuttingDown = true; };
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_THAT(link.trace, ElementsAre("timeslot 2", "Set Frequency 865262500"));
  EXPECT_FALSE(follower.FollowingCall());
}

TEST_F(CallSetupTest, ASocketLostAtTheSecondCommandAbandonsTheSetup) {
  Prime();
  link.trace.clear();
  int commands = 0;
  link.on_wait = [&] { link.connected = ++commands < 2; };
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_THAT(link.trace,
              ElementsAre("timeslot 2", "Set Frequency 865262500", "sleep 10", "Set AudioGain 47"));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_EQ(form.ShapeBusy_state.fill_colour, kButtonFace);
  EXPECT_EQ(form.lblCallID.caption, "");
}

TEST_F(CallSetupTest, RecordingFollowsTheChosenMode) {
  struct Case {
    int mode;
    const char* listed;
    bool recorded;
  };
  int call_id = 0;
  for (const Case& c : {Case{0, "9001", false}, Case{1, "", true}, Case{2, "9001", true},
                        Case{2, "09001", true}, Case{2, "9002", false}}) {
    form.lstRecOnlyGSSI.Clear();
    form.lstRecOnlyGSSI.Add(c.listed);
    for (int i = 0; i < 3; ++i) {
      form.optRecordMode[static_cast<std::size_t>(i)].value = i == c.mode;
    }
    FollowCall(9001, ++call_id);
    EXPECT_EQ(follower.call().RecordingActive(), c.recorded) << c.mode << " " << c.listed;
    EXPECT_EQ(form.ShapeBusy_state.border_width.get(), c.recorded ? 3 : 1);
    EXPECT_EQ(form.ShapeBusy_state.border_colour.get(), c.recorded ? kRed : kWindowText);
    Poll(Event("D_Release", 9001, call_id));
    EXPECT_EQ(form.ShapeBusy_state.border_width.get(), 1);
  }
}

TEST_F(CallSetupTest, ARecordingIsNamedByTimeCallAndGroup) {
  form.optRecordMode[0].value = false;
  form.optRecordMode[1].value = true;
  recorder.ForcedEndSuffix = "_call_forced_end";
  FollowCall();
  EXPECT_EQ(recorder.RecordingName, "142305_1207_9001");
  EXPECT_EQ(recorder.ForcedEndSuffix, "");
}

TEST_F(CallSetupTest, TheVolumeInForceAtTheSetupIsSent) {
  presets.VcAudioGain = 33;
  FollowCall();
  EXPECT_THAT(link.trace, ::testing::Contains("Set AudioGain 33"));
}

TEST_F(CallSetupTest, ACallerStillListedFromABrokenSetupLeavesTheTalkerAlone) {
  Prime();
  link.on_wait = [&] { link.connected = false; };
  Poll(Setup(9001, 1206, 5010, 2, 2610));
  Poll(Setup(9001, 1207, 5011, 2, 2610));
  EXPECT_EQ(form.lblCurrentSSI.caption, " 5011");
  Poll(Setup(9001, 1208, 5010, 2, 2610));
  EXPECT_EQ(form.lblCurrentSSI.caption, " 5011");
  EXPECT_THAT(form.lstCurrentSSI_Users.items(), ElementsAre("5010", "5011"));
}

TEST_F(CallSetupTest, WhatCameOfASetupHasAName) {
  Prime();
  const std::string line = Setup(9001, 1207, 5010, 2, 2610);
  link.on_wait = [&] { link.connected = false; };
  const SetupDecision lost = follower.OnSetup(line);
  EXPECT_EQ(lost.outcome, SetupOutcome::kAbandoned);
  EXPECT_EQ(lost.cause, BrokenBy::kSocket);
  link.connected = true;
  link.on_wait = [&] { flags.mblnShuttingDown = true; };
  EXPECT_EQ(follower.OnSetup(line).cause, BrokenBy::kShutdown);
  flags.mblnShuttingDown = false;
  link.on_wait = nullptr;
  EXPECT_EQ(follower.OnSetup(line).outcome, SetupOutcome::kFollowed);
}
TEST_F(CallSetupTest, TheCallKnowsWhereItIsAndForgetsItWhenItEnds) {
  FollowCall();
  EXPECT_EQ(follower.call().carrier(), 2610);
  EXPECT_EQ(follower.call().timeslot(), 2);
  follower.ManualRelease();
  EXPECT_EQ(follower.call().carrier(), std::nullopt);
  EXPECT_EQ(follower.call().timeslot(), std::nullopt);
}

}  // namespace
}  // namespace corvane
