// What a window would show, as lines of text: one for each change of a control.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "panel/control_sink.h"

namespace corvane::sim {

// The lines read
//   lblCallID.caption = " 1207"      lblGroupHold.fore_colour = 0x0080FF
//   cmdStartAll.enabled = False      fraCallDetails.bounds = 0, 120
//   lstCallLog.add 3 "text"          lstCallLog.replace 1 "text"
//   lstCallLog.remove 2              lstCallLog.clear
//   lstGSSI_Lockouts.tick 0 False
//   cboBaseFrequency.items = "100 MHz" (0), "200 MHz" (1)
//   focus txtTimeout
class TraceSink : public ControlSink {
 public:
  void Changed(const Control& control, Field field) override;
  // Answers like a real list: adding does not scroll it, losing lines may.
  void ListChanged(ListBox& list, ListChange change, std::size_t index) override;
  void FocusWanted(const Control& control) override;

  // Off: nothing is written down (runs of many hours).
  void SetRecording(bool recording) { recording_ = recording; }
  [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }
  // The lines so far, which are forgotten.
  [[nodiscard]] std::vector<std::string> Take() { return std::exchange(lines_, {}); }
  // The control that was last given the focus; "" before that.
  [[nodiscard]] const std::string& focus() const { return focus_; }
  // Changes so far, whether written down or not.
  [[nodiscard]] std::size_t changes() const { return changes_; }

 private:
  void Add(std::string line);

  bool recording_ = true;
  std::vector<std::string> lines_;
  std::string focus_;
  std::size_t changes_ = 0;
};

}  // namespace corvane::sim
