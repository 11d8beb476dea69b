#include "core/daily_calls.h"

#include <gmock/gmock.h>

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class DailyCallsTest : public CoreTest {
 protected:
  void LogModeOn() {
    form.chkCreateCallActivityCvsFile.value = 1;
    Prime();
  }
  std::string DailyFile() const { return FileText(kDay + "\\DailyCallActivity_15-11-2026.csv"); }
};

TEST_F(DailyCallsTest, ACallIsCountedShownAndWrittenButNotFollowed) {
  AddGroup(9001, "Fire & Rescue", true);
  LogModeOn();
  link.trace.clear();
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_THAT(link.trace, IsEmpty());
  EXPECT_EQ(DailyFile(), "14:23:05;9001;1207;D-Setup Transmission Granted\r\n");
  EXPECT_EQ(form.lblCallID.caption.get(), " 1207");
  EXPECT_EQ(form.lblCarrierNumber.caption.get(), " 2610");
  EXPECT_EQ(form.lblTimeSlotNumber.caption.get(), " 2");
  EXPECT_EQ(form.lblGroupNumber.caption.get(), " 9001");
  EXPECT_EQ(form.lblGSSI_label.caption.get(), "Fire && Rescue");
  EXPECT_THAT(CallLog(),
              ElementsAre(" - Call ID: 1207 - On carrier: 2610 - Group: 9001 [Fire & Rescue]"));
  ASSERT_EQ(daily.GroupCallCounts().size(), 1U);
  EXPECT_EQ(daily.GroupCallCounts()[0].Calls, 1);
  ASSERT_EQ(activity.CallActivityTable.size(), 1U);
  EXPECT_EQ(activity.CallActivityTable[0].Gssi, 9001);
  EXPECT_EQ(daily.LastCsvCallId, 1207);
}

TEST_F(DailyCallsTest, RepeatsAndOldCallIdsAreNotCounted) {
  LogModeOn();
  daily.LastCsvCallId = 300;
  for (const int call_id : {300, 260, 250}) Poll(Setup(9001, call_id, 5010, 2, 2610));
  EXPECT_TRUE(daily.GroupCallCounts().empty());
  EXPECT_THAT(CallLog(), IsEmpty());
  EXPECT_EQ(groups.size(), 1U) << "the group is learnt all the same";
}

TEST_F(DailyCallsTest, ALowCallIdMeansThatTheCounterHasWrapped) {
  LogModeOn();
  daily.LastCsvCallId = 300;
  Poll(Setup(9001, 249, 5010, 2, 2610));
  EXPECT_EQ(daily.LastCsvCallId, 249);
  daily.LastCsvCallId = 300;
  Poll(Setup(9001, 5, 5010, 2, 2610));
  EXPECT_EQ(daily.LastCsvCallId, 5);
  EXPECT_EQ(daily.GroupCallCounts()[0].Calls, 2);
}

TEST_F(DailyCallsTest, ANotGrantedCallIsWrittenButNotCounted) {
  LogModeOn();
  Poll(Setup(9001, 1207, 5010, 2, 2610, "Transmission Not_granted"));
  EXPECT_EQ(DailyFile(), "14:23:05;9001;1207;D-Setup Transmission Not_granted\r\n");
  EXPECT_TRUE(daily.GroupCallCounts().empty());
  EXPECT_TRUE(activity.CallActivityTable.empty());
  EXPECT_TRUE(groups.empty());
  EXPECT_THAT(CallLog(), IsEmpty());
  EXPECT_EQ(form.lblCallID.caption.get(), "");
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_TRUE(daily.GroupCallCounts().empty()) << "the same Call ID is a repeat";
}

TEST_F(DailyCallsTest, AnIndividualCallIsNeitherWrittenNorCounted) {
  LogModeOn();
  Poll(
      "SSI:9001 D_Setup Transmission Granted Call ID:1207 Basic_service:Individual Party_SSI:5010 "
      "TimeSlot:2 Carrier:2610 ");
  EXPECT_TRUE(activity.CallActivityTable.empty());
  EXPECT_THAT(files.List("C:\\Corvane"), IsEmpty());
}

TEST_F(DailyCallsTest, ALockedOutGroupIsCountedToo) {
  AddGroup(9001, "", false);
  LogModeOn();
  Poll(Setup(9001, 1, 5010, 2, 2610));
  EXPECT_EQ(activity.CallActivityTable.size(), 1U);
}

TEST_F(DailyCallsTest, AtTheChangeOfDayTheCountsAreWrittenToTheEndedDay) {
  LogModeOn();
  Poll(Setup(9002, 1, 5010, 2, 2610));
  Poll(Setup(9001, 2, 5010, 2, 2610));
  Poll(Setup(9001, 3, 5010, 2, 2610));
  clock.Set({2026, 11, 16, 0, 0, 1});
  PollNothing();
  EXPECT_THAT(DailyFile(), ::testing::EndsWith("GSSI;Call Activity\r\n9001;2\r\n9002;1\r\n"));
  EXPECT_TRUE(daily.GroupCallCounts().empty());
  EXPECT_EQ(activity.CallActivityTable.size(), 2U) << "the day's table goes on";
  EXPECT_EQ(daily.CurrentDate, "16-11-2026");
  Poll(Setup(9001, 4, 5010, 2, 2610));
  EXPECT_EQ(FileText("C:\\Corvane\\Daily\\20261116\\DailyCallActivity_16-11-2026.csv"),
            "00:00:01;9001;4;D-Setup Transmission Granted\r\n");
}

TEST_F(DailyCallsTest, ADayWithoutCallsHasNoSummary) {
  LogModeOn();
  clock.Set({2026, 11, 16, 0, 0, 1});
  PollNothing();
  EXPECT_THAT(files.List("C:\\Corvane"), IsEmpty());
}

TEST_F(DailyCallsTest, ASummaryThatCannotBeWrittenIsReportedInOneLine) {
  LogModeOn();
  Poll(Setup(9001, 1, 5010, 2, 2610));
  files.FailPath("DailyCallActivity", kDiskFull);
  clock.Set({2026, 11, 16, 0, 0, 1});
  PollNothing();
  EXPECT_THAT(form.lstStatusLog.items(),
              Contains("Error saving Call Activity CVS. - 16/11/2026 00:00:01"));
  EXPECT_THAT(form.lstStatusLog.items(),
              ::testing::Not(Contains(::testing::HasSubstr("Error writing"))));
  EXPECT_TRUE(daily.GroupCallCounts().empty());
}

TEST_F(DailyCallsTest, TheHighestCallIdSurvivesMidnightAndSwitching) {
  LogModeOn();
  Poll(Setup(9001, 100, 5010, 2, 2610));
  form.chkCreateCallActivityCvsFile.value = 0;
  clock.Set({2026, 11, 16, 0, 0, 1});
  PollNothing();
  form.chkCreateCallActivityCvsFile.value = 1;
  Poll(Setup(9001, 100, 5010, 2, 2610) + "again");
  EXPECT_EQ(daily.LastCsvCallId, 100);
  EXPECT_TRUE(daily.GroupCallCounts().empty());
}

TEST_F(DailyCallsTest, MonthAndYearEndsAndLeapDaysNameTheirFiles) {
  LogModeOn();
  int call_id = 0;
  const std::pair<DateTime, const char*> days[] = {
      {{2026, 11, 30, 23, 59, 59}, "20261130\\DailyCallActivity_30-11-2026.csv"},
      {{2026, 12, 1, 0, 0, 0}, "20261201\\DailyCallActivity_01-12-2026.csv"},
      {{2026, 12, 31, 23, 59, 59}, "20261231\\DailyCallActivity_31-12-2026.csv"},
      {{2027, 1, 1, 0, 0, 0}, "20270101\\DailyCallActivity_01-01-2027.csv"},
      {{2028, 2, 29, 12, 0, 0}, "20280229\\DailyCallActivity_29-02-2028.csv"}};
  for (const auto& [time, name] : days) {
    clock.Set(time);
    PollNothing();
    Poll(Setup(9001, ++call_id, 5010, 2, 2610));
    EXPECT_TRUE(files.Content(std::string("C:\\Corvane\\Daily\\") + name).has_value()) << name;
  }
}

TEST_F(DailyCallsTest, NoSetIsEverSentInLogMode) {
  LogModeOn();
  link.trace.clear();
  for (int id = 1; id < 50; ++id) Poll(Setup(9000 + id, id, 5010, 1 + id % 4, 2610));
  Poll(Event("D_Release", 9001, 1));
  EXPECT_THAT(link.trace, IsEmpty());
}

}  // namespace
}  // namespace corvane
