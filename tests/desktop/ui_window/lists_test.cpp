// What the lists of the real main window show: how far a line can be read, what is painted anew,
// what is in view; and the colours around them.
#include "desktop/ui_window/window_fixture.h"
#include "panel/logs.h"

namespace corvane::ui_test {

namespace {

using enum ControlId;

constexpr char kUsualLine[] =
    "15/11/2026 14:23:25 - Call ID: 12071 - On carrier: 2610 - Group: 1234567";
constexpr char kTwelveHourLine[] =
    "11/15/2026 12:23:25 PM - Call ID: 1207 - On carrier: 2610 - Group: 9001";

TEST_F(WindowTest, CallLineCanBeReadThroughItsGroupWithoutScrolling) {
  FillCallLog(40);
  Pump();
  // In a window with the widest borders the log is this much narrower.
  const int spare = ClientRect(main()).width - ToPixels(kClientWidth, 96);
  for (const char* line : {kUsualLine, kTwelveHourLine}) {
    EXPECT_LE(TextWidth(Child(lstCallLog), line) + 2, ClientRect(Child(lstCallLog)).width - spare);
  }
}

// Marks on the screen outlive what is not painted anew.
class MarkedList {
 public:
  explicit MarkedList(Handle list) : list_(list) {}
  void Mark(int row) const { SetPixelOf(list_, kColumn, MiddleOf(row), kMark); }
  [[nodiscard]] bool Has(int row) const { return PixelOf(list_, kColumn, MiddleOf(row)) == kMark; }

 private:
  static constexpr int kColumn = 150;
  static constexpr std::uint32_t kMark = 0x0000FF;
  [[nodiscard]] int MiddleOf(int row) const {
    const auto height = static_cast<int>(Send(list_, LB_GETITEMHEIGHT));
    return row * height + height / 2;
  }
  Handle list_;
};

TEST_F(WindowTest, LineThatComesPaintsNoOtherLine) {
  FillCallLog(3);
  Pump();
  const MarkedList log(Child(lstCallLog));
  for (const int row : {0, 1, 2, 3, 4}) log.Mark(row);
  form_.lstCallLog.Add("the fourth");
  Pump();
  EXPECT_TRUE(log.Has(0));
  EXPECT_TRUE(log.Has(1));
  EXPECT_TRUE(log.Has(2));
  EXPECT_FALSE(log.Has(3));
  EXPECT_TRUE(log.Has(4));
}

TEST_F(WindowTest, LogThatScrollsAlongMovesItsLinesAndPaintsTheNewOne) {
  for (int line = 0; line < 60; ++line) AddCallLine(form_, "line");
  Pump();
  const MarkedList log(Child(lstCallLog));
  for (const int row : {0, 5, 10, 20}) log.Mark(row);
  AddCallLine(form_, "the next");
  Pump();
  ASSERT_EQ(form_.lstCallLog.top_index(), 40);
  EXPECT_TRUE(log.Has(4));
  EXPECT_TRUE(log.Has(9));
  EXPECT_FALSE(log.Has(5));
  EXPECT_FALSE(log.Has(19));  // was selected
  EXPECT_FALSE(log.Has(20));
}

TEST_F(WindowTest, LineBeyondTheViewPaintsNothing) {
  FillCallLog(60);
  Pump();
  const MarkedList log(Child(lstCallLog));
  for (int row = 0; row < 21; ++row) log.Mark(row);
  form_.lstCallLog.Add("far below");
  Pump();
  for (int row = 0; row < 21; ++row) EXPECT_TRUE(log.Has(row)) << row;
}

TEST_F(WindowTest, LogFollowsOnAfterCompactMode) {
  form_.mnuMCClabel.caption = "MCC: Sampleland";
  for (int line = 0; line < 60; ++line) AddCallLine(form_, kTwelveHourLine);
  Pump();
  for (int time = 0; time < 3; ++time) {
    ClickCompact();
    AddCallLine(form_, "came while the window was compact");
    Pump();
    ClickCompact();
    EXPECT_EQ(Send(Child(lstCallLog), LB_GETTOPINDEX), form_.lstCallLog.count() - kCallLogRows + 1);
    AddCallLine(form_, "came afterwards");
    Pump();
    EXPECT_EQ(form_.lstCallLog.list_index(), form_.lstCallLog.count() - 1);
    EXPECT_EQ(form_.lstCallLog.top_index(), form_.lstCallLog.count() - kCallLogRows + 1);
  }
}

TEST_F(WindowTest, LogThatWasScrolledUpStaysThereThroughCompactMode) {
  for (int line = 0; line < 60; ++line) AddCallLine(form_, kTwelveHourLine);
  Pump();
  for (const int top : {12, 60 - kCallLogRows - 1}) {
    Send(Child(lstCallLog), LB_SETTOPINDEX, static_cast<WPARAM>(top));
    ClickCompact();
    ClickCompact();
    EXPECT_EQ(Send(Child(lstCallLog), LB_GETTOPINDEX), top);
  }
}

TEST_F(WindowTest, SelectedLineIsHardlyDarkerThanTheOthers) {
  FillCallLog(3);
  form_.lstCallLog.Select(1);
  Pump();
  const auto height = static_cast<int>(Send(Child(lstCallLog), LB_GETITEMHEIGHT));
  const std::uint32_t ground = PixelOf(Child(lstCallLog), 200, 4);
  const std::uint32_t selected = PixelOf(Child(lstCallLog), 200, height + 4);
  EXPECT_NE(selected, ground);
  EXPECT_LT(Contrast(selected, ground), 1.3);
}

TEST_F(WindowTest, StatusLineThatComesIsInViewUnlessTheUserHasScrolledAway) {
  for (int line = 0; line < 9; ++line) AddStatusLine(form_, "line");
  AddStatusLine(form_, "MCC must be valid before showing editor");
  Pump();
  const Handle log = Child(lstStatusLog);
  const auto last_shown = [&] {
    const auto height = static_cast<int>(Send(log, LB_GETITEMHEIGHT));
    return static_cast<int>(Send(log, LB_GETTOPINDEX)) + ClientRect(log).height / height - 1;
  };
  EXPECT_GE(last_shown(), 9);
  EXPECT_EQ(form_.lstStatusLog.list_index(), -1);
  AddStatusLine(form_, "another");
  Pump();
  EXPECT_GE(last_shown(), 10);
  Send(log, LB_SETTOPINDEX, 2);
  AddStatusLine(form_, "unseen");
  Pump();
  EXPECT_EQ(Send(log, LB_GETTOPINDEX), 2);
}

TEST_F(WindowTest, TabsNotShownHaveTheVeryButtonFace) {
  for (const ControlId tab : {cmdSettingTab_1, cmdSettingTab_2, cmdSettingTab_3, cmdSettingTab_4}) {
    EXPECT_EQ(PixelOf(Child(tab), 4, 4), ButtonFaceColour()) << Number(tab);
  }
  EXPECT_EQ(PixelOf(Child(cmdSettingTab_0), 4, 4), kShownTabGrey);
}

TEST_F(WindowTest, ConnectionTextIsGreyUntilItsShapeIsLit) {
  EXPECT_EQ(LabelTextColour(main(), Child(Label15)), SystemColour(COLOR_GRAYTEXT));
  form_.ShapeWinsock_state.fill_colour = kGreen;
  EXPECT_EQ(LabelTextColour(main(), Child(Label15)), SystemColour(COLOR_BTNTEXT));
  form_.ShapeWinsock_state.fill_colour = kButtonFace;
  EXPECT_EQ(LabelTextColour(main(), Child(Label15)), SystemColour(COLOR_GRAYTEXT));
}

TEST_F(WindowTest, RecordingRingStandsOutByADarkLineInside) {
  form_.ShapeBusy_state.fill_colour = kGreen;
  const int middle = ClientRect(Child(ShapeBusy_state)).width / 2;
  EXPECT_GE(middle, 14);
  ShowRecording(form_, true);
  EXPECT_EQ(PixelOf(Child(ShapeBusy_state), middle, 3), SystemColour(COLOR_WINDOWTEXT));
  EXPECT_EQ(PixelOf(Child(ShapeBusy_state), middle, middle), kGreen);
  ShowRecording(form_, false);
  EXPECT_EQ(PixelOf(Child(ShapeBusy_state), middle, 3), kGreen);
}

TEST_F(WindowTest, LabelsShowAmpersands) {
  form_.lblGSSI_label.caption = "&&&&&&&&";
  const int with = InkIn(Child(lblGSSI_label));
  form_.lblGSSI_label.caption = "&&&&";
  EXPECT_GT(with, InkIn(Child(lblGSSI_label)));
  form_.lblGSSI_label.caption = "";
  EXPECT_EQ(InkIn(Child(lblGSSI_label)), 0);
  form_.lblGSSI_label.caption = "&";
  EXPECT_GT(InkIn(Child(lblGSSI_label)), 0);
}

TEST_F(WindowTest, ButtonsCanBeReadWithLightTextOnDarkGround) {
  const LightOnDark colours;
  Send(main(), WM_SYSCOLORCHANGE);
  Pump();
  EXPECT_EQ(PixelOf(Child(cmdStartAll), 4, 4), SystemColour(COLOR_BTNFACE));
  EXPECT_EQ(PixelOf(Child(cmdSettingTab_0), 4, 4), SystemColour(COLOR_BTNFACE));
  EXPECT_EQ(PixelOf(Child(cmdSettingTab_1), 4, 4), SystemColour(COLOR_BTNFACE));
  EXPECT_EQ(LabelTextColour(main(), Child(lblCallID)), SystemColour(COLOR_BTNTEXT));
}

}  // namespace

}  // namespace corvane::ui_test
