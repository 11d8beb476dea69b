#include "store/saved_lists.h"

#include <gtest/gtest.h>

#include "tests/unit/store/golden_files.h"
#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

GssiRecord Group(std::int32_t gssi, std::int16_t mcc, std::int16_t mnc, std::string_view label) {
  GssiRecord record;
  record.Gssi = gssi;
  record.Mcc = mcc;
  record.Mnc = mnc;
  record.Label = label;
  record.Follow = true;
  return record;
}

class GroupListTest : public ::testing::Test {
 protected:
  ErrorNumber Load(const std::string& content) {
    files.Put(kGroupPath, content);
    return run.groups.Load();
  }
  const std::vector<std::string>& Status() const { return run.form.lstStatusLog.items(); }

  sim::SimFiles files;
  StoreRun run{files};
  GssiTable& table = run.group_table;
};

TEST_F(GroupListTest, AMissingListIsReported) {
  table.Append(Group(1, 1, 1, "old"));
  EXPECT_EQ(run.groups.Load(), kNoError);
  EXPECT_TRUE(table.empty());
  EXPECT_EQ(table.highest_index(), 0U);
  EXPECT_EQ(Status(), Texts{"No saved GSSIs to loaded"});
}

TEST_F(GroupListTest, EveryFieldIsRead) {
  EXPECT_EQ(Load("9001;234;14;Fire north;-7;False\r\n"), kNoError);
  ASSERT_EQ(table.size(), 1U);
  EXPECT_EQ(table[0].Gssi, 9001);
  EXPECT_EQ(table[0].Mcc, 234);
  EXPECT_EQ(table[0].Mnc, 14);
  EXPECT_EQ(table[0].Label.padded(), "Fire north                    ");
  EXPECT_EQ(table[0].Priority, -7);
  EXPECT_FALSE(table[0].Follow);
  EXPECT_EQ(Status(), Texts{"Loaded 1 saved GSSIs"});
  EXPECT_EQ(table.highest_index(), 1U);
}

TEST_F(GroupListTest, TheOrderIsCountryNetworkGroup) {
  EXPECT_EQ(Load("5;262;1;Test;0;False\r\n"
                 "10;262;1;Ten;0;True\r\n"
                 "9;262;1;Nine;0;True\r\n"
                 "70;1;1;Other;0;True\r\n"
                 "1;262;10;B;0;True\r\n"
                 "2;262;9;A;0;True\r\n"),
            kNoError);
  Texts order;
  for (const GssiRecord& record : table) order.push_back(record.Label.trimmed());
  EXPECT_EQ(order, (Texts{"Other", "Test", "Nine", "Ten", "A", "B"}));
}

TEST_F(GroupListTest, LinesOfOneGroupKeepTheirOrderAndTheFirstIsFound) {
  EXPECT_EQ(Load("9;1;1;First;0;True\r\n9;1;1;Second;0;True\r\n"), kNoError);
  EXPECT_EQ(table[0].Label.trimmed(), "First");
  EXPECT_EQ(table[1].Label.trimmed(), "Second");
  EXPECT_EQ(table.Find(1, 1, 9), 0U);
}

TEST_F(GroupListTest, FollowIsAWordOrANumber) {
  EXPECT_EQ(Load("1;1;1;;0;True\n2;1;1;;0;False\n3;1;1;;0;-1\n4;1;1;;0;0\n5;1;1;;0;1\n"
                 "6;1;1;;0;true\n7;1;1;;0;FALSE\n8;1;1;;0;99999999999\n9;1;1;;0;-0\n"),
            kNoError);
  std::string follow;
  for (const GssiRecord& record : table) follow += record.Follow ? 'T' : 'F';
  EXPECT_EQ(follow, "TFTFTTFTF");
  EXPECT_EQ(Load("1;1;1;;0;yes\n"), kTypeMismatch);
  EXPECT_EQ(Load("1;1;1;;0;\n"), kTypeMismatch);
}

TEST_F(GroupListTest, LabelsAreCutAtThirtyBytesAndKeepLeadingBlanksUntilSaved) {
  EXPECT_EQ(Load("1;1;1;  Blanks  ;0;True\n2;1;1;1234567890123456789012345678901;0;True\n"),
            kNoError);
  EXPECT_EQ(table[0].Label.padded(), "  Blanks                      ");
  EXPECT_EQ(table[1].Label.padded(), "123456789012345678901234567890");
  EXPECT_EQ(run.groups.SaveGssiList(), 1);
  EXPECT_EQ(table[0].Label.padded(), "Blanks                        ");
  EXPECT_EQ(files.Content(kGroupPath),
            "1;1;1;Blanks;0;True\r\n2;1;1;123456789012345678901234567890;0;True\r\n");
}

TEST_F(GroupListTest, CommentsAreNoLines) {
  EXPECT_EQ(Load("#comment\r\n"), kTooFewFields);
  EXPECT_EQ(Load("#9001;262;1;Test;0;True\r\n"), kTypeMismatch);
  EXPECT_EQ(Load("'9001;262;1;Test;0;True\r\n"), kTypeMismatch);
}

TEST_F(GroupListTest, ABadLineEndsTheReadingWithItsNumber) {
  EXPECT_EQ(Load("9001;262;1;Test;0\r\n"), kTooFewFields);
  EXPECT_EQ(Load("x;262;1;Test;0;True\r\n"), kTypeMismatch);
  EXPECT_EQ(Load("9001;262;1;Test;;True\r\n"), kTypeMismatch);
  EXPECT_EQ(Load("2147483648;262;1;Test;0;True\r\n"), kOverflow);
  EXPECT_EQ(Load("9001;32768;1;Test;0;True\r\n"), kOverflow);
  EXPECT_EQ(Load("9001;262;-32769;Test;0;True\r\n"), kOverflow);
  EXPECT_EQ(Load("9001;262;1;Test;32768;True\r\n"), kOverflow);
  EXPECT_TRUE(table.empty());
  EXPECT_TRUE(Status().empty());
}

TEST_F(GroupListTest, AnEmptyTableIsNotSaved) {
  files.Put(kGroupPath, "kept");
  EXPECT_EQ(run.groups.SaveGssiList(), 0);
  EXPECT_EQ(files.Content(kGroupPath), "kept");
  EXPECT_EQ(files.steps(), 0);
}

TEST_F(GroupListTest, AnEmptiedTableReappearsAfterARestart) {
  EXPECT_EQ(Load("9001;262;1;Test;0;True\r\n"), kNoError);
  table.Reset();
  EXPECT_EQ(run.groups.SaveGssiList(), 0);
  StoreRun next(files);
  EXPECT_EQ(next.groups.Load(), kNoError);
  EXPECT_EQ(next.group_table.size(), 1U);
}

TEST_F(GroupListTest, SavingThreeRecordsWritesThreeLinesAndGivesTwo) {
  files.Put(kGroupPath, std::string(1000, 'x'));
  table.Append(Group(3, 262, 1, "C"));
  table.Append(Group(1, 262, 1, "A"));
  table.Append(Group(2, 1, 1, "B"));
  EXPECT_EQ(run.groups.SaveGssiList(), 2);
  EXPECT_EQ(files.Content(kGroupPath), "3;262;1;C;0;True\r\n1;262;1;A;0;True\r\n2;1;1;B;0;True\r\n")
      << "in the order of the table";
  EXPECT_EQ(files.List(kFolder).size(), 1U);
}

TEST_F(GroupListTest, OneRecordGivesZero) {
  table.Append(Group(3, 262, 1, ""));
  EXPECT_EQ(run.groups.SaveGssiList(), 0);
  EXPECT_EQ(files.Content(kGroupPath), "3;262;1;;0;True\r\n");
}

TEST_F(GroupListTest, NoLabelCanBreakALine) {
  table.Append(Group(3, 262, 1, "Police; north\r\nsouth"));
  EXPECT_EQ(run.groups.SaveGssiList(), 0);
  EXPECT_EQ(files.Content(kGroupPath), "3;262;1;Police northsouth;0;True\r\n");
  EXPECT_EQ(table[0].Label.trimmed(), "Police northsouth");
  StoreRun next(files);
  EXPECT_EQ(next.groups.Load(), kNoError);
}

TEST_F(GroupListTest, AFailedSaveGivesMinusOneAndLeavesTheOldFile) {
  EXPECT_EQ(Load("9001;262;1;Test;0;True\r\n"), kNoError);
  const Contents before = AllFiles(files);
  table.Append(Group(3, 262, 1, "New"));
  for (const int step : {1, 2, 3, 4}) {  // open, write, flush, move
    files.ResetSteps();
    files.FailAtStep(step, kPathAccess);
    EXPECT_EQ(run.groups.SaveGssiList(), -1);
    EXPECT_EQ(AllFiles(files), before);
  }
  files.FailAtStep(0, kFileOk);
  files.SetRoom(20);
  EXPECT_EQ(run.groups.SaveGssiList(), -1);
  EXPECT_EQ(AllFiles(files), before);
}

TEST_F(GroupListTest, TheGoldenListIsReadAndWrittenToTheByte) {
  const std::string golden = GoldenFile("TETRA_GSSI.txt");
  EXPECT_EQ(Load(golden), kNoError);
  EXPECT_EQ(table.size(), 5U);
  EXPECT_EQ(table[2].Label.trimmed(),
            "\xC4rzte s\xFC"
            "d");
  files.Remove(kGroupPath);
  EXPECT_EQ(run.groups.SaveGssiList(), 4);
  EXPECT_EQ(files.Content(kGroupPath), golden);
}

SsiRecord Subscriber(std::int32_t ssi, std::int32_t gssi, std::string_view label) {
  SsiRecord record;
  record.Ssi = ssi;
  record.LastGssi = gssi;
  record.Mcc = 262;
  record.Mnc = 1;
  record.Label = label;
  record.LastSeen = {2026, 11, 15, 14, 23, 5};
  return record;
}

class SubscriberListTest : public ::testing::Test {
 protected:
  ErrorNumber Load(const std::string& content) {
    files.Put(kSubscriberPath, content);
    return run.subscribers.Load();
  }
  const std::vector<std::string>& Status() const { return run.form.lstStatusLog.items(); }

  sim::SimFiles files;
  StoreRun run{files};
  SsiTable& table = run.subscriber_table;
};

TEST_F(SubscriberListTest, AMissingListIsReported) {
  EXPECT_EQ(run.subscribers.Load(), kNoError);
  EXPECT_TRUE(table.empty());
  EXPECT_EQ(Status(), Texts{"No saved SSIs to loaded"});
}

TEST_F(SubscriberListTest, EveryFieldIsRead) {
  EXPECT_EQ(Load("5010;9001;234;14;Car 10;15/11/2026 14:23:05\r\n"), kNoError);
  ASSERT_EQ(table.size(), 1U);
  EXPECT_EQ(table[0].Ssi, 5010);
  EXPECT_EQ(table[0].LastGssi, 9001);
  EXPECT_EQ(table[0].Mcc, 234);
  EXPECT_EQ(table[0].Mnc, 14);
  EXPECT_EQ(table[0].Label.trimmed(), "Car 10");
  EXPECT_EQ(table[0].LastSeen, (DateTime{2026, 11, 15, 14, 23, 5}));
  EXPECT_EQ(Status(), Texts{"Loaded 1 saved SSIs"});
}

TEST_F(SubscriberListTest, SubscribersOfOneGroupKeepTheOrderOfTheFile) {
  EXPECT_EQ(Load("5010;9001;262;1;b;2026-11-15 14:23:05\n"
                 "5002;9001;262;1;a;2026-11-15 14:23:05\n"
                 "7;9002;262;1;d;2026-11-15 14:23:05\n"
                 "5001;9001;262;1;c;2026-11-15 14:23:05\n"
                 "9;9003;1;1;first;2026-11-15 14:23:05\n"),
            kNoError);
  Texts order;
  for (const SsiRecord& record : table) order.push_back(record.Label.trimmed());
  EXPECT_EQ(order, (Texts{"first", "b", "a", "c", "d"}));
}

TEST_F(SubscriberListTest, ABadLineEndsTheReadingWithItsNumber) {
  EXPECT_EQ(Load("5010;9001;262;1;Car\r\n"), kTooFewFields);
  EXPECT_EQ(Load("#5010;9001;262;1;Car;15/11/2026 14:23:05\r\n"), kTypeMismatch);
  EXPECT_EQ(Load("5010;x;262;1;Car;15/11/2026 14:23:05\r\n"), kTypeMismatch);
  EXPECT_EQ(Load("5010;9001;262;1;Car;\r\n"), kTypeMismatch);
  EXPECT_EQ(Load("5010;9001;262;1;Car;yesterday\r\n"), kTypeMismatch);
  EXPECT_EQ(Load("5010;9001;262;1;Car;31/02/2026 00:00:00\r\n"), kTypeMismatch);
  EXPECT_EQ(Load("2147483648;9001;262;1;Car;15/11/2026 14:23:05\r\n"), kOverflow);
  EXPECT_EQ(Load("5010;9001;262;32768;Car;15/11/2026 14:23:05\r\n"), kOverflow);
  EXPECT_TRUE(table.empty());
}

TEST_F(SubscriberListTest, SavingWritesTheTableInItsOrder) {
  table.Append(Subscriber(2, 9, " B "));
  table.Append(Subscriber(1, 9, "A"));
  EXPECT_EQ(run.subscribers.SaveSsiList(), 1);
  EXPECT_EQ(files.Content(kSubscriberPath),
            "2;9;262;1;B;15/11/2026 14:23:05\r\n1;9;262;1;A;15/11/2026 14:23:05\r\n");
  EXPECT_EQ(table[0].Label.padded(), FixedLabel("B").padded());
}

TEST_F(SubscriberListTest, AnEmptyTableIsNotSaved) {
  EXPECT_EQ(run.subscribers.SaveSsiList(), 0);
  EXPECT_EQ(files.steps(), 0);
}

TEST_F(SubscriberListTest, AFailedSaveGivesMinusOneAndLeavesTheOldFile) {
  EXPECT_EQ(Load("5010;9001;262;1;Car;15/11/2026 14:23:05\r\n"), kNoError);
  const Contents before = AllFiles(files);
  table.Append(Subscriber(1, 9, "A"));
  files.SetRoom(40);
  EXPECT_EQ(run.subscribers.SaveSsiList(), -1);
  EXPECT_EQ(AllFiles(files), before);
}

TEST_F(SubscriberListTest, WhateverTheRegionalSettingsWriteTheListLoadsAgain) {
  const auto with_semicolons = [](const DateTime& time) {
    std::string text = FixedGeneralDate(time);
    text[2] = text[5] = ';';
    return text;
  };
  run.clock.SetFormat(with_semicolons, ParseFixedGeneralDate);
  table.Append(Subscriber(1, 9, "A"));
  EXPECT_EQ(run.subscribers.SaveSsiList(), 0);
  EXPECT_EQ(files.Content(kSubscriberPath), "1;9;262;1;A;2026-11-15 14:23:05\r\n");
  StoreRun next(files);
  EXPECT_EQ(next.subscribers.Load(), kNoError);
  EXPECT_EQ(next.subscriber_table[0].LastSeen, table[0].LastSeen);
}

TEST_F(SubscriberListTest, ASubscriberNeverSeenCanBeSavedAndLoaded) {
  SsiRecord record = Subscriber(1, 9, "A");
  record.LastSeen = {};
  table.Append(record);
  EXPECT_EQ(run.subscribers.SaveSsiList(), 0);
  EXPECT_EQ(files.Content(kSubscriberPath), "1;9;262;1;A;30/12/1899 00:00:00\r\n");
  StoreRun next(files);
  EXPECT_EQ(next.subscribers.Load(), kNoError);
}

TEST_F(SubscriberListTest, TheGoldenListIsReadAndWrittenToTheByte) {
  const std::string golden = GoldenFile("TETRA_SSI.txt");
  EXPECT_EQ(Load(golden), kNoError);
  EXPECT_EQ(table.size(), 4U);
  files.Remove(kSubscriberPath);
  EXPECT_EQ(run.subscribers.SaveSsiList(), 3);
  EXPECT_EQ(files.Content(kSubscriberPath), golden);
}

TEST(ParseSubscriberList, ABadLineIsAnErrorWhetherOrNotSomebodyAsksWhy) {
  const sim::SimLoop loop;
  const sim::SimClock clock(loop);
  const std::string line = "5010;9001;262;1;Car;15 listopada 2026 14:23:05\r\n";
  SsiTable table;
  std::string why_not;
  const ErrorNumber error = ParseSubscriberList(line, clock, table, &why_not);
  EXPECT_NE(error, kNoError);
  EXPECT_NE(why_not, "");
  EXPECT_EQ(ParseSubscriberList(line, clock, table, nullptr), error);
  EXPECT_TRUE(table.empty());
}

}  // namespace
}  // namespace corvane
