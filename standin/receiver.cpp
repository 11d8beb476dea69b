// What is heard follows from the settings and the air at each question; only the moment of the last
// retuning is kept besides.
#include "standin/receiver.h"

#include <cstdlib>
#include <utility>

namespace corvane::standin {

namespace {

constexpr int kToneBaseHz = 400;
constexpr int kToneStepHz = 25;
constexpr int kToneSteps = 64;
// A signal further from the centre is outside of what the source delivers.
constexpr std::int64_t kHalfBandHz = 1000000;

}  // namespace

const std::vector<std::string>& DetectorNames() {
  static const std::vector<std::string> names = {"NFM", "AM",  "LSB", "USB",
                                                 "WFM", "DSB", "CW",  "RAW"};
  return names;
}

int ToneHz(std::int32_t group) {
  return kToneBaseHz + kToneStepHz * static_cast<int>(std::abs(std::int64_t{group}) % kToneSteps);
}

Receiver::Receiver(Air& air, std::function<std::int64_t()> now_ms, std::function<void()> changed)
    : air_(air), now_ms_(std::move(now_ms)), changed_(std::move(changed)) {}

void Receiver::Change(const std::function<void(ReceiverState&)>& change) {
  const ReceiverState before = state_;
  change(state_);
  if (std::llabs(state_.frequency_hz - state_.center_frequency_hz) > kHalfBandHz) {
    state_.center_frequency_hz = state_.frequency_hz;
  }
  if (state_.frequency_hz != before.frequency_hz || state_.playing != before.playing ||
      state_.demodulator_on != before.demodulator_on || state_.detector != before.detector) {
    tuned_since_ms_ = now_ms_();
  }
  if (changed_) changed_();
}

std::optional<int> Receiver::LockedCarrier() const {
  if (now_ms_() - tuned_since_ms_ < lock_time_ms_) return std::nullopt;
  return TunedCarrier();
}

std::optional<std::int64_t> Receiver::LockDueMs() const {
  if (!TunedCarrier() || LockedCarrier()) return std::nullopt;
  return tuned_since_ms_ + lock_time_ms_;
}

bool Receiver::Hears(const Pdu& pdu) const {
  const std::optional<int> carrier = LockedCarrier();
  if (!carrier) return false;
  return (pdu.on_control && *carrier == air_.control_carrier) || pdu.carrier == carrier;
}

const Call* Receiver::HeardCall() const {
  const std::optional<int> carrier = LockedCarrier();
  if (!carrier) return nullptr;
  const Call* call = air_.VoiceOn(*carrier, state_.slot);
  return call != nullptr && !call->encrypted ? call : nullptr;
}

bool Receiver::AudioIsMuted() const {
  return state_.muted_by_hand || HeardCall() == nullptr;
}

std::optional<Tone> Receiver::CurrentTone() const {
  const Call* call = HeardCall();
  if (call == nullptr || state_.muted_by_hand || state_.audio_gain <= kMinAudioGain) {
    return std::nullopt;
  }
  return Tone{call->group, ToneHz(call->group), state_.audio_gain};
}

std::optional<int> Receiver::TunedCarrier() const {
  if (!state_.playing || !state_.source_works || !state_.demodulator_on ||
      state_.detector != "WFM") {
    return std::nullopt;
  }
  return air_.CarrierAt(state_.frequency_hz);
}

}  // namespace corvane::standin
