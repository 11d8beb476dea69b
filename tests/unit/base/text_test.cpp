#include "base/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using ::testing::ElementsAre;

TEST(Text, OnlyBlanksAreTrimmed) {
  EXPECT_EQ(Trim("  a b\t "), "a b\t");
  EXPECT_EQ(TrimRight(" a  "), " a");
  EXPECT_EQ(Trim("   "), "");
  for (std::size_t size = 0; size < 40; ++size) {
    const std::string blanks(size, ' ');
    EXPECT_EQ(Trim(blanks), "");
    EXPECT_EQ(Trim(blanks + "a  b" + blanks), "a  b") << size;
    EXPECT_EQ(TrimRight(blanks + "ab" + blanks), blanks + "ab") << size;
  }
}

TEST(Text, SplittingKeepsEmptyPieces) {
  EXPECT_THAT(Split("a;;b;", ';'), ElementsAre("a", "", "b", ""));
  EXPECT_THAT(Split("", ';'), ElementsAre(""));
}

TEST(Text, AmpersandsAreDoubledForCaptions) {
  EXPECT_EQ(ForCaption("Fire & Rescue && Co"), "Fire && Rescue &&&& Co");
}

TEST(Text, BracketsOnlyAroundALabel) {
  EXPECT_EQ(Bracketed("North"), "[North]");
  EXPECT_EQ(Bracketed(""), "");
}

TEST(Text, LettersFromAToZAreLoweredAndNoOthers) {
  EXPECT_EQ(Lowered("TETRA_mcc.TXT \xC4@[`{"), "tetra_mcc.txt \xC4@[`{");
}

TEST(Text, WordsAreTheSameInWhateverCase) {
  EXPECT_TRUE(SameWord("True", "tRUE"));
  EXPECT_TRUE(SameWord("", ""));
  EXPECT_FALSE(SameWord("True", "True "));
  EXPECT_FALSE(SameWord("[", "{"));
}

TEST(Text, TheReaderGivesEmptyLinesAndALastOneWithoutAnEnd) {
  LineReader reader("\r\r\n\n\n\rlast");
  std::vector<std::string_view> lines;
  for (std::string_view line; reader.Next(line);) lines.push_back(line);
  EXPECT_THAT(lines, ElementsAre("", "", "", "", "", "last"));
  std::string_view line = "unchanged";
  EXPECT_FALSE(reader.Next(line));
}

TEST(Text, FileLinesEndInAnyOfTheThreeWays) {
  EXPECT_THAT(FileLines("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(FileLines("a\r\n\r\nb\r\n"), ElementsAre("a", "", "b"));
  EXPECT_TRUE(FileLines("").empty());
}

}  // namespace
}  // namespace corvane
