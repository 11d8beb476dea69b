// Small steps that several parts of call following take.
#include "core/call_context.h"

#include "base/number_text.h"
#include "panel/logs.h"

namespace corvane {

namespace {

constexpr int kPauseBeforeGainMs = 10;
constexpr int kReplyPollMs = 1;

enum class BrokenBy { kShutdown, kShutdownOrSocket };

bool Broken(const CallContext& context, BrokenBy cause) {
  if (context.flags.mblnShuttingDown) return true;
  return cause == BrokenBy::kShutdownOrSocket && !context.link.SocketConnected();
}

// False when the wait for the reply handler was broken off.
bool WaitWhileReceiving(CallContext& context, BrokenBy cause) {
  while (context.flags.mblnReceiving) {
    if (Broken(context, cause)) return false;
    context.loop.Sleep(kReplyPollMs);
    context.loop.DoEvents();
  }
  return true;
}

}  // namespace

void AddStampedCallLine(CallContext& context, const std::string& text) {
  AddCallLine(context.form, NowText(context.clock) + text);
}

void ClearCallCaptions(Form1& form) {
  for (Label* label :
       {&form.lblCallID, &form.lblCarrierNumber, &form.lblTimeSlotNumber, &form.lblCurrentSSI,
        &form.lblGroupNumber, &form.lblSSI_label, &form.lblSsiLastSeen, &form.lblGSSI_label}) {
    label->caption = "";
  }
}

bool ListsNumber(const ListBox& list, std::int32_t number) {
  for (const std::string& item : list.items()) {
    if (ParseShown<std::int32_t>(item) == number) return true;
  }
  return false;
}

bool Tune(CallContext& context, const std::string& frequency_hz, const std::string& gain,
          WaitRule rule) {
  const bool always = rule == WaitRule::kAfterEverySet;
  context.link.SendNetRemoteSet("Frequency", frequency_hz);
  if (!WaitWhileReceiving(context, always ? BrokenBy::kShutdownOrSocket : BrokenBy::kShutdown)) {
    return false;
  }
  if (always && Broken(context, BrokenBy::kShutdownOrSocket)) return false;
  context.loop.Sleep(kPauseBeforeGainMs);
  context.link.SendNetRemoteSet("AudioGain", gain);
  if (!WaitWhileReceiving(context, BrokenBy::kShutdownOrSocket)) return false;
  return !always || !Broken(context, BrokenBy::kShutdownOrSocket);
}

std::string ParkFrequency(const CallContext& context) {
  return Decimal(CarrierFrequency(context.presets, context.presets.ParkCarrier));
}

}  // namespace corvane
