#include "store/label_text.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

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

}  // namespace
}  // namespace corvane
