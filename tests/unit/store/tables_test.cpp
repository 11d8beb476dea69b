#include "store/tables.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace corvane {
namespace {

TEST(GssiTable, FindsWhatASearchFromTheFirstRecordFinds) {
  std::mt19937 random(5);
  GssiTable table;
  for (int i = 0; i < 500; ++i) {
    GssiRecord record;
    record.Gssi = static_cast<std::int32_t>(random() % 20) - 2;
    record.Mcc = static_cast<std::int16_t>(random() % 3);
    record.Mnc = static_cast<std::int16_t>(static_cast<int>(random() % 3) - 1);
    table.Append(record);
  }
  for (std::int32_t gssi = -3; gssi < 20; ++gssi) {
    for (std::int32_t mcc = -1; mcc < 4; ++mcc) {
      for (std::int32_t mnc = -2; mnc < 3; ++mnc) {
        std::optional<std::size_t> expected;
        for (std::size_t i = table.size(); i > 0; --i) {
          const GssiRecord& record = table[i - 1];
          if (record.Gssi == gssi && record.Mcc == mcc && record.Mnc == mnc) expected = i - 1;
        }
        ASSERT_EQ(table.Find(mcc, mnc, gssi), expected) << mcc << ' ' << mnc << ' ' << gssi;
      }
    }
  }
}

TEST(SsiTable, ASubscriberHasOneRecordPerGroupAndNetwork) {
  SsiTable table;
  SsiRecord record;
  record.Ssi = 5010;
  record.LastGssi = 9001;
  record.Mcc = 262;
  record.Mnc = 1;
  EXPECT_EQ(table.Append(record), 0U);
  record.LastGssi = 9002;
  EXPECT_EQ(table.Append(record), 1U);
  record.Mnc = 2;
  EXPECT_EQ(table.Append(record), 2U);
  EXPECT_EQ(table.Find(262, 1, 9001, 5010), 0U);
  EXPECT_EQ(table.Find(262, 1, 9002, 5010), 1U);
  EXPECT_EQ(table.Find(262, 2, 9002, 5010), 2U);
  EXPECT_EQ(table.Find(262, 2, 9001, 5010), std::nullopt);
  EXPECT_EQ(table.Find(1, 1, 9001, 5010), std::nullopt);
}

TEST(Tables, NetworkCodesThatNoRecordCanHoldAreNotFound) {
  GssiTable groups;
  SsiTable subscribers;
  groups.Append(GssiRecord());
  subscribers.Append(SsiRecord());
  EXPECT_EQ(groups.Find(65536, 0, 0), std::nullopt);
  EXPECT_EQ(groups.Find(0, 65536, 0), std::nullopt);
  EXPECT_EQ(groups.Find(-65536, 0, 0), std::nullopt);
  EXPECT_EQ(groups.Find(0, -65536, 0), std::nullopt);
  EXPECT_EQ(subscribers.Find(0, -65536, 0, 0), std::nullopt);
  EXPECT_EQ(subscribers.Find(65536, 0, 0, 0), std::nullopt);
}

TEST(Tables, NetworkCodesAtTheEndsOfARecordsRangeAreFound) {
  constexpr std::int16_t kEnds[] = {-32768, 32767};
  for (const std::int16_t end : kEnds) {
    GssiTable groups;
    GssiRecord group;
    group.Mcc = group.Mnc = end;
    groups.Append(group);
    EXPECT_EQ(groups.Find(end, end, 0), 0U) << end;
  }
}

TEST(Tables, OneSpareElementIsAlwaysBehindTheRecords) {
  GssiTable table;
  EXPECT_EQ(table.highest_index(), 0U);
  GssiRecord record;
  record.Gssi = 9;
  table.Append(record);
  EXPECT_EQ(table.highest_index(), 1U);
  EXPECT_EQ(table[1].Gssi, 0);
  table.Reset();
  EXPECT_EQ(table.highest_index(), 0U);
  EXPECT_EQ(table.Find(0, 0, 9), std::nullopt);
}

TEST(CallCounts, CountsPerGroup) {
  CallCounts counts;
  counts.Count(9);
  counts.Count(7);
  counts.Count(9);
  counts.Count(9, 5);
  ASSERT_EQ(counts.size(), 2U);
  EXPECT_EQ(counts[0].Gssi, 9);
  EXPECT_EQ(counts[0].Calls, 7);
  EXPECT_EQ(counts[1].Calls, 1);
}

TEST(CallCounts, CountsStopAtTheEndsOfTheNumbers) {
  constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
  CallCounts counts;
  counts.Count(9, kHighest);
  counts.Count(9);
  EXPECT_EQ(counts[0].Calls, kHighest);
  counts.Count(8, kLowest);
  counts.Count(8, kLowest);
  EXPECT_EQ(counts[1].Calls, kLowest);
}

}  // namespace
}  // namespace corvane
