// What is expected of the program from what is on the air; what is seen of it.
#include "simulation/watch.h"

#include <algorithm>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane::sim {

namespace {

constexpr std::int64_t kFollowWithinMs = 1500;
constexpr std::int64_t kSetUpTakesMs = 3000;
constexpr std::int64_t kTunedWithinMs = 2000;
constexpr std::int64_t kParkedWithinMs = 4000;
constexpr std::int64_t kReleasedWithinMs = 2000;
// The longest time-out that a user can set, and what the way back takes.
constexpr std::int64_t kGivenUpWithinMs = 34'000;
constexpr std::int64_t kRecordingEndsWithinMs = 3000;
constexpr std::int64_t kBetweenSetupsMs = 1000;

std::string Argument(const std::string& command, const std::string& name) {
  const std::size_t at = command.find(" " + name + "=");
  if (at == std::string::npos) return {};
  const std::size_t from = at + name.size() + 2;
  return command.substr(from, command.find(' ', from) - from);
}

int NumberArgument(const std::string& command, const std::string& name) {
  return ParseDecimal<int>(Argument(command, name)).value_or(0);
}

// Each record as a line, in an order of its own: a list may be sorted by being saved.
std::vector<std::string> GroupsIn(const App::View& view) {
  std::vector<std::string> lines;
  for (const GssiRecord& record : view.groups) {
    lines.push_back(std::to_string(record.Gssi) + ";" + std::to_string(record.Mcc) + ";" +
                    std::to_string(record.Mnc) + ";" + std::string(record.Label.padded()) + ";" +
                    std::to_string(record.Priority) + (record.Follow ? ";True" : ";False"));
  }
  std::ranges::sort(lines);
  return lines;
}

std::vector<std::string> SubscribersIn(const App::View& view) {
  std::vector<std::string> lines;
  for (const SsiRecord& record : view.subscribers) {
    lines.push_back(std::to_string(record.Ssi) + ";" + std::to_string(record.LastGssi) + ";" +
                    std::to_string(record.Mcc) + ";" + std::to_string(record.Mnc) + ";" +
                    std::string(record.Label.padded()));
  }
  std::ranges::sort(lines);
  return lines;
}

}  // namespace

void Watch::Violated(const std::string& what) {
  if (violation_.empty()) violation_ = what;
}

bool Watch::IsLocked(std::int32_t group) const {
  return std::any_of(view_.groups.begin(), view_.groups.end(), [&](const GssiRecord& record) {
    return record.Gssi == group && record.Mcc == view_.network.mcc() &&
           record.Mnc == view_.network.mnc() && !record.Follow;
  });
}

// By what is kept, not by what the program makes of it.
bool Watch::IsDropped(std::int32_t group) const {
  return std::ranges::find(view_.locks.TempGroupLockouts, group, &GroupLocks::Lockout::gssi) !=
         view_.locks.TempGroupLockouts.end();
}

bool Watch::MustBeFollowed(const OnAir& call) const {
  const Form1& form = world_.app->form();
  standin::Model& model = world_.desktop->model();
  return Undisturbed() && call.for_us && !view_.call.FollowingCall() && view_.flags.mblnSetupDone &&
         view_.scanner.ScanPrimed && !form.chkCreateCallActivityCvsFile.checked() &&
         !IsDropped(call.group) && view_.locks.held().value_or(call.group) == call.group &&
         !IsLocked(call.group) && model.running() && model.hung_until_ms() <= model.now_ms() &&
         world_.loop.depth() == 0 && world_.Parked() &&
         model.receiver().LockedCarrier() == model.air().control_carrier &&
         world_.loop.TickMs() - last_setup_ms_ > kBetweenSetupsMs;
}

void Watch::CallBegins(const std::string& command) {
  OnAir call;
  const int id = NumberArgument(command, "id");
  call.group = NumberArgument(command, "group");
  call.party = NumberArgument(command, "party");
  call.carrier = NumberArgument(command, "carrier");
  call.slot = NumberArgument(command, "slot");
  call.for_us = !Contains(command, "service=") && !Contains(command, " encrypted") &&
                !Contains(command, "status=") && call.slot >= 1 && call.slot <= 4;
  call.never = !call.for_us && !Contains(command, "status=Request_queued");
  call.released = !Contains(command, " missed");
  const std::int64_t now = world_.loop.TickMs();
  call.over_ms = now + std::int64_t{1000} * NumberArgument(command, "for");
  on_air_[id] = call;
  std::int64_t& voice_until = voice_until_ms_[{call.carrier, call.slot}];
  voice_until = std::max(voice_until, call.over_ms);
  if (!expecting_ && world_.desktop->model().air().Find(id) != nullptr && MustBeFollowed(call)) {
    expecting_ = Expected{id, now + kFollowWithinMs};
    ++expected_;
  }
  last_setup_ms_ = now;
}

void Watch::Disturbed(std::int64_t settle_ms) {
  calm_from_ms_ = std::max(calm_from_ms_, world_.loop.TickMs() + settle_ms);
  disturbed_ms_ = world_.loop.TickMs();
  expecting_.reset();
}

void Watch::Look() {
  if (!violation_.empty() || world_.closed) return;
  LookAtTheCall();
  LookAtTheTuning();
  LookAtTheWindow();
  LookAtTheRecording();
}

void Watch::LookAtTheCall() {
  const std::int64_t now = world_.loop.TickMs();
  const std::optional<int> following =
      view_.call.FollowingCall() ? std::optional<int>(view_.call.FollowedCallId()) : std::nullopt;
  if (following != following_) {
    if (following_) LookAtTheHeard(*following_);
    following_ = following;
    since_ms_ = now;
    if (following) {
      ++followed_;
      // What the user does while a call is being set up comes too late for it.
      if (now > disturbed_ms_ + kSetUpTakesMs) LookAtTheGroup();
    }
  }
  if (following) {
    const auto call = on_air_.find(*following);
    if (call == on_air_.end() || call->second.group != view_.call.followed_group() ||
        call->second.carrier != view_.call.carrier() ||
        call->second.slot != view_.call.timeslot()) {
      Violated("what is followed was never set up so: call " + std::to_string(*following));
    } else if (call->second.never) {
      // A queued call is followed, as the network may still grant it.
      Violated("a call is followed that is none to follow");
    } else if (Undisturbed() && now > VoiceEnds(call->second) + kGivenUpWithinMs) {
      Violated("stuck on call " + std::to_string(*following));
    } else {
      LookAtTheRelease(call->second);
    }
  }
  if (expecting_ && following == expecting_->id) expecting_.reset();
  if (expecting_ && following) expecting_.reset();  // one that was set up before it
  if (expecting_ && now > expecting_->by_ms) {
    Violated("call " + std::to_string(expecting_->id) + " was not followed");
  }
}

// The network says on the call's carrier that it is over.
void Watch::LookAtTheRelease(const OnAir& call) {
  const bool heard =
      call.released && since_ms_ > calm_from_ms_ && call.over_ms > since_ms_ + kSetUpTakesMs;
  if (heard && Undisturbed() && world_.loop.TickMs() > call.over_ms + kReleasedWithinMs) {
    Violated("a released call is still followed: " + std::to_string(*following_));
  }
}

// A call has ended whose subscriber is to be in the list now.
void Watch::LookAtTheHeard(int id) {
  const auto call = on_air_.find(id);
  if (!Undisturbed() || since_ms_ <= calm_from_ms_ || call == on_air_.end()) return;
  if (!view_.subscribers.Find(view_.network.mcc(), view_.network.mnc(), call->second.group,
                              call->second.party)) {
    Violated("who was heard is not listed: " + std::to_string(call->second.party));
  }
}

// Whoever speaks there keeps the call.
std::int64_t Watch::VoiceEnds(const OnAir& call) const {
  return std::max(voice_until_ms_.at({call.carrier, call.slot}), calm_from_ms_);
}

void Watch::LookAtTheGroup() {
  const std::int32_t group = view_.call.followed_group().value_or(-1);
  if (IsLocked(group)) Violated("a locked-out group is followed: " + std::to_string(group));
  if (IsDropped(group)) Violated("a dropped group is followed");
  if (view_.locks.held().value_or(group) != group) {
    Violated("another group than the held one is followed");
  }
}

void Watch::LookAtTheTuning() {
  const std::int64_t now = world_.loop.TickMs();
  if (!Undisturbed() || world_.loop.depth() > 0) return;
  const std::int64_t since = std::max(since_ms_, calm_from_ms_);
  if (following_) {
    if (now > since + kTunedWithinMs) LookAtTheReceiver();
  } else if (now > since + kParkedWithinMs && !world_.Parked()) {
    Violated("not back on the control channel");
  }
}

void Watch::LookAtTheReceiver() {
  const standin::ReceiverState& receiver = world_.desktop->model().receiver().state();
  const std::string call = " the followed call " + std::to_string(*following_);
  if (receiver.frequency_hz != CarrierFrequency(view_.presets, view_.call.carrier().value_or(0))) {
    Violated("not tuned to" + call);
  }
  if (receiver.slot != view_.call.timeslot()) Violated("not on the timeslot of" + call);
  // What the user sets counts from the next call on.
  if (since_ms_ > disturbed_ms_ && receiver.audio_gain != view_.presets.VcAudioGain) {
    Violated("not as loud as was set:" + call);
  }
}

void Watch::LookAtTheWindow() {
  const Form1& form = world_.app->form();
  if (view_.call.FollowingCall() &&
      (form.lblCallID.caption.get().empty() || form.lblGroupNumber.caption.get().empty() ||
       form.ShapeBusy_state.fill_colour.get() != kGreen)) {
    Violated("a followed call does not show");
  }
  if (Undisturbed() && world_.loop.depth() == 0 && !view_.call.FollowingCall() &&
      form.ShapeBusy_state.fill_colour.get() == kGreen) {
    Violated("a call shows that is not followed any more");
  }
  if (Undisturbed() && view_.call.FollowingCall() && form.chkCreateCallActivityCvsFile.checked()) {
    Violated("a call is followed in LOG mode");
  }
  if (form.ShapeBusy_state.border_width.get() != (view_.call.RecordingActive() ? 3 : 1)) {
    Violated("the recording ring is wrong");
  }
  if (form.lstCallLog.count() > 1030) Violated("the call log grows without end");
  if (form.lstStatusLog.count() > 1001) Violated("the status log grows without end");
  if (world_.loop.spins_broken() != 0) Violated("something waits without letting time pass");
  if (world_.loop.deepest() >= 12) Violated("events inside events without end");
  if (world_.loop.depth() == 0) {
    if (!view_.tmrStartup.enabled()) Violated("the poll timer stands still");
    if (view_.flags.mblnReceiving || view_.flags.mblnSending) Violated("the link is left busy");
  }
  if (!view_.tmrSaveTimed.enabled() || !view_.tmrCallWDT.enabled()) {
    Violated("a timer stands still");
  }
}

int Watch::CountRecordings() const {
  const std::vector<std::string> names = world_.files.List(World::kProgramFolder);
  return static_cast<int>(std::ranges::count_if(names, [](const std::string& name) {
    return name.ends_with(".wav") && !name.ends_with("newTmp.wav");
  }));
}

void Watch::LookAtWhatWasRecorded() {
  if (view_.call.RecordingActive() == recording_) return;
  recording_ = !recording_;
  if (recording_) {
    recording_since_ms_ = world_.loop.TickMs();
    recordings_before_ = CountRecordings();
    order_faults_before_ = world_.mci.order_faults();
  } else if (Undisturbed() && recording_since_ms_ > calm_from_ms_) {
    if (CountRecordings() == recordings_before_) Violated("a call was recorded into no file");
    if (world_.mci.order_faults() != order_faults_before_) {
      Violated("the sound device was told things in a wrong order");
    }
  }
}

void Watch::LookAtTheRecording() {
  LookAtWhatWasRecorded();
  const bool alone = world_.mci.recording() && !following_;
  const std::int64_t now = world_.loop.TickMs();
  if (!alone) {
    recording_alone_since_ms_ = -1;
  } else if (recording_alone_since_ms_ < 0) {
    recording_alone_since_ms_ = now;
  } else if (Undisturbed() &&
             now > std::max(recording_alone_since_ms_, calm_from_ms_) + kRecordingEndsWithinMs) {
    Violated("a recording goes on without a call");
  }
}

void Watch::LookAtFiles() {
  if (!violation_.empty()) return;
  WorldOptions options;
  for (const std::string& name : world_.files.List(World::kProgramFolder)) {
    options.files.emplace_back("\\" + name, world_.FileText("\\" + name));
  }
  const App::View before = world_.app->view();
  World next(std::move(options));
  if (!next.Load()) Violated("the next start ends with an error");
  for (const SimPrompts::Box& box : next.prompts.boxes()) {
    Violated("the next start shows a box: " + box.text);
  }
  const App::View after = next.view();
  const std::vector<std::string> groups = GroupsIn(before);
  const std::vector<std::string> subscribers = SubscribersIn(before);
  if (std::ranges::adjacent_find(groups) != groups.end()) Violated("a group is listed twice");
  if (std::ranges::adjacent_find(subscribers) != subscribers.end()) {
    Violated("a subscriber is listed twice");
  }
  if (groups != GroupsIn(after)) Violated("the groups are not as they were");
  if (subscribers != SubscribersIn(after)) {
    Violated("the subscribers are not as they were");
  }
}

}  // namespace corvane::sim
