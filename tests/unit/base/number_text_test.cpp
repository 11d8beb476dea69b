#include "base/number_text.h"

#include <cstdint>

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(NumberText, PlainDecimalIsRead) {
  EXPECT_EQ(ParseDecimal<std::int32_t>("9001"), 9001);
  EXPECT_EQ(ParseDecimal<std::int32_t>("-5"), -5);
  EXPECT_EQ(ParseDecimal<std::int16_t>("007"), 7);
}

TEST(NumberText, AnythingElseIsRefused) {
  for (const char* text : {"", " 1", "1 ", "+1", "1.5", "0x10", "1e3", "x", "--1", "-"}) {
    EXPECT_FALSE(ParseDecimal<std::int32_t>(text)) << text;
  }
  EXPECT_FALSE(ParseDecimal<std::uint16_t>("-1"));
}

TEST(NumberText, OverflowIsRefusedButStillANumber) {
  EXPECT_EQ(ParseDecimal<std::int16_t>("32767"), 32767);
  EXPECT_FALSE(ParseDecimal<std::int16_t>("32768"));
  EXPECT_FALSE(ParseDecimal<std::int32_t>("99999999999999999999"));
  EXPECT_TRUE(IsDecimal("99999999999999999999"));
  EXPECT_TRUE(IsDecimal("-1"));
  EXPECT_FALSE(IsDecimal("-"));
  EXPECT_FALSE(IsDecimal("1a"));
}

TEST(NumberText, ShownNumbersMayHaveBlanksAround) {
  EXPECT_EQ(ParseShown<std::int32_t>(" 9001"), 9001);
  EXPECT_EQ(ParseShown<std::int32_t>("  9001 "), 9001);
  EXPECT_FALSE(ParseShown<std::int32_t>(" 90 01"));
  EXPECT_FALSE(ParseShown<std::int32_t>("  "));
}

TEST(NumberText, PaddingCountsDigitsOnly) {
  EXPECT_EQ(ZeroPadded(42, 5), "00042");
  EXPECT_EQ(ZeroPadded(123456, 5), "123456");
  EXPECT_EQ(ZeroPadded(-7, 3), "-007");
}

}  // namespace
}  // namespace corvane
