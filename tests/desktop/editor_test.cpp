// The G/SSI editor, the hold and the quick edits by the user's own hands: pointer and keyboard.
#include <chrono>

#include "desktop/call_test.h"
#include "desktop/harness/screen_points.h"
#include "desktop/harness/user_input.h"

namespace corvane::desktop {
namespace {

using enum ControlId;
using Lines = std::vector<std::string>;

constexpr const char* kGroups = "TETRA_GSSI.txt";
constexpr const char* kSubscribers = "TETRA_SSI.txt";
constexpr std::int32_t kWholeEditorInView = 1'500;  // twips
constexpr std::int32_t kGreen = 0x00FF00;
constexpr std::int32_t kRed = 0x0000FF;

class EditorTest : public CallTest {
 protected:
  void WriteLists() {
    Folder().Write(kGroups,
                   "9001;262;42;North;3;True\r\n9002;262;42;South;0;True\r\n"
                   "9003;262;42;West;0;False\r\n7001;262;7;Elsewhere;1;True\r\n");
    Folder().Write(kSubscribers,
                   "5010;9001;262;42;Alpha;2026-11-14 10:11:12\r\n"
                   "5011;9001;262;42;Beta;2026-11-14 10:11:13\r\n"
                   "5020;9002;262;42;Gamma;2026-11-14 10:11:14\r\n");
    Folder().Write("TETRA_mcc.txt", "262;Sampleland\r\n");
  }
  // Both programs, with the network known.
  void BeginWithLists() {
    WriteLists();
    Begin();
    Await("the network", [&] { return !Corvane().Caption(lblNetworkInfo).empty(); });
  }
  [[nodiscard]] WindowHandle Editor() const { return corvane_editor(); }
  [[nodiscard]] WindowHandle In(ControlId id) const { return Child(Editor(), Number(id)); }
  void OpenFromMenu() {
    TakeTheFront();
    ChooseFromTools(kToolsEditor);
    AwaitFilled();
  }
  // Drops the list down, goes to its first entry and as many lines on, and takes that.
  void ChooseByHand(ControlId combo, int line) {
    HandClick(In(combo));
    Await("the open list", [&] { return ComboIsOpen(In(combo)); });
    HandKey(kHomeKey);
    for (int step = 0; step < line; ++step) HandKey(kDownKey);
    HandKey(kReturnKey);
    Await("the list closed", [&] { return !ComboIsOpen(In(combo)); });
  }
  void SelectAllIn(ControlId box) {
    HandClick(In(box));
    Await("the box", [&] { return HasFocus(box); });
    HandKey(kHomeKey);
    HandKey(kEndKey, kShiftKey);
  }
  void AwaitGround(ControlId id, std::int32_t colour) {
    Await("the colour " + std::to_string(colour), [&] { return GroundOf(In(id)) == colour; });
  }
  void AwaitTip(ControlId over, const std::string& tip) {
    HandMoveOver(In(over));
    Await("the tip \"" + tip + "\"",
          [&] { return SeenToolTip(Corvane().TheProcess().Id()) == tip; });
  }
  [[nodiscard]] bool Holds() { return PixelsOf(Corvane().Control(lblGroupHold), kOrange) > 0; }
  void AwaitFilled() {
    Await("the editor", [&] { return Editor() != 0 && Visible(Editor()); });
    Await("the editor's lists", [&] { return !Visible(In(lstGssiBlank)); });
    BringToFront(Editor());
    Await("the editor in front", [&] { return ForegroundWindow() == Editor(); });
  }
  void AwaitText(ControlId id, const std::string& text) {
    Await(text, [&] { return TextOf(In(id)) == text; });
  }
  [[nodiscard]] bool HasFocus(ControlId id) { return FocusIn(Editor()) == In(id); }

 private:
  [[nodiscard]] WindowHandle corvane_editor() const {
    return const_cast<EditorTest*>(this)->Corvane().EditorWindow();
  }
};

TEST_F(EditorTest, OpensBesideTheMainWindowsCornerOnTheNetworkInReach) {
  BeginWithLists();
  OpenFromMenu();
  EXPECT_EQ(TextOf(Editor()), "G/SSI Editor (List snapshot)");
  EXPECT_EQ(TextOf(In(cboCountry)), "262 - Sampleland");
  EXPECT_EQ(TextOf(In(cboNetworks)), "42");
  EXPECT_EQ(ItemsOf(In(lstGSSI_Lockouts)),
            (Lines{"9001 - 3 - North", "9002 - 0 - South", "9003 - 0 - West"}));
  EXPECT_EQ(TickOf(In(lstGSSI_Lockouts), 0), 1);
  EXPECT_EQ(TickOf(In(lstGSSI_Lockouts), 2), 0);
  EXPECT_EQ(TextOf(In(Frame4)), "GSSI/Labels and Lockouts (3) [4]");
  EXPECT_EQ(TextOf(In(Label1)), "Seen SSI for GSSI (0)");
  const WindowPlace main = PlaceOf(Corvane().Window());
  const WindowPlace editor = PlaceOf(Editor());
  EXPECT_EQ(editor.left - main.left, 107);
  EXPECT_EQ(editor.top - main.top, 7);
}

TEST_F(EditorTest, SaysSelectNetworkWhileNoneIsKnown) {
  WriteLists();
  StartCorvane();
  OpenFromMenu();
  EXPECT_EQ(TextOf(In(cboCountry)), "Select Network");
  EXPECT_EQ(TextOf(In(cboNetworks)), "Select Network");
  EXPECT_EQ(ItemsOf(In(lstGSSI_Lockouts)), Lines{});
  EXPECT_EQ(TextOf(In(Frame4)), "GSSI/Labels and Lockouts (0) [4]");
  ChooseByHand(cboCountry, 0);
  Await("the covers", [&] { return Visible(In(lstGssiBlank)) && Visible(In(lstSsiBlank)); });
  EXPECT_EQ(TextOf(In(cboCountry)), "262 - Sampleland");
  EXPECT_EQ(TextOf(In(cboNetworks)), "Select Network");
  EXPECT_EQ(TextOf(In(Frame4)), "GSSI/Labels and Lockouts (0)");
  EXPECT_EQ(TextOf(In(Label1)), "Seen SSI for GSSI (0)");
  ChooseByHand(cboNetworks, 0);
  Await("the network's groups",
        [&] { return ItemsOf(In(lstGSSI_Lockouts)) == Lines{"7001 - 1 - Elsewhere"}; });
  EXPECT_FALSE(Visible(In(lstGssiBlank)));
}

TEST_F(EditorTest, TheMouseSelectsShowsAndTogglesTheLineUnderIt) {
  BeginWithLists();
  OpenFromMenu();
  const WindowHandle groups = In(lstGSSI_Lockouts);
  HandClickLine(groups, 1);
  AwaitText(txtGssiLabel, "South");
  EXPECT_EQ(SelectedIn(groups), 1);
  EXPECT_EQ(TextOf(In(Label1)), "Seen SSI for GSSI (9002)");
  HandClickLine(groups, 0);
  AwaitText(txtGssiLabel, "North");
  EXPECT_EQ(ItemsOf(In(List1)).size(), 2U);
  HandClickLine(In(List1), 1);
  AwaitText(txtSSI_labelEdit, "Beta");
  EXPECT_NE(TextOf(In(lblLastSeen)), "");

  HandClickLine(groups, 2, MouseButton::kRight);
  Await("the tick", [&] { return TickOf(groups, 2) == 1; });
  EXPECT_EQ(SelectedIn(groups), 0);
  HandClickLine(groups, 0, MouseButton::kRight);
  Await("the tick taken away", [&] { return TickOf(groups, 0) == 0; });
  // Below the last line there is nothing to toggle; the last click is handled after it.
  HandClickLine(groups, 5, MouseButton::kRight);
  HandClickLine(groups, 1, MouseButton::kRight);
  Await("the second line's tick", [&] { return TickOf(groups, 1) == 0; });
  EXPECT_EQ(TickOf(groups, 2), 1);

  const std::size_t mark = Mark();
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2 for=3");
  AwaitInCallLog("Skipping Call, lockout found GSSI: 9001");
  ExpectNothingFollowed(mark);
}

TEST_F(EditorTest, TheKeyboardAloneEditsALabelAndASubscriber) {
  BeginWithLists();
  OpenFromMenu();
  HandClickLine(In(lstGSSI_Lockouts), 0);
  AwaitText(txtGssiLabel, "North");
  HandKey(kDownKey);
  AwaitText(txtGssiLabel, "South");
  HandKey(kTabKey);
  Await("the label box", [&] { return HasFocus(txtGssiLabel); });
  HandKey(kEndKey);
  HandType("ern 2");
  HandKey(kSemicolonKey);  // the semicolon is refused
  AwaitText(txtGssiLabel, "Southern 2");
  HandKey(kReturnKey);
  Await("the button", [&] { return HasFocus(cmdUpdateGSSI); });
  HandKey(kReturnKey);
  Await("the line", [&] { return ItemsOf(In(lstGSSI_Lockouts))[1] == "9002 - 0 - Southern 2"; });
  AwaitText(cmdUpdateGSSI, "Update");
  HandKey(kTabKey);
  Await("the subscribers", [&] { return HasFocus(List1); });
  HandKey(kDownKey);
  AwaitText(txtSSI_labelEdit, "Gamma");
  HandKey(kTabKey);
  HandKey(kHomeKey);
  HandType("X ");
  HandKey(kReturnKey);
  Await("the subscriber's line",
        [&] { return ItemsOf(In(List1))[0] == "5020 - X Gamma                       "; });
}

TEST_F(EditorTest, WhatIsStoredIsSeenInItsColourAndReachesTheFiles) {
  WriteLists();
  Folder().Write(kSubscribers,
                 "5010;9001;262;42;Alpha;2026-11-14 10:11:12\r\n"
                 "5010;9002;262;42;Other;2026-11-14 10:11:13\r\n");
  Settings settings;
  settings.main_window_top = kWholeEditorInView;
  StartCorvane(settings);
  OpenFromMenu();
  EXPECT_EQ(TextOf(In(Label2)), "Priority");
  EXPECT_EQ(TextOf(In(lblSsiLabelUpdaterClearFields)), "SSI label:");
  AwaitTip(lstGSSI_Lockouts, "Checked item will ignore lockout");
  AwaitTip(cboGSSIPriority, "Not available in this version");
  AwaitTip(txtSSI_labelEdit, "Add/remove label then press enter. Green OK, Red Fail");
  ChooseByHand(cboCountry, 0);
  AwaitTip(lstGssiBlank, "Checked item will ignore lockout");
  ChooseByHand(cboNetworks, 1);
  const WindowHandle groups = In(lstGSSI_Lockouts);
  Await("the network's groups", [&] { return ItemsOf(groups).size() == 3; });

  // No group is selected: nothing is stored. The next click is handled after this one.
  HandClick(In(cmdUpdateGSSI));
  HandClickLine(groups, 1);
  AwaitText(txtGssiLabel, "South");
  EXPECT_EQ(TextOf(In(cmdUpdateGSSI)), "^ Update");
  // No subscriber is selected either: red, for a while.
  HandClick(In(txtSSI_labelEdit));
  HandType("lost");
  HandKey(kReturnKey);
  AwaitGround(txtSSI_labelEdit, kRed);
  AwaitGround(txtSSI_labelEdit, WindowColour());

  // Neither the tick box under the pointer nor the space bar locks a group out.
  const WindowPlace list = PlaceOf(groups);
  HandClickAt(groups, 10, 10);
  AwaitText(txtGssiLabel, "North");
  HandKey(kSpaceKey);
  HandClickLine(groups, 1);
  AwaitText(txtGssiLabel, "South");
  EXPECT_EQ(TickOf(groups, 0), 1);
  EXPECT_EQ(PlaceOf(groups), list);

  SelectAllIn(txtGssiLabel);
  HandType("abcdefghijklmnopqrstuvwxyz12345678");
  ChooseByHand(cboGSSIPriority, 7);
  HandClick(In(cmdUpdateGSSI));
  AwaitText(cmdUpdateGSSI, "Updated");
  AwaitGround(cmdUpdateGSSI, kGreen);
  AwaitText(cmdUpdateGSSI, "Update");
  AwaitGround(cmdUpdateGSSI, ButtonFaceColour());
  EXPECT_EQ(ItemsOf(groups)[1], "9002 - 7 - abcdefghijklmnopqrstuvwxyz1234");
  EXPECT_EQ(TickOf(groups, 1), 1);
  EXPECT_EQ(SelectedIn(groups), 1);

  // A pasted separator is dropped where the label is stored.
  HandClickLine(groups, 0);
  AwaitText(txtGssiLabel, "North");
  SelectAllIn(txtGssiLabel);
  ASSERT_TRUE(HandPaste("No;rd"));
  AwaitText(txtGssiLabel, "No;rd");
  HandKey(kReturnKey);
  Await("the button", [&] { return HasFocus(cmdUpdateGSSI); });
  HandKey(kSpaceKey);
  Await("the line", [&] { return ItemsOf(groups)[0] == "9001 - 3 - Nord"; });
  AwaitText(txtGssiLabel, "Nord");

  HandClickLine(In(List1), 0);
  AwaitText(txtSSI_labelEdit, "Alpha");
  SelectAllIn(txtSSI_labelEdit);
  HandType("beta");
  HandKey(kReturnKey);
  AwaitGround(txtSSI_labelEdit, kGreen);
  AwaitGround(txtSSI_labelEdit, WindowColour());
  EXPECT_EQ(ItemsOf(In(List1)), Lines{"5010 - beta                          "});

  TakeTheFront();
  HandKey(kF4Key, kAltKey);
  Await("the end", [&] { return !Corvane().Running(); });
  EXPECT_NE(Folder().Read(kGroups).find("9001;262;42;Nord;3;True\r\n"
                                        "9002;262;42;abcdefghijklmnopqrstuvwxyz1234;7;True\r\n"),
            std::string::npos);
  EXPECT_NE(Folder().Read(kSubscribers).find("5010;9001;262;42;beta;"), std::string::npos);
  EXPECT_NE(Folder().Read(kSubscribers).find("5010;9002;262;42;Other;"), std::string::npos);
}

TEST_F(EditorTest, TheTabKeyGoesRoundTheEditorBothWays) {
  BeginWithLists();
  OpenFromMenu();
  const std::vector<ControlId> order = {cboCountry,   cboNetworks,     lstGSSI_Lockouts,
                                        txtGssiLabel, cboGSSIPriority, cmdUpdateGSSI,
                                        List1,        txtSSI_labelEdit};
  // Its lowest part stands below the screen, where no pointer goes.
  MoveWindowTo(Editor(), ScreenPlace().left, ScreenPlace().top);
  HandClick(In(txtSSI_labelEdit));
  Await("the last box", [&] { return HasFocus(txtSSI_labelEdit); });
  for (const ControlId id : order) {
    HandKey(kTabKey);
    Await("forwards to " + std::to_string(Number(id)), [&] { return HasFocus(id); });
  }
  for (std::size_t back = order.size() - 1; back-- > 0;) {
    HandKey(kTabKey, kShiftKey);
    Await("back to " + std::to_string(Number(order[back])), [&] { return HasFocus(order[back]); });
  }
}

TEST_F(EditorTest, EscapeClosesItButNotWhileAListIsOpen) {
  BeginWithLists();
  OpenFromMenu();
  HandClick(In(cboGSSIPriority));
  Await("the open list", [&] { return ComboIsOpen(In(cboGSSIPriority)); });
  HandKey(kEscapeKey);
  Await("the list closed", [&] { return !ComboIsOpen(In(cboGSSIPriority)); });
  ASSERT_TRUE(Alive(Editor()));
  HandKey(kEscapeKey);
  Await("the editor's end", [&] { return Editor() == 0; });
  EXPECT_TRUE(Corvane().Responds(kAnswerLimit_ms));
  OpenFromMenu();
  EXPECT_EQ(SelectedIn(In(lstGSSI_Lockouts)), -1);
}

TEST_F(EditorTest, QuickEditsOpenItOnWhatIsOnScreenAndSelectInTheOpenOne) {
  BeginWithLists();
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2");
  AwaitFollowing(7);
  BringToFront(Corvane().Window());
  HandClick(Corvane().Control(lblGroupNumber));
  AwaitFilled();
  AwaitText(txtGssiLabel, "North");
  EXPECT_EQ(TextOf(In(txtSSI_labelEdit)), "Alpha");
  Line("D-TX-Granted - Call ID: 7 Transmission granted to another user, SSI: 5011 ");
  Do("release id=7");
  AwaitParked();
  Do("call id=8 group=9002 party=5020 carrier=2610 slot=2");
  AwaitFollowing(8);
  TakeTheFront();
  HandClickAt(Corvane().Control(lblCurrentSSI), 8, 8);
  AwaitText(txtGssiLabel, "South");
  AwaitText(txtSSI_labelEdit, "Gamma");
}

TEST_F(EditorTest, HoldingByHandAndReleasingItByALockout) {
  BeginWithLists();
  Do("call id=7 group=9001 party=5010 carrier=2610 slot=2");
  AwaitFollowing(7);
  BringToFront(Corvane().Window());
  HandClick(Corvane().Control(lblGroupHold));
  Await("the hold", [&] { return Holds(); });
  Do("release id=7");
  AwaitParked();
  const std::size_t mark = Mark();
  Do("call id=8 group=9002 party=5020 carrier=2610 slot=2 for=3");
  ExpectNothingFollowed(mark);
  OpenFromMenu();
  HandClickLine(In(lstGSSI_Lockouts), 2, MouseButton::kRight);
  Await("another group's tick", [&] { return TickOf(In(lstGSSI_Lockouts), 2) == 1; });
  EXPECT_TRUE(Holds());
  HandClickLine(In(lstGSSI_Lockouts), 0, MouseButton::kRight);
  Await("the lockout", [&] { return TickOf(In(lstGSSI_Lockouts), 0) == 0; });
  Await("the hold's end", [&] { return !Holds(); });
  SetUpUntilFollowed(9, 9002, 2610, 2);
}

TEST_F(EditorTest, ClosesWithTheMainWindowAndItsEditsAreInTheFiles) {
  BeginWithLists();
  OpenFromMenu();
  HandClickLine(In(lstGSSI_Lockouts), 1, MouseButton::kRight);
  Await("the tick taken away", [&] { return TickOf(In(lstGSSI_Lockouts), 1) == 0; });
  Close(Corvane().Window());
  Await("the end", [&] { return !Corvane().Running(); });
  EXPECT_NE(Folder().Read(kGroups).find("9002;262;42;South;0;False"), std::string::npos);
}

TEST_F(EditorTest, ClosesByItselfAfterFiveIdleMinutesWhileCallsAreFollowed) {
  BeginWithLists();
  OpenFromMenu();
  const auto opened = std::chrono::steady_clock::now();
  SetUpUntilFollowed(7, 9001, 2610, 2);
  Do("release id=7");
  AwaitParked();
  ASSERT_TRUE(Alive(Editor()));
  constexpr int kIdleEnd_ms = 5 * 60'000;
  Await(
      "the editor's end", [&] { return Editor() == 0; }, kIdleEnd_ms + kGenerousLimit_ms);
  // Each of the five minutes may have begun before the editor was seen.
  EXPECT_GE(std::chrono::steady_clock::now() - opened, std::chrono::minutes(4));
  SetUpUntilFollowed(8, 9001, 2611, 3);
}

TEST_F(EditorTest, OpeningsOfTheRealProgramLeaveNothingBehind) {
  WriteLists();
  StartCorvane();
  const auto open_and_close = [&] {
    ChooseMenuItem(Corvane().Window(), Number(mnuGSSIEditor));
    Await("the editor", [&] { return Editor() != 0 && Visible(Editor()); });
    Close(Editor());
    Await("the editor's end", [&] { return Editor() == 0; });
  };
  for (int opening = 0; opening < 20; ++opening) open_and_close();
  const Process::Use before = Corvane().TheProcess().TheUse();
  const std::size_t windows = TopLevelWindows(Corvane().TheProcess().Id()).size();
  ASSERT_GT(before.private_kib, 0U);
  ASSERT_GT(before.handles, 0U);
  ASSERT_GT(before.gdi_objects, 0U);
  for (int opening = 0; opening < 100 && !HasFatalFailure(); ++opening) open_and_close();
  const Process::Use after = Corvane().TheProcess().TheUse();
  EXPECT_EQ(TopLevelWindows(Corvane().TheProcess().Id()).size(), windows);
  EXPECT_LE(after.handles, before.handles + 20);
  EXPECT_LE(after.gdi_objects, before.gdi_objects + 20);
  EXPECT_LE(after.user_objects, before.user_objects + 20);
  EXPECT_LE(after.private_kib, before.private_kib + 1024);
}

}  // namespace
}  // namespace corvane::desktop
