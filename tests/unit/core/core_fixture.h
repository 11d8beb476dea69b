// Call following on hand-made surroundings: a link that records what is sent, a Network Info box
// that is a list of lines, files in memory. Waits call a hook, so that a test can act inside them.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "sim/core_parts.h"

namespace corvane {

class StubLoop : public Loop {
 public:
  [[nodiscard]] std::int64_t TickMs() const override { return now_ms; }
  std::unique_ptr<Timer> MakeTimer(int, std::function<void()>) override {
    return std::make_unique<sim::NoTimer>();
  }
  void Post(EventSource, std::function<void()>) override {}
  void Sleep(int ms) override {
    now_ms += ms;
    trace.push_back("sleep " + std::to_string(ms));
  }
  void DoEvents() override {
    ++waits;
    if (on_wait) on_wait();
  }
  void WaitForSocketEvents(int ms) override { now_ms += ms; }

  std::int64_t now_ms = 0;
  int waits = 0;
  std::function<void()> on_wait;
  std::vector<std::string>& trace;
  explicit StubLoop(std::vector<std::string>& sent) : trace(sent) {}
};

class MemoryFiles : public Files {
 public:
  [[nodiscard]] bool Exists(const std::string& path) override {
    return content.contains(path) || folders.contains(path);
  }
  [[nodiscard]] bool IsDirectory(const std::string& path) override {
    return folders.contains(path);
  }
  [[nodiscard]] FileError MakeDirectory(const std::string& path) override {
    if (content.contains(path)) return kPathAccess;
    folders[path] = true;
    return kFileOk;
  }
  [[nodiscard]] FileError Delete(const std::string& path) override {
    return content.erase(path) == 1 ? kFileOk : kFileNotFound;
  }
  [[nodiscard]] FileError Rename(const std::string& from, const std::string& to) override {
    if (!content.contains(from)) return kFileNotFound;
    if (content.contains(to)) return kFileExists;
    content[to] = content[from];
    content.erase(from);
    return kFileOk;
  }
  [[nodiscard]] FileError MoveOver(const std::string& from, const std::string& to) override {
    if (!content.contains(from)) return kFileNotFound;
    content[to] = content[from];
    content.erase(from);
    return kFileOk;
  }
  [[nodiscard]] FileError ReadAll(const std::string& path, std::string& out) override {
    if (!content.contains(path)) return kFileNotFound;
    out = content[path];
    return kFileOk;
  }
  [[nodiscard]] FileError WriteAll(const std::string& path, std::string_view text) override {
    if (failing) return kDiskFull;
    content[path] = text;
    return kFileOk;
  }
  [[nodiscard]] FileError Append(const std::string& path, std::string_view text) override {
    if (failing) return kDiskFull;
    content[path] += text;
    return kFileOk;
  }
  [[nodiscard]] FileError Patch(const std::string& path, std::uint32_t, std::string_view) override {
    content[path];
    return kFileOk;
  }

  std::map<std::string, std::string> content;
  std::map<std::string, bool> folders;
  bool failing = false;
};

class StubMci : public Mci {
 public:
  Reply Send(const std::string& command, unsigned) override {
    trace.push_back("mci " + command);
    return {};
  }
  [[nodiscard]] std::string ErrorText(unsigned) override { return "failure"; }
  std::vector<std::string>& trace;
  explicit StubMci(std::vector<std::string>& sent) : trace(sent) {}
};

// Each Set and Get lets events run once, as the real sender does.
class StubLink : public SdrLink {
 public:
  StubLink(std::vector<std::string>& sent, StubLoop& loop, ProgramFlags& flags)
      : trace(sent), loop_(loop), flags_(flags) {}
  void SendNetRemoteSet(const std::string& method, const std::string& value) override {
    Send("Set " + method + " " + value);
  }
  void SendNetRemoteGet(const std::string& method) override { Send("Get " + method); }
  [[nodiscard]] bool CommandUnderWay() const override { return under_way; }
  [[nodiscard]] bool SocketConnected() const override { return connected; }
  void PressTimeslot(int timeslot) override {
    trace.push_back("timeslot " + std::to_string(timeslot));
  }

  std::vector<std::string>& trace;
  bool connected = true;
  bool under_way = false;

 private:
  void Send(const std::string& text) {
    if (!connected) {
      trace.push_back("lost " + text);
      flags_.NetRemoteLinkUp = false;
      return;
    }
    trace.push_back(text);
    loop_.DoEvents();
  }
  StubLoop& loop_;
  ProgramFlags& flags_;
};

class StubBox : public NetworkInfoBox {
 public:
  [[nodiscard]] std::uintptr_t Identity() const override { return identity; }
  [[nodiscard]] std::int32_t LineCount() override {
    return answers ? static_cast<std::int32_t>(lines.size()) + 1 : 0;
  }
  [[nodiscard]] std::optional<std::string> Line(std::int32_t index) override {
    if (!readable) return std::nullopt;
    if (index < 0) return std::string();
    const auto at = static_cast<std::size_t>(index);
    return at < lines.size() ? lines[at] : std::string();
  }
  void Clear() override {
    lines.clear();
    ++clears;
  }

  std::uintptr_t identity = 14;
  std::vector<std::string> lines;  // completed ones; an unfinished empty line follows
  bool answers = true;
  bool readable = true;
  int clears = 0;
};

struct CoreSurroundings {
  std::vector<std::string> trace;
  StubLoop loop{trace};
  sim::SetClock clock;
  MemoryFiles files;
  StubMci mci{trace};
  ProgramFlags flags_of_program;
  StubLink link{trace, loop, flags_of_program};
  StubBox box;
};

class CoreTest : public ::testing::Test, protected CoreSurroundings, protected sim::CoreParts {
 protected:
  CoreTest() : CoreParts(loop, clock, files, mci, flags_of_program, link, box) {}

  // Takes what is in the box as history.
  void Prime() { scanner.ScanNetworkInfo(); }

  // Puts one completed line into the box and runs one poll step.
  void Poll(const std::string& line) {
    box.lines.push_back(line);
    scanner.ScanNetworkInfo();
  }
  void PollNothing() { scanner.ScanNetworkInfo(); }

  static std::string Setup(int gssi, int call_id, int party, int timeslot, int carrier,
                           const std::string& status = "Transmission Granted") {
    return "SSI:" + std::to_string(gssi) + " D_Setup " + status +
           " Call ID:" + std::to_string(call_id) +
           " Basic_service:Point_to_multipoint Party_SSI:" + std::to_string(party) +
           " TimeSlot:" + std::to_string(timeslot) + " Carrier:" + std::to_string(carrier) + " ";
  }
  static std::string Granted(int gssi, int call_id, int party) {
    return "SSI:" + std::to_string(gssi) + " D_TX_Granted Call ID:" + std::to_string(call_id) +
           " Transmission_grant:Granted_to_another_user Party_SSI:" + std::to_string(party);
  }
  static std::string Event(const std::string& name, int gssi, int call_id) {
    return "SSI:" + std::to_string(gssi) + " " + name + " Call ID:" + std::to_string(call_id) + " ";
  }

  void FollowCall(int gssi = 9001, int call_id = 1207, int party = 5010) {
    if (!scanner.ScanPrimed) Prime();
    Poll(Setup(gssi, call_id, party, 2, 2610));
    ASSERT_TRUE(flags.FollowingCall);
  }

  [[nodiscard]] std::vector<std::string> CallLog() const {
    std::vector<std::string> lines;
    for (const std::string& line : form.lstCallLog.items()) {
      lines.push_back(line.starts_with(kNow) ? line.substr(kNow.size()) : line);
    }
    return lines;
  }
  [[nodiscard]] std::string LastCallLine() const {
    return form.lstCallLog.Item(form.lstCallLog.count() - 1);
  }
  std::size_t AddGroup(int gssi, const std::string& label, bool follow, int mnc = 1) {
    GssiRecord record;
    record.Gssi = gssi;
    record.Mcc = 262;
    record.Mnc = static_cast<std::int16_t>(mnc);
    record.Label = std::string_view(label);
    record.Follow = follow;
    return groups.Append(record);
  }
  std::size_t AddSubscriber(int ssi, int gssi, const std::string& label) {
    SsiRecord record;
    record.Ssi = ssi;
    record.LastGssi = gssi;
    record.Mcc = 262;
    record.Mnc = 1;
    record.Label = std::string_view(label);
    record.LastSeen = {2025, 1, 2, 3, 4, 5};
    return subscribers.Append(record);
  }

  const std::string kNow = "15/11/2026 14:23:05";
  const std::string kDay = "C:\\Corvane\\Daily\\20261115";
};

}  // namespace corvane
