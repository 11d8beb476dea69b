// The whole link with call following above it, on the stand-in's simulated desktop and a virtual
// clock. No windows of the program's own: what the user would press is called directly.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/call_follower.h"
#include "core/daily_calls.h"
#include "core/scanner.h"
#include "link/checkbox_detection.h"
#include "link/network_info.h"
#include "link/patient_windows.h"
#include "link/poll_cycle.h"
#include "sim/sim_clock.h"
#include "sim/sim_files.h"
#include "sim/sim_loop.h"
#include "sim/sim_mci.h"
#include "sim/trace_sink.h"
#include "sim_desktop/sim_desktop.h"

namespace corvane::test {

struct LinkOptions {
  standin::Options sdr{};
  std::string_view scenario{};
  bool loaded = true;   // the main window is loaded: one discovery has run
  bool patient = true;  // messages are held back after a time-out
};

class LinkWorld {
 public:
  explicit LinkWorld(standin::Options options = {}, std::string_view scenario = {})
      : LinkWorld(LinkOptions{std::move(options), scenario}) {}
  explicit LinkWorld(LinkOptions options)
      : desktop(loop, std::move(options.sdr), options.scenario), patient(options.patient) {
    sink.SetRecording(false);
    loop.SetOutside([this] { CatchUp(); }, [this] { return NextDueMs(); });
    loop.SetAfterEvent([this] { NoteMoment(); });
    desktop.windows().SetOnMessage(
        [this](const sim::SimWindowOps::Message& message) { NoteMessage(message); });
    patience.SetListener([this](WindowHandle window, PatientWindows::Asked asked, Reply reply) {
      context.answers.OnReply(window, asked, reply);
    });
    presets.BaseFrequency = 300000000;
    remote.SetEndpoint();
    if (!options.loaded) return;
    call_timer->SetEnabled(true);
    heartbeat->SetEnabled(true);
    discovery.DiscoverSdrWindows(Discovery::Log::kWhole);
    flags.mblnFormLoaded = true;
  }

  void Start() {
    scanner.ForgetPosition();
    cycle.Start();
  }
  // Started, connected, set up and scanning.
  [[nodiscard]] bool StartAndSettle() {
    Start();
    return Settle();
  }
  [[nodiscard]] bool Settle(int limit_ms = 20000) {
    return loop.RunUntil([this] { return Settled(); }, limit_ms);
  }
  [[nodiscard]] bool Settled() const {
    return flags.NetRemoteConnected && flags.mblnSetupDone && scanner.ScanPrimed &&
           last_scan_ms == loop.TickMs();
  }
  // A call comes and is followed.
  [[nodiscard]] bool FollowsCall(int id) {
    desktop.Do("call id=" + std::to_string(id) + " group=9001 party=5010 carrier=2610 slot=2");
    return loop.RunUntil(
        [this, id] { return Following() && follower.call().FollowedCallId() == id; }, 5000);
  }
  [[nodiscard]] int StatusLines(std::string_view part) const {
    return Lines(form.lstStatusLog, part);
  }
  [[nodiscard]] int CallLines(std::string_view part) const { return Lines(form.lstCallLog, part); }
  [[nodiscard]] bool Reported(std::string_view part) const {
    const auto content = files.Content("C:\\Corvane\\errors.txt");
    return content && content->find(part) != std::string::npos;
  }
  [[nodiscard]] const std::vector<std::string>& sent() { return desktop.socket().sent(); }
  [[nodiscard]] std::size_t Foregrounds() { return desktop.windows().foregrounds().size(); }
  [[nodiscard]] bool Following() const { return follower.FollowingCall(); }
  // The handle of one of SDR#'s windows; 0 while there is none.
  [[nodiscard]] WindowHandle Handle(standin::WindowId id) const { return desktop.Handle(id); }
  [[nodiscard]] int Presses(standin::WindowId id) { return Sent(id, Kind::kPress); }
  using Kind = sim::SimWindowOps::Sent;
  [[nodiscard]] int Sent(standin::WindowId id, Kind kind) {
    const auto& messages = desktop.windows().messages();
    return static_cast<int>(std::count_if(messages.begin(), messages.end(), [&](const auto& m) {
      return m.window == Handle(id) && m.sent == kind;
    }));
  }
  // Has `action` happen outside of the program, `in_ms` from now, whatever it does then.
  void At(int in_ms, std::function<void()> action) {
    outside_.emplace(loop.TickMs() + in_ms, std::move(action));
  }

  sim::SimLoop loop;
  sim::SimDesktop desktop;
  bool patient;
  sim::SimClock clock{loop};
  sim::SimFiles files;
  sim::SimMci mci{loop, files};
  sim::TraceSink sink;
  Form1 form{sink};
  ProgramFlags flags;
  Presets presets;
  NetworkIdentity identity;
  NetworkNames names;
  GssiTable groups;
  SsiTable subscribers;
  LogFiles logs{files, clock, form};
  DayFolders folders{files, form, "C:\\Corvane"};
  CallActivity activity{files, clock, folders, form};
  Recorder recorder{mci, files, form, [this] { return folders.DayFolder(); }};
  PatientWindows patience{desktop.windows(), loop};
  WindowOps& windows = patient ? static_cast<WindowOps&>(patience) : desktop.windows();
  LinkContext context{loop, clock, windows, desktop.socket(), form, flags};
  Discovery discovery{context};
  NetRemote remote{context, logs, "C:\\Corvane", follower, [this] { return SaveTimerEnabled(); }};
  NetworkInfo box{context, discovery};
  DailyCalls daily{clock, form, folders, logs, activity};
  CallFollower follower{
      {loop, clock, form, flags, presets, identity, groups, subscribers, daily, recorder, remote}};
  Scanner scanner{{clock, form, flags, box, folders, logs, daily, follower}};
  SdrSetup setup{context, remote, box, presets};
  NetworkWatch network{context, discovery, identity, names, groups, follower, scanner};
  PollCycle cycle{context,
                  {patience, discovery, remote, box, setup, network, follower, folders, activity}};

  // Is called with each message to another program's window before it arrives.
  std::function<void(const sim::SimWindowOps::Message&)> on_message;
  // Is called in each poll step, when the lines of the box are counted.
  std::function<void()> on_scan;
  int scans = 0;
  std::int64_t last_scan_ms = -1;
  bool save_timer = true;
  bool receiving = false;  // what mblnReceiving was when the save timer was asked for
  // The longest time in which the program dispatched nothing, that is: a dead window to the user.
  std::int64_t longest_stall_ms = 0;

 private:
  bool SaveTimerEnabled() {
    receiving = flags.mblnReceiving;
    return save_timer;
  }
  void NoteMessage(const sim::SimWindowOps::Message& message) {
    if (message.sent == Kind::kLineCount) {
      ++scans;
      last_scan_ms = loop.TickMs();
      if (on_scan) on_scan();
    }
    if (on_message) on_message(message);
  }
  void CatchUp() {
    while (!outside_.empty() && outside_.begin()->first <= loop.TickMs()) {
      const std::function<void()> action = std::move(outside_.begin()->second);
      outside_.erase(outside_.begin());
      action();
    }
    desktop.CatchUp();
  }
  std::optional<std::int64_t> NextDueMs() const {
    const auto due = desktop.NextDueMs();
    if (outside_.empty()) return due;
    return std::min(outside_.begin()->first, due.value_or(outside_.begin()->first));
  }
  void NoteMoment() {
    if (last_moment_ms_ != 0) {
      longest_stall_ms = std::max(longest_stall_ms, loop.TickMs() - last_moment_ms_);
    }
    last_moment_ms_ = loop.TickMs();
  }
  static int Lines(const ListBox& list, std::string_view part) {
    const std::vector<std::string>& items = list.items();
    return static_cast<int>(std::count_if(items.begin(), items.end(), [&](const auto& item) {
      return item.find(part) != std::string::npos;
    }));
  }

  std::int64_t last_moment_ms_ = 0;
  std::multimap<std::int64_t, std::function<void()>> outside_;
  std::unique_ptr<Timer> call_timer =
      loop.MakeTimer(300, NonReentrant([this] { follower.OnWatchdogTick(); }));
  std::unique_ptr<Timer> heartbeat = loop.MakeTimer(10, [] {});
};

}  // namespace corvane::test
