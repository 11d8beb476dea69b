// A call's facts and the controls that show them.
#include "core/call.h"

#include <algorithm>

#include "base/number_text.h"
#include "base/text.h"
#include "panel/logs.h"

namespace corvane {

namespace {

template <typename Int>
std::string Shown(Int number) {
  return " " + Decimal(number);
}

}  // namespace

std::optional<std::int32_t> Call::followed_group() const {
  return FollowingCall() ? group_ : std::nullopt;
}

void Call::ShowCounted(const Setup& setup) {
  state_ = State::kShown;
  ShowNumber(setup.call_id);
  ShowPlace(setup);
  group_ = setup.gssi;
  form_.lblGroupNumber.caption = Shown(setup.gssi);
}

void Call::Accept(const Setup& setup, const std::string& group_label, std::int16_t priority) {
  state_ = State::kShown;
  followed_call_id_ = setup.call_id;
  current_priority_ = priority;
  group_ = setup.gssi;
  form_.lblGroupNumber.caption = Shown(setup.gssi);
  ShowGroupLabel(group_label);
  ShowPlace(setup);
}

void Call::ShowPlace(const Setup& setup) {
  carrier_ = setup.carrier;
  timeslot_ = setup.timeslot;
  form_.lblCarrierNumber.caption = Shown(setup.carrier);
  form_.lblTimeSlotNumber.caption = Shown(setup.timeslot);
}

void Call::BeginFollowing() {
  state_ = State::kFollowed;
  form_.ShapeBusy_state.fill_colour = kGreen;
}

void Call::ShowNumber(std::int16_t call_id) {
  form_.lblCallID.caption = Shown(call_id);
}

void Call::EndFollowing() {
  state_ = State::kNone;
}

void Call::ShowGroupLabel(const std::string& label) {
  form_.lblGSSI_label.caption = ForCaption(label);
}

void Call::ShowTalker(std::int32_t ssi) {
  talker_ = ssi;
  form_.lblCurrentSSI.caption = Shown(ssi);
}

void Call::ShowTalkerLabel(const std::string& label) {
  form_.lblSSI_label.caption = ForCaption(label);
}

void Call::ShowLastSeen(const std::string& time) {
  form_.lblSsiLastSeen.caption = time;
}

bool Call::HasHeard(std::int32_t ssi) const {
  return std::find(heard_.begin(), heard_.end(), ssi) != heard_.end();
}

void Call::AddHeard(std::int32_t ssi) {
  heard_.push_back(ssi);
  form_.lstCurrentSSI_Users.Add(Decimal(ssi));
}

void Call::Clear(Clearing how) {
  const auto clear_heard = [this] {
    heard_.clear();
    form_.lstCurrentSSI_Users.Clear();
  };
  if (how == Clearing::kDropped) ClearNumber();
  carrier_.reset();
  timeslot_.reset();
  talker_.reset();
  group_.reset();
  form_.lblCarrierNumber.caption = "";
  form_.lblTimeSlotNumber.caption = "";
  form_.lblCurrentSSI.caption = "";
  form_.lblGroupNumber.caption = "";
  if (how == Clearing::kEnded) clear_heard();
  form_.lblSSI_label.caption = "";
  form_.lblSsiLastSeen.caption = "";
  form_.lblGSSI_label.caption = "";
  if (how == Clearing::kLinkLost) ClearNumber();
  if (how != Clearing::kEnded) clear_heard();
}

void Call::ClearNumber() {
  form_.lblCallID.caption = "";
}

void Call::ShowIdle() {
  form_.ShapeBusy_state.fill_colour = kButtonFace;
}

void Call::SetRecording(bool recording) {
  recording_active_ = recording;
  ShowRecording(form_, recording);
}

}  // namespace corvane
