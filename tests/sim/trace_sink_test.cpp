// The lines of the trace, and the scrolling of a list as a real one does it.
#include "sim/trace_sink.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel/form1.h"
#include "panel/logs.h"
#include "sim/sim_prompts.h"

namespace corvane::sim {
namespace {

using Lines = std::vector<std::string>;

class TraceSinkTest : public ::testing::Test {
 protected:
  TraceSinkTest() { static_cast<void>(sink_.Take()); }
  TraceSink sink_;
  Form1 form_{sink_};
};

TEST_F(TraceSinkTest, WritesEveryKindOfValue) {
  form_.lblCallID.caption = std::string(" 1207");
  form_.lblGroupHold.fore_colour = kHoldOrange;
  form_.cmdStartAll.enabled = false;
  form_.lblGroupHold.tag = std::string("9001");
  form_.txtTimeout.text = std::string("7");
  form_.chkIgnorePriority.value = 1;
  form_.optOffsets[1].value = !form_.optOffsets[1].value.get();
  form_.fraCallDetails.corner = {0, 120};
  form_.ShapeBusy_state.border_width = 3;
  form_.mnuCompactMode.checked = true;
  form_.cboBaseFrequency.entries = {{"100 MHz", 0}, {"200 MHz", 1}};
  form_.cboBaseFrequency.list_index = 1;
  EXPECT_EQ(sink_.Take(),
            (Lines{"lblCallID.caption = \" 1207\"", "lblGroupHold.fore_colour = 0x0080FF",
                   "cmdStartAll.enabled = False", "lblGroupHold.tag = \"9001\"",
                   "txtTimeout.text = \"7\"", "chkIgnorePriority.value = 1",
                   "optOffsets_1.value = True", "fraCallDetails.bounds = 0, 120",
                   "ShapeBusy_state.border_width = 3", "mnuCompactMode.checked = True",
                   "cboBaseFrequency.items = \"100 MHz\" (0), \"200 MHz\" (1)",
                   "cboBaseFrequency.list_index = 1"}));
}

TEST_F(TraceSinkTest, WritesListsAndTheFocus) {
  form_.lstCallLog.Add("one");
  form_.lstCallLog.Add("two");
  form_.lstCallLog.Replace(0, "1");
  form_.lstCallLog.Select(1);
  form_.lstCallLog.Remove(0);
  form_.lstCallLog.Clear();
  SetFocus(form_, form_.lstCallLog);
  EXPECT_EQ(sink_.Take(), (Lines{"lstCallLog.add 0 \"one\"", "lstCallLog.add 1 \"two\"",
                                 "lstCallLog.replace 0 \"1\"", "lstCallLog.list_index = 1",
                                 "lstCallLog.remove 0", "lstCallLog.clear", "focus lstCallLog"}));
  EXPECT_EQ(sink_.focus(), "lstCallLog");
}

TEST_F(TraceSinkTest, CountsWithoutWritingWhenSwitchedOff) {
  const std::size_t before = sink_.changes();
  sink_.SetRecording(false);
  form_.lblCallID.caption = std::string("x");
  form_.lstCallLog.Add("one");
  EXPECT_EQ(sink_.changes(), before + 2);
  EXPECT_TRUE(sink_.lines().empty());
}

TEST_F(TraceSinkTest, ALogThatIsShownToItsEndScrollsAlongAndAnotherDoesNot) {
  for (int i = 0; i < 60; ++i) AddCallLine(form_, "line");
  EXPECT_EQ(form_.lstCallLog.top_index(), 60 - kCallLogFullRows);
  form_.lstCallLog.ReportTopIndex(10);
  AddCallLine(form_, "line");
  EXPECT_EQ(form_.lstCallLog.top_index(), 10);
}

TEST(SimPrompts, ABoxIsOpenForItsTimeAndTheEndStopsTheLoop) {
  SimLoop loop;
  SimPrompts prompts(loop);
  int ticks = 0;
  int open = 0;
  const auto timer = loop.MakeTimer(100, [&] { ++ticks; });
  timer->SetEnabled(true);
  prompts.SetOpenMs(1000);
  prompts.SetWhileOpen([&](const SimPrompts::Box& box) {
    open = prompts.open_now();
    EXPECT_EQ(box.title, "title");
  });
  prompts.ShowBox("text", "title", BoxIcon::kCritical);
  EXPECT_EQ(ticks, 10);
  EXPECT_EQ(open, 1);
  EXPECT_EQ(prompts.open_now(), 0);
  bool told = false;
  prompts.SetOnEnd([&] { told = true; });
  prompts.EndProgram();
  EXPECT_TRUE(prompts.ended() && told && loop.stopped());
  loop.AdvanceMs(1000);
  EXPECT_EQ(ticks, 10);
}

}  // namespace
}  // namespace corvane::sim
