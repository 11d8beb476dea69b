// SdrStandin.exe as a test runs it: started with options, given commands, and asked by its log what
// arrived at it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/harness/foreign_windows.h"
#include "desktop/harness/process.h"

namespace corvane::desktop {

struct LogLine {
  std::int64_t ms = 0;  // since its start
  std::string kind;     // "command", "reply", "tune", ...
  std::string detail;   // escaped as docs/standin.md says
};

class StandinProgram {
 public:
  // Its log and scenario files lie in `folder`.
  explicit StandinProgram(std::filesystem::path folder) : folder_(std::move(folder)) {}

  // Starts it with the options (those of SdrStandin.exe) and waits for its main window. A second
  // start begins a new log.
  [[nodiscard]] bool Start(std::vector<std::string> options = {}, std::string_view scenario = {});
  void Kill() { process_.reset(); }
  [[nodiscard]] bool Running() const { return process_ != nullptr && process_->Running(); }
  [[nodiscard]] Process& TheProcess() { return *process_; }

  [[nodiscard]] WindowHandle Window() const;
  [[nodiscard]] WindowHandle InfoWindow() const;

  // Carries out a command as a scenario line has it ("call id=7 ..."). False: it was refused.
  [[nodiscard]] bool Do(std::string_view command) const;

  // All that has happened so far.
  [[nodiscard]] std::vector<LogLine> Log() const;
  // The details of all lines of one kind, oldest first, from the `first`-th on.
  [[nodiscard]] std::vector<std::string> Details(std::string_view kind,
                                                 std::size_t first = 0) const;
  [[nodiscard]] std::size_t Count(std::string_view kind) const { return Details(kind).size(); }

 private:
  [[nodiscard]] std::filesystem::path LogFile() const;

  std::filesystem::path folder_;
  std::unique_ptr<Process> process_;
  mutable WindowHandle window_ = 0;  // as it was found last
  int starts_ = 0;
};

}  // namespace corvane::desktop
