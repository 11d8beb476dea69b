// The main window's form and handlers without a window: a trace for a sink, Actions that record.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "sim/sim_loop.h"
#include "sim/trace_sink.h"
#include "ui/main_form.h"

namespace corvane {

class FakeActions : public Actions {
 public:
  void StartLink() override { calls.push_back("StartLink"); }
  void ManualRelease() override { calls.push_back("ManualRelease"); }
  void ParkOnControlChannel() override { calls.push_back("ParkOnControlChannel"); }
  void LogModeSwitched(bool checked) override {
    calls.push_back(checked ? "LogMode on" : "LogMode off");
  }
  void CaptureSdrPosition() override { calls.push_back("CaptureSdrPosition"); }
  void SampleCheckedColour() override { calls.push_back("SampleCheckedColour"); }
  void SampleUnCheckedColour() override { calls.push_back("SampleUnCheckedColour"); }
  void SaveSettings() override { calls.push_back("SaveSettings"); }
  void AddRecOnlyGssi() override { calls.push_back("AddRecOnlyGssi"); }
  void RemoveRecOnlyGssi() override { calls.push_back("RemoveRecOnlyGssi"); }
  void ShowEditor() override { calls.push_back("ShowEditor"); }
  void CloseRequested() override { calls.push_back("CloseRequested"); }
  void SessionEnding() override { calls.push_back("SessionEnding"); }
  [[nodiscard]] std::int32_t mcc() const override { return mcc_now; }
  [[nodiscard]] std::int32_t mnc() const override { return mnc_now; }

  std::vector<std::string> calls;
  std::int32_t mcc_now = 262;
  std::int32_t mnc_now = 1;
};

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
  FakeActions actions_;
  std::unique_ptr<Timer> timer_ = loop_.MakeTimer(500, [] {});
  MainForm main_form_{form_, presets_, flags_, *timer_, actions_};
};

}  // namespace corvane
