// Call following on surroundings that cost next to nothing: a link that swallows commands, a box
// that gives one prepared line after the other, files that only count. For benchmarks and fuzzing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "core/bookkeeping.h"
#include "core/call_context.h"
#include "core/call_end.h"
#include "core/call_events.h"
#include "core/call_sequence.h"
#include "core/call_setup.h"
#include "core/daily_calls.h"
#include "core/log_mode.h"
#include "core/scanner.h"
#include "core/watchdog.h"

namespace corvane::rig {

class NoSink : public ControlSink {
 public:
  void Changed(const Control&, Field) override {}
  void ListChanged(ListBox&, ListChange, std::size_t) override {}
  void FocusWanted(const Control&) override {}
};

class NoTimer : public Timer {
 public:
  void SetEnabled(bool enabled) override { enabled_ = enabled; }
  [[nodiscard]] bool enabled() const override { return enabled_; }
  [[nodiscard]] int interval_ms() const override { return 10; }

 private:
  bool enabled_ = false;
};

// Sleeping takes no time but moves the clock.
class InstantLoop : public Loop {
 public:
  [[nodiscard]] std::int64_t TickMs() const override { return now_ms_; }
  std::unique_ptr<Timer> MakeTimer(int, std::function<void()>) override {
    return std::make_unique<NoTimer>();
  }
  void Post(EventSource, std::function<void()>) override {}
  void Sleep(int ms) override { now_ms_ += ms; }
  void DoEvents() override {}
  void WaitForSocketEvents(int ms) override { now_ms_ += ms; }

 private:
  std::int64_t now_ms_ = 0;
};

class SetClock : public WallClock {
 public:
  [[nodiscard]] DateTime Now() const override { return now; }
  [[nodiscard]] std::string GeneralDate(const DateTime& time) const override {
    return FixedGeneralDate(time);
  }
  [[nodiscard]] std::optional<DateTime> ParseGeneralDate(std::string_view text) const override {
    const auto time = ParseFixedGeneralDate(text);
    return time ? time : ParseIsoDate(text);
  }
  DateTime now{2026, 11, 15, 14, 23, 5};
};

// Folders are there once they are made; files are never there, and what is written is counted.
class CountingFiles : public Files {
 public:
  [[nodiscard]] bool Exists(const std::string& path) override { return folders_.contains(path); }
  [[nodiscard]] bool IsDirectory(const std::string& path) override { return Exists(path); }
  [[nodiscard]] FileError MakeDirectory(const std::string& path) override {
    folders_.insert(path);
    return kFileOk;
  }
  [[nodiscard]] FileError Delete(const std::string&) override { return kFileOk; }
  [[nodiscard]] FileError Rename(const std::string&, const std::string&) override {
    return kFileOk;
  }
  [[nodiscard]] FileError MoveOver(const std::string&, const std::string&) override {
    return kFileOk;
  }
  [[nodiscard]] FileError ReadAll(const std::string&, std::string&) override {
    return kFileNotFound;
  }
  [[nodiscard]] FileError WriteAll(const std::string&, std::string_view content) override {
    return Append({}, content);
  }
  [[nodiscard]] FileError Append(const std::string&, std::string_view content) override {
    ++writes;
    bytes += content.size();
    return kFileOk;
  }
  [[nodiscard]] FileError Patch(const std::string&, std::uint32_t, std::string_view) override {
    return kFileOk;
  }

  std::size_t writes = 0;
  std::size_t bytes = 0;

 private:
  std::set<std::string> folders_;
};

class NoDevice : public Mci {
 public:
  Reply Send(const std::string&, unsigned) override { return {}; }
  [[nodiscard]] std::string ErrorText(unsigned) override { return {}; }
};

class SwallowingLink : public SdrLink {
 public:
  void SendNetRemoteSet(const std::string&, const std::string&) override { ++commands; }
  void SendNetRemoteGet(const std::string&) override { ++commands; }
  [[nodiscard]] bool CommandUnderWay() const override { return false; }
  [[nodiscard]] bool SocketConnected() const override { return true; }
  void PressTimeslot(int timeslot) override { last_timeslot = timeslot; }
  std::size_t commands = 0;
  int last_timeslot = 0;
};

// Holds the newest completed line; older ones are forgotten.
class OneLineBox : public NetworkInfoBox {
 public:
  [[nodiscard]] std::uintptr_t Identity() const override { return 1; }
  [[nodiscard]] std::int32_t LineCount() override { return completed_ + 1; }
  [[nodiscard]] std::optional<std::string> Line(std::int32_t index) override {
    return index + 1 == completed_ ? line_ : std::string();
  }
  void Clear() override { completed_ = 0; }
  void Complete(std::string line) {
    line_ = std::move(line);
    ++completed_;
  }

 private:
  std::string line_;
  std::int32_t completed_ = 0;
};

// Everything that a poll step touches, on network 262/1.
class Following {
 public:
  explicit Following(Files* other_files = nullptr) : files(other_files ? *other_files : counted) {
    network.CurrentMcc = "262";
    network.CurrentMnc = "1";
    network.CurrentLa = "5";
    flags.NetRemoteLinkUp = true;
    flags.NetRemoteConnected = true;
    scanner.ScanNetworkInfo();
  }

  // One poll step that finds `line` completed.
  void Poll(std::string line) {
    box.Complete(std::move(line));
    scanner.ScanNetworkInfo();
  }

  CountingFiles counted;
  Files& files;
  NoSink sink;
  InstantLoop loop;
  SetClock clock;
  NoDevice mci;
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
  SwallowingLink link;
  OneLineBox box;
  CallContext context{loop,        clock,    form,    flags, presets,  network, groups,
                      subscribers, recorder, folders, logs,  activity, link,    box};
  CallSequence sequence;
  Bookkeeping bookkeeping{context};
  CallEnd call_end{context, sequence, bookkeeping};
  DailyCalls daily{context};
  CallSetup setup{context, sequence, bookkeeping, daily};
  CallEvents events{context, call_end, bookkeeping};
  Scanner scanner{context, sequence, call_end, setup, events, daily};
  Watchdog watchdog{context, call_end};
  LogMode log_mode{context, sequence, call_end};
};

}  // namespace corvane::rig
