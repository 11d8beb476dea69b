// The main window's table: every control of the form once, with its caption and tool tip, in the
// order of the tab key.
#include "ui/main_layout.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "sim/no_sink.h"

namespace corvane {

namespace {

class MainLayoutTest : public testing::Test {
 protected:
  sim::NoSink sink_;
  Form1 form_{sink_};
  const WindowTable table_ = MainWindowTable(form_);
};

const std::map<std::string, std::string> kCaptions = {
    {"fraCallDetails", "Call details"},
    {"lblGroupHold", "Group:"},
    {"Label12", "TX SSI:"},
    {"lblLastSeenCaption", "Last seen:"},
    {"Label17", "Call ID:"},
    {"Label11", "Timeslot:"},
    {"Label8", "Carrier:"},
    {"lblCountdownCaption", "Silent call ends in (x 0.3 s):"},
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
    {"mnuEditShown", "Edit group on screen"},
    {"mnuEndCall", "End call"},
    {"mnuParkOnCC", "Park on CC"},
    {"mnuCapturePosition", "Set CC SDR# position"},
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

TEST_F(MainLayoutTest, EveryControlHasItsCaptionAndToolTipAndNoOtherHasOne) {
  std::set<std::string> names;
  for (const Control* control : table_.AllControls()) {
    const std::string name = control->name();
    EXPECT_TRUE(names.insert(name).second) << name << " twice";
    const auto caption = kCaptions.find(name);
    EXPECT_EQ(control->caption, caption == kCaptions.end() ? "" : caption->second) << name;
    const auto tip = kToolTips.find(name);
    EXPECT_EQ(control->tool_tip, tip == kToolTips.end() ? "" : tip->second) << name;
  }
  for (const auto& [name, caption] : kCaptions) EXPECT_TRUE(names.contains(name)) << name;
  for (const auto& [name, tip] : kToolTips) EXPECT_TRUE(names.contains(name)) << name;
}

// Line by line as the eye goes: what stands higher comes first, and what stands further left in one
// line. Inside a frame alone, because the tabs stand above the pages that they open.
TEST_F(MainLayoutTest, TabKeyGoesThroughAFrameLineByLine) {
  constexpr int kSameLine = 10 * kTwipsPerInch / kDesignDpi;
  const auto can_have_focus = [](const ControlRow& row) {
    const ControlKind kind = row.control.kind();
    return kind != ControlKind::kLabel && kind != ControlKind::kShape &&
           kind != ControlKind::kFrame;
  };
  std::map<const Control*, const ControlRow*> before;
  int compared = 0;
  for (const ControlRow& row : table_.controls) {
    if (!can_have_focus(row)) continue;
    const ControlRow*& last = before[row.frame];
    if (last != nullptr && row.frame != nullptr) {
      const bool same_line = std::abs(row.top - last->top) < kSameLine;
      EXPECT_TRUE(same_line ? last->left < row.left : last->top < row.top) << row.control.name();
      ++compared;
    }
    last = &row;
  }
  EXPECT_GT(compared, 15);
}

TEST_F(MainLayoutTest, FramesOfTheRowsAreTheirFormsOwn) {
  for (const ControlRow& row : table_.controls) {
    if (row.control.kind() == ControlKind::kFrame) {
      EXPECT_EQ(row.frame, nullptr) << row.control.name();
    } else if (row.frame == nullptr) {
      const bool stands_alone =
          row.id == ControlId::lstCallLog ||
          (row.id >= ControlId::cmdSettingTab_0 && row.id <= ControlId::cmdSettingTab_4);
      EXPECT_TRUE(stands_alone) << row.control.name();
    }
  }
}

// Keys that boxes and lists have a use for are none of the menu's.
TEST_F(MainLayoutTest, MenuHasItsTwoItemsFirstAndShortcutsThatNothingElseWants) {
  std::vector<std::string> names;
  std::set<std::pair<bool, int>> keys;
  for (const MenuRow& row : table_.menu) {
    if (row.menu == &form_.mnuOptions) names.emplace_back(row.item.name());
    EXPECT_EQ(row.begins_group, &row.item == &form_.mnuEditShown) << row.item.name();
    const Shortcut& key = row.shortcut;
    if (key.key_code == 0) continue;
    EXPECT_TRUE(keys.insert({key.control, key.key_code}).second) << row.item.name();
    EXPECT_STRNE(key.text, "") << row.item.name();
    const bool is_edit_command =
        std::string("ACVXZ").find(static_cast<char>(key.key_code)) != std::string::npos;
    EXPECT_TRUE(key.control ? !is_edit_command : key.key_code == kF2Code) << row.item.name();
  }
  EXPECT_EQ(names, (std::vector<std::string>{"mnuGSSIEditor", "mnuCompactMode", "mnuEditShown",
                                             "mnuEndCall", "mnuParkOnCC", "mnuCapturePosition"}));
  EXPECT_EQ(keys.size(), 3U);
}

TEST_F(MainLayoutTest, ArrangementsHaveTheirSizesAndTitles) {
  EXPECT_EQ(kNormalArrangement.width, 12450);
  EXPECT_EQ(kNormalArrangement.height, 6120);
  EXPECT_STREQ(kNormalArrangement.title, "Corvane v0.99.6s");
  EXPECT_EQ(kCompactArrangement.width, 3690);
  EXPECT_EQ(kCompactArrangement.height, 4440);
  EXPECT_STREQ(kCompactArrangement.title, "Corva v0.99.6s");
}

}  // namespace

}  // namespace corvane
