// Each call is planned speaker by speaker while it goes on; everything hangs on the agenda.
#include "standin/traffic.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/number_text.h"

namespace corvane::standin {

namespace {

constexpr int kMaxGivenId = 16383;
constexpr std::int64_t kHourMs = 3600000;
constexpr std::int64_t kShortestSpeechMs = 1500;
constexpr std::int64_t kLongestSpeechMs = 8000;
constexpr std::int64_t kShortestPauseMs = 300;
constexpr std::int64_t kLongestPauseMs = 2000;
constexpr int kSlots = 4;
constexpr int kFirstVoiceSlotOfControl = 2;  // slot 1 of the control carrier is the control channel

constexpr int kFirstHandId = 12001;
constexpr std::int32_t kFirstHandGroup = 9001;
constexpr int kHandGroups = 5;
constexpr std::int32_t kFirstHandParty = 5010;
constexpr int kHandParties = 20;
constexpr int kHandCarrier = 6;  // above the control channel

}  // namespace

std::int64_t Random::Between(std::int64_t low, std::int64_t high) {
  const auto span = static_cast<std::uint64_t>(high - low) + 1;
  return low + static_cast<std::int64_t>(span == 0 ? Next() : Next() % span);
}

// The splitmix64 sequence.
std::uint64_t Random::Next() {
  state_ += 0x9E3779B97F4A7C15u;
  std::uint64_t z = state_;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
  return z ^ (z >> 31);
}

struct Traffic::Plan {
  int id = 0;
  std::uint64_t serial = 0;
  std::int64_t end_ms = 0;
  bool missed = false;
  bool disconnect = false;
};

Traffic::Traffic(Air& air, Agenda& agenda, std::function<std::int64_t()> now_ms, std::uint64_t seed)
    : air_(air), agenda_(agenda), now_ms_(std::move(now_ms)), random_(seed) {}

void Traffic::SetTraffic(const TrafficSettings& settings) {
  settings_ = settings;
  next_id_ = settings.first_id;
  agenda_.Cancel(next_call_);
  if (settings_.calls_per_hour > 0) PlanNextCall();
}

void Traffic::SetNoise(int per_hour) {
  noise_per_hour_ = per_hour;
  agenda_.Cancel(next_noise_);
  if (per_hour > 0) PlanNextNoise();
}

void Traffic::PlanNextCall() {
  const std::int64_t mean = kHourMs / settings_.calls_per_hour;
  const std::int64_t gap = std::max<std::int64_t>(1, random_.Between(mean / 2, mean * 3 / 2));
  next_call_ = agenda_.Add(now_ms_() + gap, [this] {
    BeginCall();
    PlanNextCall();
  });
}

void Traffic::PlanNextNoise() {
  const std::int64_t mean = kHourMs / noise_per_hour_;
  const std::int64_t gap = std::max<std::int64_t>(1, random_.Between(mean / 2, mean * 3 / 2));
  next_noise_ = agenda_.Add(now_ms_() + gap, [this] {
    Pdu pdu;
    pdu.on_control = true;
    pdu.line = NoiseLine();
    air_.Send(pdu);
    PlanNextNoise();
  });
}

void Traffic::BeginCall() {
  Call call;
  if (settings_.groups.empty() || !FindFree(call.carrier, call.slot)) return;
  call.id = NextId();
  const auto last = static_cast<std::int64_t>(settings_.groups.size()) - 1;
  call.group = settings_.groups[static_cast<std::size_t>(random_.Between(0, last))];
  call.party = AnyParty();
  if (random_.Percent(settings_.individual)) call.service = "Individual";
  call.encrypted = random_.Percent(settings_.encrypted);
  if (random_.Percent(settings_.queued)) call.status = "Request_queued";
  if (random_.Percent(settings_.not_granted)) call.status = "Not_granted";

  auto plan = std::make_shared<Plan>();
  plan->id = call.id;
  plan->end_ms = now_ms_() + random_.Between(settings_.shortest_ms, settings_.longest_ms);
  plan->missed = random_.Percent(settings_.missed);
  plan->disconnect = random_.Percent(settings_.disconnected);
  if (!air_.Start(call).empty() || air_.Find(call.id) == nullptr) return;
  plan->serial = air_.Find(call.id)->serial;
  if (call.status == "Granted") {
    agenda_.Add(now_ms_() + random_.Between(kShortestSpeechMs, kLongestSpeechMs),
                [this, plan] { Pause(plan); });
  } else {
    Speak(plan);
  }
  agenda_.Add(plan->end_ms, [this, plan] { EndCall(*plan); });
}

// The next speaker begins after a pause, and pauses again, until the call is over.
void Traffic::Speak(const std::shared_ptr<Plan>& plan) {
  const std::int64_t begin = now_ms_() + random_.Between(kShortestPauseMs, kLongestPauseMs);
  const std::int64_t end = begin + random_.Between(kShortestSpeechMs, kLongestSpeechMs);
  const std::int32_t party = AnyParty();
  if (begin >= plan->end_ms) return;
  agenda_.Add(begin, [this, plan, party] {
    if (air_.IsOn(plan->id, plan->serial)) (void)air_.Speak(plan->id, party);
  });
  if (end < plan->end_ms) agenda_.Add(end, [this, plan] { Pause(plan); });
}

void Traffic::Pause(const std::shared_ptr<Plan>& plan) {
  if (!air_.IsOn(plan->id, plan->serial)) return;
  (void)air_.Pause(plan->id);
  Speak(plan);
}

void Traffic::EndCall(const Plan& plan) {
  // The call may have been ended by hand.
  if (!air_.IsOn(plan.id, plan.serial)) return;
  if (plan.disconnect) {
    (void)air_.Disconnect(plan.id, plan.missed);
  } else {
    (void)air_.Release(plan.id, "User_requested", plan.missed);
  }
}

bool Traffic::FindFree(int& carrier, int& slot) {
  std::vector<std::pair<int, int>> free;
  for (const int candidate : settings_.carriers) {
    const int first = candidate == air_.control_carrier ? kFirstVoiceSlotOfControl : 1;
    for (int s = first; s <= kSlots; ++s) {
      if (air_.IsFree(candidate, s)) free.emplace_back(candidate, s);
    }
  }
  if (free.empty()) return false;
  const auto last = static_cast<std::int64_t>(free.size()) - 1;
  const auto [c, s] = free[static_cast<std::size_t>(random_.Between(0, last))];
  carrier = c;
  slot = s;
  return true;
}

int Traffic::NextId() {
  // Fewer calls than identifiers can go on at once, so a free one is found.
  while (air_.Find(next_id_) != nullptr) next_id_ = next_id_ % kMaxGivenId + 1;
  const int id = next_id_;
  next_id_ = next_id_ % kMaxGivenId + 1;
  return id;
}

std::int32_t Traffic::AnyParty() {
  return static_cast<std::int32_t>(random_.Between(settings_.first_party, settings_.last_party));
}

std::string Traffic::NoiseLine() {
  const std::string ssi = "SSI:" + Decimal(AnyParty()) + " ";
  const std::string id = "Call ID:" + Decimal(random_.Between(0, kMaxGivenId)) + " ";
  const std::array<std::string, 12> lines = {
      ssi + "D_SDS_Data Party_SSI:" + Decimal(AnyParty()) + " Protocol_identifier:130 ",
      ssi + "D_Status Pre_coded_status:32768 Party_SSI:" + Decimal(AnyParty()) + " ",
      ssi + "PDU encrypted ",
      ssi + "D_Connect_Acknowledge " + id,
      ssi + "D_Call_Proceeding " + id + "Basic_service:Individual ",
      ssi + "D_Alert " + id,
      ssi + "D_Info " + id + "Reset_call_timeout:1 ",
      ssi + "D_Setup Transmission Granted " + id + "Basic_service:",
      ssi + "D_Setup Transmission Granted " + id + "Basic_service:Point_to_multipoint Party_SSI:",
      "D_Release Call ID:",
      "SSI:x D_TX_Granted Call ID:y Party_SSI:",
      "System_info LA:101 Main_carrier:2604 ",
  };
  const auto last = static_cast<std::int64_t>(lines.size()) - 1;
  return lines[static_cast<std::size_t>(random_.Between(0, last))];
}

std::string HandCalls::Start() {
  Call call;
  call.id = kFirstHandId + count_;
  call.group = kFirstHandGroup + count_ % kHandGroups;
  call.party = kFirstHandParty + count_ % kHandParties;
  call.carrier = air_.control_carrier + kHandCarrier;
  call.slot = 1;
  while (call.slot < kSlots && !air_.IsFree(call.carrier, call.slot)) ++call.slot;
  if (!air_.IsFree(call.carrier, call.slot)) {
    return "all four timeslots of the carrier are taken: end a call first";
  }
  ++count_;
  id_ = call.id;
  return air_.Start(call);
}

void HandCalls::NextSpeaker() {
  const Call* call = air_.Find(id_);
  if (call == nullptr) return;
  const std::int32_t next = (call->party - kFirstHandParty + 1) % kHandParties;
  (void)air_.Speak(id_, kFirstHandParty + next);
}

void HandCalls::Pause() {
  (void)air_.Pause(id_);
}

void HandCalls::End() {
  (void)air_.Release(id_, "User_requested", false);
  id_ = 0;
  for (const auto& [id, call] : air_.calls()) {
    if (id >= kFirstHandId && id < kFirstHandId + count_) id_ = id;
  }
}

}  // namespace corvane::standin
