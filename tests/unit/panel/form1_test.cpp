// The main window's controls as they start: names, captions, tool tips, values.
#include "panel/form1.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "sim/trace_sink.h"

namespace corvane {

namespace {

class Form1Test : public testing::Test {
 protected:
  sim::TraceSink sink_;
  Form1 form_{sink_};
};

std::string CaptionOf(const Control& control) {
  if (const auto* label = dynamic_cast<const Label*>(&control)) return label->caption;
  if (const auto* button = dynamic_cast<const Button*>(&control)) return button->caption;
  if (const auto* box = dynamic_cast<const CheckBox*>(&control)) return box->caption;
  if (const auto* option = dynamic_cast<const OptionButton*>(&control)) return option->caption;
  if (const auto* frame = dynamic_cast<const Frame*>(&control)) return frame->caption;
  if (const auto* item = dynamic_cast<const MenuItem*>(&control)) return item->caption;
  return {};
}

const std::map<std::string, std::string> kCaptions = {
    {"fraCallDetails", "Call details"},
    {"lblGroupHold", "Group:"},
    {"Label12", "TX SSI:"},
    {"Label17", "Call ID:"},
    {"Label11", "Timeslot:"},
    {"Label8", "Carrier:"},
    {"lblManualD_Release", "Call"},
    {"cmdStartAll", "Start"},
    {"Label15", "VC SDR# Connected"},
    {"cmdSettingTab_0", "Presets"},
    {"cmdSettingTab_1", "Recording options"},
    {"cmdSettingTab_2", "Options"},
    {"cmdSettingTab_3", "Logging options"},
    {"cmdSettingTab_4", "Checkbox detection"},
    {"fraPresets", "Presets"},
    {"fraRecordingOptions", "Record options"},
    {"fraOptions", "Options"},
    {"fraLoggingOptions", "Logging options"},
    {"fraCheckboxDetection", "Checkbox detection"},
    {"lblVcVolume", "VC Volume"},
    {"lblCalcBaseFreq", "Base frequency"},
    {"lblOffset", "Offset"},
    {"optOffsets_0", "0 KHz"},
    {"optOffsets_1", "+6.25 KHz"},
    {"optOffsets_2", "-6.25 KHz"},
    {"optOffsets_3", "+12.5 KHz"},
    {"lblCallTimeout", "Call Timeout"},
    {"lblChangeToCcFrequency", "CC Park"},
    {"optRecordMode_0", "Recording OFF"},
    {"optRecordMode_1", "Record ALL calls"},
    {"optRecordMode_2", "Record select GSSIs"},
    {"chkDeleteForcedCallEndFile", "Delete forced ended call"},
    {"chkPositionSDRsharps", "Position SDR#"},
    {"chkIgnorePriority", "Ignore call priority"},
    {"chkSuppressLockoutMessages", "Suppress lockout messages"},
    {"chkSuppressSomePduMessages", "Suppress some PDU messages"},
    {"chkCreateCcVcLog", "Create CC VC log"},
    {"chkCreateEventLog", "Create event log"},
    {"chkCreateCallActivityCvsFile", "Create Call Activity CVS - NO CALLS"},
    {"cmdSetUnCheckedValue", "Set unchecked"},
    {"cmdSetCheckedValue", "Set checked"},
    {"mnuOptions", "Tools"},
    {"mnuGSSIEditor", "G/SSI Editor"},
    {"mnuCompactMode", "Compact"},
    {"mnuMCClabel", "MCC: ?"},
};

const std::map<std::string, std::string> kToolTips = {
    {"lblGroupHold", "Right click to hold a GSSI"},
    {"lblSsiLastSeen", "SSI: Last time seen"},
    {"lstCurrentSSI_Users", "List of current SSIs seen during this call"},
    {"lblTimeoutCountdown", "Value = (TimeOut Seconds / 300mS)"},
    {"lblNetworkInfo", "Current MNC,LA"},
    {"lblManualD_Release", "Click to end call"},
    {"txtVcVolume", "Volume for SDR# audio (effects record level)"},
    {"cboBaseFrequency", "Select band of operation"},
    {"txtTimeout", "Delay that timeslot is inactive before force ending a call. 1-30 seconds"},
    {"txtParkCarrier", "Park on CC frequency"},
    {"txtRecOnlyGSSI", "Add a valid GSSI and press enter"},
    {"lstRecOnlyGSSI", "Double click to remove GSSI"},
    {"chkPositionSDRsharps", "Restore SDR# to your favourite positions on startup or reset"},
    {"lblPositionSdrSharpCC", "DBL Click to set CC SDR# position"},
    {"chkCreateCallActivityCvsFile", "No calls will be heard in LOGGING mode"},
};

TEST_F(Form1Test, EveryControlHasItsCaptionAndToolTipAndNoOtherHasOne) {
  std::set<std::string> names;
  for (const Control* control : form_.Controls()) {
    const std::string name = control->name();
    EXPECT_TRUE(names.insert(name).second) << name << " twice";
    const auto caption = kCaptions.find(name);
    EXPECT_EQ(CaptionOf(*control), caption == kCaptions.end() ? "" : caption->second) << name;
    const auto tip = kToolTips.find(name);
    EXPECT_EQ(control->tool_tip.get(), tip == kToolTips.end() ? "" : tip->second) << name;
  }
  for (const auto& [name, caption] : kCaptions) EXPECT_TRUE(names.contains(name)) << name;
  for (const auto& [name, tip] : kToolTips) EXPECT_TRUE(names.contains(name)) << name;
}

TEST_F(Form1Test, StartsWithItsTitle) {
  EXPECT_EQ(form_.Window::caption.get(), "Corvane v0.99.6s");
}

TEST_F(Form1Test, StartsWithTheLastOffsetAndNoRecording) {
  for (int index = 0; index < 4; ++index) {
    EXPECT_EQ(form_.optOffsets[static_cast<std::size_t>(index)].value.get(), index == 3);
  }
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(form_.optRecordMode[static_cast<std::size_t>(index)].value.get(), index == 0);
  }
  for (const Control* control : form_.Controls()) {
    if (const auto* box = dynamic_cast<const CheckBox*>(control)) {
      EXPECT_EQ(box->value.get(), 0);
    }
  }
  EXPECT_FALSE(form_.mnuCompactMode.checked);
}

TEST_F(Form1Test, OffersNineBandsAndTheEighthFirst) {
  const auto& entries = form_.cboBaseFrequency.entries.get();
  ASSERT_EQ(entries.size(), 9U);
  EXPECT_EQ(entries.front().text, "100 MHz");
  EXPECT_EQ(entries.back().text, "900 MHz");
  EXPECT_EQ(form_.cboBaseFrequency.list_index.get(), 7);
}

TEST_F(Form1Test, StartButtonIsGreenAndTheGroupNotHeld) {
  EXPECT_EQ(form_.cmdStartAll.back_colour.get(), kStartGreen);
  EXPECT_EQ(form_.lblGroupHold.fore_colour.get(), kButtonText);
  EXPECT_EQ(form_.lblGroupHold.tag.get(), "");
  EXPECT_FALSE(form_.lblGroupHold.bold);
}

TEST_F(Form1Test, ListsHaveTheRowsThatTheWindowShows) {
  EXPECT_EQ(form_.lstCallLog.full_rows(), 21);
  EXPECT_EQ(form_.lstStatusLog.full_rows(), kStatusLogFullRows);
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

}  // namespace

}  // namespace corvane
