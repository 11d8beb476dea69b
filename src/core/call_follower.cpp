// What is done about setups, the followed call's signalling, silence and the user's wishes.
#include "core/call_follower.h"

#include <algorithm>
#include <exception>

#include "base/number_text.h"
#include "base/text.h"
#include "core/call_texts.h"
#include "core/pdu_fields.h"
#include "panel/logs.h"

namespace corvane {

namespace {

constexpr int kPauseBeforeGainMs = 10;
constexpr const char* kParkedGain = "25";

bool EntryContains(const ListBox& log, int from_end, const std::string& text) {
  return Contains(log.Item(log.count() - from_end), text);
}

}  // namespace

CallFollower::CallFollower(const Surroundings& around)
    : around_(around),
      call_(around.form),
      locks_(around.form),
      bookkeeping_(around.network, around.groups, around.subscribers, around.clock, call_) {}

// -- Setups.

SetupDecision CallFollower::OnSetup(std::string_view line) {
  const bool log_mode = around_.form.chkCreateCallActivityCvsFile.checked();
  SetupDecision decision =
      DecideSetup(line, {call_, locks_, around_.groups, around_.network, around_.presets, log_mode,
                         around_.daily.LastCsvCallId});
  const Setup& setup = decision.setup;
  // A call to be followed is reported when it is known whether that succeeded.
  if (decision.outcome != SetupOutcome::kFollowed) Report(decision);
  if (decision.IsWhole()) bookkeeping_.FindGroupIndex(setup.gssi);
  switch (decision.outcome) {
    case SetupOutcome::kNotGranted:
      if (log_mode) around_.daily.WriteCall(setup.gssi, setup.call_id, setup.status);
      break;
    case SetupOutcome::kCounted:
      CountInLogMode(setup);
      break;
    case SetupOutcome::kLockedOut:
      ReportLockout(setup);
      break;
    case SetupOutcome::kBadTimeslot:
      AbortBadTimeslot(setup);
      break;
    case SetupOutcome::kFollowed:
      Follow(decision);
      break;
    default:
      break;
  }
  return decision;
}

void CallFollower::Report(const SetupDecision& decision) {
  if (watcher_ != nullptr) watcher_->SetupDecided(decision);
}

void CallFollower::CountInLogMode(const Setup& setup) {
  around_.daily.WriteCall(setup.gssi, setup.call_id, setup.status);
  around_.daily.Count(setup.gssi);
  call_.ShowCounted(setup);
  const std::string label = GroupLabel(setup.gssi);
  AddStampedCallLine(SetupText(setup, label));
  call_.ShowGroupLabel(label);
}

void CallFollower::ReportLockout(const Setup& setup) {
  if (around_.form.chkSuppressLockoutMessages.checked()) return;
  const std::string text =
      " - Skipping Call, lockout found GSSI: " + GroupText(setup.gssi, GroupLabel(setup.gssi));
  // The last entry but one is looked at, so the second report of a group still comes.
  if (!EntryContains(around_.form.lstCallLog, 2, text)) AddStampedCallLine(text);
}

void CallFollower::Follow(SetupDecision& decision) {
  const Setup& setup = decision.setup;
  const std::string frequency_hz = Decimal(CarrierFrequency(around_.presets, setup.carrier));
  const auto abandon = [&](BrokenBy cause) {
    decision.cause = cause;
    decision.outcome = SetupOutcome::kAbandoned;
  };
  ShowSetup(setup);
  // Inside the guard, because what waits for its end may drop the call again.
  RunGuarded([&] {
    try {
      const BrokenBy broken = TuneAndStart(setup, frequency_hz);
      if (broken != BrokenBy::kNothing) abandon(broken);
    } catch (...) {
      abandon(BrokenBy::kFault);
      Report(decision);
      throw;
    }
    Report(decision);
  });
}

void CallFollower::AbortBadTimeslot(const Setup& setup) {
  ShowSetup(setup);
  call_.Clear(Call::Clearing::kDropped);
  AddStampedCallLine(" - Timeslot is not valid - call setup aborted");
}

void CallFollower::ShowSetup(const Setup& setup) {
  around_.recorder.ForcedEndSuffix.clear();
  bookkeeping_.CheckGroup(setup.gssi);
  // Too late for this tuning, whose frequency is known already; it counts from the next one on.
  if (around_.form.optOffsets[0].value) around_.presets.FrequencyOffset = 0;
  const GssiRecord& group = around_.groups[bookkeeping_.FindGroupIndex(setup.gssi)];
  const std::string label = group.Label.trimmed();
  call_.Accept(setup, label, group.Priority);
  if (!call_.HasHeard(setup.party)) {
    call_.ShowTalker(setup.party);
    call_.AddHeard(setup.party);
  }
  AddStampedCallLine(SetupText(setup, label));
  AddStampedCallLine(
      WithLabel(CallIdText(setup.call_id) + " - Calling SSI: " + Decimal(setup.party),
                bookkeeping_.LookupSsiLabel(setup.party, setup.gssi)));
}

BrokenBy CallFollower::TuneAndStart(const Setup& setup, const std::string& frequency_hz) {
  around_.link.PressTimeslot(setup.timeslot);
  LoadCountdown();
  const BrokenBy broken =
      Tune(frequency_hz, Decimal(around_.presets.VcAudioGain), Tuning::kWhileLinked);
  if (broken != BrokenBy::kNothing) return broken;
  if (IsToBeRecorded(around_.form, setup.gssi)) StartRecording(setup);
  call_.BeginFollowing();
  call_.ShowTalkerLabel(bookkeeping_.LookupSsiLabel(setup.party, setup.gssi));
  call_.ShowNumber(setup.call_id);
  return BrokenBy::kNothing;
}

std::string CallFollower::GroupLabel(std::int32_t gssi) {
  return around_.groups[bookkeeping_.FindGroupIndex(gssi)].Label.trimmed();
}

// -- The followed call's own signalling.

PollStep CallFollower::OnCallEvent(std::string_view line) {
  if (!FollowingCall() || CallId(line) != call_.FollowedCallId()) return PollStep::kGoesOn;
  if (Contains(line, "D_Release")) return EndCall(CallEnd::kReleased);
  if (Contains(line, "D_Disconnect")) return EndCall(CallEnd::kDisconnected);
  if (Contains(line, "D_TX_Ceased")) TransmissionCeased();
  if (Contains(line, "D_TX_Granted")) TransmissionGranted(line);
  return PollStep::kGoesOn;
}

void CallFollower::TransmissionCeased() {
  const auto ssi = call_.talker();
  if (!ssi) return;
  const std::string text = WithLabel(" - VC D-TX-Ceased SSI: " + Decimal(*ssi), TalkerLabel(*ssi));
  if (EntryContains(around_.form.lstCallLog, 1, text)) return;
  AddStampedCallLine(CallIdText(call_.FollowedCallId()) + text);
}

void CallFollower::TransmissionGranted(std::string_view line) {
  if (const auto ssi = GrantedParty(line)) {
    const std::string text = " - VC D-TX-Granted SSI: " + Decimal(*ssi);
    if (!EntryContains(around_.form.lstCallLog, 1, text)) {
      call_.ShowTalker(*ssi);
      const std::string label = TalkerLabel(*ssi);
      call_.ShowTalkerLabel(label);
      AddStampedCallLine(CallIdText(call_.FollowedCallId()) + WithLabel(text, label));
    }
    if (!call_.HasHeard(*ssi)) call_.AddHeard(*ssi);
  }
  LoadCountdown();
}

std::string CallFollower::TalkerLabel(std::int32_t ssi) {
  const auto gssi = call_.followed_group();
  return gssi ? bookkeeping_.LookupSsiLabel(ssi, *gssi) : std::string();
}

// -- Ends.

PollStep CallFollower::EndIfTimedOut() {
  if (!FollowingCall() || call_.CallTimeoutTicks != 0) return PollStep::kGoesOn;
  return EndCall(CallEnd::kTimedOut);
}

PollStep CallFollower::EndCall(CallEnd kind) {
  PollStep step = PollStep::kEnds;
  RunGuarded([&] { step = EndGuarded(kind); });
  return step;
}

PollStep CallFollower::EndGuarded(CallEnd kind) {
  if (kind != CallEnd::kTimedOut) LoadCountdown();
  bookkeeping_.StoreCallSubscribers();
  call_.Clear(Call::Clearing::kEnded);
  EndFollowing(kind);
  AddStampedCallLine(EndText(kind, call_.FollowedCallId()));
  AddCallLine(around_.form, "");
  // What is left undone here is done by the reset of the lost link, or by closing.
  if (Park(Tuning::kWhileLinked) != BrokenBy::kNothing) return PollStep::kEnds;
  call_.ShowIdle();
  if (call_.RecordingActive()) StopRecording();
  call_.ClearNumber();
  return PollStep::kGoesOn;
}

void CallFollower::EndFollowing(CallEnd kind) {
  const bool was_followed = FollowingCall();
  call_.EndFollowing();
  if (was_followed && watcher_ != nullptr) {
    watcher_->FollowedCallEnded(call_.FollowedCallId(), kind);
  }
}

void CallFollower::ResetCallDisplay() {
  RunGuarded([this] { ResetGuarded(Tuning::kToTheEnd); });
}

void CallFollower::ResetGuarded(Tuning tuning) {
  const bool was_followed = FollowingCall();
  EndFollowing(CallEnd::kReset);
  call_.Clear(Call::Clearing::kDropped);
  if (around_.flags.NetRemoteLinkUp) Park(tuning);
  call_.ShowIdle();
  AddStampedCallLine(" - Manual D-Release occured and UI reset");
  if (was_followed) AddCallLine(around_.form, "");
  if (call_.RecordingActive()) {
    around_.recorder.ForcedEndSuffix = "_call_forced_end";
    StopRecording();
  }
}

void CallFollower::DropWithLink() {
  EndFollowing(CallEnd::kLinkLost);
  call_.Clear(Call::Clearing::kLinkLost);
  call_.ShowIdle();
  locks_.ResetHold();
  if (call_.RecordingActive()) StopRecording();
}

void CallFollower::ParkAgain() {
  RunGuarded([this] { (void)Park(Tuning::kWhileLinked); });
}

void CallFollower::EndForClosing() {
  if (FollowingCall()) RunGuarded([this] { ResetGuarded(Tuning::kWithAnswers); });
  // A call whose end was under way is not followed any more but may still be recorded.
  if (call_.RecordingActive()) StopRecording();
}

// -- Tuning.

BrokenBy CallFollower::Broken() const {
  if (around_.flags.mblnShuttingDown) return BrokenBy::kShutdown;
  return around_.link.SocketConnected() ? BrokenBy::kNothing : BrokenBy::kSocket;
}

BrokenBy CallFollower::Tune(const std::string& frequency_hz, const std::string& gain,
                            Tuning tuning) {
  const auto send = [&](const char* method, const std::string& value) {
    if (tuning == Tuning::kWithAnswers) around_.link.AwaitAnswer();
    around_.link.SendNetRemoteSet(method, value);
    return tuning == Tuning::kWhileLinked ? Broken() : BrokenBy::kNothing;
  };
  const BrokenBy broken = send("Frequency", frequency_hz);
  if (broken != BrokenBy::kNothing) return broken;
  around_.loop.Sleep(kPauseBeforeGainMs);
  return send("AudioGain", gain);
}

BrokenBy CallFollower::Park(Tuning tuning) {
  return Tune(Decimal(CarrierFrequency(around_.presets, around_.presets.ParkCarrier)), kParkedGain,
              tuning);
}

void CallFollower::LoadCountdown() {
  call_.CallTimeoutTicks = TimeoutTicks(around_.presets.CallTimeoutSeconds);
}

// -- Recordings.

void CallFollower::StartRecording(const Setup& setup) {
  around_.recorder.StartRecording(ClockDigits(around_.clock.Now()) + "_" + Decimal(setup.call_id) +
                                  "_" + Decimal(setup.gssi));
  call_.SetRecording(true);
}

void CallFollower::StopRecording() {
  around_.recorder.StopRecording();
  call_.SetRecording(false);
}

// -- Time and the user.

void CallFollower::OnWatchdogTick() {
  if (!FollowingCall()) return;
  call_.CallTimeoutTicks = std::max(0, call_.CallTimeoutTicks - 1);
  if (!around_.link.CommandUnderWay()) {
    around_.link.SendNetRemoteGet("AudioIsMuted");
    if (Broken() != BrokenBy::kNothing) return;
  }
  if (!around_.flags.AudioIsMuted()) LoadCountdown();
}

void CallFollower::ManualRelease() {
  const auto group = call_.followed_group();
  if (!group) return;
  locks_.Drop(*group);
  ResetCallDisplay();
}

void CallFollower::Park() {
  if (around_.flags.NetRemoteLinkUp) RunOrDefer(Deferred::kPark);
}

void CallFollower::LogModeSwitched(bool checked) {
  const bool on_waits =
      std::find(deferred_.begin(), deferred_.end(), Deferred::kLogModeOn) != deferred_.end();
  if (checked) {
    RunOrDefer(Deferred::kLogModeOn);
  } else if (on_waits) {
    RunOrDefer(Deferred::kLogModeOff);
  } else {
    SwitchLogModeOff();
  }
}

void CallFollower::SwitchLogModeOn() {
  if (FollowingCall()) ResetCallDisplay();
  AddLogModeLine("");
  AddLogModeLine(NowText(around_.clock) + " - LOG mode active - No calls will be heard");
}

void CallFollower::SwitchLogModeOff() {
  AddLogModeLine(NowText(around_.clock) + " - LOG mode de-activated - Calls can now be heard");
}

void CallFollower::AddLogModeLine(const std::string& text) {
  ListBox& log = around_.form.lstCallLog;
  log.Add(text);
  if (log.count() > kCallLogRows) log.SelectLast();
}

void CallFollower::AddStampedCallLine(const std::string& text) {
  AddCallLine(around_.form, NowText(around_.clock) + text);
}

// -- The guard.

void CallFollower::RunGuarded(const std::function<void()>& sequence) {
  std::exception_ptr thrown;
  ++depth_;
  try {
    sequence();
  } catch (...) {
    thrown = std::current_exception();
  }
  --depth_;
  RunDeferred();
  if (thrown) std::rethrow_exception(thrown);
}

void CallFollower::RunOrDefer(Deferred action) {
  if (!InSequence()) {
    Run(action);
    return;
  }
  std::erase(deferred_, action);
  deferred_.push_back(action);
}

void CallFollower::RunDeferred() {
  if (around_.flags.mblnShuttingDown) deferred_.clear();
  while (!InSequence() && !deferred_.empty()) {
    const Deferred next = deferred_.front();
    deferred_.erase(deferred_.begin());
    Run(next);
  }
}

void CallFollower::Run(Deferred action) {
  switch (action) {
    case Deferred::kPark:
      return ResetCallDisplay();
    case Deferred::kLogModeOn:
      return SwitchLogModeOn();
    case Deferred::kLogModeOff:
      return SwitchLogModeOff();
  }
}

}  // namespace corvane
