// Calls as they go on, and the PDU lines that announce what happens to them.
#include "standin/air.h"

#include <utility>

#include "base/number_text.h"

namespace corvane::standin {

namespace {

// How far a receiver may be off a carrier and still hear it.
constexpr std::int64_t kCaptureHz = 3000;

std::string Head(const Call& call) {
  return "SSI:" + Decimal(call.group) + " ";
}
std::string CallId(const Call& call) {
  return "Call ID:" + Decimal(call.id) + " ";
}
std::string NoSuchCall(int id) {
  return "there is no call " + Decimal(id);
}

}  // namespace

std::string SetupLine(const Call& call) {
  return Head(call) + "D_Setup Transmission " + call.status + " " + CallId(call) +
         "Basic_service:" + call.service + " Party_SSI:" + Decimal(call.party) +
         " TimeSlot:" + Decimal(call.slot) + " Carrier:" + Decimal(call.carrier) + " ";
}

std::string GrantedLine(const Call& call) {
  return Head(call) + "D_TX_Granted " + CallId(call) +
         "Transmission_grant:Granted_to_another_user Party_SSI:" + Decimal(call.party);
}

std::string CeasedLine(const Call& call) {
  return Head(call) + "D_TX_Ceased " + CallId(call);
}

std::string ReleaseLine(const Call& call, const std::string& cause) {
  return Head(call) + "D_Release " + CallId(call) + "Disconnect_cause:" + cause + " ";
}

std::string DisconnectLine(const Call& call) {
  return Head(call) + "D_Disconnect " + CallId(call);
}

std::string EncryptedLine(const Call& call) {
  return Head(call) + "PDU encrypted ";
}

std::string Air::Start(Call call) {
  if (calls_.contains(call.id)) return "call " + Decimal(call.id) + " is on the air already";
  call.speaking = call.status == "Granted";
  call.serial = ++last_serial_;
  if (call.status != "Not_granted") calls_.emplace(call.id, call);
  SendAbout(call, SetupLine(call), true);
  if (events_.changed) events_.changed();
  return {};
}

std::string Air::Speak(int id, std::int32_t party) {
  const auto found = calls_.find(id);
  if (found == calls_.end()) return NoSuchCall(id);
  found->second.party = party;
  found->second.speaking = true;
  SendAbout(found->second, GrantedLine(found->second), false);
  if (events_.changed) events_.changed();
  return {};
}

std::string Air::Pause(int id) {
  const auto found = calls_.find(id);
  if (found == calls_.end()) return NoSuchCall(id);
  found->second.speaking = false;
  SendAbout(found->second, CeasedLine(found->second), false);
  if (events_.changed) events_.changed();
  return {};
}

std::string Air::Release(int id, const std::string& cause, bool missed) {
  return End(
      id, [&](const Call& call) { return ReleaseLine(call, cause); }, missed);
}

std::string Air::Disconnect(int id, bool missed) {
  return End(id, DisconnectLine, missed);
}

std::string Air::RepeatSetup(int id) {
  const Call* call = Find(id);
  if (call == nullptr) return NoSuchCall(id);
  SendAbout(*call, SetupLine(*call), true);
  return {};
}

void Air::Send(const Pdu& pdu) {
  if (events_.pdu) events_.pdu(pdu);
}

void Air::SetIdentity(std::optional<Identity> identity) {
  identity_ = std::move(identity);
  if (events_.changed) events_.changed();
}

const Call* Air::Find(int id) const {
  const auto found = calls_.find(id);
  return found == calls_.end() ? nullptr : &found->second;
}

bool Air::IsOn(int id, std::uint64_t serial) const {
  const Call* call = Find(id);
  return call != nullptr && call->serial == serial;
}

const Call* Air::VoiceOn(int carrier, int slot) const {
  for (const auto& [id, call] : calls_) {
    if (call.carrier == carrier && call.slot == slot && call.speaking) return &call;
  }
  return nullptr;
}

bool Air::IsFree(int carrier, int slot) const {
  for (const auto& [id, call] : calls_) {
    if (call.carrier == carrier && call.slot == slot) return false;
  }
  return true;
}

std::int64_t Air::FrequencyOf(int carrier) const {
  return std::int64_t{carrier} * kCarrierSpacingHz + base_hz + offset_hz;
}

std::optional<int> Air::CarrierAt(std::int64_t frequency_hz) const {
  const std::int64_t above = frequency_hz - base_hz - offset_hz + kCaptureHz;
  if (above < 0) return std::nullopt;
  const std::int64_t carrier = above / kCarrierSpacingHz;
  if (above % kCarrierSpacingHz > 2 * kCaptureHz || carrier > 1000000) return std::nullopt;
  return static_cast<int>(carrier);
}

void Air::SendAbout(const Call& call, std::string line, bool setup) {
  Pdu pdu;
  pdu.on_control = setup || signalling_on_control || call.carrier == control_carrier;
  if (!setup) pdu.carrier = call.carrier;
  pdu.line = call.encrypted ? EncryptedLine(call) : std::move(line);
  Send(pdu);
}

std::string Air::End(int id, const std::function<std::string(const Call&)>& line, bool missed) {
  const auto found = calls_.find(id);
  if (found == calls_.end()) return NoSuchCall(id);
  const Call call = found->second;
  calls_.erase(found);
  if (!missed) SendAbout(call, line(call), false);
  if (events_.changed) events_.changed();
  return {};
}

}  // namespace corvane::standin
