// Driving call following.
#include "archive/replay.h"

#include <algorithm>

#include "archive/instant.h"
#include "base/number_text.h"
#include "core/pdu_fields.h"

namespace corvane::tools {

namespace {

constexpr std::int64_t kWatchdogMs = 300;
constexpr std::int64_t kLockoutMs = 1000;

// The first multiple of `period` after `ms`.
std::int64_t Next(std::int64_t ms, std::int64_t period) {
  return (ms / period + 1) * period;
}

}  // namespace

Replay::Replay(const ReplayStart& start, ReplaySink& sink)
    : sink_(sink),
      presets_(start.presets),
      follower_({loop_, clock_, form_, flags_, presets_, network_, groups_, subscribers_, daily_,
                 recorder_, link_}),
      scanner_({clock_, form_, flags_, box_, folders_, logs_, daily_, follower_}) {
  if (start.groups != nullptr) start_groups_ = *start.groups;
  groups_ = start_groups_;
  network_.CurrentMcc = Decimal(start.mcc);
  network_.CurrentMnc = Decimal(start.mnc);
  flags_.NetRemoteLinkUp = true;
  flags_.NetRemoteConnected = true;
  flags_.mblnAudioMuted = true;
  for (OptionButton& option : form_.optOffsets) option.value = false;
  form_.optOffsets[0].value = start.zero_offset;
  // Nobody reads the lists of this run.
  form_.chkSuppressSomePduMessages.value = 1;
  form_.chkSuppressLockoutMessages.value = 1;
  form_.chkCreateCallActivityCvsFile.value = start.log_mode ? 1 : 0;
  follower_.SetWatcher(this);
  follower_.locks().ToggleHold(start.held);
}

void Replay::Take(const LogStep& step) {
  step_ = step;
  if (!begun_) {
    begun_ = true;
    loop_.now_ms = step.ms;
    next_watchdog_ms_ = Next(step.ms, kWatchdogMs);
    next_lockout_ms_ = Next(step.ms, kLockoutMs);
  }
  switch (step.what) {
    case LogStep::What::kLine:
      TakeLine(step);
      break;
    case LogStep::What::kTimedOut:
      TimeOut(step.call_id);
      break;
    case LogStep::What::kDropped:
      PassTimeUntil(step.ms);
      follower_.ManualRelease();
      break;
    case LogStep::What::kParked:
      PassTimeUntil(step.ms);
      follower_.ResetCallDisplay();
      break;
    case LogStep::What::kLogModeOn:
    case LogStep::What::kLogModeOff:
      PassTimeUntil(step.ms);
      SetLogMode(step.what == LogStep::What::kLogModeOn);
      break;
  }
}

void Replay::TakeLine(const LogStep& step) {
  PassTimeUntil(step.time_from == LogStep::TimeFrom::kPace
                    ? std::max(step.ms, loop_.now_ms + kPollMs)
                    : step.ms);
  number_ = step.number;
  (void)scanner_.OnLine(step.line);
  if (form_.lstCallLog.count() >= Scanner::kCallLogLimit) form_.lstCallLog.Clear();
  if (follower_.FollowingCall()) return;
  flags_.mblnAudioMuted = true;
  if (groups_.size() > start_groups_.size() + kMostLearnt || subscribers_.size() > kMostLearnt) {
    ForgetLearnt();
  }
}

// The timers' ticks up to `ms`, with a poll wherever one of them leaves a call silent for too long.
void Replay::PassTimeUntil(std::int64_t ms) {
  const auto is_idle = [this] {
    const bool runs_down = follower_.FollowingCall() && flags_.AudioIsMuted();
    return !runs_down && follower_.locks().TempGroupLockouts.empty();
  };
  while (!is_idle() && std::min(next_watchdog_ms_, next_lockout_ms_) <= ms) {
    loop_.now_ms = std::max(loop_.now_ms, std::min(next_watchdog_ms_, next_lockout_ms_));
    if (next_lockout_ms_ <= loop_.now_ms) {
      next_lockout_ms_ += kLockoutMs;
      follower_.OnLockoutTick();
    }
    if (next_watchdog_ms_ <= loop_.now_ms) {
      next_watchdog_ms_ += kWatchdogMs;
      follower_.OnWatchdogTick();
      if (follower_.FollowingCall() && follower_.call().CallTimeoutTicks == 0)
        (void)scanner_.OnLine({});
    }
  }
  loop_.now_ms = std::max(loop_.now_ms, ms);
  if (!is_idle()) return;
  next_watchdog_ms_ = Next(loop_.now_ms, kWatchdogMs);
  next_lockout_ms_ = Next(loop_.now_ms, kLockoutMs);
}

// The silence that the event log tells of.
void Replay::TimeOut(std::int16_t call_id) {
  PassTimeUntil(step_.ms);
  if (!follower_.FollowingCall() || follower_.call().FollowedCallId() != call_id) return;
  flags_.mblnAudioMuted = true;
  while (follower_.call().CallTimeoutTicks > 0) follower_.OnWatchdogTick();
  (void)scanner_.OnLine({});
}

void Replay::SetLogMode(bool on) {
  if (form_.chkCreateCallActivityCvsFile.checked() == on) return;
  form_.chkCreateCallActivityCvsFile.value = on ? 1 : 0;
  follower_.LogModeSwitched(on);
}

void Replay::ForgetLearnt() {
  groups_ = start_groups_;
  subscribers_.Reset();
  activity_.CallActivityTable.Reset();
  daily_.ChangeDay(TimeAt(++forgotten_ * kSecondsPerDay));  // which starts its counts anew
}

SetupOutcome Replay::OutcomeWhenFree(std::string_view line) const {
  return DecideSetup(line, {no_call_, follower_.locks(), groups_, network_, presets_, false,
                            daily_.LastCsvCallId})
      .outcome;
}

std::string Replay::Why(const SetupDecision& decision) const {
  switch (decision.outcome) {
    case SetupOutcome::kFollowed:
      return Decimal(CarrierFrequency(presets_, decision.setup.carrier)) + " Hz";
    case SetupOutcome::kInCall:
      return "following Call ID " + Decimal(follower_.call().FollowedCallId());
    case SetupOutcome::kHeldElsewhere:
      return "group " + Decimal(follower_.locks().held().value_or(0)) + " is held";
    case SetupOutcome::kMalformed:
      return NameOf(decision.malformed);
    case SetupOutcome::kNotGranted:
      return decision.setup.status;
    case SetupOutcome::kBadFrequency:
      return Decimal(CarrierFrequency(presets_, decision.setup.carrier)) + " Hz";
    case SetupOutcome::kCountedBefore:
      return "highest Call ID " + Decimal(daily_.LastCsvCallId);
    case SetupOutcome::kAbandoned:
      return NameOf(decision.cause);
    default:
      return {};
  }
}

void Replay::SetupDecided(const SetupDecision& decision) {
  SetupRecord record;
  record.number = step_.number;
  record.ms = step_.time_from == LogStep::TimeFrom::kPace ? loop_.now_ms : step_.ms;
  record.time_from = step_.time_from;
  record.outcome = decision.outcome;
  if (decision.IsWhole()) {
    const Setup& setup = decision.setup;
    record.call_id = setup.call_id;
    record.gssi = setup.gssi;
    record.party = setup.party;
    record.carrier = setup.carrier;
    record.slot = setup.timeslot;
  } else {
    record.call_id = CallId(step_.line);
    record.gssi = Group(step_.line);
    record.party = CallingParty(step_.line);
    record.carrier = Carrier(step_.line);
    record.slot = TimeSlot(step_.line);
  }
  if (record.gssi) {
    const auto group = groups_.Find(network_.mcc(), network_.mnc(), *record.gssi);
    if (group) record.label = groups_[*group].Label.trimmed();
  }
  record.detail = Why(decision);
  const bool done = decision.outcome == SetupOutcome::kFollowed ||
                    decision.outcome == SetupOutcome::kCounted ||
                    decision.outcome == SetupOutcome::kBadTimeslot;
  record.contradicts_events = step_.covered && step_.setup_in_events != done;
  if (decision.outcome == SetupOutcome::kFollowed) flags_.mblnAudioMuted = !step_.end_in_events;
  sink_.Setup(record);
}

void Replay::FollowedCallEnded(std::int16_t call_id, CallEnd how) {
  EndRecord record;
  record.number = number_;
  record.ms = loop_.now_ms;
  record.time_from = step_.time_from;
  record.call_id = call_id;
  record.how = how;
  record.park_carrier = presets_.ParkCarrier;
  record.park_hz = CarrierFrequency(presets_, presets_.ParkCarrier);
  sink_.End(record);
}

}  // namespace corvane::tools
