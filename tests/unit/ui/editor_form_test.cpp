// Opening the editor, filling it, selecting in it, and its idle end.
#include "ui/editor_form.h"

#include "unit/ui/editor_fixture.h"

namespace corvane {

namespace {

using EditorFormTest = EditorTest;

constexpr const char* kSelectNetwork = "Select Network";
constexpr std::int64_t kMinuteMs = 60000;

std::string Padded(const std::string& label) {
  return label + std::string(30 - label.size(), ' ');
}

TEST_F(EditorFormTest, IsEmptyAndCoveredUntilItIsFilled) {
  EXPECT_EQ(dialog_.Frame4.caption, "GSSI/Labels and Lockouts (0)");
  EXPECT_EQ(dialog_.Label1.caption, "Seen SSI for GSSI (0)");
  EXPECT_EQ(dialog_.cmdUpdateGSSI.caption, "^ Update");
  EXPECT_EQ(Shown(dialog_.cboCountry), kSelectNetwork);
  EXPECT_EQ(Shown(dialog_.cboNetworks), kSelectNetwork);
  EXPECT_TRUE(dialog_.lstGssiBlank.visible);
  EXPECT_TRUE(dialog_.lstSsiBlank.visible);
  Open(9001, 5010);
  EXPECT_FALSE(dialog_.lstGssiBlank.visible);
  EXPECT_FALSE(dialog_.lstSsiBlank.visible);
}

TEST_F(EditorFormTest, StandsRightOfAndBelowTheMainWindowsCorner) {
  Open();
  const Window::Bounds bounds = dialog_.bounds;
  EXPECT_NEAR(bounds.left - 3000, 1600, 8);  // whole pixels of 15 twips
  EXPECT_NEAR(bounds.top - 1500, 100, 8);
}

TEST_F(EditorFormTest, OffersTheTenPrioritiesInAscendingOrder) {
  Open();
  EXPECT_EQ(Texts(dialog_.cboGSSIPriority),
            (Lines{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}));
}

TEST_F(EditorFormTest, ShowsTheGroupsOfTheNetworkInReach) {
  Open();
  EXPECT_EQ(Shown(dialog_.cboCountry), "262");
  EXPECT_EQ(Shown(dialog_.cboNetworks), "42");
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.items(),
            (Lines{"9001 - 3 - North", "9002 - 0 - South", "9003 - 12 - "}));
  EXPECT_TRUE(dialog_.lstGSSI_Lockouts.ticked(0));
  EXPECT_FALSE(dialog_.lstGSSI_Lockouts.ticked(1));
  EXPECT_TRUE(dialog_.lstGSSI_Lockouts.ticked(2));
  EXPECT_EQ(dialog_.Frame4.caption, "GSSI/Labels and Lockouts (3) [5]");
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.list_index(), -1);
  EXPECT_EQ(dialog_.List1.count(), 0);
  EXPECT_EQ(dialog_.Label1.caption, "Seen SSI for GSSI (0)");
}

TEST_F(EditorFormTest, NamesCountriesAndNetworksWhereTheirLabelsAreLoaded) {
  names_.CountryLabels.loaded = true;
  names_.CountryLabels.Append("262;Sampleland");
  names_.NetworkLabels.loaded = true;
  names_.NetworkLabels.Append("262;42;Sample Trunk");
  names_.NetworkLabels.Append("262;7;");
  Open();
  EXPECT_EQ(Texts(dialog_.cboCountry), (Lines{"204", "262 - Sampleland"}));
  EXPECT_EQ(Texts(dialog_.cboNetworks), (Lines{"7", "42 - Sample Trunk"}));
  EXPECT_EQ(dialog_.cboCountry.entries.get()[1].item_data, 262);
  EXPECT_EQ(dialog_.cboNetworks.entries.get()[1].item_data, 42);
}

TEST_F(EditorFormTest, OffersTheNetworkInReachThoughNothingIsKnownOfIt) {
  network_.CurrentMcc = "901";
  network_.CurrentMnc = "3";
  Open();
  EXPECT_EQ(Texts(dialog_.cboCountry), (Lines{"204", "262", "901"}));
  EXPECT_EQ(Shown(dialog_.cboCountry), "901");
  EXPECT_EQ(Shown(dialog_.cboNetworks), "3");
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.count(), 0);
  EXPECT_EQ(dialog_.Frame4.caption, "GSSI/Labels and Lockouts (0) [5]");
}

TEST_F(EditorFormTest, WithoutANetworkNothingIsSelectedAndTheListsAreEmpty) {
  network_.CurrentMcc = "0";
  network_.CurrentMnc = "0";
  Open();
  EXPECT_EQ(Shown(dialog_.cboCountry), kSelectNetwork);
  EXPECT_EQ(Shown(dialog_.cboNetworks), kSelectNetwork);
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.count(), 0);
  (void)sink_.Take();
  loop_.AdvanceMs(1000);
  EXPECT_EQ(sink_.Take(), Lines{}) << "filled once, not at every tick";
}

TEST_F(EditorFormTest, SelectsTheGroupAndTheSubscriberThatAreHandedOver) {
  Open(9001, 5011);
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.list_index(), 0);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "North");
  EXPECT_EQ(Shown(dialog_.cboGSSIPriority), "3");
  EXPECT_EQ(dialog_.List1.items(),
            (Lines{"5010 - " + Padded("Alpha"), "5011 - " + Padded("Beta")}));
  EXPECT_EQ(dialog_.List1.list_index(), 1);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "Beta");
  EXPECT_EQ(dialog_.lblLastSeen.caption, clock_.GeneralDate({2026, 11, 15, 14, 23, 5}));
  EXPECT_EQ(dialog_.Label1.caption, "Seen SSI for GSSI (9001)");
  EXPECT_FALSE(hand_over_.EditorPreselect);
}

TEST_F(EditorFormTest, AQuickEditSelectsInAnEditorThatIsOpen) {
  Open(9001, 5011);
  HandOver(9002, 5010);
  Fill();
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.list_index(), 1);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "South");
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "Alpha in the south");
  EXPECT_EQ(dialog_.Label1.caption, "Seen SSI for GSSI (9002)");
}

TEST_F(EditorFormTest, AQuickEditOfAnUnknownGroupLeavesNothingOfTheOneBefore) {
  Open(9001, 5011);
  HandOver(9999, 5011);
  Fill();
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.list_index(), -1);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "");
  EXPECT_EQ(Shown(dialog_.cboGSSIPriority), "");
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "");
  EXPECT_EQ(dialog_.lblLastSeen.caption, "");
  EXPECT_EQ(dialog_.Label1.caption, "Seen SSI for GSSI (9999)");
}

TEST_F(EditorFormTest, IsASnapshotWhileCallFollowingGoesOn) {
  Open(9001);
  AddGroup(9004, "", 0, true);
  AddSubscriber(5012, 9001, "");
  loop_.AdvanceMs(1000);
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.count(), 3);
  EXPECT_EQ(dialog_.List1.count(), 2);
  HandOver(9004, 0);
  Fill();
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.count(), 4);
}

TEST_F(EditorFormTest, APriorityThatIsNoneOfTheTenLeavesTheBoxWithoutASelection) {
  Open(9003);
  EXPECT_EQ(dialog_.cboGSSIPriority.list_index, -1);
}

TEST_F(EditorFormTest, ALeftClickOnAGroupShowsItAndItsSubscribers) {
  Open(9001, 5011);
  ClickLine(dialog_.lstGSSI_Lockouts, 1);
  EXPECT_EQ(hand_over_.EditorGssi, 9002);
  EXPECT_EQ(hand_over_.EditorSsi, 0);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "South");
  EXPECT_EQ(Shown(dialog_.cboGSSIPriority), "0");
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "");
  EXPECT_EQ(dialog_.lblLastSeen.caption, "");
  EXPECT_EQ(dialog_.List1.items(), (Lines{"5010 - " + Padded("Alpha in the south")}));
  EXPECT_EQ(dialog_.List1.list_index(), -1);
}

TEST_F(EditorFormTest, TheArrowKeysSelectLikeAClick) {
  Open(9001);
  ArrowTo(dialog_.lstGSSI_Lockouts, 1);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "South");
  ArrowTo(dialog_.lstGSSI_Lockouts, 0, kUpArrowCode);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "North");
  ArrowTo(dialog_.List1, 1);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "Beta");
  EXPECT_EQ(hand_over_.EditorSsi, 5011);
  EXPECT_EQ(hand_over_.EditorGssi, 9001);
}

TEST_F(EditorFormTest, AnArrowKeyAtTheEndOfAListShowsItsLineAgain) {
  Open(9001);
  ArrowTo(dialog_.lstGSSI_Lockouts, 1);
  form_->TextEdited(dialog_.txtGssiLabel, "being typed");
  ArrowTo(dialog_.lstGSSI_Lockouts, 1);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "South");
}

// With End, Page Down or a letter, too: an update goes to the line that is selected.
TEST_F(EditorFormTest, TheFieldsBelongToTheSelectedLineWhateverKeySelectedIt) {
  constexpr int kEnd = 35;
  constexpr int kTab = 9;
  Open(9001);
  ArrowTo(dialog_.lstGSSI_Lockouts, 1, kEnd);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "South");
  form_->TextEdited(dialog_.txtGssiLabel, "being typed");
  form_->KeyUp(dialog_.lstGSSI_Lockouts, kTab);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "being typed");
}

TEST_F(EditorFormTest, ALeftClickOnASubscriberShowsLabelAndDate) {
  Open(9001);
  ClickLine(dialog_.List1, 0);
  EXPECT_EQ(hand_over_.EditorSsi, 5010);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "Alpha");
  EXPECT_EQ(dialog_.lblLastSeen.caption, clock_.GeneralDate({2026, 11, 15, 14, 23, 5}));
}

TEST_F(EditorFormTest, OtherButtonsSelectNothing) {
  Open(9001);
  form_->MouseUp(dialog_.lstGSSI_Lockouts, kMiddleButton, 1);
  form_->MouseUp(dialog_.List1, kRightButton, 1);
  EXPECT_EQ(hand_over_.EditorGssi, 9001);
  EXPECT_EQ(hand_over_.EditorSsi, 0);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "");
}

TEST_F(EditorFormTest, ChoosingACountryOffersItsNetworksAndCoversTheLists) {
  Open(9001, 5010);
  ChooseCode(dialog_.cboCountry, 204);
  EXPECT_EQ(Texts(dialog_.cboNetworks), Lines{"42"});
  EXPECT_EQ(Shown(dialog_.cboNetworks), kSelectNetwork);
  EXPECT_TRUE(dialog_.lstGssiBlank.visible);
  EXPECT_TRUE(dialog_.lstSsiBlank.visible);
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.count(), 0);
  EXPECT_EQ(dialog_.List1.count(), 0);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "");
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "");
}

TEST_F(EditorFormTest, ChoosingANetworkShowsItsGroupsWithNoneSelected) {
  Open(9001, 5010);
  ChooseCode(dialog_.cboCountry, 204);
  ChooseCode(dialog_.cboNetworks, 42);
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.items(), Lines{"8001 - 1 - Other country"});
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.list_index(), -1);
  EXPECT_EQ(hand_over_.EditorGssi, 0);
  EXPECT_EQ(hand_over_.EditorSsi, 0);
  EXPECT_EQ(dialog_.Label1.caption, "Seen SSI for GSSI (0)");
  EXPECT_FALSE(dialog_.lstGssiBlank.visible);
  EXPECT_FALSE(dialog_.lstSsiBlank.visible);
  loop_.AdvanceMs(1000);
  EXPECT_EQ(Shown(dialog_.cboCountry), "204") << "the choice stays";
}

TEST_F(EditorFormTest, AnEntryOrALineThatIsNotThereIsNotSelected) {
  Open(9001);
  const int country = dialog_.cboCountry.list_index;
  const auto entries = static_cast<int>(dialog_.cboCountry.entries.get().size());
  for (const int index : {-1, entries}) {
    form_->ComboSelected(dialog_.cboCountry, index);
    EXPECT_EQ(dialog_.cboCountry.list_index, country);
  }
  for (const int line : {-1, 3}) {
    form_->ListSelected(dialog_.lstGSSI_Lockouts, line, true);
    EXPECT_EQ(dialog_.lstGSSI_Lockouts.list_index(), -1);
  }
}

TEST_F(EditorFormTest, ClosesAtTheFifthIdleMinute) {
  Open();
  loop_.AdvanceMs(5 * kMinuteMs - 1000);
  EXPECT_EQ(unloaded_, 0);
  loop_.AdvanceMs(2000);
  EXPECT_EQ(unloaded_, 1);
  loop_.AdvanceMs(10 * kMinuteMs);
  EXPECT_EQ(unloaded_, 1);
}

TEST_F(EditorFormTest, AnyInputAndAQuickEditBeginTheIdleCountAnew) {
  Open();
  loop_.AdvanceMs(4 * kMinuteMs + 30000);
  form_->AnyInput();
  loop_.AdvanceMs(4 * kMinuteMs);
  EXPECT_EQ(unloaded_, 0);
  HandOver(9001, 0);
  loop_.AdvanceMs(4 * kMinuteMs);
  EXPECT_EQ(unloaded_, 0);
  loop_.AdvanceMs(kMinuteMs + 1000);
  EXPECT_EQ(unloaded_, 1);
}

TEST_F(EditorFormTest, EscapeAndTheCloseButtonEndIt) {
  Open();
  form_->Escape();
  EXPECT_EQ(unloaded_, 1);
  Open();
  form_->CloseRequested();
  EXPECT_EQ(unloaded_, 2);
  HandOver(9001, 0);
  loop_.AdvanceMs(10 * kMinuteMs);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "") << "an ended editor does nothing any more";
  EXPECT_EQ(unloaded_, 2);
}

TEST_F(EditorFormTest, DoesNothingOnceTheProgramShutsDown) {
  Open(9001, 5010);
  flags_.mblnShuttingDown = true;
  (void)sink_.Take();
  form_->TextEdited(dialog_.txtGssiLabel, "changed");
  form_->Click(dialog_.cmdUpdateGSSI);
  ClickLine(dialog_.lstGSSI_Lockouts, 1);
  RightClick(0);
  ArrowTo(dialog_.List1, 1);
  Enter(dialog_.txtSSI_labelEdit, "changed");
  ChooseCode(dialog_.cboCountry, 204);
  EXPECT_FALSE(form_->KeyPress(dialog_.txtGssiLabel, 'a'));
  form_->Escape();
  form_->CloseRequested();
  HandOver(9002, 0);
  loop_.AdvanceMs(10 * kMinuteMs);
  EXPECT_EQ(sink_.Take(), Lines{});
  EXPECT_EQ(unloaded_, 0);
  EXPECT_EQ(Group(9001).Label.trimmed(), "North");
  EXPECT_TRUE(Group(9001).Follow);
}

TEST_F(EditorFormTest, WithoutANetworkARecordOfNoneIsNotSelectedEither) {
  AddGroup(1, "Nowhere", 0, true, 0, 0);
  network_.CurrentMcc = "0";
  network_.CurrentMnc = "0";
  Open();
  EXPECT_EQ(Shown(dialog_.cboCountry), kSelectNetwork);
  EXPECT_EQ(Shown(dialog_.cboNetworks), kSelectNetwork);
  network_.CurrentMcc = "1";
  network_.CurrentMnc = "1";
  Open();
  EXPECT_EQ(Shown(dialog_.cboCountry), "1");
  EXPECT_EQ(Shown(dialog_.cboNetworks), "1");
}

TEST_F(EditorFormTest, OffersNoNetworkZeroWhileOnlyTheCountryIsKnown) {
  network_.CurrentMnc = "0";
  Open();
  EXPECT_EQ(Texts(dialog_.cboNetworks), (Lines{"7", "42"}));
}

TEST_F(EditorFormTest, ShowsNoSubscribersOfAnotherCountrysGroupOfTheSameNumber) {
  AddSubscriber(5040, 9001, "Stranger", 204);
  Open(9001);
  EXPECT_EQ(dialog_.List1.items(),
            (Lines{"5010 - " + Padded("Alpha"), "5011 - " + Padded("Beta")}));
}

TEST_F(EditorFormTest, TheFieldsBelongToTheSelectedSubscriberWhateverKeySelectedIt) {
  constexpr int kEnd = 35;
  constexpr int kTab = 9;
  Open(9001, 5010);
  ArrowTo(dialog_.List1, 1, kEnd);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "Beta");
  form_->TextEdited(dialog_.txtSSI_labelEdit, "being typed");
  form_->KeyUp(dialog_.List1, kTab);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "being typed");
}

TEST_F(EditorFormTest, ASubscriberOfAGroupWithoutARecordCanBeSelected) {
  AddSubscriber(5030, 9999, "Gamma");
  Open(9999);
  ASSERT_EQ(dialog_.lstGSSI_Lockouts.list_index(), -1);
  ClickLine(dialog_.List1, 0);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "Gamma");
  EXPECT_EQ(hand_over_.EditorGssi, 9999);
  EXPECT_EQ(hand_over_.EditorSsi, 5030);
}

TEST_F(EditorFormTest, ALineWhoseRecordIsGoneHasEmptyFields) {
  Open(9001, 5010);
  groups_.Reset();
  subscribers_.Reset();
  RightClick(0);
  EXPECT_FALSE(dialog_.lstGSSI_Lockouts.ticked(0));
  ClickLine(dialog_.List1, 0);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "");
  ClickLine(dialog_.lstGSSI_Lockouts, 0);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "");
  EXPECT_EQ(dialog_.List1.count(), 0);
}

TEST_F(EditorFormTest, DisabledControlsTakeNothing) {
  Open(9001);
  dialog_.txtGssiLabel.enabled = false;
  dialog_.cmdUpdateGSSI.enabled = false;
  (void)sink_.Take();
  form_->TextEdited(dialog_.txtGssiLabel, "typed");
  form_->Click(dialog_.cmdUpdateGSSI);
  EXPECT_EQ(dialog_.txtGssiLabel.text, "North");
  EXPECT_EQ(sink_.Take(), Lines{});
}

TEST_F(EditorFormTest, WhatHasNoMeaningHereDoesNothing) {
  Open(9001, 5010);
  (void)sink_.Take();
  form_->Click(dialog_.lblLastSeen);
  form_->DoubleClick(dialog_.List1);
  form_->MouseMove(dialog_.Frame4, true);
  form_->MouseUp(dialog_.txtGssiLabel, kLeftButton, -1);
  form_->KeyUp(dialog_.txtGssiLabel, kDownArrowCode);
  EXPECT_FALSE(form_->KeyPress(dialog_.lstGSSI_Lockouts, kEnterCode));
  form_->SessionEnding();
  EXPECT_EQ(sink_.Take(), Lines{});
  EXPECT_EQ(unloaded_, 0);
}

}  // namespace

}  // namespace corvane
