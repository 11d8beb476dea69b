// SdrStandin.exe as a process, its log file and its command window.
#include "desktop/harness/standin_program.h"

#include <fstream>
#include <utility>

#include "base/number_text.h"
#include "base/text.h"
#include "desktop/harness/program_folder.h"
#include "desktop/harness/wait.h"
#include "standin/control_protocol.h"

namespace corvane::desktop {

bool StandinProgram::Start(std::vector<std::string> options, std::string_view scenario) {
  ++starts_;
  options.insert(options.end(), {"--log", LogFile().string()});
  if (!scenario.empty()) {
    const std::filesystem::path file = folder_ / "test.scenario";
    std::ofstream(file, std::ios::binary) << scenario;
    options.insert(options.end(), {"--scenario", file.string()});
  }
  process_ = Process::Start(FinishedProgram("SdrStandin.exe"), options, folder_);
  if (process_ == nullptr) return false;
  return WaitFor([this] { return Visible(Window()) || !process_->Running(); }) &&
         process_->Running();
}

WindowHandle StandinProgram::Window() const {
  if (process_ == nullptr) return 0;
  return window_ = FindTopLevelAgain(window_, process_->Id(), "SDR# v");
}

WindowHandle StandinProgram::InfoWindow() const {
  return process_ == nullptr ? 0 : FindTopLevel(process_->Id(), "Network Info");
}

bool StandinProgram::Do(std::string_view command) const {
  return SendData(Window(), standin::kCommandData, command) != 0;
}

std::filesystem::path StandinProgram::LogFile() const {
  return folder_ / ("standin-" + std::to_string(starts_) + ".log");
}

std::vector<LogLine> StandinProgram::Log() const {
  std::vector<LogLine> lines;
  const std::string content = ReadWholeFile(LogFile());
  // The last line may still be being written.
  const std::size_t end = content.rfind('\n');
  if (end == std::string::npos) return lines;
  for (const std::string& text : FileLines(std::string_view(content).substr(0, end))) {
    const std::vector<std::string> parts = Split(text, '\t');
    const auto ms = ParseDecimal<std::int64_t>(parts[0]);
    if (parts.size() < 2 || !ms) continue;
    lines.push_back({*ms, parts[1], parts.size() > 2 ? parts[2] : ""});
  }
  return lines;
}

std::vector<std::string> StandinProgram::Details(std::string_view kind, std::size_t first) const {
  std::vector<std::string> details;
  for (LogLine& line : Log()) {
    if (line.kind == kind && first > 0) {
      --first;
    } else if (line.kind == kind) {
      details.push_back(std::move(line.detail));
    }
  }
  return details;
}

}  // namespace corvane::desktop
