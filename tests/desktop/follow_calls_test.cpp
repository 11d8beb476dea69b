// The whole life of calls as the user sees it and as it goes over the wire.
#include <algorithm>
#include <set>

#include "desktop/call_test.h"

namespace corvane::desktop {
namespace {

using enum ControlId;
using Lines = std::vector<std::string>;

// Two hundred lines are two hundred polls.
constexpr int kBurstLimit_ms = 180'000;
// Sixteen ticks of a one-second timer that runs on its own: the first may come at once. A machine
// that has much else to do may hold up the command that the time is taken from, or a tick.
constexpr int kShortestLockout_ms = 15'000;
constexpr int kHeldUp_ms = 2'000;

// The stamped lines about one call, without their stamps.
Lines About(const Lines& log, int call_id) {
  Lines about;
  std::copy_if(log.begin(), log.end(), std::back_inserter(about), [&](const std::string& line) {
    return line.find("Call ID: " + std::to_string(call_id)) != std::string::npos;
  });
  return about;
}

TEST_F(CallTest, SetsSdrUpOnceInTheStatedOrder) {
  Begin();
  EXPECT_EQ(Commands(), SetUpCommands());
  EXPECT_EQ(Corvane().Caption(lblNetworkInfo), "MNC:42  LA:101");
  EXPECT_TRUE(Corvane().InCallLog(" - MCC:262  MNC:42  LA:101"));
}

TEST_F(CallTest, FollowsACallFromSetupToRelease) {
  Begin();
  const std::size_t mark = Mark();
  Do("call id=1207 group=9001 party=5010 carrier=2610 slot=2");
  AwaitFollowing(1207);
  EXPECT_EQ(Corvane().Caption(lblGroupNumber), "9001");
  EXPECT_EQ(Corvane().Caption(lblCurrentSSI), "5010");
  EXPECT_EQ(Corvane().Caption(lblCarrierNumber), "2610");
  EXPECT_EQ(Corvane().Caption(lblTimeSlotNumber), "2");
  EXPECT_EQ(Corvane().Items(lstCurrentSSI_Users), (Lines{"5010"}));
  ExpectCommands(mark, TuneTo(2610, "47"));

  const std::size_t released = Mark();
  Do("release id=1207");
  AwaitInCallLog("Call ID: 1207 - VC D-Released");
  AwaitParked();
  for (const ControlId id : {lblGroupNumber, lblCurrentSSI, lblCarrierNumber, lblTimeSlotNumber,
                             lblGSSI_label, lblSSI_label, lblSsiLastSeen}) {
    EXPECT_EQ(Corvane().Caption(id), "");
  }
  EXPECT_EQ(Corvane().Items(lstCurrentSSI_Users), Lines{});
  ExpectCommands(released, TuneTo(2604, "25"));
  EXPECT_EQ(About(Corvane().CallLog(), 1207),
            (Lines{"Call ID: 1207 - On carrier: 2610 - Group: 9001 ",
                   "Call ID: 1207 - Calling SSI: 5010", "Call ID: 1207 - VC D-Released"}));
  EXPECT_EQ(Corvane().CallLogAsShown().back(), "");
}

TEST_F(CallTest, PressesTheTimeslotBeforeItTunes) {
  Begin();
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=3");
  AwaitFollowing(7);
  const std::vector<LogLine> log = Sdr().Log();
  const auto at = [&](std::string_view kind, const std::string& part) {
    return std::find_if(log.begin(), log.end(), [&](const LogLine& line) {
      return line.kind == kind && line.detail.find(part) != std::string::npos;
    });
  };
  ASSERT_NE(at("mouse-down", "Timeslot 3"), log.end());
  ASSERT_NE(at("command", FrequencyOf(2610)), log.end());
  EXPECT_LT(at("mouse-down", "Timeslot 3"), at("command", FrequencyOf(2610)));
}

TEST_F(CallTest, ShowsEachNewSpeaker) {
  Begin();
  Do("call id=8 group=9001 party=5010 carrier=2610 slot=2");
  AwaitFollowing(8);
  Do("pause id=8");
  AwaitInCallLog("Call ID: 8 - VC D-TX-Ceased SSI: 5010");
  Do("speak id=8 party=5011");
  AwaitInCallLog("Call ID: 8 - VC D-TX-Granted SSI: 5011");
  EXPECT_EQ(Corvane().Caption(lblCurrentSSI), "5011");
  Do("speak id=8 party=5010");
  AwaitInCallLog("Call ID: 8 - VC D-TX-Granted SSI: 5010");
  EXPECT_EQ(Corvane().Caption(lblCurrentSSI), "5010");
  EXPECT_EQ(Corvane().Items(lstCurrentSSI_Users), (Lines{"5010", "5011"}));
}

TEST_F(CallTest, ShowsLabelsFromTheLists) {
  Folder().Write("TETRA_GSSI.txt", "9001;262;42;Fire & rescue;0;True\r\n");
  Folder().Write("TETRA_SSI.txt", "5010;9001;262;42;Engine 1;2025-11-20 10:11:12\r\n");
  Begin();
  Do("call id=9 group=9001 party=5010 carrier=2610 slot=2");
  AwaitFollowing(9);
  EXPECT_EQ(Corvane().Caption(lblGSSI_label), "Fire && rescue");
  EXPECT_EQ(Corvane().Caption(lblSSI_label), "Engine 1");
  EXPECT_NE(Corvane().Caption(lblSsiLastSeen), "");
  EXPECT_TRUE(Corvane().InCallLog("Group: 9001 [Fire & rescue]"));
  EXPECT_TRUE(Corvane().InCallLog("Calling SSI: 5010 [Engine 1]"));
}

TEST_F(CallTest, FollowsAQueuedCall) {
  Begin();
  Do("call id=10 group=9001 party=5010 carrier=2610 slot=1 status=Request_queued");
  AwaitFollowing(10);
}

TEST_F(CallTest, DoesNotFollowACallThatIsNotGranted) {
  Begin();
  const std::size_t mark = Mark();
  Do("call id=11 group=9001 party=5010 carrier=2610 slot=1 status=Not_granted");
  ExpectNothingFollowed(mark);
}

TEST_F(CallTest, DoesNotFollowAnIndividualCall) {
  Begin();
  const std::size_t mark = Mark();
  Do("call id=12 group=9001 party=5010 carrier=2610 slot=1 service=Individual");
  ExpectNothingFollowed(mark);
}

TEST_F(CallTest, DoesNotFollowAnEncryptedCall) {
  Begin();
  const std::size_t mark = Mark();
  Do("call id=13 group=9001 party=5010 carrier=2610 slot=1 encrypted");
  ExpectNothingFollowed(mark);
}

TEST_F(CallTest, IgnoresASecondSetupWhileItFollows) {
  Begin();
  Do("call id=14 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(14);
  const std::size_t mark = Mark();
  Line(
      "SSI:9002 D_Setup Transmission Granted Call ID:15 Basic_service:Point_to_multipoint "
      "Party_SSI:5020 TimeSlot:2 Carrier:2611 ");
  AwaitLinesRead();
  EXPECT_EQ(Corvane().Caption(lblCallID), "14");
  EXPECT_EQ(Commands(mark), Lines{});
}

TEST_F(CallTest, FollowsAGroupItHasNeverHeardOfAndKeepsIt) {
  Begin();
  Do("call id=16 group=9009 party=5010 carrier=2610 slot=1");
  AwaitFollowing(16);
  Do("release id=16");
  AwaitParked();
  Close(Corvane().Window());
  ASSERT_EQ(Corvane().TheProcess().WaitForExit(kGenerousLimit_ms), 0u);
  EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), "9009;262;42;;0;True\r\n");
  EXPECT_TRUE(Folder().Read("TETRA_SSI.txt").starts_with("5010;9009;262;42;;"));
}

TEST_F(CallTest, SkipsALockedOutGroupAndSaysSo) {
  Folder().Write("TETRA_GSSI.txt", "9001;262;42;Not for me;0;False\r\n");
  Begin();
  const std::size_t mark = Mark();
  Do("call id=17 group=9001 party=5010 carrier=2610 slot=1");
  AwaitInCallLog(" - Skipping Call, lockout found GSSI: 9001 [Not for me]");
  ExpectNothingFollowed(mark);
}

TEST_F(CallTest, AbortsACallWithABadTimeslot) {
  Begin();
  const std::size_t mark = Mark();
  Do("call id=18 group=9001 party=5010 carrier=2610 slot=5");
  AwaitInCallLog(" - Timeslot is not valid - call setup aborted");
  ExpectNothingFollowed(mark);
  EXPECT_EQ(Corvane().Caption(lblGroupNumber), "");
  EXPECT_EQ(Corvane().Items(lstCurrentSSI_Users), Lines{});
}

TEST_F(CallTest, PassesOverSetupsWithMissingOrSenselessFields) {
  Begin();
  const std::size_t mark = Mark();
  const std::string whole =
      "SSI:9001 D_Setup Transmission Granted Call ID:20 Basic_service:Point_to_multipoint "
      "Party_SSI:5010 TimeSlot:2 Carrier:2610 ";
  for (const auto& [what, with] :
       std::vector<std::pair<std::string, std::string>>{{"Call ID:20 ", ""},
                                                        {"Party_SSI:5010 ", ""},
                                                        {"TimeSlot:2 ", ""},
                                                        {"Carrier:2610 ", ""},
                                                        {"Carrier:2610 ", "Carrier:2610"},
                                                        {"Call ID:20", "Call ID:99999"},
                                                        {"Call ID:20", "Call ID:"},
                                                        {"SSI:9001", "SSI:99999999999999999999"},
                                                        {"Carrier:2610", "Carrier:2147483647"},
                                                        {"TimeSlot:2", "TimeSlot:two"},
                                                        {"Party_SSI:5010", "Party_SSI:-"}}) {
    std::string line = whole;
    line.replace(line.find(what), what.size(), with);
    Line(line);
  }
  Line("D_Setup Basic_service: Call ID: Party_SSI: SSI: TimeSlot: Carrier:");
  Line(std::string(3'000, 'x') + " D_Setup Basic_service:");
  ExpectNothingFollowed(mark);
  ExpectFollowsACall();
}

TEST_F(CallTest, ActsOnceOnDuplicateLines) {
  Begin();
  Do("call id=21 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(21);
  for (int repeat = 0; repeat < 3; ++repeat) Line("SSI:9001 D_Status Call ID:21 once ");
  AwaitLinesRead();
  EXPECT_EQ(CountContaining(Corvane().CallLog(), "Call ID:21 once"), 1);
}

TEST_F(CallTest, WorksOffABurstOf200Lines) {
  Begin();
  for (int number = 1; number <= 200; ++number) {
    Line("SSI:9001 D_Info Call ID:1 number " + std::to_string(number) + " of 200 ");
  }
  AwaitInCallLog("number 200 of 200", kBurstLimit_ms);
  const Lines log = Corvane().CallLog();
  for (int number = 1; number <= 200; ++number) {
    EXPECT_EQ(CountContaining(log, "number " + std::to_string(number) + " of"), 1) << number;
  }
  ExpectFollowsACall();
}

TEST_F(CallTest, IgnoresTheRestOfABurstOf200Setups) {
  Begin();
  const std::size_t mark = Mark();
  Do("burst count=200 id=1000 group=9001 party=5010 carrier=2610 slot=2");
  // The first one's voice, so that it does not time out however long the others take.
  Do("call id=1000 group=9001 party=5010 carrier=2610 slot=2");
  Line("SSI:9001 D_Release Call ID:1000 Disconnect_cause:User_requested ");
  AwaitInCallLog("Call ID: 1000 - VC D-Released", kBurstLimit_ms);
  Lines expected = TuneTo(2610, "47");
  for (const std::string& command : TuneTo(2604, "25")) expected.push_back(command);
  ExpectCommands(mark, expected);
  EXPECT_EQ(CountContaining(Corvane().CallLog(), " - On carrier: 2610"), 1);
}

TEST_F(CallTest, GoesOnAfterTheBoxWasCleared) {
  Begin();
  for (int number = 0; number < 20; ++number) Line("filling " + std::to_string(number));
  Do("clear-box");
  ExpectFollowsACall(22);
  Do("clear-box");
  ExpectFollowsACall(23);
}

TEST_F(CallTest, TakesTheLineThatIsBeingWrittenOnlyWhenItIsWhole) {
  Begin();
  const std::size_t mark = Mark();
  Do("partial \"SSI:9001 D_Setup Transmission Granted Call ID:24 \"");
  Do("partial \"Basic_service:Point_to_multipoint Party_SSI:5010 TimeSlot:2 \"");
  AwaitBoxLookedAt();
  EXPECT_EQ(Corvane().Caption(lblGroupNumber), "");
  EXPECT_EQ(Commands(mark), Lines{});
  Do("line \"Carrier:2610 \"");
  AwaitFollowing(24);
}

TEST_F(CallTest, EndsTheCallOnADisconnect) {
  Begin();
  Do("call id=25 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(25);
  const std::size_t mark = Mark();
  Do("disconnect id=25");
  AwaitInCallLog("Call ID: 25 - VC D-Disconnect");
  ExpectCommands(mark, TuneTo(2604, "25"));
}

TEST_F(CallTest, TimesOutAfterSilence) {
  Settings settings;
  settings.timeout_s = 2;
  Begin(settings);
  Do("call id=26 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(26);
  const std::size_t mark = Mark();
  Do("release id=26 missed");
  AwaitInCallLog(" - Call timeout occured - Did not see D-Release for Call ID: 26");
  ExpectCommands(mark, TuneTo(2604, "25"));
  ExpectFollowsACall();
}

TEST_F(CallTest, FollowsOnAsLongAsThereIsVoice) {
  Settings settings;
  settings.timeout_s = 1;
  Begin(settings);
  Do("call id=27 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(27);
  const auto answers = [this](std::string_view muted) {
    return CountContaining(Sdr().Details("reply"),
                           R"("Method":"AudioIsMuted","Value":)" + std::string(muted));
  };
  const auto countdown = [this] { return Corvane().Caption(lblTimeoutCountdown); };
  // When the second one is given the first one was handled: the countdown is under way.
  Await("two answers", [&] { return answers("false") >= 2; });
  Await("the whole countdown", [&] { return countdown() == "3"; });
  // Far more ticks than the three that a second has. A tick takes one away before it asks, and
  // starts the countdown again with the answer: what is seen in between is one less.
  std::set<std::string> seen;
  const int before = answers("false");
  Await("the watchdog's answers", [&] {
    seen.insert(countdown());
    return answers("false") >= before + 12;
  });
  for (const std::string& one : seen) EXPECT_TRUE(one == "3" || one == "2") << one;
  Await("the whole countdown", [&] { return countdown() == "3"; });
  EXPECT_EQ(Corvane().Caption(lblCallID), "27");
  EXPECT_EQ(answers("true"), 0) << "the countdown had reason to run";
}

TEST_F(CallTest, KeepsAGroupAwayFor16SecondsAfterAManualRelease) {
  Begin();
  Do("call id=28 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(28);
  const std::size_t mark = Mark();
  MouseClick(Corvane().Control(lblManualD_Release));
  AwaitInCallLog(" - Manual D-Release occured and UI reset");
  ExpectCommands(mark, TuneTo(2604, "25"));
  SetUpUntilFollowed(29, 9001, 2610, 1);
  std::int64_t parked_ms = 0;
  std::int64_t again_ms = 0;
  for (const LogLine& line : Sdr().Log()) {
    if (line.kind != "command") continue;
    if (line.detail.find(FrequencyOf(2604)) != std::string::npos) parked_ms = line.ms;
    if (line.detail.find(FrequencyOf(2610)) != std::string::npos) again_ms = line.ms;
  }
  EXPECT_GE(again_ms - parked_ms, kShortestLockout_ms - kHeldUp_ms);
}

TEST_F(CallTest, FollowsOtherGroupsRightAfterAManualRelease) {
  Begin();
  Do("call id=29 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(29);
  MouseClick(Corvane().Control(lblManualD_Release));
  AwaitInCallLog(" - Manual D-Release occured and UI reset");
  SetUpUntilFollowed(30, 9002, 2611, 1);
}

TEST_F(CallTest, ParksOnADoubleClickOnCcPark) {
  Begin();
  Do("call id=31 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(31);
  const std::size_t mark = Mark();
  DoubleClick(Corvane().Control(lblChangeToCcFrequency));
  AwaitInCallLog(" - Manual D-Release occured and UI reset");
  ExpectCommands(mark, TuneTo(2604, "25"));
  AwaitParked();
}

TEST_F(CallTest, HoldsAGroup) {
  Begin();
  Do("call id=32 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(32);
  MouseClick(Corvane().Control(lblGroupHold));
  AwaitClicksHandled();
  Do("release id=32");
  AwaitParked();
  const std::size_t mark = Mark();
  Do("call id=33 group=9002 party=5010 carrier=2611 slot=1");
  ExpectNothingFollowed(mark);
  Do("release id=33");
  Do("call id=34 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(34);
}

TEST_F(CallTest, CountsAndFollowsNoCallInLogMode) {
  Settings settings;
  settings.log_mode = true;
  Begin(settings);
  EXPECT_TRUE(Corvane().InCallLog(" - LOG mode active - No calls will be heard"));
  const std::size_t mark = Mark();
  Do("call id=35 group=9001 party=5010 carrier=2610 slot=1 for=1");
  AwaitInCallLog("Call ID: 35 - On carrier: 2610 - Group: 9001");
  AwaitLinesRead();
  EXPECT_EQ(Commands(mark), Lines{});
  Close(Corvane().Window());
  ASSERT_EQ(Corvane().TheProcess().WaitForExit(kGenerousLimit_ms), 0u);
  const auto files = Folder().Find(".csv");
  ASSERT_EQ(CountContaining({Folder().Read(files.at(0)), Folder().Read(files.at(1))},
                            "GSSI;Call Activity\r\n9001;1\r\n"),
            1);
}

TEST_F(CallTest, TakesItsTuningFromThePresets) {
  Settings settings;
  settings.vc_volume = 33;
  settings.base_frequency_index = 7;
  StartSdr();
  StartCorvane(settings);
  ChooseInCombo(Corvane().Control(cboBaseFrequency), 2);
  PressStart();
  AwaitScanning();
  EXPECT_EQ(Commands(), SetUpCommands());
  const std::size_t tuned = Mark();
  Do("call id=36 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(36);
  ExpectCommands(tuned, TuneTo(2610, "33"));
}

TEST_F(CallTest, LeavesHistoryAlone) {
  StartSdr({"--info-open", "--playing", "--demodulator-on"});
  Line(
      "SSI:9001 D_Setup Transmission Granted Call ID:37 Basic_service:Point_to_multipoint "
      "Party_SSI:5010 TimeSlot:2 Carrier:2610 ");
  Line("D_Status long ago");
  StartCorvane();
  PressStart();
  AwaitScanning();
  EXPECT_EQ(Corvane().Caption(lblCallID), "");
  EXPECT_FALSE(Corvane().InCallLog("D_Status long ago"));
}

TEST_F(CallTest, WritesWhatTheLogsAreFor) {
  Settings settings;
  settings.create_cc_vc_log = true;
  settings.create_event_log = true;
  Begin(settings);
  Do("call id=38 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(38);
  Do("release id=38");
  AwaitParked();
  Await("the event log", [this] {
    const auto files = Folder().Find("TETRA_event.log");
    return !files.empty() &&
           ReadWholeFile(files.front()).find("Call ID: 38 - VC D-Released") != std::string::npos;
  });
  const auto files = Folder().Find("TETRA_cc.log");
  ASSERT_EQ(files.size(), 1u);
  EXPECT_NE(ReadWholeFile(files.front()).find("Call ID:38 Basic_service:"), std::string::npos);
}

TEST_F(CallTest, ClosesInTheMiddleOfACall) {
  Begin();
  Do("call id=39 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(39);
  const std::size_t mark = Mark();
  Close(Corvane().Window());
  EXPECT_EQ(Corvane().TheProcess().WaitForExit(kGenerousLimit_ms), 0u);
  AwaitConnectionEnded();
  // While it closes no command waits for the answer to the one before, so both may be read at once.
  const Lines parking = TuneTo(2604, "25");
  std::string sent;
  for (const std::string& command : Commands(mark)) sent += command;
  EXPECT_EQ(sent, parking[0] + parking[1]);
  EXPECT_TRUE(Folder().Has("TETRA_GSSI.txt"));
}

// A question is under way when the closing begins, and takes its time: what is sent before the
// answer would be read together with what follows, and both would be lost.
TEST_F(CallTest, ClosingInMidCallParksASlowServer) {
  Begin();
  Do("handling 120");
  Do("call id=41 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(41);
  const std::size_t mark = Mark();
  const auto questions = [this] {
    return CountContaining(Sdr().Details("command"), "AudioIsMuted");
  };
  const int before = questions();
  Await("a question", [&] { return questions() > before; });
  Close(Corvane().Window());
  EXPECT_EQ(Corvane().TheProcess().WaitForExit(kGenerousLimit_ms), 0u);
  AwaitConnectionEnded();
  EXPECT_EQ(Commands(mark), TuneTo(2604, "25"));
  const std::string tuned = Sdr().Details("tune").back();
  EXPECT_NE(tuned.find(" carrier=2604 "), std::string::npos) << tuned;
  EXPECT_NE(tuned.find(" gain=25 "), std::string::npos) << tuned;
}

TEST_F(CallTest, RecordsAFollowedCall) {
  Settings settings;
  settings.record_mode_index = 1;
  Begin(settings);
  Do("call id=40 group=9001 party=5010 carrier=2610 slot=1");
  AwaitFollowing(40);
  Await("the recording to run for a while",
        [this] { return CountContaining(Sdr().Details("command"), "AudioIsMuted") >= 10; });
  Do("release id=40");
  Await("the recording", [this] { return !Folder().Find("_40_9001.wav").empty(); });
  const std::string wav = ReadWholeFile(Folder().Find("_40_9001.wav").front());
  EXPECT_TRUE(wav.starts_with("RIFF"));
  EXPECT_GT(wav.size(), 44'100u);
}

}  // namespace
}  // namespace corvane::desktop
