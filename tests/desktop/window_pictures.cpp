// Pictures of both windows in their states, at each scale and in light-on-dark colours, and a look
// at their layout: no control leaves its frame or lies over another, no text is wider than its
// control. And of the message boxes, which the system lays out, at its own scale.
//
// window_pictures FOLDER
// Each finding is a line; the exit code is 1 when there is one, or a picture cannot be saved.
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/box_pictures.h"
#include "desktop/harness/foreign_windows.h"
#include "desktop/ui_window/editor_fixture.h"
#include "ui/main_form.h"
#include "ui/main_layout.h"
#include "unit/ui/recording_actions.h"

namespace corvane::ui_test {
namespace {

constexpr int kScales[] = {96, 120, 144, 168, 192};
constexpr const char* kPages[] = {"presets", "recording", "options", "logging", "checkbox"};

std::string ScaleText(int dpi) {
  return std::to_string(dpi * 100 / kDesignDpi);
}

// What the user sees in a call of usual size.
void FillMain(Form1& form) {
  form.lblGroupNumber.caption = " 9001";
  form.lblGSSI_label.caption = "Sample Fire north";
  form.lblCurrentSSI.caption = " 5010";
  form.lblSSI_label.caption = "Sample Fire control";
  form.lblSsiLastSeen.caption = "15/11/2026 14:23:05";
  form.lblCallID.caption = " 1207";
  form.lblTimeSlotNumber.caption = " 2";
  form.lblCarrierNumber.caption = " 2610";
  form.lblTimeoutCountdown.caption = "16";
  form.lblNetworkInfo.caption = "MNC:42  LA:101";
  form.lblPositionSdrSharpCC.caption = "0,0,1024,768";
  form.ShapeBusy_state.fill_colour = kGreen;
  form.ShapeBusy_state.border_colour = kRed;
  form.ShapeBusy_state.border_width = 3;
  form.ShapeWinsock_state.fill_colour = kGreen;
  form.lblCheckedValue.caption = "10580318";
  form.lblUnCheckedValue.caption = "14934753";
  form.lblValidateState.caption = "Demodulator is UnChecked?";
  form.lblTetraPanelExpanded.caption = "NOT Visible - Is TETRA Demodulator panel expanded?";
  form.txtTimeout.text = "5";
  form.txtVcVolume.text = "47";
  form.txtParkCarrier.text = "2604";
  form.lstCurrentSSI_Users.Add("5010");
  form.lstCurrentSSI_Users.Add("5011");
  form.lstRecOnlyGSSI.Add("9001");
  form.lstStatusLog.Add("All hwnd found - Ready to start");
  for (int call = 1201; call < 1209; ++call) {
    const std::string stamp = "15/11/2026 14:23:05 - Call ID: " + std::to_string(call);
    form.lstCallLog.Add(stamp + " - On carrier: 2610 - Group: 9001 [Sample Fire north]");
    form.lstCallLog.Add(stamp + " - Calling SSI: 5010 [Sample Fire control]");
    form.lstCallLog.Add("");
  }
}

class Studio {
 public:
  explicit Studio(std::string folder) : folder_(std::move(folder)) {}

  // Takes the picture and looks at the layout.
  void Take(const std::string& name, const WindowTable& table, Handle window) {
    for (int round = 0; round < 10; ++round) {
      loop.Sleep(10);
      loop.DoEvents();
    }
    if (!desktop::SaveScreenshot(NumberOf(window), folder_ + "\\" + name + ".png")) {
      Find(name, "no picture");
    }
    for (const ControlRow& row : table.controls) CheckPlace(name, table, window, row);
    ++taken_;
  }

  [[nodiscard]] int findings() const { return findings_; }
  [[nodiscard]] int taken() const { return taken_; }

  LoopWin loop;

 private:
  void Find(const std::string& picture, const std::string& what) {
    std::printf("%s: %s\n", picture.c_str(), what.c_str());
    ++findings_;
  }

  void CheckPlace(const std::string& picture, const WindowTable& table, Handle window,
                  const ControlRow& row) {
    const Handle child = ChildOf(window, row.id);
    if (!IsShown(child)) return;
    const PixelRect place = RectIn(window, child);
    PixelRect around = ClientRect(window);
    for (const ControlRow& other : table.controls) {
      if (&other.control == row.frame) around = RectIn(window, ChildOf(window, other.id));
    }
    if (place.left < around.left || place.top < around.top || place.right() > around.right() ||
        place.bottom() > around.bottom()) {
      Find(picture, std::string(row.control.name()) + " leaves its frame");
    }
    for (const ControlRow& other : table.controls) {
      const Handle second = ChildOf(window, other.id);
      const bool counts = &other != &row && other.control.kind() != ControlKind::kFrame &&
                          row.control.kind() != ControlKind::kFrame && IsShown(second);
      // A cover stands where its list does.
      const bool covers = row.Has(kNoTabStop) || other.Has(kNoTabStop);
      if (counts && !covers && Overlap(place, RectIn(window, second))) {
        Find(picture, std::string(row.control.name()) + " lies over " + other.control.name());
      }
    }
    CheckText(picture, row, child, place);
  }

  // Texts of one line; what a check box or an option button has before its text is left free.
  void CheckText(const std::string& picture, const ControlRow& row, Handle child,
                 const PixelRect& place) {
    const ControlKind kind = row.control.kind();
    int before_text = 0;
    if (kind == ControlKind::kCheckBox || kind == ControlKind::kOption) {
      before_text = place.height;
    } else if (kind != ControlKind::kLabel && kind != ControlKind::kButton) {
      return;
    }
    const int lines = std::max(1, place.height / std::max(1, TextHeight(child)));
    const int width = TextWidth(child, row.control.caption);
    if (width > lines * (place.width - before_text)) {
      Find(picture, std::string(row.control.name()) + " cuts its text off");
    }
    if (!row.control.caption.get().empty() && TextHeight(child) > place.height) {
      Find(picture, std::string(row.control.name()) + " is lower than its text");
    }
  }

  static bool Overlap(const PixelRect& one, const PixelRect& other) {
    return one.left < other.right() && other.left < one.right() && one.top < other.bottom() &&
           other.top < one.bottom();
  }

  std::string folder_;
  int findings_ = 0;
  int taken_ = 0;
};

void TakeMainWindow(Studio& studio, int dpi, const std::string& suffix) {
  FormWindow window(studio.loop);
  Form1 form(window);
  Presets presets;
  ProgramFlags flags;
  RecordingActions actions;
  const auto timer = studio.loop.MakeTimer(500, [] {});
  MainForm main_form(form, presets, flags, *timer, actions);
  const WindowTable table = MainWindowTable(form);
  if (!window.Create(table, main_form)) std::exit(2);
  FillMain(form);
  form.MoveTo(0, 0);
  main_form.ApplyRestoredSettings();
  window.Show();
  SendDpiChange(window.handle(), dpi);
  for (int page = 0; page < 5; ++page) {
    main_form.ShowSettingsPage(page);
    studio.Take("main-" + std::string(kPages[page]) + "-" + suffix, table, window.handle());
  }
  main_form.Click(form.mnuCompactMode);
  studio.Take("compact-" + suffix, table, window.handle());
}

void TakeEditor(Studio& studio, int dpi, const std::string& suffix) {
  FormWindow window(studio.loop);
  EditorTables tables(14, 5);
  OpenEditor editor(studio.loop, window, tables);
  if (!editor.made) std::exit(2);
  SendDpiChange(window.handle(), dpi);
  const WindowTable table = EditorWindowTable(editor.dialog);
  if (!AwaitFilled(studio.loop, editor)) std::exit(2);
  studio.Take("editor-" + suffix, table, window.handle());
  // As they are for a second after an update.
  editor.dialog.cmdUpdateGSSI.caption = "Updated";
  editor.dialog.cmdUpdateGSSI.back_colour = kGreen;
  editor.dialog.txtSSI_labelEdit.back_colour = kRed;
  studio.Take("editor-stored-" + suffix, table, window.handle());
  editor.dialog.cboCountry.list_index = -1;
  editor.dialog.cboNetworks.list_index = -1;
  editor.dialog.lstGssiBlank.visible = true;
  editor.dialog.lstSsiBlank.visible = true;
  studio.Take("editor-covered-" + suffix, table, window.handle());
}

}  // namespace
}  // namespace corvane::ui_test

int main(int argc, char** argv) {
  using namespace corvane::ui_test;
  if (argc != 2) {
    std::puts("window_pictures FOLDER");
    return 2;
  }
  Studio studio(argv[1]);
  for (const int dpi : kScales) {
    TakeMainWindow(studio, dpi, ScaleText(dpi));
    TakeEditor(studio, dpi, ScaleText(dpi));
  }
  {
    const LightOnDark colours;
    TakeMainWindow(studio, corvane::kDesignDpi, "dark");
    TakeEditor(studio, corvane::kDesignDpi, "dark");
  }
  BoxPictures boxes = TakeBoxes(argv[1], ScaleText(corvane::kDesignDpi));
  {
    const LightOnDark colours;
    const BoxPictures dark = TakeBoxes(argv[1], "dark");
    boxes.taken += dark.taken;
    boxes.findings += dark.findings;
  }
  const int findings = studio.findings() + boxes.findings;
  std::printf("%d pictures, %d findings\n", studio.taken() + boxes.taken, findings);
  return findings == 0 ? 0 : 1;
}
