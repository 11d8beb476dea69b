#include "store/list_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number_text.h"

namespace corvane {
namespace {

TEST(SplitFields, FurtherFieldsAreIgnored) {
  std::array<std::string_view, 2> fields;
  EXPECT_TRUE(SplitFields("1;2;3", fields));
  EXPECT_EQ(fields[0], "1");
  EXPECT_EQ(fields[1], "2");
  EXPECT_TRUE(SplitFields(";", fields));
  EXPECT_EQ(fields[0], "");
  EXPECT_EQ(fields[1], "");
}

TEST(SplitFields, TooFewFieldsAreRefused) {
  std::array<std::string_view, 2> two;
  EXPECT_FALSE(SplitFields("1", two));
  EXPECT_FALSE(SplitFields("", two));
  std::array<std::string_view, 1> one;
  EXPECT_TRUE(SplitFields("", one));
}

TEST(IsNumeric, TakesDigitsWithASignAndBlanks) {
  for (const char* text : {"0", "262", "-5", " 262 ", "0262", "99999999999999999999999"}) {
    EXPECT_TRUE(IsNumeric(text)) << text;
  }
  for (const char* text :
       {"", " ", "-", "+5", "1.5", "1e3", "&H10", "1,000", "2 6", "--1", "12a"}) {
    EXPECT_FALSE(IsNumeric(text)) << text;
  }
}

TEST(IsNumberBelow, HasNoLowerBound) {
  EXPECT_TRUE(IsNumberBelow("998", 999));
  EXPECT_FALSE(IsNumberBelow("999", 999));
  EXPECT_TRUE(IsNumberBelow("-1", 999));
  EXPECT_TRUE(IsNumberBelow("-99999999999999999999999", 999));
  EXPECT_FALSE(IsNumberBelow("99999999999999999999999", 999));
  EXPECT_FALSE(IsNumberBelow("x", 999));
  EXPECT_FALSE(IsNumberBelow("", 999));
}

TEST(ReadNumber, TellsMisspellingFromOverflow) {
  std::int16_t value = 7;
  EXPECT_EQ(ReadNumber("32767", value), kNoError);
  EXPECT_EQ(value, 32767);
  EXPECT_EQ(ReadNumber(" -32768 ", value), kNoError);
  EXPECT_EQ(value, -32768);
  EXPECT_EQ(ReadNumber("32768", value), kOverflow);
  EXPECT_EQ(ReadNumber("-32769", value), kOverflow);
  EXPECT_EQ(ReadNumber("999999999999999999999999", value), kOverflow);
  EXPECT_EQ(ReadNumber("", value), kTypeMismatch);
  EXPECT_EQ(ReadNumber("12x", value), kTypeMismatch);
  EXPECT_EQ(ReadNumber(std::string_view("1\0", 2), value), kTypeMismatch);
  EXPECT_EQ(value, -32768) << "a failure leaves the value";
}

TEST(LabelText, WhatWouldBreakALineIsDropped) {
  EXPECT_EQ(CleanLabel("Police; north"), "Police north");
  EXPECT_EQ(CleanLabel("a\r\nb\tc"), "abc");
  EXPECT_EQ(CleanLabel(std::string("x\0y", 3)), "xy");
  EXPECT_EQ(CleanLabel("\xC4rzte & Co #1 'a'"), "\xC4rzte & Co #1 'a'");
  EXPECT_EQ(CleanLabel(""), "");
}

TEST(LabelText, AStoredLabelHasNoBlanksInFront) {
  EXPECT_EQ(StoredLabel(FixedLabel("  Fire ")).padded(), FixedLabel("Fire").padded());
  EXPECT_EQ(StoredLabel(FixedLabel("Fire")).padded(), FixedLabel("Fire").padded());
  EXPECT_EQ(StoredLabel(FixedLabel("a;b")).padded(), FixedLabel("ab").padded());
  EXPECT_EQ(StoredLabel(FixedLabel("\t x")).padded(), FixedLabel("x").padded());
  EXPECT_EQ(StoredLabel(FixedLabel("")).padded(), FixedLabel("").padded());
}

TEST(LabelText, ALabelIsCutAtThirtyBytes) {
  EXPECT_EQ(FixedLabel(std::string(40, 'x')).trimmed(), std::string(30, 'x'));
  EXPECT_EQ(FixedLabel("short").padded().size(), 30U);
}

TEST(LabelText, NumbersArePlainDecimal) {
  std::string line;
  AppendNumber(line, 0, ';');
  AppendNumber(line, -2147483647 - 1, ';');
  AppendNumber(line, 16777215, '!');
  EXPECT_EQ(line, "0;-2147483648;16777215!");
}

TEST(LabelText, ALabelInALineIsCleanAndTrimmed) {
  std::string line = "9001;";
  AppendLabel(line, FixedLabel("  Fire; \n north  "));
  EXPECT_EQ(line, "9001;Fire  north");
}

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
