// The real editor window: what it shows of its controls.
#include "desktop/ui_window/editor_fixture.h"
#include "desktop/ui_window/window_fixture.h"

namespace corvane::ui_test {

namespace {

using enum ControlId;

class EditorWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    editor_.emplace(loop_, window_, tables_);
    ASSERT_TRUE(editor_->made);
    ASSERT_TRUE(AwaitFilled(loop_, *editor_));
    Pump();
  }
  void Pump() {
    for (int round = 0; round < 5; ++round) loop_.DoEvents();
  }
  [[nodiscard]] Handle In(ControlId id) const { return ChildOf(window_.handle(), id); }
  [[nodiscard]] LRESULT Tick(int line) const {
    return Send(In(lstGSSI_Lockouts), LB_GETITEMDATA, static_cast<WPARAM>(line));
  }

  LoopWin loop_;
  FormWindow window_{loop_};
  EditorTables tables_{30, 12};
  std::optional<OpenEditor> editor_;
};

TEST_F(EditorWindowTest, EveryControlIsAVisibleChildInsideTheWindow) {
  const PixelRect client = ClientRect(window_.handle());
  for (const ControlRow& row : EditorWindowTable(editor_->dialog).controls) {
    const bool cover = row.id == lstGssiBlank || row.id == lstSsiBlank;
    EXPECT_EQ(IsShown(In(row.id)), !cover) << row.control.name();
    const PixelRect place = RectIn(window_.handle(), In(row.id));
    EXPECT_GE(place.left, 0) << row.control.name();
    EXPECT_GE(place.top, 0) << row.control.name();
    EXPECT_LE(place.right(), client.width) << row.control.name();
    EXPECT_LE(place.bottom(), client.height) << row.control.name();
  }
}

TEST_F(EditorWindowTest, TheClientAreaIsTheTablesOwn) {
  const WindowTable table = EditorWindowTable(editor_->dialog);
  EXPECT_EQ(ClientRect(window_.handle()).width, ToPixels(table.client_width, kDesignDpi));
  EXPECT_EQ(ClientRect(window_.handle()).height, ToPixels(table.client_height, kDesignDpi));
}

TEST_F(EditorWindowTest, TicksAreSeenAndCanBeRead) {
  for (int line = 0; line < 30; ++line) EXPECT_EQ(Tick(line), line % 2 == 0 ? 1 : 0) << line;
  const Handle list = In(lstGSSI_Lockouts);
  Send(list, LB_SETCURSEL, static_cast<WPARAM>(-1));
  Pump();
  const int row = static_cast<int>(Send(list, LB_GETITEMHEIGHT));
  const auto marks_in_box = [&](int line) {
    int marks = 0;
    for (int y = 3; y < row - 3; ++y) {
      for (int x = 5; x < 14; ++x) {
        marks += PixelOf(list, x, line * row + y) == 0 ? 1 : 0;
      }
    }
    return marks;
  };
  EXPECT_GT(marks_in_box(0), marks_in_box(1) + 8) << "the tick itself";
  editor_->dialog.lstGSSI_Lockouts.Tick(0, false);
  EXPECT_EQ(Tick(0), 0);  // whoever asks meets the list as it is by now
  EXPECT_EQ(marks_in_box(0), marks_in_box(1));
}

TEST_F(EditorWindowTest, ARewrittenLineKeepsTickSelectionAndPlace) {
  const Handle list = In(lstGSSI_Lockouts);
  editor_->dialog.lstGSSI_Lockouts.Select(20);
  Pump();
  const LRESULT top = Send(list, LB_GETTOPINDEX);
  EXPECT_GT(top, 0);
  editor_->dialog.lstGSSI_Lockouts.Replace(20, "9021 - 5 - Rewritten");
  Pump();
  EXPECT_EQ(ListLine(list, 20), "9021 - 5 - Rewritten");
  EXPECT_EQ(Tick(20), 1);
  EXPECT_EQ(Send(list, LB_GETCURSEL), 20);
  EXPECT_EQ(Send(list, LB_GETTOPINDEX), top);
}

TEST_F(EditorWindowTest, ThePreselectedGroupAndSubscriberAreSelected) {
  EXPECT_EQ(Send(In(lstGSSI_Lockouts), LB_GETCURSEL), 0);
  EXPECT_EQ(Send(In(List1), LB_GETCURSEL), 0);
  EXPECT_EQ(TextOf(In(txtGssiLabel)), "Group 1");
  EXPECT_EQ(TextOf(In(txtSSI_labelEdit)), "Subscriber");
  EXPECT_EQ(TextOf(In(cboCountry)), "262");
}

TEST_F(EditorWindowTest, WithoutASelectionTheComboBoxesSaySelectNetwork) {
  editor_->dialog.cboCountry.list_index = -1;
  editor_->dialog.cboNetworks.list_index = -1;
  Pump();
  for (const ControlId id : {cboCountry, cboNetworks}) {
    EXPECT_EQ(TextOf(In(id)), "Select Network");
    const PixelRect place = ClientRect(In(id));
    bool anything_drawn = false;
    const std::uint32_t ground = PixelOf(In(id), 4, 4);
    for (int x = 4; x < place.width / 2; ++x) {
      anything_drawn = anything_drawn || PixelOf(In(id), x, place.height / 2) != ground;
    }
    EXPECT_TRUE(anything_drawn);
  }
}

TEST_F(EditorWindowTest, ComboBoxesShowThatTheyAreChosenOrDisabled) {
  const Handle combo = In(cboCountry);
  const PixelRect place = ClientRect(combo);
  const auto ground = [&] { return PixelOf(combo, place.width / 2, place.height / 2); };
  EXPECT_EQ(ground(), SystemColour(COLOR_WINDOW));
  Focus(combo);
  Pump();
  EXPECT_EQ(ground(), SystemColour(COLOR_HIGHLIGHT));
  editor_->dialog.cboCountry.enabled = false;
  Pump();
  EXPECT_EQ(ground(), ButtonFaceColour());
}

TEST_F(EditorWindowTest, ComboBoxesCanBeReadWithLightTextOnDarkGround) {
  const LightOnDark colours;
  Send(window_.handle(), WM_SYSCOLORCHANGE);
  Pump();
  const Handle combo = In(cboCountry);
  const PixelRect place = ClientRect(combo);
  EXPECT_EQ(PixelOf(combo, place.width / 2, place.height / 2), SystemColour(COLOR_WINDOW));
  int text = 0;
  for (int y = 4; y < place.height - 4; ++y) {
    for (int x = 6; x < place.width / 2; ++x) {
      text += PixelOf(combo, x, y) == SystemColour(COLOR_WINDOWTEXT) ? 1 : 0;
    }
  }
  EXPECT_GT(text, 0);
}

TEST_F(EditorWindowTest, TheBoxAndTheButtonShowTheirColours) {
  editor_->dialog.txtSSI_labelEdit.back_colour = kRed;
  editor_->dialog.cmdUpdateGSSI.back_colour = kGreen;
  Pump();
  EXPECT_EQ(PixelOf(In(cmdUpdateGSSI), 4, 4), kGreen);
  const PixelRect box = ClientRect(In(txtSSI_labelEdit));
  EXPECT_EQ(PixelOf(In(txtSSI_labelEdit), box.width - 4, box.height / 2), kRed);
}

}  // namespace

}  // namespace corvane::ui_test
