// The real main window driven through messages, as a user or another program does it.
#include <atomic>
#include <thread>

#include "core/group_locks.h"
#include "desktop/ui_window/window_fixture.h"
#include "panel/logs.h"

namespace corvane::ui_test {

namespace {

using enum ControlId;

TEST_F(WindowTest, PushedButtonReachesItsHandlerOnce) {
  Press(cmdStartAll);
  EXPECT_EQ(actions_.calls, Calls{"StartLink"});
  EXPECT_FALSE(IsEnabled(Child(cmdStartAll)));
}

TEST_F(WindowTest, StartButtonChangesFromGreenToButtonFaceAndGivesTheFocusAway) {
  EXPECT_EQ(PixelOf(Child(cmdStartAll), 4, 4), kStartGreen);
  Focus(Child(cmdStartAll));
  Press(cmdStartAll);
  EXPECT_EQ(PixelOf(Child(cmdStartAll), 4, 4), ButtonFaceColour());
  EXPECT_EQ(Focused(), Child(lstCallLog));
}

TEST_F(WindowTest, ShownTabIsGreyAndItsPageAloneIsVisible) {
  const std::vector<ControlId> tabs = {cmdSettingTab_0, cmdSettingTab_1, cmdSettingTab_2,
                                       cmdSettingTab_3, cmdSettingTab_4};
  const std::vector<ControlId> pages = {fraPresets, fraRecordingOptions, fraOptions,
                                        fraLoggingOptions, fraCheckboxDetection};
  const std::vector<const Frame*> frames = {&form_.fraPresets, &form_.fraRecordingOptions,
                                            &form_.fraOptions, &form_.fraLoggingOptions,
                                            &form_.fraCheckboxDetection};
  for (const std::size_t shown : {4U, 2U, 1U, 3U, 0U}) {
    Press(tabs[shown]);
    for (std::size_t page = 0; page < pages.size(); ++page) {
      EXPECT_EQ(IsShown(Child(pages[page])), page == shown);
      const std::uint32_t colour = PixelOf(Child(tabs[page]), 4, 4);
      EXPECT_EQ(colour == kShownTabGrey, page == shown) << page << " " << std::hex << colour;
    }
    for (const ControlRow& row : MainWindowTable(form_).controls) {
      if (row.frame == nullptr || row.frame == &form_.fraWinsock ||
          row.frame == &form_.fraCallDetails) {
        continue;
      }
      EXPECT_EQ(IsShown(Child(row.id)), row.frame == frames[shown]) << row.control.name();
    }
    EXPECT_EQ(timer_->enabled(), shown == 4);
    EXPECT_EQ(Focused(), Child(lstCallLog));
  }
}

TEST_F(WindowTest, ClickAndDoubleClickOnLabels) {
  PostClick(Child(lblManualD_Release));
  Pump();
  EXPECT_EQ(actions_.calls, Calls{"ManualRelease"});
  actions_.calls.clear();
  PostDoubleClick(Child(lblChangeToCcFrequency));
  Pump();
  EXPECT_EQ(actions_.calls, Calls{"ParkOnControlChannel"});
  actions_.calls.clear();
  PostDoubleClick(Child(lblPositionSdrSharpCC));
  Pump();
  EXPECT_EQ(actions_.calls, Calls{"CaptureSdrPosition"});
}

TEST_F(WindowTest, LeftReleaseOnGroupLabelHoldsInOrangeAndBold) {
  GroupLocks locks(form_);
  actions_.on_hold = [&locks] { locks.ToggleHold(9001); };
  Post(Child(lblGroupHold), WM_RBUTTONUP);
  Post(Child(lblGroupHold), WM_MBUTTONUP);
  Pump();
  EXPECT_TRUE(actions_.calls.empty());
  Post(Child(lblGroupHold), WM_LBUTTONUP);
  Pump();
  EXPECT_EQ(actions_.calls, Calls{"ToggleGroupHold"});
  ASSERT_TRUE(locks.held());
  EXPECT_EQ(LabelTextColour(main(), Child(lblGroupHold)), 0x0080FFU);
  EXPECT_EQ(FontOfWindow(Child(lblGroupHold)).weight, 700);
  EXPECT_EQ(ToolTipOf(main(), Child(lblGroupHold)), "Holding GSSI:  9001");
  EXPECT_EQ(ToolTipOf(main(), Child(lblGroupNumber)), "Holding GSSI:  9001");
  Post(Child(lblGroupHold), WM_LBUTTONUP);
  Pump();
  EXPECT_EQ(FontOfWindow(Child(lblGroupHold)).weight, 400);
  EXPECT_EQ(ToolTipOf(main(), Child(lblGroupNumber)), "");
}

TEST_F(WindowTest, SpaceBarInEachOfTheThreeListsTogglesTheHold) {
  for (const ControlId list : {lstCallLog, lstCurrentSSI_Users, lstStatusLog}) {
    actions_.calls.clear();
    Post(Child(list), WM_KEYUP, 'A');
    Pump();
    EXPECT_TRUE(actions_.calls.empty());
    Post(Child(list), WM_KEYUP, ' ');
    Pump();
    EXPECT_EQ(actions_.calls, Calls{"ToggleGroupHold"}) << Number(list);
  }
}

TEST_F(WindowTest, TextBoxTakesDigitsAloneAndEnterAcceptsThem) {
  Focus(Child(txtTimeout));
  SetText(Child(txtTimeout), "");
  Type(txtTimeout, "a1-2.");
  EXPECT_EQ(TextOf(Child(txtTimeout)), "12");
  EXPECT_EQ(form_.txtTimeout.text, "12");
  EXPECT_EQ(presets_.CallTimeoutSeconds, 5);
  Type(txtTimeout, "\r");
  EXPECT_EQ(Focused(), Child(lstStatusLog));
  EXPECT_EQ(presets_.CallTimeoutSeconds, 12);
  EXPECT_EQ(actions_.calls, Calls{"SaveSettings"});
}

TEST_F(WindowTest, TextSetByAnotherProgramIsCheckedWhenTheBoxIsLeft) {
  Focus(Child(txtParkCarrier));
  SetText(Child(txtParkCarrier), "4000");
  EXPECT_EQ(form_.txtParkCarrier.text, "4000");
  Focus(Child(lstCallLog));
  EXPECT_EQ(TextOf(Child(txtParkCarrier)), "2604");
  EXPECT_EQ(form_.txtParkCarrier.text, "2604");

  Focus(Child(txtVcVolume));
  SetText(Child(txtVcVolume), "60");
  Focus(Child(lstCallLog));
  EXPECT_EQ(presets_.VcAudioGain, 60);
  EXPECT_EQ(actions_.calls, Calls{"SaveSettings"});
}

TEST_F(WindowTest, CheckBoxSwitchesWithItsStateAndShowsGrey) {
  Press(chkCreateCallActivityCvsFile);
  EXPECT_EQ(Send(Child(chkCreateCallActivityCvsFile), BM_GETCHECK), 1);
  EXPECT_EQ(form_.chkCreateCallActivityCvsFile.value, 1);
  Press(chkCreateCallActivityCvsFile);
  EXPECT_EQ(Send(Child(chkCreateCallActivityCvsFile), BM_GETCHECK), 0);
  EXPECT_EQ(actions_.calls, (Calls{"LogMode on", "LogMode off"}));
  form_.chkIgnorePriority.value = 2;
  EXPECT_EQ(Send(Child(chkIgnorePriority), BM_GETCHECK), 2);
}

TEST_F(WindowTest, OptionsExcludeEachOtherAndSwitchTheRecordOnlyControls) {
  EXPECT_FALSE(IsEnabled(Child(lstRecOnlyGSSI)));
  Press(optRecordMode_2);
  EXPECT_EQ(Send(Child(optRecordMode_0), BM_GETCHECK), 0);
  EXPECT_EQ(Send(Child(optRecordMode_2), BM_GETCHECK), 1);
  EXPECT_TRUE(IsEnabled(Child(txtRecOnlyGSSI)));
  EXPECT_TRUE(IsEnabled(Child(lstRecOnlyGSSI)));
  Press(optRecordMode_1);
  EXPECT_FALSE(IsEnabled(Child(txtRecOnlyGSSI)));
}

TEST_F(WindowTest, ArrowKeysMoveTheChosenOffset) {
  Focus(Child(optOffsets_3));
  Post(Child(optOffsets_3), WM_KEYDOWN, VK_DOWN);
  Pump();
  EXPECT_EQ(Focused(), Child(optOffsets_2));
  EXPECT_TRUE(form_.optOffsets[2].value);
  EXPECT_FALSE(form_.optOffsets[3].value);
  EXPECT_EQ(presets_.FrequencyOffset, -6250);
}

TEST_F(WindowTest, BaseFrequencyFollowsTheComboBox) {
  ASSERT_EQ(Send(Child(cboBaseFrequency), CB_GETCOUNT), 9);
  EXPECT_EQ(Send(Child(cboBaseFrequency), CB_GETCURSEL), 7);
  Send(Child(cboBaseFrequency), CB_SETCURSEL, 3);
  SendCommand(main(), cboBaseFrequency, CBN_SELCHANGE);
  EXPECT_EQ(presets_.BaseFrequency, 400000000);
}

TEST_F(WindowTest, MenuCommandsReachTheirHandlers) {
  Post(main(), WM_COMMAND, static_cast<WPARAM>(Number(mnuGSSIEditor)));
  Pump();
  EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
  EXPECT_FALSE(MenuItemOf(main(), mnuCompactMode).checked);
  Post(main(), WM_COMMAND, static_cast<WPARAM>(Number(mnuCompactMode)));
  Pump();
  EXPECT_TRUE(MenuItemOf(main(), mnuCompactMode).checked);
  EXPECT_EQ(TextOf(main()), "Corva v0.99.6s");
}

TEST_F(WindowTest, DoubleClickOnACallLogLineOpensTheEditorOnItsGroup) {
  FillCallLog(3);
  form_.lstCallLog.Add("15/11/2026 14:23:05 - Call ID: 1207 - On carrier: 2610 - Group: 9001 [x]");
  PostClickAtLine(Child(lstCallLog), 3, true);
  Pump();
  EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
  EXPECT_EQ(main_form_.hand_over().EditorGssi, 9001);
  EXPECT_TRUE(main_form_.hand_over().EditorPreselect);
}

TEST_F(WindowTest, ListedSubscriberIsEditedByMouseAndNotByKeyboard) {
  form_.lblGroupNumber.caption = " 9001";
  form_.lblNetworkInfo.caption = "MNC:1  LA:5";
  form_.lstCurrentSSI_Users.Add("5010");
  form_.lstCurrentSSI_Users.Add("5011");
  Focus(Child(lstCurrentSSI_Users));
  Post(Child(lstCurrentSSI_Users), WM_KEYDOWN, VK_DOWN);  // may only reach the first line
  Post(Child(lstCurrentSSI_Users), WM_KEYDOWN, VK_DOWN);
  Pump();
  EXPECT_EQ(form_.lstCurrentSSI_Users.list_index(), 1);
  EXPECT_TRUE(actions_.calls.empty());
  PostClickAtLine(Child(lstCurrentSSI_Users), 0, false);
  Pump();
  EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
  EXPECT_EQ(main_form_.hand_over().EditorSsi, 5010);
}

TEST_F(WindowTest, EnterAndDoubleClickEditTheRecordOnlyList) {
  Press(cmdSettingTab_1);
  Press(optRecordMode_2);
  form_.lstRecOnlyGSSI.Add("9001");
  Focus(Child(txtRecOnlyGSSI));
  Type(txtRecOnlyGSSI, "9x\r");
  EXPECT_EQ(form_.txtRecOnlyGSSI.text, "9x");
  EXPECT_EQ(actions_.calls, Calls{"AddRecOnlyGssi"});
  EXPECT_EQ(Focused(), Child(lstStatusLog));
  PostClickAtLine(Child(lstRecOnlyGSSI), 0, true);
  Pump();
  EXPECT_EQ(actions_.calls.back(), "RemoveRecOnlyGssi");
}

TEST_F(WindowTest, MouseOverTheCallDetailsFetchesTheFocusOnlyInTheForeground) {
  TakeForeground(main());
  Pump();
  ASSERT_TRUE(IsForeground(main()));
  for (const ControlId over : {fraCallDetails, lblCallID, lstCallLog}) {
    Focus(Child(txtTimeout));
    Post(Child(over), WM_MOUSEMOVE, 0, 0x00050005);
    Pump();
    EXPECT_EQ(Focused(), Child(lstCallLog)) << Number(over);
  }
  Focus(Child(txtTimeout));
  Post(Child(fraPresets), WM_MOUSEMOVE, 0, 0x00050005);
  Pump();
  EXPECT_EQ(Focused(), Child(txtTimeout));

  const Handle other = MakeOtherWindow();
  Focus(other);
  Post(Child(lstCallLog), WM_MOUSEMOVE, 0, 0x00060006);
  Pump();
  EXPECT_NE(Focused(), Child(lstCallLog));
  EndWindow(other);
}

TEST_F(WindowTest, TabKeyGoesRoundAndEnterPressesAButton) {
  Focus(Child(lstCallLog));
  Post(Child(lstCallLog), WM_KEYDOWN, VK_TAB);
  Pump();
  EXPECT_EQ(Focused(), Child(cmdSettingTab_0));
  Post(Child(cmdSettingTab_0), WM_KEYDOWN, VK_TAB);
  Pump();
  EXPECT_EQ(Focused(), Child(cmdSettingTab_1));
  Post(Child(cmdSettingTab_1), WM_KEYDOWN, VK_RETURN);
  Pump();
  EXPECT_TRUE(IsShown(Child(fraRecordingOptions)));
}

// The controls that a user reaches, in the order of the table, once round on every page.
TEST_F(WindowTest, TabKeyGoesThroughTheTableInItsOrder) {
  for (const ControlId tab :
       {cmdSettingTab_0, cmdSettingTab_1, cmdSettingTab_2, cmdSettingTab_3, cmdSettingTab_4}) {
    Press(tab);
    std::vector<std::string> expected;
    std::vector<std::string> reached;
    Focus(Child(cmdStartAll));
    for (const ControlRow& row : MainWindowTable(form_).controls) {
      const ControlKind kind = row.control.kind();
      const bool takes_none =
          kind == ControlKind::kLabel || kind == ControlKind::kShape ||
          kind == ControlKind::kFrame ||
          (kind == ControlKind::kOption && !As<OptionButton>(row.control).value);
      if (takes_none || !row.control.enabled) continue;
      if (row.frame != nullptr && !row.frame->visible) continue;
      expected.push_back(row.control.name());
      reached.push_back(NameOf(Focused()));
      Post(Focused(), WM_KEYDOWN, VK_TAB);
      Pump();
    }
    EXPECT_GT(expected.size(), 10U);
    EXPECT_EQ(reached, expected);
    EXPECT_EQ(Focused(), Child(cmdStartAll));
  }
}

TEST_F(WindowTest, TabKeyStopsOnceInAGroupOfOptions) {
  Focus(Child(cboBaseFrequency));
  Post(Child(cboBaseFrequency), WM_KEYDOWN, VK_TAB);
  Pump();
  EXPECT_EQ(Focused(), Child(optOffsets_3));
  Post(Child(optOffsets_3), WM_KEYDOWN, VK_TAB);
  Pump();
  EXPECT_EQ(Focused(), Child(txtTimeout));
}

TEST_F(WindowTest, FocusComesBackToTheControlThatHadIt) {
  Focus(Child(txtVcVolume));
  const Handle other = MakeOtherWindow();
  Focus(other);
  Pump();
  EndWindow(other);
  TakeForeground(main());
  Pump();
  EXPECT_EQ(Focused(), Child(txtVcVolume));
}

TEST_F(WindowTest, InputSentWhileAHandlerIsAtWorkWaitsForItsTurn) {
  const Handle box = Child(chkCreateCallActivityCvsFile);
  volatile bool sent = false;
  std::size_t calls_meanwhile = 99;
  std::thread other;
  loop_.Post(EventSource::kUser, [&] {
    other = std::thread([&] {
      Send(box, BM_CLICK);
      sent = true;
    });
    AdmitSentMessages(sent);
    calls_meanwhile = actions_.calls.size();
  });
  Pump();
  other.join();
  EXPECT_EQ(calls_meanwhile, 0U);
  EXPECT_EQ(actions_.calls, Calls{"LogMode on"});
}

TEST_F(WindowTest, InputSentWhileTheLoopIsWaitingIsHandledAtOnce) {
  const Handle box = Child(chkCreateCallActivityCvsFile);
  std::atomic<bool> answered = false;
  std::intptr_t check = -1;
  std::thread other([&] {
    Send(box, BM_CLICK);
    check = Send(box, BM_GETCHECK);
    answered = true;
  });
  while (!answered) loop_.DoEvents();
  other.join();
  EXPECT_EQ(check, 1);
}

TEST_F(WindowTest, NothingReachesTheProgramOnceItIsShuttingDown) {
  flags_.mblnShuttingDown = true;
  Press(cmdStartAll);
  Press(chkIgnorePriority);
  Post(main(), WM_CLOSE);
  Pump();
  EXPECT_TRUE(actions_.calls.empty());
  EXPECT_EQ(Send(Child(chkIgnorePriority), BM_GETCHECK), 0);
}

TEST_F(WindowTest, EndOfSessionIsClosing) {
  EXPECT_EQ(Send(main(), WM_QUERYENDSESSION), 1);
  Send(main(), WM_ENDSESSION, 0);
  EXPECT_TRUE(actions_.calls.empty());
  Send(main(), WM_ENDSESSION, 1);
  EXPECT_EQ(actions_.calls, Calls{"SessionEnding"});
}

TEST_F(WindowTest, WindowEndedInsideItsOwnHandlerLeavesTheStateUsable) {
  const Handle old = main();
  actions_.on_close = [this] { window_.Destroy(); };
  Post(main(), WM_CLOSE);
  Pump();
  EXPECT_EQ(actions_.calls, Calls{"CloseRequested"});
  EXPECT_EQ(main(), nullptr);
  EXPECT_FALSE(IsWindowAlive(old));
  form_.lblCallID.caption = " 1";
  AddCallLine(form_, "after");
  SetFocus(form_, form_.lstCallLog);
  form_.Window::caption = "after";
  EXPECT_EQ(form_.lstCallLog.count(), 1);
}

}  // namespace

}  // namespace corvane::ui_test
