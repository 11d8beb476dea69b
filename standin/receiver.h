// The receiver that SDR# is: its settings, and what of the air it hears with them.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "standin/air.h"

namespace corvane::standin {

inline constexpr int kMinAudioGain = 25;  // the gain while parked: nothing is heard
inline constexpr int kMaxAudioGain = 60;

// The names of the detectors, in the order in which error messages list them.
[[nodiscard]] const std::vector<std::string>& DetectorNames();

struct ReceiverState {
  std::int64_t frequency_hz = 100000000;
  std::int64_t center_frequency_hz = 100000000;
  int audio_gain = 40;
  int filter_bandwidth_hz = 200000;
  std::string detector = "NFM";
  bool playing = false;
  bool muted_by_hand = false;
  bool squelch_enabled = false;
  int squelch_threshold = 50;
  bool source_works = true;
  bool demodulator_on = false;
  bool auto_on = true;
  int slot = 1;  // the selected timeslot
};

// What comes out of the loudspeaker.
struct Tone {
  std::int32_t group = 0;
  int hz = 0;
  int gain = 0;  // 26 to 60
  bool operator==(const Tone&) const = default;
};

// The frequency of the tone that stands for a group's voice: 400 Hz + 25 Hz x (group mod 64).
[[nodiscard]] int ToneHz(std::int32_t group);

class Receiver {
 public:
  // `now_ms` tells the time. `changed` comes after every change of the state.
  Receiver(Air& air, std::function<std::int64_t()> now_ms, std::function<void()> changed);

  [[nodiscard]] const ReceiverState& state() const { return state_; }
  // Changes the state by `change`; a retuning starts the wait for the lock.
  void Change(const std::function<void(ReceiverState&)>& change);
  void SetLockTimeMs(std::int64_t ms) { lock_time_ms_ = ms; }

  // The carrier that is tuned and decoded now: it plays, "Demodulator" is checked, the detector is
  // WFM, the frequency is a carrier's and the lock time since the tuning is over.
  [[nodiscard]] std::optional<int> LockedCarrier() const;
  // When the lock comes, if it is on its way.
  [[nodiscard]] std::optional<std::int64_t> LockDueMs() const;
  // Setups and other PDUs of the control channel are heard while that is tuned; those of a call on
  // its carrier, whichever timeslot is selected.
  [[nodiscard]] bool Hears(const Pdu& pdu) const;
  // The call whose voice comes through: on the locked carrier and the selected timeslot, not
  // encrypted. nullptr when there is none.
  [[nodiscard]] const Call* HeardCall() const;
  [[nodiscard]] bool AudioIsMuted() const;
  [[nodiscard]] bool IsSquelchOpen() const { return HeardCall() != nullptr; }
  // Nothing at the parked gain.
  [[nodiscard]] std::optional<Tone> CurrentTone() const;

 private:
  [[nodiscard]] std::optional<int> TunedCarrier() const;

  Air& air_;
  std::function<std::int64_t()> now_ms_;
  std::function<void()> changed_;
  ReceiverState state_;
  std::int64_t lock_time_ms_ = 0;
  std::int64_t tuned_since_ms_ = 0;
};

}  // namespace corvane::standin
