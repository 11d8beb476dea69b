#include "store/labels.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(LabelLines, KeepsLinesAsTheyAre) {
  LabelLines labels(2);
  EXPECT_EQ(labels.size(), 0U);
  labels.Append("262;1; Blue net ;extra");
  EXPECT_EQ(labels.size(), 1U);
  EXPECT_EQ(labels[0], "262;1; Blue net ;extra");
}

TEST(LabelLines, ALabelIsTheFieldBehindTheKey) {
  LabelLines labels(2);
  labels.Append("262;1;Blue net;extra");
  labels.Append("262;2;");
  labels.Append("262;3");
  EXPECT_EQ(labels.Find("262;1"), "Blue net");
  EXPECT_EQ(labels.Find("262;2"), "");
  EXPECT_EQ(labels.Find("262;3"), "") << "a line without a label has an empty one";
  EXPECT_EQ(labels.Find("262;4"), std::nullopt);
}

TEST(LabelLines, NumbersAreComparedAsText) {
  LabelLines labels(1);
  labels.Append("0262;Zero");
  labels.Append(" 262;Blank");
  EXPECT_EQ(labels.Find("262"), std::nullopt);
  EXPECT_EQ(labels.Find("0262"), "Zero");
}

TEST(LabelLines, TheFirstOfSeveralLinesWins) {
  LabelLines labels(3);
  labels.Append("262;1;100;First");
  labels.Append("262;1;100;Second");
  EXPECT_EQ(labels.Find("262;1;100"), "First");
}

TEST(LabelLines, ResetForgetsEverything) {
  LabelLines labels(1);
  labels.Append("262;Land");
  labels.Reset();
  EXPECT_EQ(labels.size(), 0U);
  EXPECT_EQ(labels.Find("262"), std::nullopt);
  labels.Append("262;Other");
  EXPECT_EQ(labels.Find("262"), "Other");
}

TEST(LabelLines, AKeyIsNeverAPartOfAField) {
  LabelLines labels(2);
  labels.Append("26;21;Wrong");
  EXPECT_EQ(labels.Find("26;2"), std::nullopt);
  EXPECT_EQ(labels.Find("26"), std::nullopt);
  EXPECT_EQ(labels.Find(""), std::nullopt);
}

}  // namespace
}  // namespace corvane
