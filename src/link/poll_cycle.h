// The program's heartbeat: one cycle per tick of tmrStartup, never two at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "link/discovery.h"
#include "link/link_context.h"
#include "link/net_remote.h"
#include "link/network_info.h"
#include "link/network_watch.h"
#include "link/patient_windows.h"
#include "link/sdr_setup.h"
#include "store/call_activity.h"
#include "store/day_folders.h"

namespace corvane {

class PollCycle {
 public:
  static constexpr int kTickMs = 60;
  // Error replies cause no more than one reset in this time.
  static constexpr int kResetPauseMs = 30000;

  struct Parts {
    PatientWindows& patience;
    Discovery& discovery;
    NetRemote& net_remote;
    NetworkInfo& network_info;
    SdrSetup& setup;
    NetworkWatch& network;
    CallFollower& follower;
    DayFolders& folders;
    CallActivity& activity;
  };
  PollCycle(LinkContext& context, Parts parts);

  // The link's share of cmdStartAll: cycles run from now on, and the first discovery among them is
  // logged whole.
  void Start();

  // One cycle, on each tick of tmrStartup; nothing before mblnFormLoaded or while shutting down.
  // Disarms tmrStartup, resets and rediscovers if the link is down, keeps the connection, polls;
  // arms tmrStartup again unless shutting down, whatever happened. An exception becomes one status
  // line. Lets events run.
  void RunStartupCycle();

  [[nodiscard]] Timer& tmrStartup() { return *timer_; }

 private:
  void TakeResetRequest();
  [[nodiscard]] bool SetUp();
  void Reset();
  void PollSdrSharp();
  void ParkAgainWhenInDoubt();
  void ReportException(const std::string& what);

  LinkContext& context_;
  Parts parts_;
  std::unique_ptr<Timer> timer_;
  bool log_next_discovery_ = false;
  std::optional<std::int64_t> no_reset_before_ms_;  // for requests by error replies
};

}  // namespace corvane
