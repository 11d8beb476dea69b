#include "archive/utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane::tools {
namespace {

TEST(Utf8, LettersOfTheCodePage) {
  EXPECT_EQ(Utf8("K\xF6ln & S\xFC"
                 "d"),
            "K\xC3\xB6ln & S\xC3\xBC"
            "d");
  EXPECT_EQ(Utf8("\x80\x99\x9F\xA0\xFF"), "\xE2\x82\xAC\xE2\x84\xA2\xC5\xB8\xC2\xA0\xC3\xBF");
  EXPECT_EQ(Utf8("\x81"), "\xC2\x81") << "a byte without a letter";
}

TEST(Utf8, TheSameTheOtherWay) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string letter(1, static_cast<char>(byte));
    EXPECT_EQ(Ansi(Utf8(letter)), letter) << byte;
  }
  EXPECT_EQ(Ansi("a\xE2\x82\xACz\xD0\x96z\xFFz"), "a\x80z?z?z");
}

TEST(Utf8, WhatJsonMayNotHold) {
  EXPECT_EQ(JsonString("a\"b\\c\n\x01"), "\"a\\\"b\\\\c\\u000a\\u0001\"");
}

TEST(Utf8, WhatCsvPutsInQuotationMarks) {
  EXPECT_EQ(CsvField("a; b"), "a; b");
  EXPECT_EQ(CsvField("a, \"b\""), "\"a, \"\"b\"\"\"");
}

}  // namespace
}  // namespace corvane::tools
