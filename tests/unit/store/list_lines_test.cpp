#include "store/list_lines.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {

std::vector<std::string> Lines(std::string_view content) {
  std::vector<std::string> lines;
  LineReader reader(content);
  std::string_view line;
  while (reader.Next(line)) lines.emplace_back(line);
  return lines;
}

TEST(LineReader, EveryKindOfLineEndEndsALine) {
  EXPECT_EQ(Lines("a\r\nb\nc\rd"), (std::vector<std::string>{"a", "b", "c", "d"}));
  EXPECT_EQ(Lines(""), std::vector<std::string>{});
  EXPECT_EQ(Lines("\r\n\r\n"), (std::vector<std::string>{"", ""}));
  EXPECT_EQ(Lines("a\r"), std::vector<std::string>{"a"});
  EXPECT_EQ(Lines("a\n\rb"), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_EQ(Lines("a\r\r\nb"), (std::vector<std::string>{"a", "", "b"}));
}

TEST(LineReader, GivesTheLinesOfTextFiles) {
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    std::string content(random() % 20, ' ');
    for (char& c : content) c = "\r\nab"[random() % 4];
    ASSERT_EQ(Lines(content), FileLines(content)) << "round " << round;
  }
}

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

}  // namespace
}  // namespace corvane
