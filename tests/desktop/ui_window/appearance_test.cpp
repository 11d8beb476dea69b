// What the real main window shows: every control with its text, tip, font and room, at every
// resolution; the call log's rows; the window's place.
#include <map>

#include "desktop/ui_window/window_fixture.h"
#include "panel/logs.h"

namespace corvane::ui_test {

namespace {

using enum ControlId;

constexpr int kResolutions[] = {96, 120, 144, 168, 192};

constexpr char kLongestPanelState[] = "NOT Visible - Is TETRA Demodulator panel expanded?";

// The widest texts that the program puts into labels which start out empty.
const std::map<ControlId, std::string> kWidestTexts = {
    {lblGroupNumber, " 16777215"},
    {lblGSSI_label, "Fire & rescue, region north-ea"},
    {lblCurrentSSI, " 16777215"},
    {lblSSI_label, "Fire & rescue, region north-ea"},
    {lblSsiLastSeen, "11/15/2026 12:53:35 PM"},
    {lblCallID, " 16383"},
    {lblTimeSlotNumber, " 4"},
    {lblCarrierNumber, " 4095"},
    {lblTimeoutCountdown, "100"},
    {lblNetworkInfo, "MNC:16383  LA:16383"},
    {lblPositionSdrSharpCC, "-1928,-1048,1928,1048"},
    {lblUnCheckedValue, "-2147483648"},
    {lblCheckedValue, "-2147483648"},
    {lblValidateState, "Demodulator is UnChecked?"},
};

TEST_F(WindowTest, EveryControlExistsOnceUnderItsNumberWithItsTextInTheOrderOfTheTable) {
  std::vector<int> expected;
  for (const ControlRow& row : MainWindowTable(form_).controls) {
    expected.push_back(Number(row.id));
    std::string text = row.control.caption;
    if (row.control.kind() == ControlKind::kTextBox) text = As<TextBox>(row.control).text;
    if (row.id == cboBaseFrequency) text = "800 MHz";
    EXPECT_EQ(TextOf(Child(row.id)), text) << row.control.name();
    EXPECT_EQ(ToolTipOf(main(), Child(row.id)), row.control.tool_tip) << row.control.name();
  }
  EXPECT_EQ(ChildIds(main()), expected);
}

TEST_F(WindowTest, MenuBarHasToolsAndTheCountry) {
  EXPECT_EQ(MenuBarTexts(main()), (std::vector<std::string>{"Tools", "MCC: ?"}));
  EXPECT_EQ(MenuItemOf(main(), mnuOptions).text, "Tools");
  EXPECT_EQ(MenuItemOf(main(), mnuGSSIEditor).text, "G/SSI Editor");
  EXPECT_EQ(MenuItemOf(main(), mnuCompactMode).text, "Compact");
  form_.mnuMCClabel.caption = "MCC:262 [Germany]";
  EXPECT_EQ(MenuBarTexts(main()).back(), "MCC:262 [Germany]");
}

TEST_F(WindowTest, ToolTipsShowAmpersandsAndCoverDisabledControls) {
  EXPECT_TRUE(ToolTipsShowAmpersands(main()));
  form_.lblNetworkInfo.tool_tip = "North & South";
  EXPECT_EQ(ToolTipOf(main(), Child(lblNetworkInfo)), "North & South");
  EXPECT_EQ(DisabledToolTipRect(main(), lstRecOnlyGSSI), PixelRect{});
  Press(cmdSettingTab_1);
  EXPECT_EQ(DisabledToolTipRect(main(), lstRecOnlyGSSI), RectIn(main(), Child(lstRecOnlyGSSI)));
  // The mouse over a disabled control has to get through its frame to the window.
  EXPECT_EQ(Send(Child(fraRecordingOptions), WM_NCHITTEST), HTTRANSPARENT);
  EXPECT_EQ(Send(Child(fraCallDetails), WM_NCHITTEST), HTCLIENT);
  Press(optRecordMode_2);
  EXPECT_EQ(DisabledToolTipRect(main(), lstRecOnlyGSSI), PixelRect{});
}

TEST_F(WindowTest, FontsAreTahomaAndOnTheTabsMsSansSerif) {
  for (const ControlRow& row : MainWindowTable(form_).controls) {
    const bool is_tab = row.id >= cmdSettingTab_0 && row.id <= cmdSettingTab_4;
    EXPECT_EQ(FontOfWindow(Child(row.id)).face, is_tab ? "MS Sans Serif" : "Tahoma")
        << row.control.name();
  }
}

TEST_F(WindowTest, NoFontIsMadeOfEnlargedDots) {
  for (const int dpi : {120, 144, 168, 192}) {
    ChangeDpi(dpi);
    for (const ControlRow& row : MainWindowTable(form_).controls) {
      EXPECT_TRUE(HasOutlineFont(Child(row.id))) << row.control.name() << " at " << dpi;
    }
  }
}

TEST_F(WindowTest, NormalAndCompactHaveTheirSizesAndGoBackExactly) {
  std::map<int, PixelRect> before;
  for (const int id : ChildIds(main())) {
    before[id] = RectIn(main(), Child(static_cast<ControlId>(id)));
  }
  EXPECT_EQ(OuterRect(main()).width, 830);
  EXPECT_EQ(OuterRect(main()).height, 408);
  EXPECT_EQ(RectIn(main(), Child(fraCallDetails)).left, 8);
  EXPECT_EQ(RectIn(main(), Child(fraCallDetails)).top, 112);
  EXPECT_TRUE(IsShown(Child(lstStatusLog)));

  ClickCompact();
  EXPECT_EQ(OuterRect(main()).width, 246);
  EXPECT_EQ(OuterRect(main()).height, 296);
  EXPECT_EQ(RectIn(main(), Child(fraCallDetails)).left, 8);
  EXPECT_EQ(RectIn(main(), Child(fraCallDetails)).top, 0);
  EXPECT_LE(RectIn(main(), Child(fraCallDetails)).bottom(), ClientRect(main()).height);
  EXPECT_FALSE(IsShown(Child(fraWinsock)));
  EXPECT_FALSE(IsShown(Child(lstStatusLog)));
  EXPECT_FALSE(IsShown(Child(cmdStartAll)));

  ClickCompact();
  EXPECT_EQ(TextOf(main()), "Corvane v0.99.6s");
  for (const auto& [id, rect] : before) {
    EXPECT_EQ(RectIn(main(), Child(static_cast<ControlId>(id))), rect) << id;
  }
}

TEST_F(WindowTest, CompactModePassesThroughNoWrongSize) {
  const std::vector<PixelRect> places = PlacesDuring(main(), [this] {
    ClickCompact();
    ClickCompact();
  });
  EXPECT_EQ(places, (std::vector<PixelRect>{{kLeft, kTop, 246, 296}, {kLeft, kTop, 830, 408}}));
}

TEST_F(WindowTest, EveryTextHasRoomAtEveryResolution) {
  const WindowTable table = MainWindowTable(form_);
  for (const ControlRow& row : table.controls) {
    const auto widest = kWidestTexts.find(row.id);
    if (widest != kWidestTexts.end()) row.control.caption = widest->second;
  }
  form_.lblGroupHold.bold = true;
  for (const int dpi : kResolutions) {
    ChangeDpi(dpi);
    for (const ControlRow& row : table.controls) {
      std::string text = row.control.caption;
      if (row.id == lblTetraPanelExpanded) text = "'Demodulator and Auto' are Visible";
      if (text.empty()) continue;
      const PixelRect room = ClientRect(Child(row.id));
      if (row.Has(kWraps) || row.id == lblTetraPanelExpanded) {
        const int width = room.width - (row.Has(kWraps) ? ToPixels(18 * 15, dpi) : 0);
        EXPECT_LE(WrappedHeight(Child(row.id), text, width), room.height)
            << row.control.name() << " at " << dpi;
        continue;
      }
      const ControlKind kind = row.control.kind();
      int around = 0;
      if (kind == ControlKind::kButton) around = ToPixels(8 * 15, dpi);
      if (kind == ControlKind::kCheckBox || kind == ControlKind::kOption) {
        around = ToPixels(18 * 15, dpi);
      }
      EXPECT_LE(TextWidth(Child(row.id), text) + around, room.width)
          << row.control.name() << " at " << dpi;
      EXPECT_LE(TextHeight(Child(row.id)), room.height) << row.control.name() << " at " << dpi;
    }
    // The longest state of the panel has room too.
    const Handle panel = Child(lblTetraPanelExpanded);
    EXPECT_LE(WrappedHeight(panel, kLongestPanelState, ClientRect(panel).width),
              ClientRect(panel).height);
    for (const ControlId box : {txtTimeout, txtVcVolume, txtParkCarrier, txtRecOnlyGSSI}) {
      EXPECT_LE(TextWidth(Child(box), "16777215") / (box == txtRecOnlyGSSI ? 1 : 2),
                ClientRect(Child(box)).width - 4);
      EXPECT_LE(TextHeight(Child(box)), ClientRect(Child(box)).height);
    }
    EXPECT_LE(TextWidth(Child(cboBaseFrequency), "900 MHz") + ToPixels(24 * 15, dpi),
              ClientRect(Child(cboBaseFrequency)).width);
  }
}

TEST_F(WindowTest, ListsShowTheirFullRowsAtEveryResolution) {
  const std::vector<std::pair<ControlId, int>> lists = {{lstStatusLog, kStatusLogFullRows},
                                                        {lstCurrentSSI_Users, kUserListFullRows},
                                                        {lstRecOnlyGSSI, kRecOnlyFullRows}};
  form_.lstStatusLog.Add(std::string(200, 'W'));  // with its scroll bar
  for (const int dpi : kResolutions) {
    ChangeDpi(dpi);
    for (const auto& [id, rows] : lists) {
      const auto row = static_cast<int>(Send(Child(id), LB_GETITEMHEIGHT));
      EXPECT_GE(ClientRect(Child(id)).height / row, rows) << Number(id) << " at " << dpi;
    }
  }
}

TEST_F(WindowTest, CallLogShowsItsRowsAndAPartOfTheNextAtEveryResolution) {
  for (const bool wide : {false, true}) {
    if (wide) form_.lstCallLog.Add(std::string(300, 'W'));
    for (const int dpi : kResolutions) {
      ChangeDpi(dpi);
      const auto row = static_cast<int>(Send(Child(lstCallLog), LB_GETITEMHEIGHT));
      const int height = ClientRect(Child(lstCallLog)).height;
      EXPECT_GE(row, TextHeight(Child(lstCallLog))) << dpi;
      EXPECT_EQ(height / row, kCallLogFullRows) << dpi;
      EXPECT_GE(height % row, row / 4) << dpi;
      EXPECT_LE(height % row, row * 3 / 4) << dpi;
      EXPECT_LE(RectIn(main(), Child(lstCallLog)).bottom(), ClientRect(main()).height) << dpi;
    }
  }
}

TEST_F(WindowTest, CallLogAtItsEndFollowsEveryLine) {
  int scrolled = 0;
  for (int line = 1; line <= 200; ++line) {
    const int before = form_.lstCallLog.top_index();
    AddCallLine(form_, "15/11/2026 14:23:05 - line " + std::to_string(line));
    EXPECT_EQ(Send(Child(lstCallLog), LB_GETTOPINDEX), form_.lstCallLog.top_index());
    EXPECT_EQ(Send(Child(lstCallLog), LB_GETCOUNT), line);
    if (form_.lstCallLog.top_index() > before) ++scrolled;
    if (line > kCallLogFullRows) {
      EXPECT_EQ(form_.lstCallLog.top_index(), line - kCallLogFullRows);
      EXPECT_EQ(Send(Child(lstCallLog), LB_GETCURSEL), line - 1);
    }
  }
  EXPECT_EQ(scrolled, 179);
}

// Showing a line costs more than tuning to a call: the commands come first.
TEST_F(WindowTest, LinesAreShownWhenTheEventThatAddsThemIsOver) {
  int before_rest = 0;
  loop_.Post(EventSource::kUser, [&] {
    FillCallLog(60);
    before_rest = ScrollEnd(Child(lstCallLog));
  });
  const auto end = loop_.MakeTimer(200, [&] { loop_.Quit(); });
  end->SetEnabled(true);
  loop_.Run();
  EXPECT_LT(before_rest, 59);
  EXPECT_EQ(ScrollEnd(Child(lstCallLog)), 59);
}

TEST_F(WindowTest, LinesAreShownInsideAnEventThatWaitsLong) {
  int shown = 0;
  loop_.Post(EventSource::kUser, [&] {
    FillCallLog(60);
    for (int round = 0; round < 30; ++round) {
      loop_.Sleep(10);
      loop_.DoEvents();
    }
    shown = ScrollEnd(Child(lstCallLog));
    loop_.Quit();
  });
  loop_.Run();
  EXPECT_EQ(shown, 59);
}

TEST_F(WindowTest, LinesThatComeAndGoInOneEventLeaveTheListAsTheStateHasIt) {
  ListBox& log = form_.lstCallLog;
  FillCallLog(30);
  log.Remove(3);
  log.Replace(0, "replaced");
  log.Select(5);
  log.Add("last");
  log.Replace(29, "last but not least");
  EXPECT_EQ(Send(Child(lstCallLog), LB_GETCOUNT), log.count());
  EXPECT_EQ(Send(Child(lstCallLog), LB_GETCURSEL), 5);
  for (int line = 0; line < log.count(); ++line) {
    EXPECT_EQ(ListLine(Child(lstCallLog), line), log.Item(line));
  }
  log.Add("away");
  log.Clear();
  log.Add("alone");
  EXPECT_EQ(Send(Child(lstCallLog), LB_GETCOUNT), 1);
  EXPECT_EQ(ListLine(Child(lstCallLog), 0), "alone");
}

TEST_F(WindowTest, ScrolledUpCallLogStaysWhereItIs) {
  for (int line = 0; line < 60; ++line) AddCallLine(form_, "line");
  ASSERT_EQ(form_.lstCallLog.top_index(), 39);
  Post(Child(lstCallLog), WM_VSCROLL, SB_LINEUP);
  Post(Child(lstCallLog), WM_VSCROLL, SB_LINEUP);
  Pump();
  EXPECT_EQ(form_.lstCallLog.top_index(), 37);
  for (int line = 0; line < 140; ++line) AddCallLine(form_, "line");
  EXPECT_EQ(Send(Child(lstCallLog), LB_GETTOPINDEX), 37);
  // Back at the end it follows again.
  Send(Child(lstCallLog), LB_SETTOPINDEX, 199);
  EXPECT_EQ(form_.lstCallLog.top_index(), 179);
  AddCallLine(form_, "line");
  EXPECT_EQ(form_.lstCallLog.top_index(), 180);
}

TEST_F(WindowTest, LogsScrollSidewaysAsFarAsTheirWidestLine) {
  const std::string line(120, 'W');
  form_.lstCallLog.Add("short");
  form_.lstCallLog.Add(line);
  form_.lstStatusLog.Add(line);
  for (const ControlId log : {lstCallLog, lstStatusLog}) {
    EXPECT_GE(Send(Child(log), LB_GETHORIZONTALEXTENT), TextWidth(Child(log), line));
  }
  ChangeDpi(192);
  EXPECT_GE(Send(Child(lstCallLog), LB_GETHORIZONTALEXTENT), TextWidth(Child(lstCallLog), line));
  form_.lstCallLog.Clear();
  EXPECT_EQ(Send(Child(lstCallLog), LB_GETHORIZONTALEXTENT), 0);
}

TEST_F(WindowTest, ShapesShowTheirColours) {
  form_.ShapeBusy_state.fill_colour = kGreen;
  ShowRecording(form_, true);
  const PixelRect shape = ClientRect(Child(ShapeBusy_state));
  EXPECT_EQ(PixelOf(Child(ShapeBusy_state), shape.width / 2, shape.height / 2), kGreen);
  EXPECT_EQ(PixelOf(Child(ShapeBusy_state), shape.width / 2, 1), kRed);
  EXPECT_EQ(PixelOf(Child(ShapeBusy_state), shape.width / 2, 2), kRed);
  ShowRecording(form_, false);
  EXPECT_EQ(PixelOf(Child(ShapeBusy_state), shape.width / 2, 2), kGreen);
}

TEST_F(WindowTest, WindowStandsWhereTheStateSaysAndReportsWhereItWasMoved) {
  EXPECT_EQ(OuterRect(main()).left, kLeft);
  EXPECT_EQ(OuterRect(main()).top, kTop);
  MoveTo(main(), 123, 77);
  Pump();
  EXPECT_EQ(form_.bounds.get().left, 123 * 15);
  EXPECT_EQ(form_.bounds.get().top, 77 * 15);
  Minimise(main());
  Pump();
  EXPECT_EQ(form_.bounds.get().left, 123 * 15);
  EXPECT_EQ(form_.bounds.get().top, 77 * 15);
}

TEST_F(WindowTest, WindowOffEveryScreenIsMovedIntoViewAndNotMinimised) {
  window_.Destroy();
  ASSERT_TRUE(Create());
  form_.MoveTo(-30000 * 15, 20000 * 15);
  window_.Show();
  Pump();
  const PixelRect outer = OuterRect(main());
  const PixelRect area = WorkArea();
  EXPECT_GE(outer.left, area.left);
  EXPECT_LE(outer.right(), area.right());
  EXPECT_LE(outer.bottom(), area.bottom());
  EXPECT_EQ(form_.bounds.get().left, outer.left * 15);
  EXPECT_FALSE(IsMinimised(main()));
}

}  // namespace

}  // namespace corvane::ui_test
