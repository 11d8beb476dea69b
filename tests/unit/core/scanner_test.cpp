#include "core/scanner.h"

#include <gmock/gmock.h>

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ScannerTest = CoreTest;

TEST_F(ScannerTest, TheFirstPollActsOnNothingThatStandsInTheBox) {
  box.lines = {Setup(9001, 1207, 5010, 2, 2610), "x"};
  scanner.ScanNetworkInfo();
  EXPECT_TRUE(scanner.ScanPrimed);
  EXPECT_EQ(scanner.LastLineIndex, 3);
  EXPECT_FALSE(follower.FollowingCall());
  scanner.ScanNetworkInfo();
  EXPECT_FALSE(follower.FollowingCall());
}

TEST_F(ScannerTest, AfterForgettingThePositionTheBoxIsHistoryAgain) {
  Prime();
  scanner.ForgetPosition();
  box.lines.push_back(Setup(9001, 1207, 5010, 2, 2610));
  scanner.ScanNetworkInfo();
  EXPECT_FALSE(follower.FollowingCall());
}

TEST_F(ScannerTest, OneLineIsTakenPerPoll) {
  Prime();
  box.lines = {"D_Info a", "D_Info b", "D_Info c"};
  scanner.ScanNetworkInfo();
  EXPECT_THAT(CallLog(), ElementsAre(" - D_Info a"));
  scanner.ScanNetworkInfo();
  scanner.ScanNetworkInfo();
  scanner.ScanNetworkInfo();
  EXPECT_THAT(CallLog(), ElementsAre(" - D_Info a", " - D_Info b", " - D_Info c"));
}

TEST_F(ScannerTest, TheRepeatsOfTheLastTwoLinesAreDropped) {
  Prime();
  for (const char* line :
       {"D_Info a", "D_Info a", "D_Info b", "D_Info a", "D_Info c", "D_Info a"}) {
    Poll(line);
  }
  EXPECT_THAT(CallLog(), ElementsAre(" - D_Info a", " - D_Info b", " - D_Info c", " - D_Info a"));
}

TEST_F(ScannerTest, ADroppedRepeatDoesNotTakeASlot) {
  Prime();
  for (const char* line : {"D_Info a", "D_Info b", "D_Info b", "D_Info b", "D_Info a"}) Poll(line);
  EXPECT_THAT(CallLog(), ElementsAre(" - D_Info a", " - D_Info b"));
}

TEST_F(ScannerTest, AClearedBoxIsScannedFromItsNewCount) {
  Prime();
  for (int i = 0; i < 10; ++i) Poll("D_Info " + std::to_string(i));
  box.lines = {"D_Info old"};
  PollNothing();
  EXPECT_EQ(scanner.LastLineIndex, 2);
  Poll("D_Info new");
  EXPECT_THAT(LastCallLine(), HasSubstr("D_Info new"));
  EXPECT_EQ(form.lstCallLog.count(), 11);
}

TEST_F(ScannerTest, ABoxWithoutAnAnswerLeavesThePositionAlone) {
  Prime();
  Poll("D_Info a");
  const std::int32_t position = scanner.LastLineIndex;
  box.answers = false;
  for (int i = 0; i < 5; ++i) PollNothing();
  EXPECT_EQ(scanner.LastLineIndex, position);
  box.answers = true;
  PollNothing();
  EXPECT_EQ(form.lstCallLog.count(), 1);
}

TEST_F(ScannerTest, ABoxThatDoesNotAnswerTheFirstPollIsStillHistoryLater) {
  box.answers = false;
  PollNothing();
  EXPECT_FALSE(scanner.ScanPrimed);
  box.answers = true;
  box.lines = {Setup(9001, 1, 5010, 2, 2610), "x", "y"};
  PollNothing();
  EXPECT_TRUE(scanner.ScanPrimed);
  PollNothing();
  EXPECT_FALSE(follower.FollowingCall());
}

TEST_F(ScannerTest, ALineWhoseReadingTimedOutIsTakenLater) {
  Prime();
  box.readable = false;
  Poll("D_Info a");
  EXPECT_EQ(form.lstCallLog.count(), 0);
  box.readable = true;
  PollNothing();
  EXPECT_THAT(CallLog(), ElementsAre(" - D_Info a"));
}

TEST_F(ScannerTest, ANewBoxIsHistory) {
  Prime();
  Poll("D_Info a");
  box.identity = 99;
  box.lines.assign(200, Setup(9001, 1, 5010, 2, 2610));
  PollNothing();
  PollNothing();
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_EQ(form.lstCallLog.count(), 1);
}

TEST_F(ScannerTest, TheSameBoxFoundAgainIsScannedFromWhereItWas) {
  Prime();
  box.identity = 0;
  box.answers = false;
  PollNothing();
  box.identity = 14;
  box.answers = true;
  Poll("D_Info a");
  EXPECT_THAT(CallLog(), ElementsAre(" - D_Info a"));
}

TEST_F(ScannerTest, NothingIsScannedWhileShuttingDown) {
  Prime();
  flags.mblnShuttingDown = true;
  Poll("D_Info a");
  EXPECT_THAT(CallLog(), IsEmpty());
  EXPECT_EQ(scanner.LastLineIndex, 1);
}

TEST_F(ScannerTest, EachNameThatALineContainsListsItOnce) {
  Prime();
  for (const char* name :
       {"D_Alert", "D_Call_Proceeding", "D_Call_Restore", "D_Connect", "D_Disconnect", "D_Facility",
        "D_Info", "D_SDS_Data", "D_Status", "D_TX_Continue", "D_TX_Granted", "D_Wait"}) {
    const int before = form.lstCallLog.count();
    Poll(std::string("SSI:9001 ") + name + " x");
    EXPECT_EQ(form.lstCallLog.count(), before + 1) << name;
    EXPECT_EQ(LastCallLine(), kNow + " - SSI:9001 " + name + " x");
  }
}

TEST_F(ScannerTest, AConnectAcknowledgeIsListedTwice) {
  Prime();
  Poll("SSI:9001 D_Connect_Acknowledge Call ID:5 ");
  EXPECT_THAT(CallLog(), ElementsAre(" - SSI:9001 D_Connect_Acknowledge Call ID:5 ",
                                     " - SSI:9001 D_Connect_Acknowledge Call ID:5 "));
}

TEST_F(ScannerTest, SetupsReleasesAndCeasedTransmissionsAreNotListedRaw) {
  Prime();
  Poll(Event("D_Release", 9001, 1));
  Poll(Event("D_TX_Ceased", 9001, 1));
  Poll("D_Setup without a service");
  EXPECT_THAT(CallLog(), IsEmpty());
}

TEST_F(ScannerTest, ListingCanBeSuppressedButCallsAreStillFollowed) {
  Prime();
  form.chkSuppressSomePduMessages.value = 1;
  Poll("D_Info a");
  EXPECT_THAT(CallLog(), IsEmpty());
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_TRUE(follower.FollowingCall());
}

TEST_F(ScannerTest, AnEncryptedLineIsNeitherListedNorSetUp) {
  Prime();
  Poll(Setup(9001, 1207, 5010, 2, 2610) + "PDU encrypted ");
  Poll("SSI:9001 D_Info PDU encrypted ");
  EXPECT_THAT(CallLog(), IsEmpty());
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_TRUE(groups.empty());
}

TEST_F(ScannerTest, TheCcLogTakesEachLineTwiceAndEncryptedOnesToo) {
  form.chkCreateCcVcLog.value = 1;
  Prime();
  const std::string setup_line = Setup(9001, 1207, 5010, 2, 2610);
  Poll(setup_line);
  Poll("SSI:9001 PDU encrypted ");
  const std::string expected = setup_line + "\r\n" + setup_line + "\r\n" +
                               "SSI:9001 PDU encrypted \r\nSSI:9001 PDU encrypted \r\n";
  EXPECT_EQ(FileText(kDay + "\\TETRA_cc.log"), expected);
}

TEST_F(ScannerTest, TheCcLogTakesALineCountedInLogModeOnce) {
  form.chkCreateCcVcLog.value = 1;
  form.chkCreateCallActivityCvsFile.value = 1;
  Prime();
  const std::string setup_line = Setup(9001, 1207, 5010, 2, 2610);
  Poll(setup_line);
  EXPECT_EQ(FileText(kDay + "\\TETRA_cc.log"), setup_line + "\r\n");
}

TEST_F(ScannerTest, ALineWithAMissingFieldStillReachesTheCcLogTwice) {
  form.chkCreateCcVcLog.value = 1;
  Prime();
  const std::string line = "SSI:9001 D_Setup Transmission Granted Basic_service:Group ";
  Poll(line);
  EXPECT_EQ(FileText(kDay + "\\TETRA_cc.log"), line + "\r\n" + line + "\r\n");
  EXPECT_THAT(CallLog(), IsEmpty());
}

TEST_F(ScannerTest, TheEventLogGetsEveryEntryOnceEmptyOnesToo) {
  form.chkCreateEventLog.value = 1;
  Prime();
  FollowCall();
  Poll(Event("D_Release", 9001, 1207));
  const std::string log = FileText(kDay + "\\TETRA_event.log");
  std::string expected;
  for (const std::string& line : form.lstCallLog.items()) expected += line + "\r\n";
  EXPECT_EQ(log, expected);
  EXPECT_THAT(log, HasSubstr("VC D-Released\r\n\r\n"));
}

TEST_F(ScannerTest, TheEventLogSwitchedOnLateGetsWhatIsThere) {
  Prime();
  Poll("D_Info a");
  EXPECT_FALSE(files.Content(kDay + "\\TETRA_event.log").has_value());
  form.chkCreateEventLog.value = 1;
  PollNothing();
  EXPECT_EQ(FileText(kDay + "\\TETRA_event.log"), kNow + " - D_Info a\r\n");
  form.chkCreateEventLog.value = 0;
  Poll("D_Info b");
  form.chkCreateEventLog.value = 1;
  PollNothing();
  EXPECT_EQ(FileText(kDay + "\\TETRA_event.log"),
            kNow + " - D_Info a\r\n" + kNow + " - D_Info b\r\n");
}

TEST_F(ScannerTest, AnEventLogThatCannotBeWrittenIsCaughtUpLater) {
  form.chkCreateEventLog.value = 1;
  Prime();
  files.FailPath("TETRA_event", kDiskFull);
  Poll("D_Info a");
  EXPECT_EQ(scanner.EventLogNextIndex, 0);
  files.FailPath("TETRA_event", kFileOk);
  Poll("D_Info b");
  EXPECT_EQ(FileText(kDay + "\\TETRA_event.log"),
            kNow + " - D_Info a\r\n" + kNow + " - D_Info b\r\n");
}

TEST_F(ScannerTest, TheCallLogIsClearedAt1001Entries) {
  form.chkCreateEventLog.value = 1;
  Prime();
  for (int i = 0; i < 1000; ++i) form.lstCallLog.Add("x");
  PollNothing();
  EXPECT_EQ(form.lstCallLog.count(), 1000);
  EXPECT_EQ(scanner.EventLogNextIndex, 1000);
  Poll("D_Info last");
  EXPECT_EQ(form.lstCallLog.count(), 0);
  EXPECT_EQ(scanner.EventLogNextIndex, 0);
  EXPECT_THAT(FileText(kDay + "\\TETRA_event.log"), HasSubstr("D_Info last"));
}

TEST_F(ScannerTest, TheCountdownIsShownOnEveryPoll) {
  Prime();
  EXPECT_EQ(form.lblTimeoutCountdown.caption.get(), "0");
  FollowCall();
  EXPECT_EQ(form.lblTimeoutCountdown.caption.get(), "16");
  RunCountdownDownTo(7);
  PollNothing();
  EXPECT_EQ(form.lblTimeoutCountdown.caption.get(), "7");
}

TEST_F(ScannerTest, TheDayFoldersAreCheckedOnEveryPoll) {
  Prime();
  EXPECT_TRUE(files.IsDirectory(kDay + "\\Record"));
  files.Remove("C:\\Corvane\\Daily");
  PollNothing();
  EXPECT_TRUE(files.IsDirectory(kDay + "\\Record"));
}

TEST_F(ScannerTest, InLogModeTheBoxIsClearedAt101000PollsOnAReleaseOrConnect) {
  form.chkCreateCallActivityCvsFile.value = 1;
  Prime();
  EXPECT_EQ(scanner.PollsSinceClear, 0);
  PollNothing();
  Poll("D_Info a");
  EXPECT_EQ(scanner.PollsSinceClear, 2);
  scanner.PollsSinceClear = 100999;
  Poll(Event("D_Release", 9001, 1));
  EXPECT_EQ(scanner.PollsSinceClear, 101000);
  EXPECT_EQ(box.clears, 0);
  Poll("D_Info b");
  EXPECT_EQ(scanner.PollsSinceClear, 101000);
  EXPECT_EQ(box.clears, 0);
  Poll("SSI:9001 D_Connect Call ID:9 ");
  EXPECT_EQ(box.clears, 1);
  EXPECT_EQ(scanner.PollsSinceClear, 0);
  EXPECT_EQ(form.lstStatusLog.Item(form.lstStatusLog.count() - 1),
            kNow + " - 'Network Info' editbox has been cleared");
  EXPECT_EQ(form.lstStatusLog.list_index(), form.lstStatusLog.count() - 1);
  EXPECT_THAT(LastCallLine(), HasSubstr("D_Connect")) << "the clearing line itself is handled";
}

TEST_F(ScannerTest, OutsideLogModeThePollsAreNotCounted) {
  Prime();
  PollNothing();
  EXPECT_EQ(scanner.PollsSinceClear, 0);
}

TEST_F(ScannerTest, WithoutAFollowedCallTheTimeoutIsNotTested) {
  Prime();
  Poll("D_Info a");
  EXPECT_EQ(form.lstCallLog.count(), 1);
}

TEST_F(ScannerTest, ASilentCallIsEndedOnAPollWithOrWithoutALine) {
  for (const bool with_line : {false, true}) {
    FollowCall(9001, with_line ? 2 : 1);
    RunCountdownDownTo(0);
    link.trace.clear();
    if (with_line) {
      Poll("D_Info other");
    } else {
      PollNothing();
    }
    EXPECT_FALSE(follower.FollowingCall());
    EXPECT_EQ(follower.call().CallTimeoutTicks, 0);
    EXPECT_EQ(form.lblTimeoutCountdown.caption.get(), "0");
    EXPECT_EQ(form.lstCallLog.Item(form.lstCallLog.count() - 2),
              kNow + " - Call timeout occured - Did not see D-Release for Call ID: " +
                  (with_line ? "2" : "1"));
    EXPECT_EQ(LastCallLine(), "");
  }
}

TEST_F(ScannerTest, NothingIsTakenWhileACallSequenceRuns) {
  Prime();
  box.lines.push_back("D_Info a");
  const std::int32_t position = scanner.LastLineIndex;
  link.on_wait = [&] {
    scanner.ScanNetworkInfo();
    EXPECT_EQ(scanner.LastLineIndex, position);
  };
  follower.ResetCallDisplay();
  link.on_wait = nullptr;
  scanner.ScanNetworkInfo();
  EXPECT_EQ(LastCallLine(), kNow + " - D_Info a");
}

TEST_F(ScannerTest, ABoxThatShrankAndGrewAgainBetweenTwoPollsIsScannedFromWhereItWas) {
  Prime();
  for (int i = 0; i < 3; ++i) Poll("D_Info " + std::to_string(i));
  box.lines = {"D_Info a", "D_Info b", "D_Info c", "D_Info d"};
  PollNothing();
  EXPECT_EQ(LastCallLine(), kNow + " - D_Info d");
  PollNothing();
  EXPECT_EQ(form.lstCallLog.count(), 4) << "lines that came and went unseen are lost";
}

TEST_F(ScannerTest, ALineThatIsHandedOverTwiceIsTakenOnce) {
  EXPECT_EQ(scanner.OnLine("D_Info a"), PollStep::kGoesOn);
  EXPECT_EQ(scanner.OnLine("D_Info a"), PollStep::kGoesOn);
  EXPECT_THAT(CallLog(), ElementsAre(" - D_Info a"));
}

TEST_F(ScannerTest, BeforeThereIsADayFolderNothingIsLogged) {
  form.chkCreateCcVcLog.value = 1;
  form.chkCreateEventLog.value = 1;
  EXPECT_EQ(scanner.OnLine("D_Info a"), PollStep::kGoesOn);
  EXPECT_THAT(files.List("C:\\Corvane"), IsEmpty());
  EXPECT_THAT(CallLog(), ElementsAre(" - D_Info a"));
}

}  // namespace
}  // namespace corvane
