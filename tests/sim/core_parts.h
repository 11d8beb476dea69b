// Call following on the simulated seams, with a link that notes what is sent and a Network Info box
// that is a list of lines: shared by the unit tests, the benchmarks and the fuzz targets.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/call_follower.h"
#include "core/daily_calls.h"
#include "core/ports.h"
#include "core/scanner.h"
#include "sim/no_sink.h"
#include "sim/sim_clock.h"
#include "sim/sim_files.h"
#include "sim/sim_loop.h"
#include "sim/sim_mci.h"

namespace corvane::sim {

// Notes commands one by one, with "sleep n" for the milliseconds that have passed since the one
// before. Each Set and Get lets events run once, as the real sender does.
class NotedLink : public SdrLink {
 public:
  NotedLink(SimLoop& loop, ProgramFlags& flags) : loop_(loop), flags_(flags) {}
  void SendNetRemoteSet(const std::string& method, const std::string& value) override {
    Send("Set " + method + " " + value);
  }
  void SendNetRemoteGet(const std::string& method) override { Send("Get " + method); }
  [[nodiscard]] bool CommandUnderWay() const override { return under_way; }
  void AwaitAnswer() override { Note("await answer"); }
  [[nodiscard]] bool SocketConnected() const override { return connected; }
  void PressTimeslot(int timeslot) override {
    last_timeslot = timeslot;
    Note("timeslot " + std::to_string(timeslot));
  }

  std::vector<std::string> trace;
  bool noting = true;
  std::size_t commands = 0;
  int last_timeslot = 0;
  bool connected = true;
  bool under_way = false;
  // Called inside every Set and Get that was sent, where events run.
  std::function<void()> on_wait;

 private:
  void Note(const std::string& what) {
    const std::int64_t passed_ms = loop_.TickMs() - noted_at_ms_;
    noted_at_ms_ = loop_.TickMs();
    if (!noting) return;
    if (passed_ms > 0 && !trace.empty()) trace.push_back("sleep " + std::to_string(passed_ms));
    trace.push_back(what);
  }
  void Send(const std::string& text) {
    if (!connected) {
      Note("lost " + text);
      flags_.NetRemoteLinkUp = false;
      return;
    }
    ++commands;
    Note(text);
    loop_.DoEvents();
    if (const auto hook = on_wait) hook();  // which may set another one
  }

  SimLoop& loop_;
  ProgramFlags& flags_;
  std::int64_t noted_at_ms_ = 0;
};

// Its completed lines, with an unfinished empty one behind them.
class LineBox : public NetworkInfoBox {
 public:
  [[nodiscard]] std::uintptr_t Identity() const override { return identity; }
  [[nodiscard]] std::int32_t LineCount() override {
    return answers ? forgotten_ + static_cast<std::int32_t>(lines.size()) + 1 : 0;
  }
  [[nodiscard]] std::optional<std::string> Line(std::int32_t index) override {
    if (!readable) return std::nullopt;
    if (index < forgotten_) return std::string();
    const auto at = static_cast<std::size_t>(index - forgotten_);
    return at < lines.size() ? lines[at] : std::string();
  }
  void Clear() override {
    lines.clear();
    forgotten_ = 0;
    ++clears;
  }
  // Completes `line` and forgets the text of the ones before it, for runs of millions.
  void CompleteOnly(std::string line) {
    forgotten_ += static_cast<std::int32_t>(lines.size());
    lines.assign(1, std::move(line));
  }

  std::uintptr_t identity = 14;
  std::vector<std::string> lines;
  bool answers = true;
  bool readable = true;
  int clears = 0;

 private:
  std::int32_t forgotten_ = 0;
};

// Everything that a poll step touches, on network 262/1 with the link up.
struct CoreParts {
  CoreParts() {
    network.CurrentMcc = "262";
    network.CurrentMnc = "1";
    network.CurrentLa = "5";
    flags.NetRemoteLinkUp = true;
    flags.NetRemoteConnected = true;
  }

  SimLoop loop;
  SimClock clock{loop};
  SimFiles files;
  SimMci mci{loop, files};
  NoSink sink;
  Form1 form{sink};
  ProgramFlags flags;
  Presets presets;
  NetworkIdentity network;
  GssiTable groups;
  SsiTable subscribers;
  DayFolders folders{files, form, "C:\\Corvane"};
  LogFiles logs{files, clock, form};
  CallActivity activity{files, clock, folders, form};
  Recorder recorder{mci, files, form, [this] { return folders.DayFolder(); }};
  NotedLink link{loop, flags};
  LineBox box;
  DailyCalls daily{clock, form, folders, logs, activity};
  CallFollower follower{
      {loop, clock, form, flags, presets, network, groups, subscribers, daily, recorder, link}};
  Scanner scanner{{clock, form, flags, box, folders, logs, daily, follower}};
};

}  // namespace corvane::sim
