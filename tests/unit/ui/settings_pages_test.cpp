// The settings pages of the main window: what their boxes and options accept, and what settings
// that were restored bring about.
#include "ui/main_layout.h"
#include "unit/ui/form_fixture.h"

namespace corvane {

namespace {

class SettingsPagesTest : public FormTest {
 protected:
  // The user puts a text into the box and goes elsewhere.
  void Leave(TextBox& box, const std::string& text) {
    main_form_.TextEdited(box, text);
    main_form_.LostFocus(box);
  }
};

TEST_F(SettingsPagesTest, OffsetsExcludeEachOtherAndSetTheOffset) {
  const std::int32_t offsets[] = {0, 6250, -6250, 12500};
  for (const std::size_t chosen : {0U, 1U, 2U, 3U}) {
    main_form_.Click(form_.optOffsets[chosen]);
    EXPECT_EQ(presets_.FrequencyOffset, offsets[chosen]);
    for (std::size_t other = 0; other < 4; ++other) {
      EXPECT_EQ(form_.optOffsets[other].value, other == chosen);
    }
  }
  EXPECT_TRUE(form_.optRecordMode[0].value);
}

TEST_F(SettingsPagesTest, RecordModeEnablesTheRecordOnlyControlsForSelectedGroupsAlone) {
  for (const std::size_t mode : {2U, 1U, 2U, 0U}) {
    main_form_.Click(form_.optRecordMode[mode]);
    EXPECT_EQ(form_.txtRecOnlyGSSI.enabled, mode == 2);
    EXPECT_EQ(form_.lstRecOnlyGSSI.enabled, mode == 2);
    EXPECT_EQ(form_.optRecordMode[mode].value, true);
  }
  EXPECT_TRUE(form_.optOffsets[3].value);
}

TEST_F(SettingsPagesTest, BaseFrequencyIsTheBandOfItsEntry) {
  for (int entry = 0; entry < 9; ++entry) {
    main_form_.ComboSelected(form_.cboBaseFrequency, entry);
    EXPECT_EQ(presets_.BaseFrequency, (entry + 1) * 100000000);
    EXPECT_EQ(form_.cboBaseFrequency.list_index, entry);
  }
  main_form_.ComboSelected(form_.cboBaseFrequency, 9);
  main_form_.ComboSelected(form_.cboBaseFrequency, -1);
  EXPECT_EQ(presets_.BaseFrequency, 900000000);
  EXPECT_TRUE(sink_.Take().empty());
}

TEST_F(SettingsPagesTest, PresetBoxesTakeDigitsAndEnterLeavesThem) {
  for (TextBox* box : {&form_.txtTimeout, &form_.txtVcVolume, &form_.txtParkCarrier}) {
    EXPECT_TRUE(main_form_.KeyPress(*box, '0'));
    EXPECT_TRUE(main_form_.KeyPress(*box, '9'));
    EXPECT_TRUE(main_form_.KeyPress(*box, 8));
    for (const int code : std::initializer_list<int>{'a', '-', '.', ' ', ';', 22, 200}) {
      EXPECT_FALSE(main_form_.KeyPress(*box, code)) << code;
    }
    EXPECT_FALSE(main_form_.KeyPress(*box, 13));
    EXPECT_EQ(sink_.focus(), "lstStatusLog");
    sink_.FocusWanted(*box);
  }
  form_.fraWinsock.visible = false;
  EXPECT_FALSE(main_form_.KeyPress(form_.txtTimeout, 13));
  EXPECT_EQ(sink_.focus(), "lstCallLog");
  EXPECT_TRUE(actions_.calls.empty());
}

TEST_F(SettingsPagesTest, RecordOnlyBoxTakesEverythingAndEnterAddsFirst) {
  EXPECT_TRUE(main_form_.KeyPress(form_.txtRecOnlyGSSI, 'x'));
  EXPECT_TRUE(main_form_.KeyPress(form_.txtRecOnlyGSSI, ';'));
  EXPECT_FALSE(main_form_.KeyPress(form_.txtRecOnlyGSSI, 13));
  EXPECT_EQ(actions_.calls, Calls{"AddRecOnlyGssi"});
  EXPECT_EQ(sink_.focus(), "lstStatusLog");
}

TEST_F(SettingsPagesTest, LeavingABoxAcceptsItAndSavesWhereItIsKept) {
  main_form_.TextEdited(form_.txtParkCarrier, "100");
  main_form_.LostFocus(form_.txtParkCarrier);
  EXPECT_EQ(presets_.ParkCarrier, 100);
  EXPECT_TRUE(actions_.calls.empty());
  main_form_.TextEdited(form_.txtTimeout, "31");
  main_form_.LostFocus(form_.txtTimeout);
  EXPECT_EQ(form_.txtTimeout.text, "5");
  EXPECT_TRUE(actions_.calls.empty());
  main_form_.TextEdited(form_.txtTimeout, "10");
  EXPECT_EQ(presets_.CallTimeoutSeconds, 5);
  main_form_.LostFocus(form_.txtTimeout);
  EXPECT_EQ(presets_.CallTimeoutSeconds, 10);
  main_form_.TextEdited(form_.txtVcVolume, "47");
  main_form_.LostFocus(form_.txtVcVolume);
  EXPECT_EQ(actions_.calls, (Calls{"SaveSettings", "SaveSettings"}));
  main_form_.LostFocus(form_.lstCallLog);
  EXPECT_EQ(actions_.calls.size(), 2U);
}

TEST_F(SettingsPagesTest, WhatTheUserTypesIsNotEchoed) {
  main_form_.TextEdited(form_.txtTimeout, "12");
  EXPECT_EQ(form_.txtTimeout.text, "12");
  EXPECT_TRUE(sink_.Take().empty());
}

TEST_F(SettingsPagesTest, BackspaceAndDigitsAlonePassThePresetBoxes) {
  for (TextBox* box : {&form_.txtTimeout, &form_.txtVcVolume, &form_.txtParkCarrier}) {
    for (int code = 0; code < 256; ++code) {
      EXPECT_EQ(main_form_.KeyPress(*box, code), code == 8 || (code >= 48 && code <= 57)) << code;
    }
  }
}

TEST_F(SettingsPagesTest, TimeoutTakesOneToThirtySeconds) {
  for (const int seconds : {1, 5, 30}) {
    Leave(form_.txtTimeout, std::to_string(seconds));
    EXPECT_EQ(presets_.CallTimeoutSeconds, seconds);
  }
}

TEST_F(SettingsPagesTest, TimeoutPutsBackWhatItCannotTake) {
  presets_.CallTimeoutSeconds = 7;
  for (const char* text : {"", "0", "31", "-1", "abc", "1a", " 5", "5 ", "1.5", "99999",
                           "99999999999999999999", "+5"}) {
    Leave(form_.txtTimeout, text);
    EXPECT_EQ(form_.txtTimeout.text, "7") << text;
    EXPECT_EQ(presets_.CallTimeoutSeconds, 7) << text;
  }
}

TEST_F(SettingsPagesTest, VolumeTakesTwentyFiveToSixty) {
  for (const int volume : {25, 47, 60}) {
    Leave(form_.txtVcVolume, std::to_string(volume));
    EXPECT_EQ(presets_.VcAudioGain, volume);
  }
  for (const char* text : {"", "24", "61", "x", "-30", "4711471147114711"}) {
    Leave(form_.txtVcVolume, text);
    EXPECT_EQ(form_.txtVcVolume.text, "60") << text;
  }
}

TEST_F(SettingsPagesTest, ParkCarrierTakesUpToFourThousandLessOne) {
  for (const int carrier : {0, 2604, 3999}) {
    Leave(form_.txtParkCarrier, std::to_string(carrier));
    EXPECT_EQ(presets_.ParkCarrier, carrier);
  }
  for (const char* text : {"", "4000", "1234567", "0000001", "26x4", "-1"}) {
    Leave(form_.txtParkCarrier, text);
    EXPECT_EQ(form_.txtParkCarrier.text, "3999") << text;
  }
  Leave(form_.txtParkCarrier, "000012");
  EXPECT_EQ(presets_.ParkCarrier, 12);
}

// The whole list of what a restored setting brings about: one row per control that settings are
// read into, with what must have followed when they have been applied.
struct Restored {
  const char* name;
  void (*set)(Form1& form);
  bool (*followed)(const Form1& form, const Presets& presets, const RecordingActions& actions);
};
using Form = const Form1&;
using Values = const Presets&;
using Done = const RecordingActions&;

const Restored kRestored[] = {
    {"base frequency", [](Form1& form) { form.cboBaseFrequency.list_index = 2; },
     [](Form, Values presets, Done) { return presets.BaseFrequency == 300000000; }},
    {"offset",
     [](Form1& form) {
       form.optOffsets[3].value = false;
       form.optOffsets[1].value = true;
     },
     [](Form, Values presets, Done) { return presets.FrequencyOffset == 6250; }},
    {"recording selected groups",
     [](Form1& form) {
       form.optRecordMode[0].value = false;
       form.optRecordMode[2].value = true;
     },
     [](Form form, Values, Done) { return form.lstRecOnlyGSSI.enabled.get(); }},
    {"recording off", [](Form1&) {},
     [](Form form, Values, Done) {
       return !form.lstRecOnlyGSSI.enabled && !form.txtRecOnlyGSSI.enabled;
     }},
    {"LOG mode", [](Form1& form) { form.chkCreateCallActivityCvsFile.value = 1; },
     [](Form, Values, Done actions) {
       return actions.calls == std::vector<std::string>{"LogMode on"};
     }},
    {"LOG mode grey", [](Form1& form) { form.chkCreateCallActivityCvsFile.value = 2; },
     [](Form, Values, Done actions) { return actions.calls.empty(); }},
    {"compact mode", [](Form1& form) { form.mnuCompactMode.checked = true; },
     [](Form form, Values, Done) {
       return form.mnuCompactMode.checked && form.bounds.get().width == kCompactArrangement.width;
     }},
    {"other boxes and texts",
     [](Form1& form) {
       form.chkPositionSDRsharps.value = 1;
       form.txtTimeout.text = "9";
       form.txtVcVolume.text = "50";
       form.txtParkCarrier.text = "1";
     },
     [](Form, Values presets, Done actions) {
       return actions.calls.empty() && presets.CallTimeoutSeconds == 5 &&
              presets.VcAudioGain == 47 && presets.ParkCarrier == 2604;
     }},
};

TEST_F(SettingsPagesTest, RestoredSettingsHaveTheirEffectsAndNoOthers) {
  for (const Restored& restored : kRestored) {
    sim::TraceSink sink;
    Form1 form(sink);
    Presets presets;
    RecordingActions actions;
    MainForm main_form(form, presets, flags_, *timer_, actions);
    restored.set(form);
    EXPECT_TRUE(actions.calls.empty()) << restored.name << ": setting it ran a handler";
    main_form.ApplyRestoredSettings();
    EXPECT_TRUE(restored.followed(form, presets, actions)) << restored.name;
    EXPECT_TRUE(form.fraPresets.visible && !form.fraCheckboxDetection.visible) << restored.name;
    EXPECT_EQ(form.cmdSettingTab[0].back_colour, kShownTabGrey) << restored.name;
    EXPECT_FALSE(timer_->enabled()) << restored.name;
  }
}

TEST_F(SettingsPagesTest, AppliedSettingsOfAFirstStartAreTheDefaults) {
  main_form_.ApplyRestoredSettings();
  EXPECT_EQ(presets_.BaseFrequency, 800000000);
  EXPECT_EQ(presets_.FrequencyOffset, 12500);
  EXPECT_EQ(form_.bounds.get().width, kNormalArrangement.width);
  EXPECT_TRUE(actions_.calls.empty());
}

}  // namespace

}  // namespace corvane
