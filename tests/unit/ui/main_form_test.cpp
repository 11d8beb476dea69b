// Every user event of the main window: what it changes, which handler runs, and when it does not.
#include "ui/main_form.h"

#include "ui/main_layout.h"
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
      EXPECT_EQ(form_.cmdSettingTab[tab].back_colour, tab == shown ? 0x00C0C0C0U : 0x8000000FU);
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

TEST_F(MainFormTest, CompactModeHasItsArrangementBothWays) {
  main_form_.ApplyCompactMode();
  EXPECT_EQ(form_.bounds, (Window::Bounds{0, 0, 12450, 6120}));
  EXPECT_EQ(form_.fraCallDetails.corner, (Frame::Corner{120, 1680}));
  EXPECT_TRUE(form_.fraWinsock.visible);
  EXPECT_EQ(form_.caption, "Corvane v0.99.6s");
  main_form_.Click(form_.mnuCompactMode);
  EXPECT_TRUE(form_.mnuCompactMode.checked);
  EXPECT_EQ(form_.bounds, (Window::Bounds{0, 0, 3690, 4440}));
  EXPECT_EQ(form_.fraCallDetails.corner, (Frame::Corner{120, 0}));
  EXPECT_FALSE(form_.fraWinsock.visible);
  EXPECT_EQ(form_.caption, "Corva v0.99.6s");
  main_form_.Click(form_.mnuCompactMode);
  EXPECT_FALSE(form_.mnuCompactMode.checked);
  EXPECT_EQ(form_.bounds, (Window::Bounds{0, 0, 12450, 6120}));
  EXPECT_EQ(form_.fraCallDetails.corner, (Frame::Corner{120, 1680}));
  EXPECT_TRUE(form_.fraWinsock.visible);
}

TEST_F(MainFormTest, NobodySeesTheWidthOfOneArrangementWithTheHeightOfTheOther) {
  main_form_.ApplyRestoredSettings();
  form_.MoveTo(300, 150);
  (void)sink_.Take();
  main_form_.Click(form_.mnuCompactMode);
  main_form_.Click(form_.mnuCompactMode);
  Calls sizes;
  for (const std::string& line : sink_.Take()) {
    if (line.find(".bounds = ") != std::string::npos) sizes.push_back(line);
  }
  EXPECT_EQ(sizes,
            (Calls{"Form1.bounds = 300, 150, 3690, 4440", "fraCallDetails.bounds = 120, 0",
                   "Form1.bounds = 300, 150, 12450, 6120", "fraCallDetails.bounds = 120, 1680"}));
}

TEST_F(MainFormTest, StartDisablesItsButtonForGood) {
  main_form_.Click(form_.cmdStartAll);
  EXPECT_FALSE(form_.cmdStartAll.enabled);
  EXPECT_EQ(form_.cmdStartAll.back_colour, kButtonFace);
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

TEST_F(MainFormTest, MenuDoesWhatOnlyTheMouseCouldReach) {
  form_.lblGroupNumber.caption = " 9001";
  form_.lblNetworkInfo.caption = "MNC:1  LA:5";
  form_.lblCurrentSSI.caption = " 5010";
  for (MenuItem* item :
       {&form_.mnuEndCall, &form_.mnuParkOnCC, &form_.mnuCapturePosition, &form_.mnuEditShown}) {
    main_form_.Click(*item);
  }
  EXPECT_EQ(actions_.calls,
            (Calls{"ManualRelease", "ParkOnControlChannel", "CaptureSdrPosition", "ShowEditor"}));
  EXPECT_EQ(main_form_.hand_over().EditorGssi, 9001);
  EXPECT_EQ(main_form_.hand_over().EditorSsi, 5010);
}

TEST_F(MainFormTest, ContextMenuKeyEditsTheListedTalkerOrWhatIsOnScreen) {
  form_.lblGroupNumber.caption = " 9001";
  form_.lblNetworkInfo.caption = "MNC:1  LA:5";
  form_.lblCurrentSSI.caption = " 5010";
  form_.lstCurrentSSI_Users.Add("5011");
  for (Control* list : std::initializer_list<Control*>{&form_.lstCallLog, &form_.lstStatusLog,
                                                       &form_.lstCurrentSSI_Users}) {
    main_form_.KeyUp(*list, kContextMenuCode);
    EXPECT_EQ(actions_.calls, Calls{"ShowEditor"}) << list->name();
    EXPECT_EQ(main_form_.hand_over().EditorSsi, 5010) << list->name();
    actions_.calls.clear();
  }
  form_.lstCurrentSSI_Users.Select(0);
  main_form_.KeyUp(form_.lstCurrentSSI_Users, kContextMenuCode);
  EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
  EXPECT_EQ(main_form_.hand_over().EditorSsi, 5011);
  main_form_.KeyUp(form_.lstRecOnlyGSSI, kContextMenuCode);
  EXPECT_EQ(actions_.calls.size(), 1U);
}

TEST_F(MainFormTest, DeleteKeyRemovesTheSelectedRecordOnlyGroup) {
  form_.lstRecOnlyGSSI.enabled = true;
  form_.lstRecOnlyGSSI.Add("9001");
  main_form_.KeyUp(form_.lstRecOnlyGSSI, kDeleteCode);
  EXPECT_TRUE(actions_.calls.empty());
  form_.lstRecOnlyGSSI.Select(0);
  main_form_.KeyUp(form_.lstRecOnlyGSSI, kDeleteCode);
  EXPECT_EQ(actions_.calls, Calls{"RemoveRecOnlyGssi"});
  for (ListBox* list : {&form_.lstCallLog, &form_.lstStatusLog, &form_.lstCurrentSSI_Users}) {
    main_form_.KeyUp(*list, kDeleteCode);
  }
  EXPECT_EQ(actions_.calls.size(), 1U);
}

TEST_F(MainFormTest, MouseOverTheCallDetailsGivesTheFocusToTheTalkersInCompactMode) {
  main_form_.Click(form_.mnuCompactMode);
  main_form_.MouseMove(form_.fraCallDetails, true);
  EXPECT_EQ(sink_.focus(), "lstCurrentSSI_Users");
  main_form_.Click(form_.mnuCompactMode);
  main_form_.MouseMove(form_.fraCallDetails, true);
  EXPECT_EQ(sink_.focus(), "lstCallLog");
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
    EXPECT_EQ(box->value, 1);
    main_form_.Click(*box);
    EXPECT_EQ(box->value, 0);
    box->value = 2;
    main_form_.Click(*box);
    EXPECT_EQ(box->value, 0);
  }
  EXPECT_TRUE(actions_.calls.empty());
  main_form_.Click(form_.chkCreateCallActivityCvsFile);
  main_form_.Click(form_.chkCreateCallActivityCvsFile);
  EXPECT_EQ(actions_.calls, (Calls{"LogMode on", "LogMode off"}));
  form_.chkCreateCallActivityCvsFile.value = 2;  // was not on
  main_form_.Click(form_.chkCreateCallActivityCvsFile);
  EXPECT_EQ(actions_.calls.size(), 2U);
}

TEST_F(MainFormTest, SpaceBarInThreeListsTogglesTheHold) {
  for (ListBox* list : {&form_.lstCallLog, &form_.lstCurrentSSI_Users, &form_.lstStatusLog}) {
    actions_.calls.clear();
    for (const int key : {13, 38, 40, 65}) main_form_.KeyUp(*list, key);
    EXPECT_TRUE(actions_.calls.empty());
    main_form_.KeyUp(*list, 32);
    EXPECT_EQ(actions_.calls, Calls{"ToggleGroupHold"}) << list->name();
  }
  main_form_.KeyUp(form_.lstRecOnlyGSSI, 32);
  EXPECT_EQ(actions_.calls.size(), 1U);
}

TEST_F(MainFormTest, LeftReleaseOnTheGroupLabelTogglesTheHold) {
  main_form_.MouseUp(form_.lblGroupHold, kRightButton, -1);
  main_form_.MouseUp(form_.lblGroupHold, kMiddleButton, -1);
  EXPECT_TRUE(actions_.calls.empty());
  main_form_.MouseUp(form_.lblGroupHold, kLeftButton, -1);
  EXPECT_EQ(actions_.calls, Calls{"ToggleGroupHold"});
}

TEST_F(MainFormTest, AnyButtonOnGroupOrSubscriberOpensTheEditor) {
  form_.lblGroupNumber.caption = " 9001";
  form_.lblCurrentSSI.caption = " 5010";
  form_.lblNetworkInfo.caption = "MNC:1  LA:5";
  for (Label* label : {&form_.lblGroupNumber, &form_.lblCurrentSSI}) {
    for (const int button : {kLeftButton, kRightButton, kMiddleButton}) {
      actions_.calls.clear();
      main_form_.hand_over() = {};
      main_form_.MouseUp(*label, button, -1);
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
  EXPECT_EQ(form_.chkIgnorePriority.value, 0);
  main_form_.Click(form_.optRecordMode[0]);
  main_form_.TextEdited(form_.txtRecOnlyGSSI, "1");
  EXPECT_EQ(form_.txtRecOnlyGSSI.text, "");
  EXPECT_FALSE(main_form_.KeyPress(form_.txtRecOnlyGSSI, 13));
  EXPECT_TRUE(actions_.calls.empty());
}

TEST_F(MainFormTest, NothingIsTakenOnceTheProgramShutsDown) {
  form_.lblGroupNumber.caption = " 9001";
  form_.lstCallLog.Add(" - Group: 9001");
  (void)sink_.Take();
  flags_.mblnShuttingDown = true;
  for (Control* control : MainWindowTable(form_).AllControls()) {
    main_form_.Click(*control);
    main_form_.DoubleClick(*control);
    EXPECT_FALSE(main_form_.KeyPress(*control, 13));
    main_form_.KeyUp(*control, 32);
    main_form_.LostFocus(*control);
    main_form_.MouseUp(*control, kLeftButton, -1);
    main_form_.MouseMove(*control, true);
  }
  main_form_.TextEdited(form_.txtTimeout, "7");
  main_form_.ListSelected(form_.lstCallLog, 0, true);
  main_form_.ComboSelected(form_.cboBaseFrequency, 0);
  main_form_.CloseRequested();
  main_form_.SessionEnding();
  EXPECT_TRUE(actions_.calls.empty());
  EXPECT_TRUE(sink_.Take().empty());
  EXPECT_EQ(form_.txtTimeout.text, "");
  EXPECT_EQ(form_.lstCallLog.list_index(), -1);
  EXPECT_EQ(presets_.BaseFrequency, 800000000);
}

TEST_F(MainFormTest, ClosingAndTheEndOfTheSessionArePassedOn) {
  main_form_.CloseRequested();
  main_form_.SessionEnding();
  EXPECT_EQ(actions_.calls, (Calls{"CloseRequested", "SessionEnding"}));
}

TEST_F(MainFormTest, EnterInABoxOfNoNumberKeepsTheFocus) {
  EXPECT_FALSE(main_form_.KeyPress(form_.lstCallLog, kEnterCode));
  EXPECT_TRUE(sink_.Take().empty());
  EXPECT_TRUE(actions_.calls.empty());
}

TEST_F(MainFormTest, RestoredSettingsWithoutASelectionLeaveThePresetsAlone) {
  form_.cboBaseFrequency.list_index = -1;
  for (OptionButton& option : form_.optOffsets) option.value = false;
  presets_.BaseFrequency = 123;
  presets_.FrequencyOffset = 45;
  main_form_.ApplyRestoredSettings();
  EXPECT_EQ(presets_.BaseFrequency, 123);
  EXPECT_EQ(presets_.FrequencyOffset, 45);
}

// They end and time the editor.
TEST_F(MainFormTest, EscapeAndInputElsewhereMeanNothingHere) {
  main_form_.Escape();
  main_form_.AnyInput();
  EXPECT_TRUE(sink_.Take().empty());
  EXPECT_TRUE(actions_.calls.empty());
}

}  // namespace

}  // namespace corvane
