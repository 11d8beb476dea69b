// The main window's controls as they start: values, colours, rows, and where the focus goes.
#include "panel/form1.h"

#include <gtest/gtest.h>

#include "sim/trace_sink.h"

namespace corvane {

namespace {

class Form1Test : public testing::Test {
 protected:
  sim::TraceSink sink_;
  Form1 form_{sink_};
};

TEST_F(Form1Test, StartsWithItsTitle) {
  EXPECT_EQ(form_.caption, "Corvane v0.99.6s");
}

TEST_F(Form1Test, StartsWithTheLastOffsetAndNoRecording) {
  for (int index = 0; index < 4; ++index) {
    EXPECT_EQ(form_.optOffsets[static_cast<std::size_t>(index)].value.get(), index == 3);
  }
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(form_.optRecordMode[static_cast<std::size_t>(index)].value.get(), index == 0);
  }
  for (const CheckBox* box :
       {&form_.chkPositionSDRsharps, &form_.chkIgnorePriority, &form_.chkSuppressLockoutMessages,
        &form_.chkSuppressSomePduMessages, &form_.chkCreateCcVcLog, &form_.chkCreateEventLog,
        &form_.chkCreateCallActivityCvsFile, &form_.chkDeleteForcedCallEndFile}) {
    EXPECT_EQ(box->value, 0) << box->name();
  }
  EXPECT_FALSE(form_.mnuCompactMode.checked);
}

TEST_F(Form1Test, OffersNineBandsAndTheEighthFirst) {
  const auto& entries = form_.cboBaseFrequency.entries.get();
  ASSERT_EQ(entries.size(), 9U);
  EXPECT_EQ(entries.front().text, "100 MHz");
  EXPECT_EQ(entries.back().text, "900 MHz");
  EXPECT_EQ(form_.cboBaseFrequency.list_index, 7);
}

TEST_F(Form1Test, StartButtonIsGreenAndTheGroupNotHeld) {
  EXPECT_EQ(form_.cmdStartAll.back_colour, kStartGreen);
  EXPECT_EQ(form_.lblGroupHold.fore_colour, kButtonText);
  EXPECT_EQ(form_.lblGroupHold.tag, "");
  EXPECT_FALSE(form_.lblGroupHold.bold);
}

TEST_F(Form1Test, ListsHaveTheRowsThatTheWindowShows) {
  EXPECT_EQ(form_.lstCallLog.full_rows(), 21);
  EXPECT_EQ(form_.lstStatusLog.full_rows(), kStatusLogFullRows);
}

TEST_F(Form1Test, RecordOnlyControlsCanBeUsedForSelectedGroupsAlone) {
  for (const std::size_t mode : {2U, 1U, 2U, 0U}) {
    for (std::size_t option = 0; option < form_.optRecordMode.size(); ++option) {
      form_.optRecordMode[option].value = option == mode;
    }
    EnableRecOnlyControls(form_);
    EXPECT_EQ(form_.txtRecOnlyGSSI.enabled, mode == 2);
    EXPECT_EQ(form_.lstRecOnlyGSSI.enabled, mode == 2);
  }
}

TEST_F(Form1Test, FocusGoesToAControlThatCanTakeItElseToTheCallLog) {
  SetFocus(form_, form_.lstStatusLog);
  EXPECT_EQ(sink_.focus(), "lstStatusLog");
  form_.fraWinsock.visible = false;
  SetFocus(form_, form_.lstStatusLog);
  EXPECT_EQ(sink_.focus(), "lstCallLog");
  form_.fraWinsock.visible = true;
  form_.lstStatusLog.enabled = false;
  SetFocus(form_, form_.lstStatusLog);
  EXPECT_EQ(sink_.focus(), "lstCallLog");
  form_.txtTimeout.visible = false;
  SetFocus(form_, form_.txtTimeout);
  EXPECT_EQ(sink_.focus(), "lstCallLog");
}

TEST_F(Form1Test, FocusStaysInTheCallDetailsWhileTheRestIsNotSeen) {
  form_.mnuCompactMode.checked = true;
  for (const Control* control : {static_cast<const Control*>(&form_.lstCallLog),
                                 static_cast<const Control*>(&form_.lstStatusLog),
                                 static_cast<const Control*>(&form_.txtTimeout)}) {
    SetFocus(form_, *control);
    EXPECT_EQ(sink_.focus(), "lstCurrentSSI_Users") << control->name();
    SetFocus(form_, form_.lstCurrentSSI_Users);
    EXPECT_EQ(sink_.focus(), "lstCurrentSSI_Users");
  }
  form_.mnuCompactMode.checked = false;
  SetFocus(form_, form_.lstStatusLog);
  EXPECT_EQ(sink_.focus(), "lstStatusLog");
}

}  // namespace

}  // namespace corvane
