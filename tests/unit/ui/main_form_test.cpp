// Every user event of the main window: what it changes, which handler runs, and when it does not.
#include "ui/main_form.h"

#include "ui/group_hold.h"
#include "ui/layout.h"
#include "unit/ui/form_fixture.h"

namespace corvane {

namespace {

class MainFormTest : public FormTest {
 protected:
  [[nodiscard]] std::vector<bool> VisiblePages() const {
    return {form_.fraPresets.visible, form_.fraRecordingOptions.visible, form_.fraOptions.visible,
            form_.fraLoggingOptions.visible, form_.fraCheckboxDetection.visible};
  }
};

TEST_F(MainFormTest, TabShowsItsPageAlone) {
  for (const std::size_t shown : {3U, 4U, 0U, 1U, 2U}) {
    main_form_.Click(form_.cmdSettingTab[shown]);
    std::vector<bool> expected(5, false);
    expected[shown] = true;
    EXPECT_EQ(VisiblePages(), expected);
    for (std::size_t tab = 0; tab < 5; ++tab) {
      EXPECT_EQ(form_.cmdSettingTab[tab].back_colour.get(),
                tab == shown ? 0x00C0C0C0U : 0x8000000FU);
    }
    EXPECT_EQ(timer_->enabled(), shown == 4);
    EXPECT_EQ(sink_.focus(), "lstCallLog");
  }
}

TEST_F(MainFormTest, TabThatIsShownChangesTheFocusAlone) {
  main_form_.Click(form_.cmdSettingTab[4]);
  (void)sink_.Take();
  main_form_.Click(form_.cmdSettingTab[4]);
  EXPECT_EQ(sink_.Take(), Calls{"focus lstCallLog"});
  EXPECT_TRUE(timer_->enabled());
}

TEST_F(MainFormTest, LeavingTheCalibrationPageStopsItsTimer) {
  main_form_.Click(form_.cmdSettingTab[4]);
  main_form_.Click(form_.cmdSettingTab[2]);
  EXPECT_FALSE(timer_->enabled());
  main_form_.Click(form_.cmdSettingTab[4]);
  EXPECT_TRUE(timer_->enabled());
}

TEST_F(MainFormTest, CompactModeIsLaidDownBothWays) {
  main_form_.ApplyCompactMode();
  EXPECT_EQ(form_.width.get(), 12450);
  EXPECT_EQ(form_.height.get(), 6120);
  EXPECT_EQ(form_.fraCallDetails.top.get(), 1680);
  EXPECT_EQ(form_.fraCallDetails.left.get(), 120);
  EXPECT_TRUE(form_.fraWinsock.visible);
  EXPECT_EQ(form_.Window::caption.get(), "Corvane v0.99.6s");
  main_form_.Click(form_.mnuCompactMode);
  EXPECT_TRUE(form_.mnuCompactMode.checked);
  EXPECT_EQ(form_.width.get(), 3690);
  EXPECT_EQ(form_.height.get(), 4440);
  EXPECT_EQ(form_.fraCallDetails.top.get(), 0);
  EXPECT_EQ(form_.fraCallDetails.left.get(), 120);
  EXPECT_FALSE(form_.fraWinsock.visible);
  EXPECT_EQ(form_.Window::caption.get(), "Corva v0.99.6s");
  main_form_.Click(form_.mnuCompactMode);
  EXPECT_FALSE(form_.mnuCompactMode.checked);
  EXPECT_EQ(form_.width.get(), 12450);
  EXPECT_EQ(form_.fraCallDetails.top.get(), 1680);
  EXPECT_TRUE(form_.fraWinsock.visible);
}

TEST_F(MainFormTest, StartDisablesItsButtonForGood) {
  main_form_.Click(form_.cmdStartAll);
  EXPECT_FALSE(form_.cmdStartAll.enabled);
  EXPECT_EQ(form_.cmdStartAll.back_colour.get(), kButtonFace);
  main_form_.Click(form_.cmdStartAll);
  EXPECT_EQ(actions_.calls, Calls{"StartLink"});
}

TEST_F(MainFormTest, ClicksReachTheirActions) {
  main_form_.Click(form_.lblManualD_Release);
  main_form_.Click(form_.cmdSetCheckedValue);
  main_form_.Click(form_.cmdSetUnCheckedValue);
  main_form_.Click(form_.mnuGSSIEditor);
  main_form_.DoubleClick(form_.lblChangeToCcFrequency);
  main_form_.DoubleClick(form_.lblPositionSdrSharpCC);
  EXPECT_EQ(actions_.calls, (Calls{"ManualRelease", "SampleCheckedColour", "SampleUnCheckedColour",
                                   "ShowEditor", "ParkOnControlChannel", "CaptureSdrPosition"}));
}

TEST_F(MainFormTest, ControlsWithoutAHandlerDoNothing) {
  for (Control* control : std::initializer_list<Control*>{
           &form_.lblCallID, &form_.lblChangeToCcFrequency, &form_.lblPositionSdrSharpCC,
           &form_.lblGroupHold, &form_.mnuMCClabel, &form_.fraPresets}) {
    main_form_.Click(*control);
  }
  main_form_.DoubleClick(form_.lblManualD_Release);
  main_form_.DoubleClick(form_.lstStatusLog);
  EXPECT_TRUE(actions_.calls.empty());
  EXPECT_TRUE(sink_.Take().empty());
}

TEST_F(MainFormTest, CheckBoxSwitchesAndOnlyLogModeActs) {
  for (CheckBox* box :
       {&form_.chkPositionSDRsharps, &form_.chkIgnorePriority, &form_.chkSuppressLockoutMessages,
        &form_.chkSuppressSomePduMessages, &form_.chkCreateCcVcLog, &form_.chkCreateEventLog,
        &form_.chkDeleteForcedCallEndFile}) {
    main_form_.Click(*box);
    EXPECT_EQ(box->value.get(), 1);
    main_form_.Click(*box);
    EXPECT_EQ(box->value.get(), 0);
    box->value = 2;
    main_form_.Click(*box);
    EXPECT_EQ(box->value.get(), 0);
  }
  EXPECT_TRUE(actions_.calls.empty());
  main_form_.Click(form_.chkCreateCallActivityCvsFile);
  main_form_.Click(form_.chkCreateCallActivityCvsFile);
  EXPECT_EQ(actions_.calls, (Calls{"LogMode on", "LogMode off"}));
  form_.chkCreateCallActivityCvsFile.value = 2;  // was not on
  main_form_.Click(form_.chkCreateCallActivityCvsFile);
  EXPECT_EQ(actions_.calls.size(), 2U);
}

TEST_F(MainFormTest, OffsetsExcludeEachOtherAndSetTheOffset) {
  const std::int32_t offsets[] = {0, 6250, -6250, 12500};
  for (const std::size_t chosen : {0U, 1U, 2U, 3U}) {
    main_form_.Click(form_.optOffsets[chosen]);
    EXPECT_EQ(presets_.FrequencyOffset, offsets[chosen]);
    for (std::size_t other = 0; other < 4; ++other) {
      EXPECT_EQ(form_.optOffsets[other].value.get(), other == chosen);
    }
  }
  EXPECT_TRUE(form_.optRecordMode[0].value);
}

TEST_F(MainFormTest, RecordModeEnablesTheRecordOnlyControlsForSelectedGroupsAlone) {
  for (const std::size_t mode : {2U, 1U, 2U, 0U}) {
    main_form_.Click(form_.optRecordMode[mode]);
    EXPECT_EQ(form_.txtRecOnlyGSSI.enabled.get(), mode == 2);
    EXPECT_EQ(form_.lstRecOnlyGSSI.enabled.get(), mode == 2);
    EXPECT_EQ(form_.optRecordMode[mode].value.get(), true);
  }
  EXPECT_TRUE(form_.optOffsets[3].value);
}

TEST_F(MainFormTest, BaseFrequencyIsTheBandOfItsEntry) {
  for (int entry = 0; entry < 9; ++entry) {
    main_form_.ComboSelected(form_.cboBaseFrequency, entry);
    EXPECT_EQ(presets_.BaseFrequency, (entry + 1) * 100000000);
    EXPECT_EQ(form_.cboBaseFrequency.list_index.get(), entry);
  }
  main_form_.ComboSelected(form_.cboBaseFrequency, 9);
  main_form_.ComboSelected(form_.cboBaseFrequency, -1);
  EXPECT_EQ(presets_.BaseFrequency, 900000000);
  EXPECT_TRUE(sink_.Take().empty());
}

TEST_F(MainFormTest, PresetBoxesTakeDigitsAndEnterLeavesThem) {
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

TEST_F(MainFormTest, RecordOnlyBoxTakesEverythingAndEnterAddsFirst) {
  EXPECT_TRUE(main_form_.KeyPress(form_.txtRecOnlyGSSI, 'x'));
  EXPECT_TRUE(main_form_.KeyPress(form_.txtRecOnlyGSSI, ';'));
  EXPECT_FALSE(main_form_.KeyPress(form_.txtRecOnlyGSSI, 13));
  EXPECT_EQ(actions_.calls, Calls{"AddRecOnlyGssi"});
  EXPECT_EQ(sink_.focus(), "lstStatusLog");
}

TEST_F(MainFormTest, LeavingABoxAcceptsItAndSavesWhereItIsKept) {
  main_form_.TextEdited(form_.txtParkCarrier, "100");
  main_form_.LostFocus(form_.txtParkCarrier);
  EXPECT_EQ(presets_.ParkCarrier, 100);
  EXPECT_TRUE(actions_.calls.empty());
  main_form_.TextEdited(form_.txtTimeout, "31");
  main_form_.LostFocus(form_.txtTimeout);
  EXPECT_EQ(form_.txtTimeout.text.get(), "5");
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

TEST_F(MainFormTest, WhatTheUserTypesIsNotEchoed) {
  main_form_.TextEdited(form_.txtTimeout, "12");
  EXPECT_EQ(form_.txtTimeout.text.get(), "12");
  EXPECT_TRUE(sink_.Take().empty());
}

TEST_F(MainFormTest, SpaceBarInThreeListsTogglesTheHold) {
  form_.lblGroupNumber.caption = " 9001";
  bool held = false;
  for (ListBox* list : {&form_.lstCallLog, &form_.lstCurrentSSI_Users, &form_.lstStatusLog}) {
    for (const int key : {13, 38, 40, 65}) main_form_.KeyUp(*list, key);
    EXPECT_EQ(HoldingGroup(form_), held);
    main_form_.KeyUp(*list, 32);
    held = !held;
    EXPECT_EQ(HoldingGroup(form_), held);
  }
  main_form_.KeyUp(form_.lstRecOnlyGSSI, 32);
  EXPECT_TRUE(HoldingGroup(form_));
}

TEST_F(MainFormTest, LeftReleaseOnTheGroupLabelTogglesTheHold) {
  form_.lblGroupNumber.caption = " 9001";
  main_form_.MouseUp(form_.lblGroupHold, kRightButton);
  main_form_.MouseUp(form_.lblGroupHold, kMiddleButton);
  EXPECT_FALSE(HoldingGroup(form_));
  main_form_.MouseUp(form_.lblGroupHold, kLeftButton);
  EXPECT_TRUE(HoldingGroup(form_));
}

TEST_F(MainFormTest, AnyButtonOnGroupOrSubscriberOpensTheEditor) {
  form_.lblGroupNumber.caption = " 9001";
  form_.lblCurrentSSI.caption = " 5010";
  form_.lblNetworkInfo.caption = "MNC:1  LA:5";
  for (Label* label : {&form_.lblGroupNumber, &form_.lblCurrentSSI}) {
    for (const int button : {kLeftButton, kRightButton, kMiddleButton}) {
      actions_.calls.clear();
      main_form_.hand_over() = {};
      main_form_.MouseUp(*label, button);
      EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
      EXPECT_EQ(main_form_.hand_over().EditorGssi, 9001);
      EXPECT_EQ(main_form_.hand_over().EditorSsi, 5010);
    }
  }
}

TEST_F(MainFormTest, ListedSubscriberIsEditedByMouseAlone) {
  form_.lblGroupNumber.caption = " 9001";
  form_.lblNetworkInfo.caption = "MNC:1  LA:5";
  form_.lstCurrentSSI_Users.Add("5010");
  form_.lstCurrentSSI_Users.Add("5011");
  main_form_.ListSelected(form_.lstCurrentSSI_Users, 0, false);
  EXPECT_EQ(form_.lstCurrentSSI_Users.list_index(), 0);
  EXPECT_TRUE(actions_.calls.empty());
  main_form_.ListSelected(form_.lstCurrentSSI_Users, 1, true);
  EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
  EXPECT_EQ(main_form_.hand_over().EditorSsi, 5011);
  main_form_.ListSelected(form_.lstCurrentSSI_Users, 5, true);
  EXPECT_EQ(form_.lstCurrentSSI_Users.list_index(), -1);
  EXPECT_EQ(actions_.calls.size(), 1U);
}

TEST_F(MainFormTest, DoubleClickRemovesARecordOnlyEntryThatIsSelected) {
  main_form_.Click(form_.optRecordMode[2]);
  main_form_.DoubleClick(form_.lstRecOnlyGSSI);
  EXPECT_TRUE(actions_.calls.empty());
  form_.lstRecOnlyGSSI.Add("9001");
  main_form_.ListSelected(form_.lstRecOnlyGSSI, 0, true);
  main_form_.DoubleClick(form_.lstRecOnlyGSSI);
  EXPECT_EQ(actions_.calls, Calls{"RemoveRecOnlyGssi"});
}

TEST_F(MainFormTest, DoubleClickInTheCallLogOpensTheEditor) {
  form_.lstCallLog.Add(" - Group: 9001 [x]");
  main_form_.ListSelected(form_.lstCallLog, 0, true);
  EXPECT_TRUE(actions_.calls.empty());
  main_form_.DoubleClick(form_.lstCallLog);
  EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
  EXPECT_EQ(main_form_.hand_over().EditorGssi, 9001);
}

TEST_F(MainFormTest, MouseFetchesTheFocusToTheCallLogInTheForegroundAlone) {
  main_form_.MouseMove(form_.fraCallDetails, false);
  main_form_.MouseMove(form_.lstCallLog, false);
  main_form_.MouseMove(form_.lstStatusLog, true);
  main_form_.MouseMove(form_.fraPresets, true);
  EXPECT_EQ(sink_.focus(), "");
  main_form_.MouseMove(form_.fraCallDetails, true);
  EXPECT_EQ(sink_.Take(), Calls{"focus lstCallLog"});
  main_form_.MouseMove(form_.lstCallLog, true);
  EXPECT_EQ(sink_.Take(), Calls{"focus lstCallLog"});
}

TEST_F(MainFormTest, DisabledControlsTakeNothing) {
  form_.chkIgnorePriority.enabled = false;
  main_form_.Click(form_.chkIgnorePriority);
  EXPECT_EQ(form_.chkIgnorePriority.value.get(), 0);
  main_form_.Click(form_.optRecordMode[0]);
  main_form_.TextEdited(form_.txtRecOnlyGSSI, "1");
  EXPECT_EQ(form_.txtRecOnlyGSSI.text.get(), "");
  EXPECT_FALSE(main_form_.KeyPress(form_.txtRecOnlyGSSI, 13));
  EXPECT_TRUE(actions_.calls.empty());
}

TEST_F(MainFormTest, NothingIsTakenOnceTheProgramShutsDown) {
  form_.lblGroupNumber.caption = " 9001";
  form_.lstCallLog.Add(" - Group: 9001");
  (void)sink_.Take();
  flags_.mblnShuttingDown = true;
  for (Control* control : form_.Controls()) {
    main_form_.Click(*control);
    main_form_.DoubleClick(*control);
    EXPECT_FALSE(main_form_.KeyPress(*control, 13));
    main_form_.KeyUp(*control, 32);
    main_form_.LostFocus(*control);
    main_form_.MouseUp(*control, kLeftButton);
    main_form_.MouseMove(*control, true);
  }
  main_form_.TextEdited(form_.txtTimeout, "7");
  main_form_.ListSelected(form_.lstCallLog, 0, true);
  main_form_.ComboSelected(form_.cboBaseFrequency, 0);
  main_form_.CloseRequested();
  main_form_.SessionEnding();
  EXPECT_TRUE(actions_.calls.empty());
  EXPECT_TRUE(sink_.Take().empty());
  EXPECT_EQ(form_.txtTimeout.text.get(), "");
  EXPECT_EQ(form_.lstCallLog.list_index(), -1);
  EXPECT_EQ(presets_.BaseFrequency, 800000000);
}

TEST_F(MainFormTest, ClosingAndTheEndOfTheSessionArePassedOn) {
  main_form_.CloseRequested();
  main_form_.SessionEnding();
  EXPECT_EQ(actions_.calls, (Calls{"CloseRequested", "SessionEnding"}));
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
       return form.mnuCompactMode.checked && form.width == kCompactArrangement.width;
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

TEST_F(MainFormTest, RestoredSettingsHaveTheirEffectsAndNoOthers) {
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
    EXPECT_EQ(form.cmdSettingTab[0].back_colour.get(), kShownTabGrey) << restored.name;
    EXPECT_FALSE(timer_->enabled()) << restored.name;
  }
}

TEST_F(MainFormTest, AppliedSettingsOfAFirstStartAreTheDefaults) {
  main_form_.ApplyRestoredSettings();
  EXPECT_EQ(presets_.BaseFrequency, 800000000);
  EXPECT_EQ(presets_.FrequencyOffset, 12500);
  EXPECT_EQ(form_.width.get(), kNormalArrangement.width);
  EXPECT_TRUE(actions_.calls.empty());
}

}  // namespace

}  // namespace corvane
