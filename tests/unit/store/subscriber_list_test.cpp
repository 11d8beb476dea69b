#include "store/subscriber_list.h"

#include <gtest/gtest.h>

#include "tests/unit/store/golden_files.h"
#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

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
    files.content[kSubscriberPath] = content;
    return run.subscribers.Load();
  }
  const std::vector<std::string>& Status() const { return run.form.lstStatusLog.items(); }

  MemoryFiles files;
  StoreRun run{files};
  SsiTable& table = run.subscriber_table;
};

using Texts = std::vector<std::string>;

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
  EXPECT_EQ(files.content[kSubscriberPath],
            "2;9;262;1;B;15/11/2026 14:23:05\r\n1;9;262;1;A;15/11/2026 14:23:05\r\n");
  EXPECT_EQ(table[0].Label.padded(), FixedLabel("B").padded());
}

TEST_F(SubscriberListTest, AnEmptyTableIsNotSaved) {
  EXPECT_EQ(run.subscribers.SaveSsiList(), 0);
  EXPECT_EQ(files.operations, 0);
}

TEST_F(SubscriberListTest, AFailedSaveGivesMinusOneAndLeavesTheOldFile) {
  EXPECT_EQ(Load("5010;9001;262;1;Car;15/11/2026 14:23:05\r\n"), kNoError);
  const auto before = files.content;
  table.Append(Subscriber(1, 9, "A"));
  files.room = 40;
  EXPECT_EQ(run.subscribers.SaveSsiList(), -1);
  EXPECT_EQ(files.content, before);
}

TEST_F(SubscriberListTest, WhateverTheRegionalSettingsWriteTheListLoadsAgain) {
  run.clock.general_date = [](const DateTime& time) {
    std::string text = FixedGeneralDate(time);
    text[2] = text[5] = ';';
    return text;
  };
  table.Append(Subscriber(1, 9, "A"));
  EXPECT_EQ(run.subscribers.SaveSsiList(), 0);
  EXPECT_EQ(files.content[kSubscriberPath], "1;9;262;1;A;2026-11-15 14:23:05\r\n");
  StoreRun next(files);
  EXPECT_EQ(next.subscribers.Load(), kNoError);
  EXPECT_EQ(next.subscriber_table[0].LastSeen, table[0].LastSeen);
}

TEST_F(SubscriberListTest, ASubscriberNeverSeenCanBeSavedAndLoaded) {
  SsiRecord record = Subscriber(1, 9, "A");
  record.LastSeen = {};
  table.Append(record);
  EXPECT_EQ(run.subscribers.SaveSsiList(), 0);
  EXPECT_EQ(files.content[kSubscriberPath], "1;9;262;1;A;30/12/1899 00:00:00\r\n");
  StoreRun next(files);
  EXPECT_EQ(next.subscribers.Load(), kNoError);
}

TEST_F(SubscriberListTest, TheGoldenListIsReadAndWrittenToTheByte) {
  const std::string golden = GoldenFile("TETRA_SSI.txt");
  EXPECT_EQ(Load(golden), kNoError);
  EXPECT_EQ(table.size(), 4U);
  files.content.clear();
  EXPECT_EQ(run.subscribers.SaveSsiList(), 3);
  EXPECT_EQ(files.content[kSubscriberPath], golden);
}

}  // namespace
}  // namespace corvane
