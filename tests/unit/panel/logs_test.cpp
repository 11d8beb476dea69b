// What every writer of a log line owes: order, limit, selection and the scroll rule.
#include "panel/logs.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "sim/trace_sink.h"

namespace corvane {

namespace {

class LogsTest : public testing::Test {
 protected:
  sim::TraceSink sink_;
  Form1 form_{sink_};
};

TEST_F(LogsTest, StatusLineIsAddedAsItIsAndNotSelected) {
  AddStatusLine(form_, "one");
  AddStatusLine(form_, "two");
  EXPECT_EQ(form_.lstStatusLog.items(), (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(form_.lstStatusLog.list_index(), -1);
}

TEST_F(LogsTest, StatusLineInViewIsSelected) {
  for (int line = 0; line < 9; ++line) AddStatusLineInView(form_, "line");
  EXPECT_EQ(form_.lstStatusLog.list_index(), 8);
  EXPECT_EQ(form_.lstStatusLog.top_index(), 9 - kStatusLogFullRows);
}

TEST_F(LogsTest, StatusLogIsClearedBeforeItGrowsBeyondItsLimit) {
  for (int line = 0; line <= kStatusLogLimit; ++line) AddStatusLine(form_, "line");
  EXPECT_EQ(form_.lstStatusLog.count(), kStatusLogLimit + 1);
  AddStatusLine(form_, "fresh");
  EXPECT_EQ(form_.lstStatusLog.items(), std::vector<std::string>{"fresh"});
}

TEST_F(LogsTest, CallLogAtItsEndFollowsEachLine) {
  for (int line = 1; line <= 200; ++line) {
    AddCallLine(form_, "line");
    EXPECT_EQ(form_.lstCallLog.top_index(), std::max(0, line - kCallLogFullRows)) << line;
    EXPECT_EQ(form_.lstCallLog.list_index(), line > kCallLogFullRows ? line - 1 : -1) << line;
  }
}

TEST_F(LogsTest, CallLogScrolledUpStaysAndFollowsAgainOnceBackAtItsEnd) {
  for (int line = 0; line < 60; ++line) AddCallLine(form_, "line");
  form_.lstCallLog.ReportTopIndex(38);
  for (int line = 0; line < 40; ++line) AddCallLine(form_, "line");
  EXPECT_EQ(form_.lstCallLog.top_index(), 38);
  form_.lstCallLog.ReportTopIndex(100 - kCallLogFullRows);
  AddCallLine(form_, "line");
  EXPECT_EQ(form_.lstCallLog.top_index(), 101 - kCallLogFullRows);
}

TEST_F(LogsTest, EmptyCallLineIsALineToo) {
  AddCallLine(form_, "");
  EXPECT_EQ(form_.lstCallLog.count(), 1);
}

TEST_F(LogsTest, LastStatusLineOfAnEmptyLogSelectsNothing) {
  ShowLastStatusLine(form_);
  EXPECT_EQ(form_.lstStatusLog.list_index(), -1);
}

TEST_F(LogsTest, RecordingShowsAsAWideRedBorder) {
  ShowRecording(form_, true);
  EXPECT_EQ(form_.ShapeBusy_state.border_colour, kRed);
  EXPECT_EQ(form_.ShapeBusy_state.border_width, 3);
  ShowRecording(form_, false);
  EXPECT_EQ(form_.ShapeBusy_state.border_colour, kWindowText);
  EXPECT_EQ(form_.ShapeBusy_state.border_width, 1);
}

}  // namespace

}  // namespace corvane
