// Corvane.exe as a process and its windows.
#include "desktop/harness/corvane_program.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "desktop/harness/wait.h"

namespace corvane::desktop {

namespace {

// What the system calls the window of a message box.
constexpr std::string_view kMessageBoxClass = "#32770";

// "31/12/2025 23:59:59 - Call ID: 7" without its date and time; other lines as they are.
std::string WithoutStamp(const std::string& line) {
  const std::size_t separator = line.find(" - ");
  return separator == std::string::npos ? line : line.substr(separator + 3);
}

bool AnyContains(const std::vector<std::string>& lines, std::string_view part) {
  return CountContaining(lines, part) > 0;
}

}  // namespace

bool CorvaneProgram::Start() {
  process_ = Process::Start(folder_ / "Corvane.exe", {}, folder_);
  if (process_ == nullptr) return false;
  return WaitFor([this] { return Visible(Window()) || !process_->Running(); }) &&
         process_->Running();
}

WindowHandle CorvaneProgram::Window() const {
  if (process_ == nullptr) return 0;
  const WindowHandle window = FindTopLevelAgain(window_, process_->Id(), "Corva");
  if (std::exchange(window_, window) != window) controls_.clear();
  return window;
}

WindowHandle CorvaneProgram::EditorWindow() const {
  return process_ == nullptr ? 0 : FindTopLevel(process_->Id(), "G/SSI Editor");
}

std::string CorvaneProgram::OpenMessageBox() const {
  if (process_ == nullptr) return {};
  for (const WindowHandle window : TopLevelWindows(process_->Id())) {
    if (ClassOf(window) == kMessageBoxClass && Visible(window)) return DescribeMessageBox(window);
  }
  return {};
}

bool CorvaneProgram::Responds(int limit_ms) const {
  return desktop::Responds(Window(), limit_ms);
}

// The search goes through all child windows, each of which is a question to another process.
WindowHandle CorvaneProgram::Control(ControlId id) const {
  const WindowHandle window = Window();
  WindowHandle& control = controls_[id];
  if (!Alive(control)) control = Child(window, Number(id));
  return control;
}

std::string CorvaneProgram::Caption(ControlId id) const {
  return std::string(Trim(TextOf(Control(id))));
}

std::vector<std::string> CorvaneProgram::StatusLog() const {
  return status_log_.Of(Control(ControlId::lstStatusLog));
}

std::vector<std::string> CorvaneProgram::CallLogAsShown() const {
  return call_log_.Of(Control(ControlId::lstCallLog));
}

std::vector<std::string> CorvaneProgram::CallLog() const {
  std::vector<std::string> lines = CallLogAsShown();
  std::transform(lines.begin(), lines.end(), lines.begin(), WithoutStamp);
  return lines;
}

bool CorvaneProgram::InCallLog(std::string_view part) const {
  return AnyContains(CallLogAsShown(), part);
}

bool CorvaneProgram::InStatusLog(std::string_view part) const {
  return AnyContains(StatusLog(), part);
}

int CountContaining(const std::vector<std::string>& lines, std::string_view part) {
  return static_cast<int>(std::count_if(lines.begin(), lines.end(), [part](const auto& line) {
    return line.find(part) != std::string::npos;
  }));
}

}  // namespace corvane::desktop
