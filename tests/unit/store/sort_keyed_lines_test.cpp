#include "store/sort_keyed_lines.h"

#include <gtest/gtest.h>

#include <random>

namespace corvane {
namespace {

// The exchange sort whose result the program's own must have.
void ExchangeSort(std::vector<std::string>& lines, std::size_t start, std::size_t length) {
  const auto key = [&](const std::string& line) {
    return start > line.size() ? std::string() : line.substr(start - 1, length);
  };
  for (std::size_t pass = 1; pass < lines.size(); ++pass) {
    for (std::size_t j = 0; j + 1 < lines.size(); ++j) {
      if (key(lines[j]) > key(lines[j + 1])) std::swap(lines[j], lines[j + 1]);
    }
  }
}

TEST(SortKeyedLines, OrdersByTheKeyAlone) {
  std::vector<std::string> lines = {"x2b", "x1c", "x2a", "x0z"};
  SortKeyedLines(lines, 2, 1);
  EXPECT_EQ(lines, (std::vector<std::string>{"x0z", "x1c", "x2b", "x2a"}));
}

TEST(SortKeyedLines, ComparesBytesWithoutASign) {
  std::vector<std::string> lines = {"\xFF", "\x80", "a", "B", "\x01"};
  SortKeyedLines(lines, 1, 17);
  EXPECT_EQ(lines, (std::vector<std::string>{"\x01", "B", "a", "\x80", "\xFF"}));
}

TEST(SortKeyedLines, LinesShorterThanTheKeyComeFirst) {
  std::vector<std::string> lines = {"abc", "ab", "", "a"};
  SortKeyedLines(lines, 2, 5);
  EXPECT_EQ(lines, (std::vector<std::string>{"", "a", "ab", "abc"}));
}

TEST(SortKeyedLines, NothingAndOneLineStay) {
  std::vector<std::string> none;
  SortKeyedLines(none, 1, 17);
  EXPECT_TRUE(none.empty());
  std::vector<std::string> one = {"one"};
  SortKeyedLines(one, 1, 17);
  EXPECT_EQ(one, std::vector<std::string>{"one"});
}

TEST(SortKeyedLines, EqualsTheExchangeSortOnRandomLines) {
  std::mt19937 random(4711);
  for (int round = 0; round < 400; ++round) {
    std::vector<std::string> lines(random() % 60);
    // Few letters and short keys make many equal keys with different rests.
    const unsigned letters = 1 + static_cast<unsigned>(random() % 4);
    for (std::string& line : lines) {
      line.resize(random() % 24);
      for (char& c : line) c = static_cast<char>(random() % 5 == 0 ? random() : random() % letters);
    }
    std::vector<std::string> expected = lines;
    const std::size_t start = 1 + random() % 4;
    const std::size_t length = random() % 20;
    ExchangeSort(expected, start, length);
    SortKeyedLines(lines, start, length);
    ASSERT_EQ(lines, expected) << "round " << round;
  }
}

}  // namespace
}  // namespace corvane
