// Lines of an edit box.
#include "standin/edit_text.h"

#include <gtest/gtest.h>

namespace corvane::standin {
namespace {

TEST(EditTextTest, HasOneLineWhenItIsEmpty) {
  const EditText text;
  EXPECT_EQ(text.LineCount(), 1);
  EXPECT_EQ(text.LineIndex(0), 0);
  EXPECT_EQ(text.LineIndex(1), -1);
  EXPECT_EQ(text.LineLength(0), 0);
  EXPECT_EQ(text.Line(0), "");
}

TEST(EditTextTest, KeepsAnUnfinishedLastLine) {
  EditText text;
  text.Append("one\r\ntwo\r\n");
  EXPECT_EQ(text.LineCount(), 3);
  EXPECT_EQ(text.Line(1), "two");
  EXPECT_EQ(text.Line(2), "");
  text.Append("thr");
  text.Append("ee\r\n");
  EXPECT_EQ(text.LineCount(), 4);
  EXPECT_EQ(text.Line(2), "three");
}

TEST(EditTextTest, FindsALineEndThatArrivesInTwoParts) {
  EditText text;
  text.Append("one\r");
  EXPECT_EQ(text.LineCount(), 1);
  text.Append("\ntwo");
  EXPECT_EQ(text.LineCount(), 2);
  EXPECT_EQ(text.Line(0), "one");
  EXPECT_EQ(text.Line(1), "two");
}

TEST(EditTextTest, AnswersAboutPositions) {
  EditText text;
  text.Append("one\r\nfour\r\n");
  EXPECT_EQ(text.LineIndex(1), 5);
  EXPECT_EQ(text.LineIndex(2), 11);
  EXPECT_EQ(text.LineIndex(-1), 11);  // the caret's line
  EXPECT_EQ(text.LineIndex(-2), -1);
  EXPECT_EQ(text.LineLength(5), 4);
  EXPECT_EQ(text.LineLength(7), 4);
  EXPECT_EQ(text.LineLength(11), 0);
  EXPECT_EQ(text.LineLength(12), 0);
  EXPECT_EQ(text.LineLength(-5), 0);
}

TEST(EditTextTest, DropsWholeLinesFromTheFront) {
  EditText text;
  text.Append("aaaa\r\nbbbb\r\ncccc\r\n");
  text.KeepLast(13);
  EXPECT_EQ(text.text(), "bbbb\r\ncccc\r\n");
  EXPECT_EQ(text.LineCount(), 3);
  text.KeepLast(100);
  EXPECT_EQ(text.LineCount(), 3);
}

TEST(EditTextTest, StartsAnewWhenItIsSet) {
  EditText text;
  text.Append("a\r\nb\r\n");
  text.Set("");
  EXPECT_EQ(text.LineCount(), 1);
  text.Set("x\r\ny");
  EXPECT_EQ(text.LineCount(), 2);
  EXPECT_EQ(text.LineIndex(-1), 0);
}

}  // namespace
}  // namespace corvane::standin
