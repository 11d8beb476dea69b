// One flat object, and all that is not one.
#include "standin/json_object.h"

#include <gtest/gtest.h>

#include <random>

namespace corvane::standin {
namespace {

TEST(JsonObjectTest, ReadsTextsNumbersAndTruthValues) {
  JsonObject object;
  ASSERT_TRUE(ParseJsonObject(
      " {\"a\": \"x\\\"\\\\\\n\\u0041\", \"b\" :-12.5,\"c\":true, \"d\": null}\r\n", object));
  ASSERT_EQ(object.members.size(), 4u);
  EXPECT_EQ(object.Find("A")->text, "x\"\\\nA");
  EXPECT_EQ(object.Find("b")->kind, JsonKind::kNumber);
  EXPECT_EQ(object.Find("b")->text, "-12.5");
  EXPECT_EQ(object.Find("c")->kind, JsonKind::kTruth);
  EXPECT_EQ(object.Find("d")->kind, JsonKind::kNull);
  EXPECT_EQ(object.Find("e"), nullptr);
}

class NoObjectTest : public ::testing::TestWithParam<const char*> {};

TEST_P(NoObjectTest, IsRefused) {
  JsonObject object;
  EXPECT_FALSE(ParseJsonObject(GetParam(), object));
}

INSTANTIATE_TEST_SUITE_P(All, NoObjectTest,
                         ::testing::Values("", " ", "{", "}", "{}{}", "{\"a\"}", "{\"a\":}",
                                           "{\"a\":1,}", "{\"a\":1", "{\"a\":WFM}", "{a:1}",
                                           "{\"a\":{\"b\":1}}", "{\"a\":[1]}", "{\"a\":1}x",
                                           "{\"a\":\"x}", "{\"a\":\"\\q\"}", "{\"a\":\"\\u12\"}",
                                           "{\"a\":-}", "{\"a\":1.}", "{\"a\":\"\n\"}",
                                           "{\"a\":1}{\"b\":2}", "[]", "1", "\"a\""));

TEST(JsonObjectTest, SurvivesAnyBytes) {
  std::mt19937 random(20261115);
  constexpr std::string_view kAlphabet = "{}\":,\\u0aAtruefalsn -1.e\r\n\x01\xff";
  int parsed = 0;
  for (int i = 0; i < 50000; ++i) {
    std::string text;
    for (auto left = random() % 24; left > 0; --left)
      text += kAlphabet[random() % kAlphabet.size()];
    JsonObject object;
    if (ParseJsonObject(text, object)) ++parsed;
  }
  EXPECT_LT(parsed, 50000);
}

}  // namespace
}  // namespace corvane::standin
