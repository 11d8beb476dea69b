// What the main window asks the rest of the program for, recorded call by call.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ui/actions.h"

namespace corvane {

class RecordingActions : public Actions {
 public:
  void StartLink() override { calls.push_back("StartLink"); }
  void ManualRelease() override { calls.push_back("ManualRelease"); }
  void ParkOnControlChannel() override { calls.push_back("ParkOnControlChannel"); }
  void ToggleGroupHold() override {
    calls.push_back("ToggleGroupHold");
    if (on_hold) on_hold();
  }
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
  void CloseRequested() override {
    calls.push_back("CloseRequested");
    if (on_close) on_close();
  }
  void SessionEnding() override { calls.push_back("SessionEnding"); }
  [[nodiscard]] std::int32_t mcc() const override { return mcc_now; }
  [[nodiscard]] std::int32_t mnc() const override { return mnc_now; }

  std::vector<std::string> calls;
  std::function<void()> on_hold;
  std::function<void()> on_close;
  std::int32_t mcc_now = 262;
  std::int32_t mnc_now = 1;
};

}  // namespace corvane
