#include "base/number_text.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <system_error>

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

template <typename Int>
std::optional<Int> SlowParse(const std::string& text) {
  Int value{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (text.empty() || result.ec != std::errc{} || result.ptr != end) return std::nullopt;
  return value;
}

TEST(NumberText, ParsesAsTheStandardLibraryDoes) {
  std::mt19937 random(20261115);
  int parsed = 0;
  for (int round = 0; round < 100'000; ++round) {
    std::string text;
    for (auto size = random() % 12; size > 0; --size) {
      text += random() % 30 > 0 ? "0123456789"[random() % 10] : "-+ x/:"[random() % 6];
    }
    if (random() % 8 == 0) text.insert(0, "-");
    ASSERT_EQ(ParseDecimal<std::int32_t>(text), SlowParse<std::int32_t>(text)) << text;
    ASSERT_EQ(ParseDecimal<std::int16_t>(text), SlowParse<std::int16_t>(text)) << text;
    ASSERT_EQ(ParseDecimal<std::uint16_t>(text), SlowParse<std::uint16_t>(text)) << text;
    ASSERT_EQ(ParseDecimal<std::uint64_t>(text), SlowParse<std::uint64_t>(text)) << text;
    parsed += ParseDecimal<std::int32_t>(text).has_value() ? 1 : 0;
  }
  EXPECT_GT(parsed, 10'000);
}

TEST(NumberText, AppendsWhatDecimalGives) {
  for (const std::int64_t value :
       {std::int64_t{0}, std::int64_t{-1}, std::int64_t{7}, std::int64_t{1207},
        std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}) {
    std::string text = "x";
    AppendDecimal(text, value);
    AppendDecimal(text, static_cast<std::int16_t>(value));
    EXPECT_EQ(text, "x" + Decimal(value) + Decimal(static_cast<std::int16_t>(value)));
  }
}

}  // namespace
}  // namespace corvane
