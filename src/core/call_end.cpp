// Ending and resetting.
#include "core/call_end.h"

#include "base/number_text.h"
#include "panel/logs.h"

namespace corvane {

namespace {

void StopRecording(CallContext& context) {
  context.recorder.StopRecording();
  context.recorder.RecordingActive = false;
  ShowRecording(context.form, false);
}

std::string EndText(const CallContext& context, EndKind kind) {
  const std::string call_id = Decimal(context.call.FollowedCallId);
  switch (kind) {
    case EndKind::kReleased:
      return " - Call ID: " + call_id + " - VC D-Released";
    case EndKind::kDisconnected:
      return " - Call ID: " + call_id + " - VC D-Disconnect";
    case EndKind::kTimedOut:
      break;
  }
  return " - Call timeout occured - Did not see D-Release for Call ID: " + call_id;
}

}  // namespace

bool CallEnd::EndCall(EndKind kind) {
  bool completed = false;
  sequence_.Run([&] { completed = EndGuarded(kind); });
  return completed;
}

bool CallEnd::EndGuarded(EndKind kind) {
  Form1& form = context_.form;
  if (kind != EndKind::kTimedOut) {
    context_.call.CallTimeoutTicks = TimeoutTicks(context_.presets.CallTimeoutSeconds);
  }
  form.lblCarrierNumber.caption = "";
  form.lblTimeSlotNumber.caption = "";
  form.lblCurrentSSI.caption = "";
  bookkeeping_.StoreCallSubscribers();
  form.lblGroupNumber.caption = "";
  form.lstCurrentSSI_Users.Clear();
  form.lblSSI_label.caption = "";
  form.lblSsiLastSeen.caption = "";
  form.lblGSSI_label.caption = "";
  context_.flags.FollowingCall = false;

  AddStampedCallLine(context_, EndText(context_, kind));
  AddCallLine(form, "");

  if (!Tune(context_, ParkFrequency(context_), kParkedGain, WaitRule::kAfterEverySet)) {
    return false;
  }
  form.ShapeBusy_state.fill_colour = kButtonFace;
  if (context_.recorder.RecordingActive) StopRecording(context_);
  form.lblCallID.caption = "";
  return true;
}

void CallEnd::ResetCallDisplay() {
  sequence_.Run([this] { ResetGuarded(); });
}

void CallEnd::ResetGuarded() {
  Form1& form = context_.form;
  const bool was_following = context_.flags.FollowingCall;
  context_.flags.FollowingCall = false;
  ClearCallCaptions(form);
  form.lstCurrentSSI_Users.Clear();

  if (context_.flags.NetRemoteLinkUp &&
      !Tune(context_, ParkFrequency(context_), kParkedGain, WaitRule::kOnlyWhileReceiving)) {
    return;
  }
  form.ShapeBusy_state.fill_colour = kButtonFace;
  AddStampedCallLine(context_, " - Manual D-Release occured and UI reset");
  if (was_following) AddCallLine(form, "");

  if (context_.recorder.RecordingActive) {
    context_.recorder.ForcedEndSuffix = "_call_forced_end";
    StopRecording(context_);
  }
}

void CallEnd::Park() {
  if (!context_.flags.NetRemoteLinkUp) return;
  sequence_.RunOrDefer(kDeferPark, [this] { ResetCallDisplay(); });
}

}  // namespace corvane
