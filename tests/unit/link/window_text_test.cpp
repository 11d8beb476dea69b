#include "link/window_text.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

class WindowTextTest : public LinkTest {
 protected:
  void SetUp() override { windows.Add(5, 0, kStatic, "MCC:262"); }
};

TEST_F(WindowTextTest, AsksForTheLengthThenForTheTextInABufferOneLonger) {
  EXPECT_EQ(GetWindowTextOf(windows, 5), "MCC:262");
  ASSERT_EQ(windows.messages.size(), 2u);
  EXPECT_EQ(windows.messages[0].number, 14u);
  EXPECT_EQ(windows.messages[1].number, 13u);
  EXPECT_EQ(windows.last_text_buffer, 8u);
}

TEST_F(WindowTextTest, AnEmptyTextReadsAsNoText) {
  windows.At(5).text.clear();
  EXPECT_EQ(GetWindowTextOf(windows, 5), ">No text for this class<");
  EXPECT_EQ(windows.messages.size(), 1u);
}

TEST_F(WindowTextTest, NoWindowReadsAsNoTextWithoutAMessage) {
  EXPECT_EQ(GetWindowTextOf(windows, 0), ">No text for this class<");
  EXPECT_TRUE(windows.messages.empty());
}

TEST_F(WindowTextTest, AWindowThatIsGoneReadsAsNoTextAndIsNotSlow) {
  windows.Destroy(5);
  const WindowText text = ReadWindowText(windows, 5);
  EXPECT_EQ(text.text, ">No text for this class<");
  EXPECT_FALSE(text.timed_out);
}

TEST_F(WindowTextTest, AHungWindowIsToldApartFromAMissingOne) {
  windows.At(5).hung = true;
  EXPECT_TRUE(ReadWindowText(windows, 5).timed_out);
}

TEST_F(WindowTextTest, AHangBetweenTheTwoMessagesGivesAnEmptyText) {
  windows.on_message = [this](unsigned message) {
    if (message == kWmGetText) windows.At(5).hung = true;
  };
  const WindowText text = ReadWindowText(windows, 5);
  EXPECT_EQ(text.text, "");
  EXPECT_TRUE(text.timed_out);
}

TEST_F(WindowTextTest, AnEndlessTextIsCutAtTheLimit) {
  windows.At(5).text.assign(1000000, 'x');
  EXPECT_EQ(GetWindowTextOf(windows, 5).size(), kLongestWindowText);
}

class EditLineTest : public LinkTest {
 protected:
  void SetUp() override {
    windows.Add(6, 0, kEdit).lines = {"SSI:9001 D_Setup Transmission Granted Call ID:1207 ",
                                      "short", "", "last"};
  }
};

TEST_F(EditLineTest, TheLineArrivesWholeAndNothingBehindIt) {
  EXPECT_EQ(GetEditLine(windows, 6, 0), "SSI:9001 D_Setup Transmission Granted Call ID:1207 ");
  EXPECT_EQ(GetEditLine(windows, 6, 1), "short");
  EXPECT_EQ(GetEditLine(windows, 6, 3), "last");
}

TEST_F(EditLineTest, TheBufferIsAtLeastTwiceTheLine) {
  EXPECT_EQ(GetEditLine(windows, 6, 0)->size(), 51u);
  EXPECT_EQ(windows.last_line_buffer, 104u);
  (void)GetEditLine(windows, 6, 1);
  EXPECT_EQ(windows.last_line_buffer, 64u);
}

TEST_F(EditLineTest, SendsTheThreeMessagesOfALine) {
  (void)GetEditLine(windows, 6, 1);
  ASSERT_EQ(windows.messages.size(), 3u);
  EXPECT_EQ(windows.messages[0].number, 187u);
  EXPECT_EQ(windows.messages[0].w_param, 1u);
  EXPECT_EQ(windows.messages[1].number, 193u);
  EXPECT_EQ(windows.messages[1].w_param, 1000u);
  EXPECT_EQ(windows.messages[2].number, 196u);
}

TEST_F(EditLineTest, NegativeIndexMissingLineEmptyLineAndNoWindowReadAsEmpty) {
  EXPECT_EQ(GetEditLine(windows, 6, -1), "");
  EXPECT_EQ(GetEditLine(windows, 0, 1), "");
  EXPECT_TRUE(windows.messages.empty());
  EXPECT_EQ(GetEditLine(windows, 6, 99), "");
  EXPECT_EQ(GetEditLine(windows, 6, 2), "");
}

TEST_F(EditLineTest, ATimedOutReadingIsNoLineAtWhicheverMessageItHappens) {
  for (const unsigned stage : {kEmLineIndex, kEmLineLength, kEmGetLine}) {
    windows.At(6).hung = false;
    windows.on_message = [this, stage](unsigned message) {
      if (message == stage) windows.At(6).hung = true;
    };
    EXPECT_EQ(GetEditLine(windows, 6, 0), std::nullopt) << stage;
  }
}

TEST_F(EditLineTest, AnEndlessLineIsBoundedByTheSixteenBitSize) {
  windows.At(6).lines[1].assign(200000, 'x');
  windows.At(6).lines.resize(2);
  const auto line = GetEditLine(windows, 6, 1);
  ASSERT_TRUE(line);
  EXPECT_EQ(windows.last_line_buffer, 65535u);
  EXPECT_LE(line->size(), 65535u);
}

}  // namespace
}  // namespace corvane::test
