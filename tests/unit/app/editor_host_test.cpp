// The editor in the assembled program: its life, what its edits do to call following and to the
// files, and the ways into it from the main window.
#include "app/editor_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scenarios/world.h"

namespace corvane::sim {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

WorldOptions WithLists() {
  return {.scenario = "base 800000000\n",
          .files = {{kGroupsFile, "9001;262;42;North;3;True\r\n9002;262;42;South;0;True\r\n"},
                    {kSubscribersFile, "5010;9001;262;42;Alpha;2026-11-14 10:11:12\r\n"}}};
}

class EditorHostTest : public ::testing::Test {
 protected:
  void SetUp() override {
    world_.BringUp();
    ASSERT_TRUE(world_.RunUntil([this] { return world_.view().network.mnc() == 42; }, 3000));
  }
  void OpenFromMenu() {
    world_.user().Click(world_.form().mnuGSSIEditor);
    world_.Run(200);
  }
  // Follows a call of group 9001 with subscriber 5010 talking.
  void Follow() {
    world_.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=60");
    ASSERT_TRUE(world_.RunUntil([this] { return world_.Following(); }, 2000));
  }
  [[nodiscard]] Dialog& dialog() { return *world_.view().dialog; }
  [[nodiscard]] bool Open() { return world_.view().dialog != nullptr; }

  World world_{WithLists()};
};

TEST_F(EditorHostTest, OpensOneEditorAndBringsItToTheFrontAgain) {
  OpenFromMenu();
  ASSERT_TRUE(Open());
  EXPECT_EQ(dialog().lstGSSI_Lockouts.count(), 2);
  OpenFromMenu();
  EXPECT_EQ(world_.editors_opened, 1);
  EXPECT_EQ(world_.editor_brought_to_front, 1);
}

TEST_F(EditorHostTest, EachOpeningBeginsAnew) {
  OpenFromMenu();
  world_.editor->ListSelected(dialog().lstGSSI_Lockouts, 1, true);
  world_.editor->MouseUp(dialog().lstGSSI_Lockouts, kLeftButton, 1);
  world_.editor->TextEdited(dialog().txtGssiLabel, "half typed");
  world_.editor->CloseRequested();
  EXPECT_FALSE(Open());
  world_.Run(10);
  OpenFromMenu();
  EXPECT_EQ(world_.editors_opened, 2);
  EXPECT_EQ(dialog().lstGSSI_Lockouts.list_index(), -1);
  EXPECT_EQ(dialog().txtGssiLabel.text, "");
  EXPECT_EQ(dialog().cmdUpdateGSSI.caption, "^ Update");
}

// The editor ends itself inside its own timer and its own handlers.
TEST_F(EditorHostTest, IsGoneAfterFiveIdleMinutesAndCanBeOpenedAgain) {
  OpenFromMenu();
  world_.Run(5 * 60000 + 1000);
  EXPECT_FALSE(Open());
  EXPECT_EQ(world_.editor, nullptr);
  OpenFromMenu();
  world_.editor->Escape();
  EXPECT_FALSE(Open());
}

TEST_F(EditorHostTest, AWindowThatTheSystemRefusesIsTold) {
  world_.refuse_editor = true;
  OpenFromMenu();
  EXPECT_FALSE(Open());
  EXPECT_EQ(world_.CountStatusLog("The G/SSI editor's window could not be opened"), 1);
  world_.refuse_editor = false;
  OpenFromMenu();
  EXPECT_TRUE(Open());
}

TEST_F(EditorHostTest, ALockoutTakesEffectAtTheNextSetup) {
  OpenFromMenu();
  world_.editor->MouseUp(dialog().lstGSSI_Lockouts, kRightButton, 0);
  world_.Do("call id=7 group=9001 party=5010 carrier=2610 slot=3 for=3");
  world_.Run(2000);
  EXPECT_FALSE(world_.Following());
  EXPECT_EQ(world_.CountCallLog("Skipping Call, lockout found GSSI: 9001"), 1);
  world_.editor->MouseUp(dialog().lstGSSI_Lockouts, kRightButton, 0);
  world_.Run(2000);
  world_.Do("call id=8 group=9001 party=5010 carrier=2610 slot=3 for=3");
  EXPECT_TRUE(world_.RunUntil([this] { return world_.Following(); }, 2000));
}

TEST_F(EditorHostTest, TogglingTheHeldGroupReleasesTheHoldOfTheMainWindow) {
  Follow();
  world_.user().MouseUp(world_.form().lblGroupHold, kLeftButton, -1);
  ASSERT_EQ(world_.form().lblGroupHold.fore_colour, kHoldOrange);
  OpenFromMenu();
  world_.editor->MouseUp(dialog().lstGSSI_Lockouts, kRightButton, 0);
  EXPECT_EQ(world_.form().lblGroupHold.fore_colour, kButtonText);
  EXPECT_FALSE(world_.view().locks.held());
}

TEST_F(EditorHostTest, EditsAreInTheFilesOfTheNextStart) {
  world_.user().Click(world_.form().mnuGSSIEditor);
  Follow();
  world_.user().MouseUp(world_.form().lblGroupNumber, kLeftButton, -1);
  world_.Run(200);
  world_.editor->TextEdited(dialog().txtGssiLabel, "Northern");
  world_.editor->ComboSelected(dialog().cboGSSIPriority, 8);
  world_.editor->Click(dialog().cmdUpdateGSSI);
  world_.editor->TextEdited(dialog().txtSSI_labelEdit, "Delta");
  EXPECT_FALSE(world_.editor->KeyPress(dialog().txtSSI_labelEdit, kEnterCode));
  world_.editor->MouseUp(dialog().lstGSSI_Lockouts, kRightButton, 1);
  world_.user().CloseRequested();
  EXPECT_THAT(world_.FileText(kGroupsFile), HasSubstr("9001;262;42;Northern;8;True"));
  EXPECT_THAT(world_.FileText(kGroupsFile), HasSubstr("9002;262;42;South;0;False"));
  EXPECT_THAT(world_.FileText(kSubscribersFile), HasSubstr("5010;9001;262;42;Delta;"));
}

TEST_F(EditorHostTest, QuickEditsAndTheCallLogSelectTheirGroupAndSubscriber) {
  Follow();
  Form1& form = world_.form();
  for (Label* label : {&form.lblGroupNumber, &form.lblCurrentSSI}) {
    world_.user().MouseUp(*label, kRightButton, -1);
    world_.Run(200);
    EXPECT_EQ(dialog().txtGssiLabel.text, "North") << label->name();
    EXPECT_EQ(dialog().txtSSI_labelEdit.text, "Alpha") << label->name();
    world_.editor->CloseRequested();
    world_.Run(10);
  }
  const int setup = form.lstCallLog.count() - 2;
  ASSERT_THAT(form.lstCallLog.Item(setup), HasSubstr(" - Group: 9001"));
  world_.user().ListSelected(form.lstCallLog, setup, true);
  world_.user().DoubleClick(form.lstCallLog);
  world_.Run(200);
  EXPECT_EQ(dialog().txtGssiLabel.text, "North");
  EXPECT_EQ(dialog().Label1.caption, "Seen SSI for GSSI (9001)");
}

TEST_F(EditorHostTest, IsInertFromTheFirstStepOfAShutdownAndClosesBeforeTheMainWindow) {
  Follow();
  OpenFromMenu();
  bool tried = false;
  // The shutdown ends the call first, which lets events run.
  world_.loop.Post(EventSource::kUser, [&] {
    tried = world_.app->flags().mblnShuttingDown && world_.editor != nullptr;
    if (tried) {
      world_.editor->MouseUp(dialog().lstGSSI_Lockouts, kRightButton, 0);
      world_.editor->CloseRequested();
    }
  });
  world_.user().CloseRequested();
  EXPECT_TRUE(tried);
  EXPECT_THAT(world_.windows_closed, ::testing::ElementsAre("editor", "main window"));
  EXPECT_THAT(world_.FileText(kGroupsFile), HasSubstr("9001;262;42;North;3;True"));
}

}  // namespace
}  // namespace corvane::sim
