// What the real main window shows: every control with its text, tip, font and room, at every
// resolution; the call log's rows; the window's place.
#include <algorithm>
#include <map>
#include <set>

#include "desktop/ui_window/window_fixture.h"
#include "panel/logs.h"

namespace corvane::ui_test {

namespace {

using enum ControlId;

constexpr int kResolutions[] = {96, 120, 144, 192};

std::string CaptionOf(const Control& control) {
  if (const auto* label = dynamic_cast<const Label*>(&control)) return label->caption;
  if (const auto* button = dynamic_cast<const Button*>(&control)) return button->caption;
  if (const auto* box = dynamic_cast<const CheckBox*>(&control)) return box->caption;
  if (const auto* option = dynamic_cast<const OptionButton*>(&control)) return option->caption;
  if (const auto* frame = dynamic_cast<const Frame*>(&control)) return frame->caption;
  return {};
}

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

TEST_F(WindowTest, EveryControlExistsOnceUnderItsNumberWithItsText) {
  std::vector<int> ids = ChildIds(main());
  std::vector<int> expected;
  for (const Control* control : form_.Controls()) {
    const auto id = FindControlId(control->name());
    ASSERT_TRUE(id) << control->name();
    if (dynamic_cast<const MenuItem*>(control) != nullptr) continue;
    expected.push_back(Number(*id));
    EXPECT_EQ(TextOf(Child(*id)), dynamic_cast<const TextBox*>(control) != nullptr
                                      ? static_cast<const TextBox*>(control)->text.get()
                                  : *id == cboBaseFrequency ? "800 MHz"
                                                            : CaptionOf(*control))
        << control->name();
    EXPECT_EQ(ToolTipOf(main(), Child(*id)), control->tool_tip.get()) << control->name();
  }
  std::sort(ids.begin(), ids.end());
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(ids, expected);
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
  EXPECT_EQ(Send(Child(fraRecordingOptions), kWmNcHitTest), kHitTransparent);
  EXPECT_EQ(Send(Child(fraCallDetails), kWmNcHitTest), kHitClient);
  Press(optRecordMode_2);
  EXPECT_EQ(DisabledToolTipRect(main(), lstRecOnlyGSSI), PixelRect{});
}

TEST_F(WindowTest, FontsAreTahomaAndOnTheTabsMsSansSerif) {
  for (const ControlPlace& place : MainWindowPlaces()) {
    const bool is_tab = place.id >= cmdSettingTab_0 && place.id <= cmdSettingTab_4;
    EXPECT_EQ(FontOfWindow(Child(place.id)).face, is_tab ? "MS Sans Serif" : "Tahoma")
        << Number(place.id);
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

  main_form_.Click(form_.mnuCompactMode);
  EXPECT_EQ(OuterRect(main()).width, 246);
  EXPECT_EQ(OuterRect(main()).height, 296);
  EXPECT_EQ(RectIn(main(), Child(fraCallDetails)).left, 8);
  EXPECT_EQ(RectIn(main(), Child(fraCallDetails)).top, 0);
  EXPECT_LE(RectIn(main(), Child(fraCallDetails)).bottom(), ClientRect(main()).height);
  EXPECT_FALSE(IsShown(Child(fraWinsock)));
  EXPECT_FALSE(IsShown(Child(lstStatusLog)));
  EXPECT_FALSE(IsShown(Child(cmdStartAll)));

  main_form_.Click(form_.mnuCompactMode);
  EXPECT_EQ(TextOf(main()), "Corvane v0.99.6s");
  for (const auto& [id, rect] : before) {
    EXPECT_EQ(RectIn(main(), Child(static_cast<ControlId>(id))), rect) << id;
  }
}

TEST_F(WindowTest, EveryTextHasRoomAtEveryResolution) {
  for (const auto& [id, text] : kWidestTexts) {
    auto* label = dynamic_cast<Label*>(form_.Controls()[0]);
    for (Control* control : form_.Controls()) {
      if (FindControlId(control->name()) == id) label = dynamic_cast<Label*>(control);
    }
    ASSERT_NE(label, nullptr);
    label->caption = text;
  }
  form_.lblGroupHold.bold = true;
  for (const int dpi : kResolutions) {
    window_.SimulateDpi(dpi);
    for (const Control* control : form_.Controls()) {
      const auto id = FindControlId(control->name());
      ASSERT_TRUE(id);
      std::string text = CaptionOf(*control);
      if (*id == lblTetraPanelExpanded) text = "'Demodulator and Auto' are Visible";
      if (text.empty()) continue;
      const PixelRect room = ClientRect(Child(*id));
      int around = 0;
      if (dynamic_cast<const Button*>(control) != nullptr) around = ToPixels(8 * 15, dpi);
      if (dynamic_cast<const CheckBox*>(control) != nullptr ||
          dynamic_cast<const OptionButton*>(control) != nullptr) {
        around = ToPixels(18 * 15, dpi);
      }
      EXPECT_LE(TextWidth(Child(*id), text) + around, room.width)
          << control->name() << " at " << dpi;
      EXPECT_LE(TextHeight(Child(*id)), room.height) << control->name() << " at " << dpi;
    }
    // Two lines have to do for the longest state of the panel.
    const Handle panel = Child(lblTetraPanelExpanded);
    EXPECT_LE(TextWidth(panel, "NOT Visible - Is TETRA Demodulator"), ClientRect(panel).width);
    EXPECT_LE(2 * TextHeight(panel), ClientRect(panel).height);
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
    window_.SimulateDpi(dpi);
    for (const auto& [id, rows] : lists) {
      const auto row = static_cast<int>(Send(Child(id), kLbGetItemHeight));
      EXPECT_GE(ClientRect(Child(id)).height / row, rows) << Number(id) << " at " << dpi;
    }
  }
}

TEST_F(WindowTest, CallLogShowsItsRowsAndAPartOfTheNextAtEveryResolution) {
  for (const bool wide : {false, true}) {
    if (wide) form_.lstCallLog.Add(std::string(300, 'W'));
    for (const int dpi : kResolutions) {
      window_.SimulateDpi(dpi);
      const auto row = static_cast<int>(Send(Child(lstCallLog), kLbGetItemHeight));
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
    EXPECT_EQ(Send(Child(lstCallLog), kLbGetTopIndex), form_.lstCallLog.top_index());
    EXPECT_EQ(Send(Child(lstCallLog), kLbGetCount), line);
    if (form_.lstCallLog.top_index() > before) ++scrolled;
    if (line > kCallLogFullRows) {
      EXPECT_EQ(form_.lstCallLog.top_index(), line - kCallLogFullRows);
      EXPECT_EQ(Send(Child(lstCallLog), kLbGetCurSel), line - 1);
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
  EXPECT_EQ(Send(Child(lstCallLog), kLbGetCount), log.count());
  EXPECT_EQ(Send(Child(lstCallLog), kLbGetCurSel), 5);
  for (int line = 0; line < log.count(); ++line) {
    EXPECT_EQ(ListLine(Child(lstCallLog), line), log.Item(line));
  }
  log.Add("away");
  log.Clear();
  log.Add("alone");
  EXPECT_EQ(Send(Child(lstCallLog), kLbGetCount), 1);
  EXPECT_EQ(ListLine(Child(lstCallLog), 0), "alone");
}

TEST_F(WindowTest, ScrolledUpCallLogStaysWhereItIs) {
  for (int line = 0; line < 60; ++line) AddCallLine(form_, "line");
  ASSERT_EQ(form_.lstCallLog.top_index(), 39);
  Post(Child(lstCallLog), kWmVScroll, kScrollLineUp);
  Post(Child(lstCallLog), kWmVScroll, kScrollLineUp);
  Pump();
  EXPECT_EQ(form_.lstCallLog.top_index(), 37);
  for (int line = 0; line < 140; ++line) AddCallLine(form_, "line");
  EXPECT_EQ(Send(Child(lstCallLog), kLbGetTopIndex), 37);
  // Back at the end it follows again.
  Send(Child(lstCallLog), kLbSetTopIndex, 199);
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
    EXPECT_GE(Send(Child(log), kLbGetHorizontalExtent), TextWidth(Child(log), line));
  }
  window_.SimulateDpi(192);
  EXPECT_GE(Send(Child(lstCallLog), kLbGetHorizontalExtent), TextWidth(Child(lstCallLog), line));
  form_.lstCallLog.Clear();
  EXPECT_EQ(Send(Child(lstCallLog), kLbGetHorizontalExtent), 0);
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
  EXPECT_EQ(form_.left.get(), 123 * 15);
  EXPECT_EQ(form_.top.get(), 77 * 15);
  Minimise(main());
  Pump();
  EXPECT_EQ(form_.left.get(), 123 * 15);
  EXPECT_EQ(form_.top.get(), 77 * 15);
}

TEST_F(WindowTest, WindowOffEveryScreenIsMovedIntoViewAndNotMinimised) {
  window_.Destroy();
  ASSERT_TRUE(window_.Create(form_, main_form_));
  form_.left = -30000 * 15;
  form_.top = 20000 * 15;
  window_.Show();
  Pump();
  const PixelRect outer = OuterRect(main());
  const PixelRect area = WorkArea();
  EXPECT_GE(outer.left, area.left);
  EXPECT_LE(outer.right(), area.right());
  EXPECT_LE(outer.bottom(), area.bottom());
  EXPECT_EQ(form_.left.get(), outer.left * 15);
  EXPECT_FALSE(IsMinimised(main()));
}

}  // namespace

}  // namespace corvane::ui_test
