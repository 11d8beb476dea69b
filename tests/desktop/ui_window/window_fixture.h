// The real main window over a Form1 of its own, with Actions that only record.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/loop_win.h"
#include "desktop/ui_window/real_window_win.h"
#include "ui/drawn_colours.h"
#include "ui/form_window_win.h"
#include "ui/main_form.h"
#include "ui/main_layout.h"
#include "unit/ui/recording_actions.h"

namespace corvane::ui_test {

class WindowTest : public testing::Test {
 protected:
  WindowTest()
      : window_(loop_),
        form_(window_),
        timer_(loop_.MakeTimer(500, [] {})),
        main_form_(form_, presets_, flags_, *timer_, actions_) {}

  void SetUp() override {
    ASSERT_TRUE(Create());
    form_.txtTimeout.text = "5";
    form_.txtVcVolume.text = "47";
    form_.txtParkCarrier.text = "2604";
    form_.MoveTo(kLeft * 15, kTop * 15);
    main_form_.ApplyRestoredSettings();
    window_.Show();
    Pump();
    actions_.calls.clear();
  }

  [[nodiscard]] bool Create() { return window_.Create(MainWindowTable(form_), main_form_); }
  // Dispatches until nothing is left: what one message posts is dispatched too.
  void Pump() {
    for (int round = 0; round < 5; ++round) loop_.DoEvents();
  }
  [[nodiscard]] Handle main() const { return window_.handle(); }
  [[nodiscard]] Handle Child(ControlId id) const { return ChildOf(main(), id); }
  // The name of the control that a child window shows; "" for a stranger.
  [[nodiscard]] std::string NameOf(Handle child) {
    for (const ControlRow& row : MainWindowTable(form_).controls) {
      if (Child(row.id) == child) return row.control.name();
    }
    return {};
  }
  void Press(ControlId id) {
    Post(Child(id), BM_CLICK);
    Pump();
  }
  void Type(ControlId id, const std::string& text) {
    for (const char character : text) {
      Post(Child(id), WM_CHAR, static_cast<unsigned char>(character));
    }
    Pump();
  }
  // As the system does it when the window comes onto a screen of another resolution.
  void ChangeDpi(int dpi) {
    SendDpiChange(main(), dpi);
    Pump();
  }
  void ClickCompact() {
    main_form_.Click(form_.mnuCompactMode);
    Pump();
  }
  void FillCallLog(int lines) {
    for (int line = 0; line < lines; ++line) form_.lstCallLog.Add("line " + std::to_string(line));
  }

  static constexpr int kLeft = 60;  // pixels
  static constexpr int kTop = 50;

  using Calls = std::vector<std::string>;

  LoopWin loop_;
  FormWindow window_;
  Form1 form_;
  Presets presets_;
  ProgramFlags flags_;
  std::unique_ptr<Timer> timer_;
  RecordingActions actions_;
  MainForm main_form_;
};

}  // namespace corvane::ui_test
