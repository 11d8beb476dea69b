// Lays the windows out as SDR# and its plug-ins have them, a main window with a column of panels
// at its left; the right side belongs to the practice mode.
#include "standin/sdr_windows.h"

#include <utility>

#include "base/number_text.h"

namespace corvane::standin {

namespace {

constexpr std::string_view kTitle = "SDR# v1.0.0.1919 - Stand-in for practice";
constexpr int kMainWidth = 1030;
constexpr int kMainHeight = 690;
constexpr int kColumnWidth = 268;
constexpr int kHeaderHeight = 24;
constexpr int kPanelGap = 4;
constexpr int kRight = 292;  // where the practice side begins
constexpr int kRightWidth = 708;
constexpr std::size_t kMaxHistoryLines = 200;

}  // namespace

SdrWindows::SdrWindows(WindowTree& tree, const Options& options, Actions actions)
    : tree_(tree), options_(options), actions_(std::move(actions)) {}

void SdrWindows::Open() {
  if (ids_.main != 0) return;
  ids_.main = Make(0, Kind::kFrame, kTitle, {options_.left, options_.top, kMainWidth, kMainHeight});
  const WindowId body = Make(ids_.main, Kind::kPanel, "", {0, 0, kMainWidth - 16, 650});
  ids_.play = Make(body, Kind::kButton, "Play", {8, 8, 120, 30});
  left_column_ = Make(body, Kind::kPanel, "", {8, 48, kColumnWidth, 594});
  MakeDecoys();
  MakeNetRemote();
  MakeTetra();
  MakePractice();
  ConnectActions();
  Place();
}

void SdrWindows::Close() {
  tree_.Destroy(ids_.info_window);
  tree_.Destroy(ids_.main);
  ids_ = {};
  left_column_ = 0;
  column_.clear();
  history_.clear();
}

void SdrWindows::OpenInfo() {
  if (ids_.main == 0) return;
  if (ids_.info_window == 0) {
    WindowSpec window{Kind::kFrame,
                      ClassOf(Kind::kFrame),
                      "Network Info",
                      {options_.left + 430, options_.top + 330, 640, 360}};
    window.owner = options_.info_owned ? ids_.main : 0;
    ids_.info_window = tree_.Add(0, std::move(window));
    WindowSpec box{Kind::kMultiLine,
                   ClassOf(Kind::kMultiLine),
                   keep_history_ ? history_ : "",
                   {6, 6, 612, 310}};
    box.wrap = options_.info_wrap;
    ids_.info_box = tree_.Add(ids_.info_window, std::move(box));
    tree_.OnText(ids_.info_box, [this] { actions_.log("text", "Network Info"); });
    return;
  }
  tree_.SetVisible(ids_.info_window, true);
  tree_.SetShowState(ids_.info_window, ShowState::kNormal);
  tree_.Raise(ids_.info_window);
}

void SdrWindows::CloseInfo() {
  tree_.Destroy(ids_.info_window);
  ids_.info_window = 0;
  ids_.info_box = 0;
}

void SdrWindows::SetInfoWidth(int width) {
  const int change = width - tree_.Find(ids_.info_window)->box.width;
  for (const WindowId id : {ids_.info_window, ids_.info_box}) {
    Box box = tree_.Find(id)->box;
    box.width += change;
    tree_.SetBox(id, box);
  }
}

void SdrWindows::AddInfo(std::string_view text) {
  history_ += text;
  if (history_.size() > 2 * kHistoryBytes) {
    const std::size_t line_end = history_.find("\r\n", history_.size() - kHistoryBytes);
    history_.erase(0, line_end == std::string::npos ? history_.size() : line_end + 2);
  }
  tree_.AppendText(ids_.info_box, text, kMaxBoxBytes);
}

void SdrWindows::SetExpanded(bool tetra, bool expanded) {
  tree_.SetVisible(tetra ? ids_.tetra_content : ids_.net_remote_content, expanded);
  Place();
}

void SdrWindows::AddHistory(std::string_view line) {
  tree_.AddItem(ids_.history, line, kMaxHistoryLines);
}

// Panel, header label and content panel; the header's parent is the panel that holds all.
WindowId SdrWindows::MakeColumnPanel(std::string_view title, int content_height, bool expanded) {
  ColumnPanel made;
  made.content_height = content_height;
  made.panel =
      Make(left_column_, Kind::kPanel, "", {0, 0, kColumnWidth, kHeaderHeight + content_height});
  made.header = Make(made.panel, Kind::kLabel, title, {4, 4, kColumnWidth - 8, 18});
  tree_.SetPaint(made.header, Paint::kHeader);
  made.content =
      Make(made.panel, Kind::kPanel, "", {0, kHeaderHeight, kColumnWidth, content_height});
  tree_.SetVisible(made.content, expanded);
  column_.push_back(made);
  return made.content;
}

void SdrWindows::MakeDecoys() {
  const WindowId source = MakeColumnPanel("Source: Simulated *", 32, true);
  Make(source, Kind::kLabel, "Sample rate", {8, 8, 90, 18});
  Make(source, Kind::kTextBox, "2400000", {108, 4, 100, 22});
  const WindowId radio = MakeColumnPanel("Radio *", 62, true);
  Make(radio, Kind::kCheckBox, "Snap to grid", {8, 4, 110, 22});
  Make(radio, Kind::kCheckBox, "Lock carrier", {132, 4, 110, 22});
  Make(radio, Kind::kLabel, "Filter bandwidth", {8, 36, 110, 18});
  Make(radio, Kind::kTextBox, "25000", {132, 32, 76, 22});
  const WindowId audio = MakeColumnPanel("Audio *", 30, false);
  Make(audio, Kind::kCheckBox, "Unity gain", {8, 4, 110, 22});
  const WindowId display = MakeColumnPanel("Display *", 30, false);
  Make(display, Kind::kCheckBox, "Mark peaks", {8, 4, 110, 22});
}

void SdrWindows::MakeNetRemote() {
  const WindowId content = MakeColumnPanel("Net Remote *", 84, true);
  ids_.net_remote_panel = column_.back().panel;
  ids_.net_remote_header = column_.back().header;
  ids_.net_remote_content = content;
  ids_.network = Make(content, options_.network_plain ? Kind::kButton : Kind::kCheckBox, "Network",
                      {8, 4, 92, 24});
  Make(content, Kind::kLabel, "Port", {116, 8, 40, 18});
  ids_.port = Make(content, Kind::kTextBox, options_.port, {160, 4, 72, 22});
  Make(content, Kind::kCheckBox, "Serial", {8, 32, 92, 24});
  Make(content, Kind::kLabel, "COM1", {116, 36, 60, 18});
  ids_.server = Make(content, Kind::kLabel, "Switched off", {8, 62, 250, 18});
}

void SdrWindows::MakeTetra() {
  const int box_height = 20 * options_.scale / 100;
  const int lower = box_height - 20;  // what lies under the boxes
  const WindowId content =
      MakeColumnPanel("TETRA Demodulator *", 196 + lower, options_.tetra_expanded);
  ids_.tetra_panel = column_.back().panel;
  ids_.tetra_header = column_.back().header;
  ids_.tetra_content = content;
  ids_.demodulator = Make(content, Kind::kDrawnCheckBox, "Demodulator", {8, 4, 116, box_height});
  ids_.automatic = Make(content, Kind::kDrawnCheckBox, "Auto", {136, 4, 116, box_height});
  for (int i = 0; i < 4; ++i) {
    ids_.timeslots[static_cast<std::size_t>(i)] =
        Make(content, Kind::kSelector, "Timeslot " + Decimal(i + 1),
             {8 + i % 2 * 128, 30 + lower + i / 2 * 30, 116, 26});
  }
  ids_.net_info = Make(content, Kind::kButton, "Net Info", {8, 94 + lower, 116, 26});
  Make(content, Kind::kButton, "Call Info", {136, 94 + lower, 116, 26});
  ids_.mcc = Make(content, Kind::kLabel, "", {8, 128 + lower, 78, 18});
  ids_.mnc = Make(content, Kind::kLabel, "", {90, 128 + lower, 78, 18});
  ids_.la = Make(content, Kind::kLabel, "", {172, 128 + lower, 86, 18});
  Make(content, Kind::kLabel, "Colour:1", {8, 150 + lower, 78, 18});
  Make(content, Kind::kLabel, "BER: 0.0 %", {90, 150 + lower, 78, 18});
  Make(content, Kind::kCheckBox, "Listen only to clear speech", {8, 170 + lower, 244, 22});
  tree_.SetChecked(ids_.demodulator, options_.demodulator_checked);
  tree_.SetChecked(ids_.automatic, options_.auto_checked);
}

void SdrWindows::MakePractice() {
  const WindowId side = Make(ids_.main, Kind::kPanel, "", {kRight, 0, kRightWidth + 10, 650});
  ids_.frequency = Make(side, Kind::kLabel, "", {0, 12, kRightWidth, 20});
  ids_.tuned = Make(side, Kind::kLabel, "", {0, 36, kRightWidth, 20});
  ids_.sound = Make(side, Kind::kLabel, "", {0, 58, kRightWidth, 20});
  Make(side, Kind::kLabel, "On the air:", {0, 86, kRightWidth, 18});
  ids_.on_air = Make(side, Kind::kListBox, "", {0, 106, kRightWidth, 190});
  const WindowId start = Make(side, Kind::kButton, "Start a call", {0, 304, 130, 28});
  const WindowId next = Make(side, Kind::kButton, "Next speaker", {138, 304, 130, 28});
  const WindowId pause = Make(side, Kind::kButton, "Pause", {276, 304, 130, 28});
  const WindowId end = Make(side, Kind::kButton, "End the call", {414, 304, 130, 28});
  Make(side, Kind::kLabel, "What happened:", {0, 340, kRightWidth, 18});
  ids_.history = Make(side, Kind::kListBox, "", {0, 360, kRightWidth, 278});
  tree_.OnPress(start, actions_.start_call);
  tree_.OnPress(next, actions_.next_speaker);
  tree_.OnPress(pause, actions_.pause);
  tree_.OnPress(end, actions_.end_call);
}

void SdrWindows::ConnectActions() {
  const auto press = [this](WindowId id, const std::function<void()>& action) {
    tree_.OnPress(id, [this, id, action] {
      actions_.log("press", tree_.Find(id)->text);
      action();
    });
  };
  press(ids_.play, actions_.play);
  press(ids_.network, actions_.network);
  press(ids_.demodulator, actions_.demodulator);
  press(ids_.automatic, actions_.automatic);
  press(ids_.net_info, [this] {
    const bool hide = options_.info_toggles && tree_.IsVisible(ids_.info_window);
    if (hide) return tree_.SetVisible(ids_.info_window, false);
    OpenInfo();
  });
  for (std::size_t i = 0; i < ids_.timeslots.size(); ++i) {
    const int slot = static_cast<int>(i) + 1;
    tree_.OnMouseDown(ids_.timeslots[i], [this, slot](int, int) {
      actions_.log("mouse-down", "Timeslot " + Decimal(slot));
      actions_.timeslot(slot);
    });
  }
  tree_.OnText(ids_.port, [this] { actions_.log("text", "port " + tree_.Find(ids_.port)->text); });
}

void SdrWindows::Place() {
  int top = 0;
  for (const ColumnPanel& panel : column_) {
    const bool expanded = tree_.Find(panel.content)->visible;
    const int height = kHeaderHeight + (expanded ? panel.content_height : 0);
    tree_.SetBox(panel.panel, {0, top, kColumnWidth, height});
    top += height + kPanelGap;
  }
}

WindowId SdrWindows::Make(WindowId parent, Kind kind, std::string_view text, Box box) {
  WindowSpec wanted{kind, ClassOf(kind), std::string(text), box, true};
  wanted.scale = options_.scale;
  return tree_.Add(parent, std::move(wanted));
}

std::string SdrWindows::ClassOf(Kind kind) const {
  std::string name;
  switch (kind) {
    case Kind::kFrame:
    case Kind::kPanel:
      name = "Window.8";
      break;
    case Kind::kLabel:
      name = "STATIC";
      break;
    case Kind::kTextBox:
    case Kind::kMultiLine:
      name = "EDIT";
      break;
    case Kind::kListBox:
      name = "LISTBOX";
      break;
    default:
      name = "BUTTON";
      break;
  }
  return "WindowsForms10." + name + ".app.0." + options_.class_tail;
}

}  // namespace corvane::standin
