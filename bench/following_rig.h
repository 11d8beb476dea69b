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

#include "tests/sim/core_parts.h"

namespace corvane::rig {

using sim::SetClock;

// Sleeping takes no time but moves the clock.
class InstantLoop : public Loop {
 public:
  [[nodiscard]] std::int64_t TickMs() const override { return now_ms_; }
  std::unique_ptr<Timer> MakeTimer(int, std::function<void()>) override {
    return std::make_unique<sim::NoTimer>();
  }
  void Post(EventSource, std::function<void()>) override {}
  void Sleep(int ms) override { now_ms_ += ms; }
  void DoEvents() override {}
  void WaitForSocketEvents(int ms) override { now_ms_ += ms; }

 private:
  std::int64_t now_ms_ = 0;
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

struct Surroundings {
  explicit Surroundings(Files* other_files) : files(other_files ? *other_files : counted) {}

  CountingFiles counted;
  Files& files;
  InstantLoop loop;
  SetClock clock;
  NoDevice mci;
  ProgramFlags flags_of_program;
  SwallowingLink link;
  OneLineBox box;
};

class Following : public Surroundings, public sim::CoreParts {
 public:
  explicit Following(Files* other_files = nullptr)
      : Surroundings(other_files), CoreParts(loop, clock, files, mci, flags_of_program, link, box) {
    scanner.ScanNetworkInfo();
  }

  // One poll step that finds `line` completed.
  void Poll(std::string line) {
    box.Complete(std::move(line));
    scanner.ScanNetworkInfo();
  }
};

}  // namespace corvane::rig
