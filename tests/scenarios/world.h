// The whole program on the simulated seams and the virtual clock, next to a simulated SDR#.
//
// What the program does to the world and shows to its user is kept as a trace, one line per event,
// with the virtual time in seconds since the start in front.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/app.h"
#include "sim/sim_clock.h"
#include "sim/sim_files.h"
#include "sim/sim_loop.h"
#include "sim/sim_mci.h"
#include "sim/sim_prompts.h"
#include "sim/trace_sink.h"
#include "sim_desktop/sim_desktop.h"

namespace corvane::sim {

// Keeps a trace of what the user sees change.
class ScreenTrace : public ControlSink {
 public:
  explicit ScreenTrace(std::function<void(const std::string&)> write) : write_(std::move(write)) {}
  void Changed(const Control& control, Field field) override;
  void ListChanged(ListBox& list, ListChange change, std::size_t index) override;
  void FocusWanted(const Control& control) override;

  const Control* focus = nullptr;
  bool writes = true;  // a trace; without it the focus alone is kept

 private:
  std::function<void(const std::string&)> write_;
};

// Files of the program's folder, as the simulated file system names them.
inline constexpr const char* kGroupsFile = "\\TETRA_GSSI.txt";
inline constexpr const char* kSubscribersFile = "\\TETRA_SSI.txt";

struct WorldOptions {
  standin::Options sdr{};  // how SDR# begins
  std::string scenario{};  // lines of a scenario file; times count from World's making
  DateTime now{2026, 11, 15, 14, 23, 5};
  bool sdr_running = true;
  bool traced = true;  // false: `trace` stays empty, which takes less time
  // Put into the program's folder before it loads: name ("\\TETRA_GSSI.txt") and content.
  std::vector<std::pair<std::string, std::string>> files{};
};

class World : public Shell {
 public:
  explicit World(WorldOptions options = {});
  ~World() override;

  // Loads the program as WinMain does. False when a start-up error ended it.
  bool Load();
  // Presses "Start".
  void Start();
  // Load, Start, and time for the link to come up and be set up; fails the test when it does not.
  void BringUp();

  void Run(std::int64_t ms) { loop.AdvanceMs(ms); }
  [[nodiscard]] bool RunUntil(const std::function<bool()>& done, std::int64_t limit_ms) {
    return loop.RunUntil(done, limit_ms);
  }
  // A command to the stand-in, as in a scenario file.
  void Do(std::string_view command) { desktop->Do(command); }

  [[nodiscard]] Form1& form() { return app->form(); }
  [[nodiscard]] MainForm& user() { return app->main_form(); }
  [[nodiscard]] App::View view() { return app->view(); }
  [[nodiscard]] bool Following() { return view().call.FollowingCall(); }
  // The receiver is tuned to the park carrier at the parked level.
  [[nodiscard]] bool Parked();
  // Content of a file in the program's folder, "" when it is not there.
  [[nodiscard]] std::string FileText(const std::string& name);
  [[nodiscard]] int CountCallLog(std::string_view part);
  [[nodiscard]] int CountStatusLog(std::string_view part);

  std::vector<std::string> trace;
  [[nodiscard]] std::string TraceText() const;

  SimLoop loop;
  SimClock clock;
  SimFiles files;
  SimPrompts prompts;
  SimMci mci;
  ScreenTrace screen;
  std::unique_ptr<SimDesktop> desktop;
  std::unique_ptr<App> app;
  bool closed = false;
  bool session_held = false;  // the system waits for the program
  bool session_was_held = false;
  std::vector<std::string> windows_closed;

  // The open editor; its controls are App::View's `dialog`.
  sim::TraceSink editor_screen;
  UserEvents* editor = nullptr;
  int editors_opened = 0;
  int editor_brought_to_front = 0;
  bool refuse_editor = false;  // the system has no window left

  static constexpr const char* kProgramFolder = "C:\\Corvane";

 private:
  ControlSink& editor_sink() override { return editor_screen; }
  bool OpenEditor(Dialog& dialog, UserEvents& handlers) override;
  void BringEditorToFront() override { ++editor_brought_to_front; }
  void CloseEditor() override;
  void HoldSession(bool held) override;
  void CloseMainWindow() override;
  void Trace(const std::string& what);
  void TraceWire();

  std::int64_t started_ms_;
  bool traced_;
  std::size_t wire_seen_ = 0;
};

}  // namespace corvane::sim
