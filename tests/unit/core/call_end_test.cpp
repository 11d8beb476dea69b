#include "core/call_end.h"

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
    EXPECT_FALSE(recorder.RecordingActive);
    EXPECT_EQ(form.ShapeBusy_state.border_colour.get(), kWindowText);
    EXPECT_EQ(form.ShapeBusy_state.border_width.get(), 1);
  }
};

TEST_F(CallEndTest, AReleasedCallParksFilesItsTalkersAndClearsTheDisplay) {
  FollowCall();
  Poll(Granted(9001, 1207, 5011));
  context.call.CallTimeoutTicks = 2;
  trace.clear();
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_THAT(trace, ElementsAre("Set Frequency 865112500", "sleep 10", "Set AudioGain 25"));
  EXPECT_EQ(context.call.CallTimeoutTicks, 16);
  ExpectClear();
  ASSERT_EQ(subscribers.size(), 2U);
  EXPECT_EQ(subscribers[0].LastGssi, 9001);
  EXPECT_EQ(subscribers[1].Ssi, 5011);
  EXPECT_EQ(LastCallLine(), "") << "an empty line separates the calls";
}

TEST_F(CallEndTest, TheCallIsOverBeforeAnythingIsSent) {
  FollowCall();
  bool following_in_wait = true;
  loop.on_wait = [&] { following_in_wait = flags.FollowingCall; };
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_FALSE(following_in_wait);
}

TEST_F(CallEndTest, ARecordedCallIsSavedAtItsEnd) {
  RecordAll();
  FollowCall();
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_THAT(trace, Contains("mci stop recsound"));
  EXPECT_EQ(recorder.ForcedEndSuffix, "");
  ExpectClear();
}

TEST_F(CallEndTest, AnEndBrokenOffByTheSocketLeavesTheRestUndone) {
  RecordAll();
  FollowCall();
  link.connected = false;
  trace.clear();
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_THAT(trace, ElementsAre("lost Set Frequency 865112500"));
  EXPECT_FALSE(flags.FollowingCall);
  EXPECT_TRUE(recorder.RecordingActive) << "the reset of the lost link saves it";
  EXPECT_EQ(form.lblCallID.caption.get(), " 1207");
  EXPECT_FALSE(sequence.running());
}

TEST_F(CallEndTest, AResetClearsParksAndLogs) {
  FollowCall();
  Poll(Granted(9001, 1207, 5011));
  trace.clear();
  call_end.ResetCallDisplay();
  EXPECT_THAT(trace, ElementsAre("Set Frequency 865112500", "sleep 10", "Set AudioGain 25"));
  ExpectClear();
  EXPECT_FALSE(flags.FollowingCall);
  EXPECT_TRUE(subscribers.empty()) << "a reset files no talkers";
  EXPECT_EQ(form.lstCallLog.Item(form.lstCallLog.count() - 2),
            kNow + " - Manual D-Release occured and UI reset");
  EXPECT_EQ(LastCallLine(), "");
}

TEST_F(CallEndTest, AResetWithoutACallLogsNoSeparator) {
  call_end.ResetCallDisplay();
  EXPECT_EQ(LastCallLine(), kNow + " - Manual D-Release occured and UI reset");
}

TEST_F(CallEndTest, AResetWithTheLinkDownSendsNothingAndDoesTheRest) {
  RecordAll();
  FollowCall();
  flags.NetRemoteLinkUp = false;
  trace.clear();
  call_end.ResetCallDisplay();
  EXPECT_THAT(trace, Not(Contains("Set Frequency 865112500")));
  ExpectClear();
}

TEST_F(CallEndTest, AResetSavesARecordingAsEndedByForce) {
  RecordAll();
  FollowCall();
  files.content[kDay + "\\Record\\newTmp.wav"] = "wav";
  call_end.ResetCallDisplay();
  EXPECT_EQ(recorder.ForcedEndSuffix, "_call_forced_end");
  EXPECT_TRUE(files.content.contains(kDay + "\\Record\\142305_1207_9001_call_forced_end.wav"));
  ExpectClear();
}

TEST_F(CallEndTest, AResetWithTheProgramShuttingDownStillSavesTheRecording) {
  RecordAll();
  FollowCall();
  flags.mblnShuttingDown = true;
  call_end.ResetCallDisplay();
  ExpectClear();
}

TEST_F(CallEndTest, AResetWhoseWaitIsBrokenByShuttingDownReturnsAtOnce) {
  FollowCall();
  trace.clear();
  flags.mblnReceiving = true;
  flags.mblnShuttingDown = true;
  const int lines = form.lstCallLog.count();
  call_end.ResetCallDisplay();
  EXPECT_THAT(trace, ElementsAre("Set Frequency 865112500"));
  EXPECT_EQ(form.lstCallLog.count(), lines);
}

TEST_F(CallEndTest, OnlyTheSecondWaitOfAResetIsBrokenByTheSocket) {
  FollowCall();
  trace.clear();
  int sends = 0;
  loop.on_wait = [&] {
    ++sends;
    if (sends == 1) {  // inside the first Set: a reply is handled while the socket goes down
      flags.mblnReceiving = true;
    } else if (sends < 5) {
      link.connected = false;
    } else if (sends == 5) {
      flags.mblnReceiving = false;  // the first wait went on nevertheless
      link.connected = true;
    } else if (sends == 6) {
      flags.mblnReceiving = true;
      link.connected = false;
    }
  };
  const int lines = form.lstCallLog.count();
  call_end.ResetCallDisplay();
  EXPECT_THAT(trace, Contains("Set AudioGain 25"));
  EXPECT_EQ(form.lstCallLog.count(), lines) << "the second wait was broken";
}

TEST_F(CallEndTest, ParkingNeedsTheLink) {
  flags.NetRemoteLinkUp = false;
  call_end.Park();
  EXPECT_THAT(trace, IsEmpty());
  EXPECT_EQ(form.lstCallLog.count(), 0);
}

// Every place at which a setup or an ending lets events run.
class InterruptedCallTest : public CallEndTest, public ::testing::WithParamInterface<int> {};

TEST_P(InterruptedCallTest, ParkingInTheMiddleOfASetupEndsOnTheParkCarrier) {
  RecordAll();
  Prime();
  int wait = 0;
  loop.on_wait = [&] {
    if (++wait == GetParam()) call_end.Park();
  };
  trace.clear();
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  ASSERT_GE(wait, GetParam());
  EXPECT_FALSE(flags.FollowingCall);
  ExpectClear();
  EXPECT_EQ(trace.back(), "mci close all");
  EXPECT_THAT(trace, Contains("Set Frequency 865112500"));
}

TEST_P(InterruptedCallTest, LogModeInTheMiddleOfASetupEndsOnTheParkCarrier) {
  RecordAll();
  Prime();
  int wait = 0;
  loop.on_wait = [&] {
    if (++wait != GetParam()) return;
    form.chkCreateCallActivityCvsFile.value = 1;
    log_mode.Switched(true);
  };
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_FALSE(flags.FollowingCall);
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
    loop.on_wait = nullptr;
    FollowCall(9001, log_mode_instead ? 2 : 1);
    int wait = 0;
    loop.on_wait = [&] {
      if (++wait != GetParam()) return;
      if (log_mode_instead) {
        form.chkCreateCallActivityCvsFile.value = 1;
        log_mode.Switched(true);
      } else {
        call_end.Park();
      }
    };
    Poll(Event("D_Release", 9001, log_mode_instead ? 2 : 1));
    EXPECT_FALSE(flags.FollowingCall);
    ExpectClear();
    EXPECT_EQ(recorder.ForcedEndSuffix, "") << "it was released, not forced";
  }
}

INSTANTIATE_TEST_SUITE_P(EveryWait, InterruptedCallTest, ::testing::Values(1, 2));

TEST_F(CallEndTest, ALineThatArrivesInsideAResetIsTakenAfterIt) {
  FollowCall();
  int polls = 0;
  loop.on_wait = [&] {
    if (++polls == 1) Poll(Setup(9002, 1300, 5020, 1, 2611));
  };
  call_end.ResetCallDisplay();
  EXPECT_FALSE(flags.FollowingCall);
  loop.on_wait = nullptr;
  PollNothing();
  EXPECT_TRUE(flags.FollowingCall);
  EXPECT_EQ(context.call.FollowedCallId, 1300);
}

}  // namespace
}  // namespace corvane
