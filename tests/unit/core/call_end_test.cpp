#include "core/call_follower.h"

#include <gmock/gmock.h>

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class CallEndTest : public CoreTest {
 protected:
  void RecordAll() {
    form.optRecordMode[0].value = false;
    form.optRecordMode[1].value = true;
  }
  void ExpectClear() {
    for (const Label* label :
         {&form.lblCallID, &form.lblCarrierNumber, &form.lblTimeSlotNumber, &form.lblCurrentSSI,
          &form.lblGroupNumber, &form.lblSSI_label, &form.lblSsiLastSeen, &form.lblGSSI_label}) {
      EXPECT_EQ(label->caption.get(), "") << label->name();
    }
    EXPECT_EQ(form.lstCurrentSSI_Users.count(), 0);
    EXPECT_EQ(form.ShapeBusy_state.fill_colour.get(), kButtonFace);
    EXPECT_FALSE(follower.call().RecordingActive());
    EXPECT_EQ(form.ShapeBusy_state.border_colour.get(), kWindowText);
    EXPECT_EQ(form.ShapeBusy_state.border_width.get(), 1);
  }
};

TEST_F(CallEndTest, AReleasedCallParksFilesItsTalkersAndClearsTheDisplay) {
  FollowCall();
  Poll(Granted(9001, 1207, 5011));
  RunCountdownDownTo(2);
  link.trace.clear();
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_THAT(link.trace, ElementsAre("Set Frequency 865112500", "sleep 10", "Set AudioGain 25"));
  EXPECT_EQ(follower.call().CallTimeoutTicks, 16);
  ExpectClear();
  ASSERT_EQ(subscribers.size(), 2U);
  EXPECT_EQ(subscribers[0].LastGssi, 9001);
  EXPECT_EQ(subscribers[1].Ssi, 5011);
  EXPECT_EQ(LastCallLine(), "") << "an empty line separates the calls";
}

TEST_F(CallEndTest, TheCallIsOverBeforeAnythingIsSent) {
  FollowCall();
  bool following_in_wait = true;
  link.on_wait = [&] { following_in_wait = follower.FollowingCall(); };
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_FALSE(following_in_wait);
}

TEST_F(CallEndTest, ARecordedCallIsSavedAtItsEnd) {
  RecordAll();
  FollowCall();
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_THAT(MciCommands(), Contains("stop recsound"));
  EXPECT_EQ(recorder.ForcedEndSuffix, "");
  ExpectClear();
}

TEST_F(CallEndTest, AnEndBrokenOffByTheSocketLeavesTheRestUndone) {
  RecordAll();
  FollowCall();
  link.connected = false;
  link.trace.clear();
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_THAT(link.trace, ElementsAre("lost Set Frequency 865112500"));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_TRUE(follower.call().RecordingActive()) << "the reset of the lost link saves it";
  EXPECT_EQ(form.lblCallID.caption.get(), " 1207");
  EXPECT_FALSE(follower.InSequence());
}

TEST_F(CallEndTest, AResetClearsParksAndLogs) {
  FollowCall();
  Poll(Granted(9001, 1207, 5011));
  link.trace.clear();
  follower.ResetCallDisplay();
  EXPECT_THAT(link.trace, ElementsAre("Set Frequency 865112500", "sleep 10", "Set AudioGain 25"));
  ExpectClear();
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_TRUE(subscribers.empty()) << "a reset files no talkers";
  EXPECT_EQ(form.lstCallLog.Item(form.lstCallLog.count() - 2),
            kNow + " - Manual D-Release occured and UI reset");
  EXPECT_EQ(LastCallLine(), "");
}

TEST_F(CallEndTest, AResetWithoutACallLogsNoSeparator) {
  follower.ResetCallDisplay();
  EXPECT_EQ(LastCallLine(), kNow + " - Manual D-Release occured and UI reset");
}

TEST_F(CallEndTest, AResetWithTheLinkDownSendsNothingAndDoesTheRest) {
  RecordAll();
  FollowCall();
  flags.NetRemoteLinkUp = false;
  link.trace.clear();
  follower.ResetCallDisplay();
  EXPECT_THAT(link.trace, Not(Contains("Set Frequency 865112500")));
  ExpectClear();
}

TEST_F(CallEndTest, AResetSavesARecordingAsEndedByForce) {
  RecordAll();
  FollowCall();
  follower.ResetCallDisplay();
  EXPECT_EQ(recorder.ForcedEndSuffix, "_call_forced_end");
  EXPECT_TRUE(files.Content(kDay + "\\Record\\142305_1207_9001_call_forced_end.wav").has_value());
  ExpectClear();
}

TEST_F(CallEndTest, AResetWithTheProgramShuttingDownStillSavesTheRecording) {
  RecordAll();
  FollowCall();
  flags.mblnShuttingDown = true;
  follower.ResetCallDisplay();
  ExpectClear();
}

TEST_F(CallEndTest, AResetSendsBothCommandsWhateverHappensInBetween) {
  FollowCall();
  link.trace.clear();
  link.on_wait = [&] { flags.mblnShuttingDown = true; };
  follower.ResetCallDisplay();
  EXPECT_THAT(link.trace, ElementsAre("Set Frequency 865112500", "sleep 10", "Set AudioGain 25"));
}

TEST_F(CallEndTest, ASocketLostAtTheSecondCommandOfAnEndingLeavesTheRestUndone) {
  RecordAll();
  FollowCall();
  link.trace.clear();
  int commands = 0;
  link.on_wait = [&] { link.connected = ++commands < 2; };
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_THAT(link.trace, ElementsAre("Set Frequency 865112500", "sleep 10", "Set AudioGain 25"));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_TRUE(follower.call().RecordingActive());
  EXPECT_EQ(form.lblCallID.caption, " 1207");
}

TEST_F(CallEndTest, ClosingParksWithEachCommandAnsweredBeforeTheNext) {
  RecordAll();
  FollowCall();
  flags.mblnShuttingDown = true;
  link.trace.clear();
  follower.EndForClosing();
  EXPECT_THAT(link.trace, ElementsAre("await answer", "Set Frequency 865112500", "sleep 10",
                                      "await answer", "Set AudioGain 25"));
  ExpectClear();
  EXPECT_EQ(recorder.ForcedEndSuffix, "_call_forced_end");
}

TEST_F(CallEndTest, ClosingSavesWhatABrokenEndingLeft) {
  RecordAll();
  FollowCall();
  link.connected = false;
  Poll(Event("D_Release", 9001, 1207));
  ASSERT_TRUE(follower.call().RecordingActive());
  link.trace.clear();
  follower.EndForClosing();
  EXPECT_FALSE(follower.call().RecordingActive());
  EXPECT_THAT(link.trace, IsEmpty());
  EXPECT_EQ(recorder.ForcedEndSuffix, "") << "it was released, not forced";
}

TEST_F(CallEndTest, ALostLinkTakesTheCallItsDisplayAndTheHoldAndSavesTheRecording) {
  RecordAll();
  FollowCall();
  follower.ToggleGroupHold();
  link.trace.clear();
  follower.DropWithLink();
  ExpectClear();
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_FALSE(follower.locks().held());
  EXPECT_EQ(form.lblGroupHold.tag, "0");
  EXPECT_THAT(link.trace, IsEmpty());
  EXPECT_THAT(MciCommands(), Contains("stop recsound"));
  EXPECT_TRUE(subscribers.empty());
}

TEST_F(CallEndTest, ParkingNeedsTheLink) {
  flags.NetRemoteLinkUp = false;
  follower.Park();
  EXPECT_THAT(link.trace, IsEmpty());
  EXPECT_EQ(form.lstCallLog.count(), 0);
}

// Every place at which a setup or an ending lets events run.
class InterruptedCallTest : public CallEndTest, public ::testing::WithParamInterface<int> {};

TEST_P(InterruptedCallTest, ParkingInTheMiddleOfASetupEndsOnTheParkCarrier) {
  RecordAll();
  Prime();
  int wait = 0;
  link.on_wait = [&] {
    if (++wait == GetParam()) follower.Park();
  };
  link.trace.clear();
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  ASSERT_GE(wait, GetParam());
  EXPECT_FALSE(follower.FollowingCall());
  ExpectClear();
  EXPECT_FALSE(mci.open());
  EXPECT_THAT(link.trace, Contains("Set Frequency 865112500"));
}

TEST_P(InterruptedCallTest, LogModeInTheMiddleOfASetupEndsOnTheParkCarrier) {
  RecordAll();
  Prime();
  int wait = 0;
  link.on_wait = [&] {
    if (++wait != GetParam()) return;
    form.chkCreateCallActivityCvsFile.value = 1;
    follower.LogModeSwitched(true);
  };
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_FALSE(follower.FollowingCall());
  ExpectClear();
  EXPECT_EQ(LastCallLine(), kNow + " - LOG mode active - No calls will be heard");
  int messages = 0;
  for (const std::string& line : form.lstCallLog.items()) {
    messages += line.find("LOG mode active") != std::string::npos ? 1 : 0;
  }
  EXPECT_EQ(messages, 1);
}

TEST_P(InterruptedCallTest, ParkingOrLogModeInTheMiddleOfAnEndingCompletesIt) {
  for (const bool log_mode_instead : {false, true}) {
    SCOPED_TRACE(log_mode_instead);
    form.chkCreateCallActivityCvsFile.value = 0;
    RecordAll();
    link.on_wait = nullptr;
    FollowCall(9001, log_mode_instead ? 2 : 1);
    int wait = 0;
    link.on_wait = [&] {
      if (++wait != GetParam()) return;
      if (log_mode_instead) {
        form.chkCreateCallActivityCvsFile.value = 1;
        follower.LogModeSwitched(true);
      } else {
        follower.Park();
      }
    };
    Poll(Event("D_Release", 9001, log_mode_instead ? 2 : 1));
    EXPECT_FALSE(follower.FollowingCall());
    ExpectClear();
    EXPECT_EQ(recorder.ForcedEndSuffix, "") << "it was released, not forced";
  }
}

INSTANTIATE_TEST_SUITE_P(EveryWait, InterruptedCallTest, ::testing::Values(1, 2));

TEST_F(CallEndTest, ALineThatArrivesInsideAResetIsTakenAfterIt) {
  FollowCall();
  int polls = 0;
  link.on_wait = [&] {
    if (++polls == 1) Poll(Setup(9002, 1300, 5020, 1, 2611));
  };
  follower.ResetCallDisplay();
  EXPECT_FALSE(follower.FollowingCall());
  link.on_wait = nullptr;
  PollNothing();
  EXPECT_TRUE(follower.FollowingCall());
  EXPECT_EQ(follower.call().FollowedCallId(), 1300);
}

TEST_F(CallEndTest, SignallingOfACallThatNobodyFollowsIsPassedOver) {
  Prime();
  EXPECT_EQ(follower.OnCallEvent(Event("D_Release", 9001, 0)), PollStep::kGoesOn);
  EXPECT_EQ(follower.OnCallEvent(Granted(9001, 0, 5011)), PollStep::kGoesOn);
  EXPECT_THAT(CallLog(), IsEmpty());
  EXPECT_EQ(follower.call().talker(), std::nullopt);
}

}  // namespace
}  // namespace corvane
