// Corvane.exe as a test runs it: its windows by the names of their controls.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "desktop/harness/foreign_windows.h"
#include "desktop/harness/process.h"
#include "ui/control_ids.h"

namespace corvane::desktop {

class CorvaneProgram {
 public:
  // `folder` holds Corvane.exe.
  explicit CorvaneProgram(std::filesystem::path folder) : folder_(std::move(folder)) {}

  // Starts it and waits for its main window. False: none came, or it ended.
  [[nodiscard]] bool Start();
  void Kill() { process_.reset(); }
  [[nodiscard]] bool Running() const { return process_ != nullptr && process_->Running(); }
  [[nodiscard]] Process& TheProcess() { return *process_; }

  // The main window; 0 while there is none.
  [[nodiscard]] WindowHandle Window() const;
  [[nodiscard]] WindowHandle EditorWindow() const;
  // The message box that stands open, as "title: text"; "" when there is none.
  [[nodiscard]] std::string OpenMessageBox() const;
  // The main window is there and its thread takes a message within the limit.
  [[nodiscard]] bool Responds(int limit_ms) const;

  // A control of the main window by its own name.
  [[nodiscard]] WindowHandle Control(ControlId id) const;
  // Its text without blanks around it.
  [[nodiscard]] std::string Caption(ControlId id) const;
  [[nodiscard]] std::vector<std::string> Items(ControlId id) const { return ItemsOf(Control(id)); }

  // The two logs; the call log's lines without their date and time ("Call ID: 7 - ...").
  [[nodiscard]] std::vector<std::string> StatusLog() const;
  [[nodiscard]] std::vector<std::string> CallLog() const;
  // The call log's lines as they are shown.
  [[nodiscard]] std::vector<std::string> CallLogAsShown() const;
  [[nodiscard]] bool InCallLog(std::string_view part) const;
  [[nodiscard]] bool InStatusLog(std::string_view part) const;

 private:
  std::filesystem::path folder_;
  std::unique_ptr<Process> process_;
  // As they were found and read last.
  mutable WindowHandle window_ = 0;
  mutable std::map<ControlId, WindowHandle> controls_;
  mutable LogLines status_log_;
  mutable LogLines call_log_;
};

// How many of the lines contain the part.
[[nodiscard]] int CountContaining(const std::vector<std::string>& lines, std::string_view part);

}  // namespace corvane::desktop
