// Events of the followed call.
#include "core/call_events.h"

#include "base/number_text.h"
#include "base/text.h"
#include "core/pdu_fields.h"

namespace corvane {

namespace {

std::string WithLabel(const std::string& text, const std::string& label) {
  return label.empty() ? text : text + " [" + label + "]";
}

bool LastEntryContains(const ListBox& log, const std::string& text) {
  return Contains(log.Item(log.count() - 1), text);
}

}  // namespace

bool CallEvents::Handle(const std::string& line) {
  if (CallId(line) != context_.call.FollowedCallId) return true;
  if (Contains(line, "D_Release")) return call_end_.EndCall(EndKind::kReleased);
  if (Contains(line, "D_Disconnect")) return call_end_.EndCall(EndKind::kDisconnected);
  if (Contains(line, "D_TX_Ceased")) TransmissionCeased();
  if (Contains(line, "D_TX_Granted")) TransmissionGranted(line);
  return true;
}

void CallEvents::TransmissionCeased() {
  const std::string party(Trim(context_.form.lblCurrentSSI.caption.get()));
  const auto ssi = ParseDecimal<std::int32_t>(party);
  if (!ssi) return;
  const std::string text = WithLabel(" - VC D-TX-Ceased SSI: " + party, LookupLabel(*ssi));
  if (LastEntryContains(context_.form.lstCallLog, text)) return;
  AddStampedCallLine(context_, " - Call ID: " + Decimal(context_.call.FollowedCallId) + text);
}

void CallEvents::TransmissionGranted(const std::string& line) {
  Form1& form = context_.form;
  if (const auto ssi = GrantedParty(line)) {
    const std::string party = Decimal(*ssi);
    const std::string text = " - VC D-TX-Granted SSI: " + party;
    if (!LastEntryContains(form.lstCallLog, text)) {
      form.lblCurrentSSI.caption = " " + party;
      const std::string label = LookupLabel(*ssi);
      form.lblSSI_label.caption = ForCaption(label);
      AddStampedCallLine(context_, " - Call ID: " + Decimal(context_.call.FollowedCallId) +
                                       WithLabel(text, label));
    }
    if (!ListsNumber(form.lstCurrentSSI_Users, *ssi)) form.lstCurrentSSI_Users.Add(party);
  }
  context_.call.CallTimeoutTicks = TimeoutTicks(context_.presets.CallTimeoutSeconds);
}

std::string CallEvents::LookupLabel(std::int32_t ssi) {
  const auto gssi = ParseShown<std::int32_t>(context_.form.lblGroupNumber.caption.get());
  return gssi ? bookkeeping_.LookupSsiLabel(ssi, *gssi) : std::string();
}

}  // namespace corvane
