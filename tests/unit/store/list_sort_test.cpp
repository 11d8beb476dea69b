#include "store/list_sort.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/number_text.h"
#include "store/sort_keyed_lines.h"

namespace corvane {
namespace {

std::string Key(std::int16_t mcc, std::int16_t mnc, std::int32_t gssi) {
  const ListKey key = MakeListKey(mcc, mnc, gssi);
  return {key.data(), key.size()};
}

TEST(ListSort, KeysArePaddedWithZeros) {
  EXPECT_EQ(Key(262, 1, 9001), "02620000100009001");
  EXPECT_EQ(Key(0, 0, 0), "00000000000000000");
  EXPECT_EQ(Key(1023, 16383, 16777215), "10231638316777215");
}

TEST(ListSort, WiderNumbersPushTheRestOut) {
  EXPECT_EQ(Key(32767, 32767, 2147483647), "32767327672147483");
  EXPECT_EQ(Key(-1, 1, 9), "-0001000010000000");
  EXPECT_EQ(Key(-32768, -32768, 5), "-32768-3276800000");
  EXPECT_EQ(Key(1, 1, -2147483647 - 1), "000100001-2147483");
}

TEST(ListSort, TheOrderIsThatOfTheKeyedLines) {
  std::mt19937 random(99);
  for (int round = 0; round < 200; ++round) {
    std::vector<ListKey> keys;
    std::vector<std::string> lines;
    const std::size_t size = random() % 80;
    for (std::size_t i = 0; i < size; ++i) {
      const bool wild = random() % 8 == 0;
      const auto mcc = static_cast<std::int16_t>(wild ? random() : random() % 3);
      const auto mnc = static_cast<std::int16_t>(wild ? random() : random() % 3);
      const auto gssi = static_cast<std::int32_t>(wild ? random() : random() % 30);
      keys.push_back(MakeListKey(mcc, mnc, gssi));
      const std::string full = ZeroPadded(mcc, 4) + ZeroPadded(mnc, 5) + ZeroPadded(gssi, 8);
      lines.push_back(full.substr(0, 17) + Decimal(i));
    }
    SortKeyedLines(lines, 1, 17);
    const std::vector<std::uint32_t> order = ListOrder(keys);
    ASSERT_EQ(order.size(), size);
    for (std::size_t i = 0; i < size; ++i) {
      ASSERT_EQ(Decimal(order[i]), lines[i].substr(17)) << "round " << round;
    }
  }
}

}  // namespace
}  // namespace corvane
