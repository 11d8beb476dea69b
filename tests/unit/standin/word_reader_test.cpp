// Lines as words, times.
#include "standin/word_reader.h"

#include <gtest/gtest.h>

namespace corvane::standin {
namespace {

TEST(SplitWordsTest, ReadsNamesQuotesAndEscapes) {
  std::vector<Word> words;
  ASSERT_EQ(SplitWords("line \"a \\\"b\\\\\\t\\x41\" count=\"7\"\t# rest", words), "");
  ASSERT_EQ(words.size(), 3u);
  EXPECT_EQ(words[1].value, "a \"b\\\tA");
  EXPECT_TRUE(words[1].quoted);
  EXPECT_EQ(words[2].name, "count");
  EXPECT_EQ(words[2].value, "7");
}

TEST(SplitWordsTest, RefusesBrokenQuotesAndEndlessLines) {
  std::vector<Word> words;
  EXPECT_EQ(SplitWords("line \"abc", words), "the closing quote is missing");
  EXPECT_EQ(SplitWords("line \"abc\\", words), "the closing quote is missing");
  EXPECT_EQ(SplitWords("line \"a\"b", words), "a blank is missing behind the closing quote");
  EXPECT_EQ(SplitWords("line \"\\q\"", words), "unknown escape \\q");
  EXPECT_EQ(SplitWords("line \"\\x4\"", words), "\\x needs two hexadecimal digits");
  EXPECT_EQ(SplitWords(std::string(kMaxLineBytes + 1, 'x'), words),
            "the line is longer than 4096 characters");
}

TEST(ParseTimeTest, ReadsTimes) {
  const struct {
    const char* text;
    std::int64_t ms;
  } good[] = {{"0", 0},        {"2.5", 2500},        {"0.001", 1},     {"90", 90000},
              {"1:30", 90000}, {"1:02:03", 3723000}, {"0:00.25", 250}, {"600:00:00", 2160000000}};
  for (const auto& [text, expected] : good) {
    std::int64_t ms = -1;
    EXPECT_TRUE(ParseTime(text, ms)) << text;
    EXPECT_EQ(ms, expected) << text;
  }
  for (const char* text : {"", ".", "1.", ".5", "1.0000", "-1", "1:60", "1:2:3:4", "1:60:00",
                           "1:-1", "x", "4294967296", "1 2", "1e3"}) {
    std::int64_t ms = -1;
    EXPECT_FALSE(ParseTime(text, ms)) << text;
  }
}

}  // namespace
}  // namespace corvane::standin
