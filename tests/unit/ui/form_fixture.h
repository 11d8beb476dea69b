// The main window's form and handlers without a window: a trace for a sink, Actions that record.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "sim/sim_loop.h"
#include "sim/trace_sink.h"
#include "ui/main_form.h"
#include "unit/ui/recording_actions.h"

namespace corvane {

class FormTest : public testing::Test {
 protected:
  using Calls = std::vector<std::string>;

  // The trace begins when the form has taken its starting states.
  FormTest() { (void)sink_.Take(); }

  [[nodiscard]] std::vector<std::string> StatusLines() const { return form_.lstStatusLog.items(); }

  sim::SimLoop loop_;
  sim::TraceSink sink_;
  Form1 form_{sink_};
  Presets presets_;
  ProgramFlags flags_;
  RecordingActions actions_;
  std::unique_ptr<Timer> timer_ = loop_.MakeTimer(500, [] {});
  MainForm main_form_{form_, presets_, flags_, *timer_, actions_};
};

}  // namespace corvane
