// The real main window under a hand: the pointer moved and pressed, keys struck, as the system
// brings them; and what of the window can be seen and reached.
#include <algorithm>

#include "desktop/ui_window/window_fixture.h"
#include "panel/logs.h"

namespace corvane::ui_test {

namespace {

using enum ControlId;

class HandsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    TakeForeground(main());
    MovePointer(0, 0);
    Settle();
    ASSERT_TRUE(IsForeground(main()));
  }
  // Dispatches until the system has brought what was sent.
  void Settle() {
    for (int round = 0; round < 10; ++round) {
      loop_.Sleep(10);
      Pump();
    }
  }
  void PointAt(ControlId id, int x, int y) {
    const PixelRect rect = OuterRect(Child(id));
    MovePointer(rect.left + x, rect.top + y);
    Settle();
  }
  void Strike(int key, int with = 0) {
    StrikeKey(key, with);
    Settle();
  }
  [[nodiscard]] std::string FocusedName() { return NameOf(Focused()); }
  // Dispatches until `done` says so, or for very long.
  template <typename Condition>
  bool Wait(Condition done) {
    for (int round = 0; round < 500 && !done(); ++round) {
      loop_.Sleep(10);
      Pump();
    }
    return done();
  }
};

TEST_F(HandsTest, PointerOverTheCallDetailsAndTheLogFetchesTheFocus) {
  for (const ControlId over : {fraCallDetails, lblCallID, lstCallLog}) {
    Focus(Child(txtTimeout));
    PointAt(cmdStartAll, 10, 10);
    EXPECT_EQ(FocusedName(), "txtTimeout");
    PointAt(over, 8, 10);
    EXPECT_EQ(FocusedName(), "lstCallLog") << Number(over);
  }
}

TEST_F(HandsTest, PointerAtRestOnTheLogLeavesTheFocusWhereItIs) {
  PointAt(lstCallLog, 40, 40);
  Focus(Child(txtTimeout));
  // As the system does it when something under the pointer has changed.
  Post(Child(lstCallLog), WM_MOUSEMOVE, 0, PointerIn(Child(lstCallLog)));
  Strike('7');
  Post(Child(lstCallLog), WM_MOUSEMOVE, 0, PointerIn(Child(lstCallLog)));
  Settle();
  EXPECT_EQ(FocusedName(), "txtTimeout");
  EXPECT_NE(form_.txtTimeout.text.get().find('7'), std::string::npos);
  PointAt(lstCallLog, 41, 40);
  EXPECT_EQ(FocusedName(), "lstCallLog");
}

TEST_F(HandsTest, ClickOnAnEmptyPlaceOfTheCallDetailsThenSpaceHolds) {
  const PixelRect frame = OuterRect(Child(fraCallDetails));
  PointAt(fraCallDetails, 2, frame.height - 4);
  Focus(Child(txtTimeout));  // no movement brings the focus back: the click alone does
  ClickPointer();
  Settle();
  EXPECT_EQ(FocusedName(), "lstCallLog");
  actions_.calls.clear();
  Strike(VK_SPACE);
  EXPECT_EQ(actions_.calls, Calls{"ToggleGroupHold"});
}

TEST_F(HandsTest, ClicksReachWhatStandsUnderThePointer) {
  const PixelRect call = OuterRect(Child(lblManualD_Release));
  PointAt(lblManualD_Release, call.width / 2, call.height / 2);
  ClickPointer();
  Settle();
  PointAt(lblGroupHold, 5, 5);
  ClickPointer();
  Settle();
  EXPECT_EQ(actions_.calls, (Calls{"ManualRelease", "ToggleGroupHold"}));
}

TEST_F(HandsTest, CompactWindowShowsAndReachesNothingButTheCallDetails) {
  Press(cmdSettingTab_2);
  for (const int dpi : {96, 120, 144, 168, 192}) {
    ChangeDpi(dpi);
    Focus(Child(txtTimeout));
    ClickCompact();
    const WindowTable table = MainWindowTable(form_);
    for (const ControlRow& row : table.controls) {
      const bool part = row.id == fraCallDetails || row.frame == &form_.fraCallDetails;
      EXPECT_EQ(IsShown(Child(row.id)), part) << row.control.name() << " at " << dpi;
      EXPECT_TRUE(part || !IsTabStop(Child(row.id))) << row.control.name() << " at " << dpi;
      EXPECT_TRUE(row.control.visible || row.frame != nullptr || !part);
    }
    // Right of the details there is the window's own ground from top to bottom.
    const PixelRect details = RectIn(main(), Child(fraCallDetails));
    for (int y = 0; y < ClientRect(main()).height; y += 7) {
      EXPECT_EQ(PixelOf(main(), details.right() + 2, y), ButtonFaceColour()) << y << " at " << dpi;
    }
    ClickCompact();
    EXPECT_TRUE(IsShown(Child(lstCallLog)));
    EXPECT_TRUE(IsTabStop(Child(lstCallLog)));
  }
}

TEST_F(HandsTest, CompactModeTakesTheFocusFromWhatItHides) {
  form_.lstCurrentSSI_Users.Add("5010");
  Focus(Child(txtTimeout));
  ClickCompact();
  EXPECT_EQ(FocusedName(), "lstCurrentSSI_Users");
  Strike(VK_TAB);
  EXPECT_EQ(FocusedName(), "lstCurrentSSI_Users");
  Focus(main());
  PointAt(fraCallDetails, 3, 40);
  EXPECT_EQ(FocusedName(), "lstCurrentSSI_Users");
  actions_.calls.clear();
  Strike(VK_SPACE);
  EXPECT_EQ(actions_.calls, Calls{"ToggleGroupHold"});
  ClickCompact();
  EXPECT_EQ(FocusedName(), "lstCurrentSSI_Users");
}

// The menu bar is painted with its check mark as long as nothing else has changed.
TEST_F(HandsTest, CompactModeAndAResolutionAreShownAtOnce) {
  const auto expect_one_step = [this](const std::function<void()>& work) {
    const Painted before = PaintedNow(main());
    const std::vector<Painted> painted = PaintedDuring(main(), work);
    const Painted after = PaintedNow(main());
    EXPECT_NE(before, after);
    EXPECT_TRUE(std::count(painted.begin(), painted.end(), after) > 10);
    for (const Painted& one : painted) EXPECT_TRUE(one == before || one == after);
  };
  expect_one_step([this] { ClickCompact(); });
  expect_one_step([this] { ClickCompact(); });
  expect_one_step([this] { ChangeDpi(144); });
}

TEST_F(HandsTest, TabKeyGoesBothWaysRoundAndPassesByHiddenPages) {
  for (const ControlId tab : {cmdSettingTab_0, cmdSettingTab_1, cmdSettingTab_2}) {
    Press(tab);
    std::vector<std::string> forward;
    std::vector<std::string> back;
    Focus(Child(lstCallLog));
    do {
      forward.push_back(FocusedName());
      EXPECT_TRUE(IsShown(Focused())) << FocusedName();
      Strike(VK_TAB);
    } while (FocusedName() != "lstCallLog" && forward.size() < 40);
    do {
      back.push_back(FocusedName());
      Strike(VK_TAB, VK_SHIFT);
    } while (FocusedName() != "lstCallLog" && back.size() < 40);
    std::reverse(back.begin() + 1, back.end());
    EXPECT_EQ(forward, back);
    EXPECT_GT(forward.size(), 10U);
  }
}

TEST_F(HandsTest, KeysReachWhatOnlyTheMouseReached) {
  form_.lblGroupNumber.caption = " 9001";
  form_.lblNetworkInfo.caption = "MNC:1  LA:5";
  form_.lblCurrentSSI.caption = " 5010";
  form_.lstCurrentSSI_Users.Add("5011");
  form_.lstCallLog.Add("15/11/2026 14:23:05 - Call ID: 7 - On carrier: 2610 - Group: 9002 [x]");
  Focus(Child(lstCallLog));
  Strike('E', VK_CONTROL);
  Strike('K', VK_CONTROL);
  EXPECT_EQ(actions_.calls, (Calls{"ManualRelease", "ParkOnControlChannel"}));
  Strike(VK_F2);
  EXPECT_EQ(main_form_.hand_over().EditorSsi, 5010);
  Strike(VK_RETURN);  // no line is selected
  EXPECT_EQ(actions_.calls.size(), 3U);
  Strike(VK_HOME);
  Strike(VK_RETURN);
  EXPECT_EQ(main_form_.hand_over().EditorGssi, 9002);
  Focus(Child(lstCurrentSSI_Users));
  Strike(VK_HOME);
  Strike(VK_RETURN);
  EXPECT_EQ(main_form_.hand_over().EditorSsi, 5011);
  EXPECT_EQ(actions_.calls.size(), 5U);
  Focus(Child(lstStatusLog));
  Strike(VK_F10, VK_SHIFT);
  EXPECT_EQ(main_form_.hand_over().EditorSsi, 5010);
  Strike(VK_APPS);
  EXPECT_EQ(actions_.calls.size(), 7U);
}

TEST_F(HandsTest, EnterAndDeleteRemoveFromTheRecordOnlyList) {
  Press(cmdSettingTab_1);
  Press(optRecordMode_2);
  form_.lstRecOnlyGSSI.Add("9001");
  Focus(Child(lstRecOnlyGSSI));
  Strike(VK_HOME);
  Strike(VK_RETURN);
  Strike(VK_DELETE);
  EXPECT_EQ(actions_.calls, (Calls{"RemoveRecOnlyGssi", "RemoveRecOnlyGssi"}));
}

TEST_F(HandsTest, ShortcutsStandInTheMenu) {
  EXPECT_EQ(MenuItemOf(main(), mnuEndCall).text, "End call\tCtrl+E");
  EXPECT_EQ(MenuItemOf(main(), mnuEditShown).text, "Edit group on screen\tF2");
  EXPECT_EQ(MenuItemOf(main(), mnuCapturePosition).text, "Set CC SDR# position");
}

TEST_F(HandsTest, CutLineShowsWholeInItsPlaceUnderThePointer) {
  const std::string line =
      "15/11/2026 14:23:25 - Call ID: 12071 - On carrier: 2610 - Group: 1234567 [Fire & rescue]";
  form_.lstCallLog.Add("short");
  form_.lstCallLog.Add(line);
  Settle();
  const auto height = static_cast<int>(Send(Child(lstCallLog), LB_GETITEMHEIGHT));
  PointAt(lstCallLog, 60, 2 + height / 2);
  PointAt(lstCallLog, 60, 2 + height + height / 2);
  ASSERT_TRUE(Wait([&] { return ShownToolTip(main()) == line; }));
  const PixelRect tip = ShownToolTipRect(main());
  const PixelRect list = OuterRect(Child(lstCallLog));
  EXPECT_NEAR(tip.left, list.left, 8);
  EXPECT_NEAR(tip.top, list.top + 2 + height, 8);
  EXPECT_GE(tip.width, TextWidth(Child(lstCallLog), line));
  // A line with room enough has none, and the tip is no obstacle to the mouse.
  PointAt(lstCallLog, 60, 2 + height / 2);
  EXPECT_EQ(ShownToolTip(main()), "");
  PointAt(lstCallLog, 60, 2 + height + height / 2);
  ASSERT_TRUE(Wait([&] { return ShownToolTip(main()) == line; }));
  ClickPointer();
  Settle();
  EXPECT_EQ(form_.lstCallLog.list_index(), 1);
  EXPECT_EQ(ShownToolTip(main()), "");
}

TEST_F(HandsTest, ToolTipOfAControlAppearsWhereThePointerRests) {
  PointAt(lblManualD_Release, 10, 10);
  EXPECT_TRUE(Wait([&] { return ShownToolTip(main()) == "Click to end call"; }));
}

}  // namespace

}  // namespace corvane::ui_test
