#include "base/spare_table.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(SpareTable, AnEmptyTableHasOneSpareElement) {
  SpareTable<int> table;
  EXPECT_EQ(table.size(), 0U);
  EXPECT_EQ(table.highest_index(), 0U);
  EXPECT_EQ(table[0], 0);
}

TEST(SpareTable, AppendingFillsTheSpareElementAndGrowsByOne) {
  SpareTable<int> table;
  EXPECT_EQ(table.Append(7), 0U);
  EXPECT_EQ(table.Append(8), 1U);
  EXPECT_EQ(table.size(), 2U);
  EXPECT_EQ(table[0], 7);
  EXPECT_EQ(table[1], 8);
  EXPECT_EQ(table[2], 0);
}

TEST(SpareTable, IterationLeavesOutTheSpareElement) {
  SpareTable<int> table;
  table.Append(1);
  table.Append(2);
  int sum = 0;
  int count = 0;
  for (int value : table) {
    sum += value;
    ++count;
  }
  EXPECT_EQ(sum, 3);
  EXPECT_EQ(count, 2);
}

TEST(SpareTable, ResetLeavesTheSpareElementAlone) {
  SpareTable<int> table;
  table.Append(1);
  table.Reset();
  EXPECT_TRUE(table.empty());
  EXPECT_EQ(table[0], 0);
}

}  // namespace
}  // namespace corvane
