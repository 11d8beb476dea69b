// The whole link with call following above it, on the stand-in's simulated desktop and a virtual
// clock. No windows of the program's own: what the user would press is called directly.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/call_events.h"
#include "core/call_setup.h"
#include "core/scanner.h"
#include "core/watchdog.h"
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

class LinkWorld : private CallFollower {
 public:
  explicit LinkWorld(standin::Options options = {}, std::string_view scenario = {})
      : desktop(loop, std::move(options), scenario) {
    sink.SetRecording(false);
    loop.SetOutside([this] { desktop.CatchUp(); }, [this] { return desktop.NextDueMs(); });
    loop.SetAfterEvent([this] { NoteMoment(); });
    presets.BaseFrequency = 300000000;
    call_timer->SetEnabled(true);
    heartbeat->SetEnabled(true);
    remote.SetEndpoint();
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
        [this, id] { return flags.FollowingCall && core.call.FollowedCallId == id; }, 5000);
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

  sim::SimLoop loop;
  sim::SimDesktop desktop;
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
  PatientWindows windows{desktop.windows(), loop};
  LinkContext context{loop, clock, windows, desktop.socket(), form, flags};
  NetRemote remote{context, logs, "C:\\Corvane", *this, [] { return true; }};
  NetworkInfo box{context};
  Discovery discovery{context};
  NetworkInfoWindow info{context, discovery};
  SdrSetup setup{context, remote, info, presets};
  NetworkWatch network{context, discovery, identity, names, groups, *this};
  PollCycle cycle{context, {discovery, remote, info, setup, network, recorder, folders, activity}};
  CallContext core{loop,        clock,    form,    flags, presets,  identity, groups,
                   subscribers, recorder, folders, logs,  activity, remote,   box};
  CallSequence sequence;
  Bookkeeping bookkeeping{core};
  DailyCalls daily{core};
  CallEnd call_end{core, sequence, bookkeeping};
  CallSetup call_setup{core, sequence, bookkeeping, daily};
  CallEvents call_events{core, call_end, bookkeeping};
  Scanner scanner{core, sequence, call_end, call_setup, call_events, daily};
  Watchdog watchdog{core, call_end};

  int scans = 0;
  std::int64_t last_scan_ms = -1;
  // The longest time in which the program dispatched nothing, that is: a dead window to the user.
  std::int64_t longest_stall_ms = 0;

 private:
  void ScanNetworkInfo() override {
    ++scans;
    last_scan_ms = loop.TickMs();
    scanner.ScanNetworkInfo();
  }
  void ResetCallDisplay() override { call_end.ResetCallDisplay(); }

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
  std::unique_ptr<Timer> call_timer =
      loop.MakeTimer(300, NonReentrant([this] { watchdog.OnCallTick(); }));
  std::unique_ptr<Timer> heartbeat = loop.MakeTimer(10, [] {});
};

}  // namespace corvane::test
