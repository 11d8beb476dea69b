// One cycle: reset if needed, connect, poll.
#include "link/poll_cycle.h"

#include <algorithm>
#include <exception>

#include "panel/logs.h"

namespace corvane {

PollCycle::PollCycle(LinkContext& context, Parts parts)
    : context_(context),
      parts_(parts),
      timer_(context.loop.MakeTimer(kTickMs, NonReentrant([this] { RunStartupCycle(); }))) {}

void PollCycle::Start() {
  log_next_discovery_ = true;
  timer_->SetEnabled(true);
}

void PollCycle::RunStartupCycle() {
  ProgramFlags& flags = context_.flags;
  if (!flags.mblnFormLoaded || flags.mblnShuttingDown) return;
  timer_->SetEnabled(false);
  parts_.patience.BeginCycle();
  try {
    TakeResetRequest();
    if (!flags.NetRemoteLinkUp) Reset();
    if (flags.NetRemoteLinkUp) parts_.net_remote.CheckNetRemoteConnection();
    if (flags.NetRemoteLinkUp && flags.NetRemoteConnected) PollSdrSharp();
  } catch (const std::exception& e) {
    ReportException(e.what());
  } catch (...) {
    ReportException("unknown");
  }
  parts_.patience.EndCycle();
  if (!flags.mblnShuttingDown) timer_->SetEnabled(true);
}

// A cycle that fails fails again in 60 ms; the user needs to read it once.
void PollCycle::ReportException(const std::string& what) {
  const std::string line = "Error in poll cycle: " + what;
  const ListBox& log = context_.form.lstStatusLog;
  if (log.Item(log.count() - 1) != line) AddStatusLineInView(context_.form, line);
}

// An SDR# that answers the set-up itself with an error would otherwise be set up without end, which
// takes the keyboard away from the user each time.
void PollCycle::TakeResetRequest() {
  ProgramFlags& flags = context_.flags;
  if (!flags.mblnNetRemoteResetRequested) return;
  const std::int64_t now_ms = context_.loop.TickMs();
  if (no_reset_before_ms_ && now_ms < *no_reset_before_ms_) return;
  no_reset_before_ms_ = now_ms + kResetPauseMs;
  flags.mblnNetRemoteResetRequested = false;
  flags.NetRemoteLinkUp = false;
}

void PollCycle::Reset() {
  context_.flags.mblnNetRemoteResetRequested = false;
  parts_.follower.DropWithLink();
  const auto log = log_next_discovery_ ? Discovery::Log::kWhole : Discovery::Log::kQuietRepeats;
  log_next_discovery_ = false;
  parts_.discovery.DiscoverSdrWindows(log);
  context_.flags.mblnSetupDone = false;
  parts_.network.Forget();
}

// An error reply during the set-up does not restart the set-up at once.
bool PollCycle::SetUp() {
  const bool requested_before = context_.flags.mblnNetRemoteResetRequested;
  const bool done = parts_.setup.Run();
  if (context_.flags.mblnNetRemoteResetRequested && !requested_before) {
    const std::int64_t now_ms = context_.loop.TickMs();
    const bool pausing = no_reset_before_ms_ && now_ms < *no_reset_before_ms_;
    if (!pausing) no_reset_before_ms_ = now_ms + kResetPauseMs;
  }
  return done;
}

void PollCycle::PollSdrSharp() {
  parts_.network_info.KeepOpen();
  if (!context_.flags.mblnSetupDone && !SetUp()) return;
  if (!parts_.setup.FinishCheckBoxes()) return;
  if (context_.form.chkCreateCallActivityCvsFile.checked() && !parts_.activity.CallActivityLoaded) {
    parts_.folders.CreateDayFolders(context_.clock.Now());
    parts_.activity.LoadCallActivity();
  }
  parts_.network.Step();
  ParkAgainWhenInDoubt();
}

// A refusal that was dropped may have been that of the way back to the control channel, where
// nothing else would show it.
void PollCycle::ParkAgainWhenInDoubt() {
  if (!parts_.net_remote.RefusalMayBeLost()) return;
  if (parts_.follower.FollowingCall() || parts_.follower.InSequence()) return;
  parts_.net_remote.ForgetLostRefusal();
  parts_.follower.ParkAgain();
}

}  // namespace corvane
