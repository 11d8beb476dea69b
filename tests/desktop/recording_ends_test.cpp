// What is recorded, and every way in which a recording ends.
#include <gtest/gtest.h>

#include "desktop/recording_test.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

constexpr const char* kForced = "_call_forced_end";

class RecordingEnds : public RecordingTest {
 protected:
  // A call that has been heard for a while.
  RecordedCall Heard(int call_id, int group = 9001) {
    RecordedCall call = BeginRecordedCall(call_id, group);
    AwaitTicks(2);
    return call;
  }
  // Recording goes on as ever: no left-over suffix, file or tone.
  void ExpectNextIsGood(int call_id) {
    const RecordedCall call = RecordCall(call_id, 9013, 3);
    ExpectHeard(call);
    EXPECT_EQ(Unnamed(), 0);
  }
};

TEST_F(RecordingEnds, OffRecordsNothing) {
  Begin();
  (void)RecordCall(1, 9001, 2);
  EXPECT_TRUE(Recordings().empty());
}

TEST_F(RecordingEnds, SelectRecordsTheListedGroupsOnly) {
  Folder().Write("TETRA_rec_gssi.txt", "9005\r\n9009\r\n");
  Settings settings;
  settings.record_mode_index = 2;
  Begin(settings);
  (void)RecordCall(2, 9001, 2);
  const RecordedCall listed = RecordCall(3, 9009, 3);
  (void)RecordCall(4, 9013, 2);
  ExpectHeard(listed);
  EXPECT_EQ(Recordings().size(), 1u);
}

TEST_F(RecordingEnds, TheModeCountsWhenACallBegins) {
  Begin();
  RecordedCall unrecorded = BeginRecordedCall(5, 9001);
  AwaitFollowing(5);  // it was decided whether it is recorded
  Click(Corvane().Control(optRecordMode_1));
  AwaitClicksHandled();
  Do("release id=5");
  AwaitStopped(unrecorded);
  EXPECT_TRUE(Recordings().empty());

  RecordedCall recorded = Heard(6);
  Click(Corvane().Control(optRecordMode_0));
  AwaitClicksHandled();
  Do("release id=6");
  AwaitStopped(recorded);
  ExpectHeard(recorded);
  (void)RecordCall(7, 9005, 2);
  EXPECT_EQ(Recordings().size(), 1u);
}

TEST_F(RecordingEnds, ReleaseAndDisconnectSaveIt) {
  BeginRecording();
  ExpectHeard(RecordCall(8, 9001, 3));
  ExpectHeard(RecordCall(9, 9005, 3, true));
  EXPECT_EQ(Recordings().size(), 2u);
}

TEST_F(RecordingEnds, TheTimeOutSavesIt) {
  Settings settings;
  settings.timeout_s = 1;
  BeginRecording(settings);
  RecordedCall call = Heard(10);
  Do("release id=10 missed");
  AwaitInCallLog(" - Call timeout occured - Did not see D-Release for Call ID: 10");
  AwaitStopped(call);
  ExpectHeard(call);
  ExpectNextIsGood(11);
}

TEST_F(RecordingEnds, AManualEndMarksItsName) {
  BeginRecording();
  RecordedCall call = Heard(12);
  MouseClick(Corvane().Control(lblManualD_Release));
  AwaitStopped(call);
  Do("release id=12");
  ExpectHeard(call, kForced);
  ExpectNextIsGood(13);
  EXPECT_EQ(Recordings().size(), 2u);
}

TEST_F(RecordingEnds, AManualEndDeletesItWhenThatIsWanted) {
  BeginRecording();
  Click(Corvane().Control(chkDeleteForcedCallEndFile));
  Await("the box", [this] { return Checked(Corvane().Control(chkDeleteForcedCallEndFile)); });
  RecordedCall call = Heard(14);
  MouseClick(Corvane().Control(lblManualD_Release));
  AwaitStopped(call);
  Do("release id=14");
  AwaitInCallLog(" - Manual D-Release occured and UI reset");
  ExpectNextIsGood(15);
  EXPECT_EQ(Recordings().size(), 1u);
}

TEST_F(RecordingEnds, CcParkEndsIt) {
  BeginRecording();
  RecordedCall call = Heard(16);
  DoubleClick(Corvane().Control(lblChangeToCcFrequency));
  AwaitStopped(call);
  Do("release id=16");
  ExpectHeard(call, kForced);
  ExpectNextIsGood(17);
}

TEST_F(RecordingEnds, SwitchingLogModeOnEndsIt) {
  BeginRecording();
  RecordedCall call = Heard(18);
  Click(Corvane().Control(chkCreateCallActivityCvsFile));
  AwaitInCallLog(" - LOG mode active - No calls will be heard");
  AwaitStopped(call);
  Do("release id=18");
  ExpectHeard(call, kForced);
  EXPECT_EQ(Recordings().size(), 1u);

  Click(Corvane().Control(chkCreateCallActivityCvsFile));
  AwaitInCallLog(" - LOG mode de-activated - Calls can now be heard");
  ExpectNextIsGood(19);
}

TEST_F(RecordingEnds, AnErrorOfNetRemoteEndsIt) {
  BeginRecording();
  RecordedCall call = Heard(20);
  Do(R"(reply text "{\"Result\":\"Error\",\"Type\":\"Value error\",\"Message\":\"No\"}\r\n")");
  Await("the recording", [&] { return !Recordings(EndingOf(call)).empty(); });
  call.stop_ms = Sdr().Log().back().ms;
  ExpectHeard(call);
  Do("release id=20");
  AwaitScanning();
  ExpectNextIsGood(21);
}

TEST_F(RecordingEnds, TheEndOfSdrSharpEndsIt) {
  BeginRecording();
  RecordedCall call = Heard(22);
  call.stop_ms = Sdr().Log().back().ms;
  Sdr().Kill();
  Await("the recording", [&] { return !Recordings(EndingOf(call)).empty(); });
  ExpectHeard(call);
  StartSdr();
  AwaitScanning();
  ExpectNextIsGood(23);
}

TEST_F(RecordingEnds, ClosingTheProgramEndsIt) {
  BeginRecording();
  RecordedCall call = Heard(24);
  Close(Corvane().Window());
  ASSERT_EQ(Corvane().TheProcess().WaitForExit(kGenerousLimit_ms), 0u);
  call.stop_ms = Sdr().Log().back().ms;
  ExpectHeard(call, kForced);
  EXPECT_EQ(Recordings().size(), 1u);
}

}  // namespace
}  // namespace corvane::desktop
