// What the editor writes back: labels, priorities, lockouts; and what may be typed.
#include "ui/editor_form.h"
#include "unit/ui/editor_fixture.h"

namespace corvane {

namespace {

using EditorEditTest = EditorTest;

constexpr Colour kUpdatedGreen = 0x00FF00;
constexpr Colour kFailedRed = 0x0000FF;

TEST_F(EditorEditTest, AnUpdateStoresLabelAndPriorityAndRewritesTheLine) {
  Open(9002);
  form_->TextEdited(dialog_.txtGssiLabel, "South side");
  form_->ComboSelected(dialog_.cboGSSIPriority, 7);
  form_->Click(dialog_.cmdUpdateGSSI);
  EXPECT_EQ(Group(9002).Label.padded(), "South side                    ");
  EXPECT_EQ(Group(9002).Priority, 7);
  EXPECT_FALSE(Group(9002).Follow);
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.Item(1), "9002 - 7 - South side");
  EXPECT_FALSE(dialog_.lstGSSI_Lockouts.ticked(1));
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.list_index(), 1);
  EXPECT_EQ(Group(9001).Label.trimmed(), "North");
}

TEST_F(EditorEditTest, TheButtonSaysUpdatedInGreenForASecond) {
  Open(9001);
  form_->Click(dialog_.cmdUpdateGSSI);
  EXPECT_EQ(dialog_.cmdUpdateGSSI.caption, "Updated");
  EXPECT_EQ(dialog_.cmdUpdateGSSI.back_colour, kUpdatedGreen);
  loop_.AdvanceMs(900);
  form_->Click(dialog_.cmdUpdateGSSI);
  loop_.AdvanceMs(900);
  EXPECT_EQ(dialog_.cmdUpdateGSSI.caption, "Updated") << "a second update has a second of its own";
  loop_.AdvanceMs(200);
  EXPECT_EQ(dialog_.cmdUpdateGSSI.caption, "Update");
  EXPECT_EQ(dialog_.cmdUpdateGSSI.back_colour, 0x8000000FU);
}

TEST_F(EditorEditTest, EachFlashEndsOnce) {
  Open(9001, 5010);
  form_->Click(dialog_.cmdUpdateGSSI);
  Enter(dialog_.txtSSI_labelEdit, "Delta");
  loop_.AdvanceMs(1100);
  dialog_.cmdUpdateGSSI.caption = "later";
  dialog_.txtSSI_labelEdit.back_colour = kFailedRed;
  loop_.AdvanceMs(5000);
  EXPECT_EQ(dialog_.cmdUpdateGSSI.caption, "later");
  EXPECT_EQ(dialog_.txtSSI_labelEdit.back_colour, kFailedRed);
}

TEST_F(EditorEditTest, AnUpdateOfAGroupThatIsGoneSaysFailedInRedAndChangesNothing) {
  Open(9001);
  groups_.Reset();
  form_->TextEdited(dialog_.txtGssiLabel, "Anew");
  form_->Click(dialog_.cmdUpdateGSSI);
  EXPECT_EQ(dialog_.cmdUpdateGSSI.caption, "Failed");
  EXPECT_EQ(dialog_.cmdUpdateGSSI.back_colour, kFailedRed);
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.Item(0), "9001 - 3 - North");
  loop_.AdvanceMs(1100);
  EXPECT_EQ(dialog_.cmdUpdateGSSI.caption, "Update");
}

TEST_F(EditorEditTest, AnUpdateWithNothingSelectedDoesNothing) {
  Open();
  form_->TextEdited(dialog_.txtGssiLabel, "Anew");
  (void)sink_.Take();
  form_->Click(dialog_.cmdUpdateGSSI);
  EXPECT_EQ(sink_.Take(), Lines{});
}

TEST_F(EditorEditTest, AnUpdateGoesToTheNetworkThatIsChosen) {
  AddGroup(9001, "Its twin", 2, true, 262, 7);
  Open(9001);
  ChooseCode(dialog_.cboNetworks, 7);
  ClickLine(dialog_.lstGSSI_Lockouts, 1);
  form_->TextEdited(dialog_.txtGssiLabel, "Twin");
  form_->Click(dialog_.cmdUpdateGSSI);
  EXPECT_EQ(Group(9001, 7).Label.trimmed(), "Twin");
  EXPECT_EQ(Group(9001).Label.trimmed(), "North");
}

TEST_F(EditorEditTest, WithoutAChosenPriorityTheStoredOneStays) {
  Open(9003);
  form_->TextEdited(dialog_.txtGssiLabel, "West");
  form_->Click(dialog_.cmdUpdateGSSI);
  EXPECT_EQ(Group(9003).Priority, 12);
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.Item(2), "9003 - 12 - West");
}

// Pasting passes the key filter by.
TEST_F(EditorEditTest, ALabelIsCleanedAndCutBeforeItIsStored) {
  Open(9001, 5010);
  form_->TextEdited(dialog_.txtGssiLabel, "a;b\r\nc\x01 0123456789012345678901234567");
  form_->Click(dialog_.cmdUpdateGSSI);
  EXPECT_EQ(Group(9001).Label.padded(), "abc 01234567890123456789012345");
  EXPECT_EQ(dialog_.txtGssiLabel.text, "abc 01234567890123456789012345");
  Enter(dialog_.txtSSI_labelEdit, "d;e\tf\xE4");
  EXPECT_EQ(Subscriber(9001, 5010).Label.trimmed(), "def\xE4");
  EXPECT_EQ(dialog_.txtSSI_labelEdit.text, "def\xE4");
}

TEST_F(EditorEditTest, EnterStoresASubscribersLabelAndTheBoxIsGreenForASecond) {
  Open(9001, 5011);
  Enter(dialog_.txtSSI_labelEdit, "Gamma");
  EXPECT_EQ(Subscriber(9001, 5011).Label.trimmed(), "Gamma");
  EXPECT_EQ(dialog_.List1.Item(1), "5011 - Gamma                         ");
  EXPECT_EQ(dialog_.txtSSI_labelEdit.back_colour, kUpdatedGreen);
  loop_.AdvanceMs(1100);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.back_colour, 0x80000005U);
}

TEST_F(EditorEditTest, ALabelIsThatOfTheSubscriberInTheShownGroupAlone) {
  Open(9002, 5010);
  Enter(dialog_.txtSSI_labelEdit, "Changed");
  EXPECT_EQ(Subscriber(9002, 5010).Label.trimmed(), "Changed");
  EXPECT_EQ(Subscriber(9001, 5010).Label.trimmed(), "Alpha");
}

// The menu hands over no group; the list on screen is still that of the group before.
TEST_F(EditorEditTest, TheListedGroupStaysWhenTheMenuIsUsedAgain) {
  Open(9002, 5010);
  hand_over_.EditorGssi = 0;
  hand_over_.EditorSsi = 0;
  Enter(dialog_.txtSSI_labelEdit, "Changed");
  EXPECT_EQ(Subscriber(9002, 5010).Label.trimmed(), "Changed");
  EXPECT_EQ(dialog_.txtSSI_labelEdit.back_colour, kUpdatedGreen);
}

TEST_F(EditorEditTest, EnterWithoutASubscriberIsRedForASecond) {
  Open(9001);
  Enter(dialog_.txtSSI_labelEdit, "Nobody");
  EXPECT_EQ(dialog_.txtSSI_labelEdit.back_colour, kFailedRed);
  loop_.AdvanceMs(1100);
  EXPECT_EQ(dialog_.txtSSI_labelEdit.back_colour, 0x80000005U);
  EXPECT_EQ(Subscriber(9001, 5010).Label.trimmed(), "Alpha");
}

TEST_F(EditorEditTest, ARightClickTogglesTheLineUnderThePointerAlone) {
  Open(9001);
  RightClick(1);
  EXPECT_TRUE(Group(9002).Follow);
  EXPECT_TRUE(dialog_.lstGSSI_Lockouts.ticked(1));
  EXPECT_EQ(dialog_.lstGSSI_Lockouts.list_index(), 0) << "the selection stays";
  RightClick(0);
  EXPECT_FALSE(Group(9001).Follow);
  EXPECT_FALSE(dialog_.lstGSSI_Lockouts.ticked(0));
  RightClick(1);
  EXPECT_FALSE(Group(9002).Follow);
  (void)sink_.Take();
  RightClick(-1);
  EXPECT_EQ(sink_.Take(), Lines{}) << "below the last line";
}

TEST_F(EditorEditTest, LeftClickAndSpaceBarToggleNothing) {
  Open(9001);
  ClickLine(dialog_.lstGSSI_Lockouts, 0);
  form_->KeyUp(dialog_.lstGSSI_Lockouts, kSpaceBarCode);
  EXPECT_TRUE(Group(9001).Follow);
  EXPECT_TRUE(dialog_.lstGSSI_Lockouts.ticked(0));
}

TEST_F(EditorEditTest, TogglingTheHeldGroupReleasesTheHold) {
  for (const bool follow_before : {true, false}) {
    Open(9001);
    groups_.SetFollow(groups_.Find(262, 42, 9001).value(), follow_before);
    HandOver(9001, 0);
    Fill();
    locks_.ToggleHold(9001);
    ASSERT_EQ(main_.lblGroupHold.fore_colour, kHoldOrange);
    RightClick(0);
    EXPECT_FALSE(locks_.held());
    EXPECT_EQ(main_.lblGroupHold.fore_colour, 0x80000012U);
    EXPECT_FALSE(main_.lblGroupHold.bold);
    EXPECT_EQ(main_.lblGroupHold.tag, "");
    EXPECT_EQ(main_.lblGroupHold.tool_tip, "Right click to hold a GSSI");
    EXPECT_EQ(main_.lblGroupNumber.tool_tip, "");
  }
}

TEST_F(EditorEditTest, TogglingAnotherGroupLeavesTheHold) {
  Open(9001);
  locks_.ToggleHold(9001);
  RightClick(1);
  EXPECT_EQ(locks_.held(), 9001);
  EXPECT_EQ(main_.lblGroupHold.fore_colour, kHoldOrange);
}

TEST_F(EditorEditTest, LabelsTakeNoSemicolonAndNothingOutsideTheirCodes) {
  Open(9001, 5010);
  for (TextBox* box : {&dialog_.txtGssiLabel, &dialog_.txtSSI_labelEdit}) {
    for (int code = 1; code <= 255; ++code) {
      if (code == kEnterCode) continue;
      const bool typed = code == 8 || (code >= 32 && code <= 128 && code != ';');
      EXPECT_EQ(form_->KeyPress(*box, code), typed) << code;
    }
  }
}

TEST_F(EditorEditTest, EnterInTheGroupsLabelGoesToTheUpdateButton) {
  Open(9001);
  EXPECT_FALSE(form_->KeyPress(dialog_.txtGssiLabel, kEnterCode));
  EXPECT_EQ(sink_.focus(), "cmdUpdateGSSI");
  EXPECT_EQ(Group(9001).Label.trimmed(), "North") << "the button stores it";
}

}  // namespace

}  // namespace corvane
