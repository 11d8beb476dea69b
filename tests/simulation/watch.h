// What must hold while a plan is played, whoever does what. It knows what is on the air and what
// was disturbed, and looks at the program after every event.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "scenarios/world.h"

namespace corvane::sim {

class Watch {
 public:
  explicit Watch(World& world) : world_(world), view_(world.view()) {}

  // A call goes on the air now. Undisturbed, it must be followed if the rules say so.
  void CallBegins(const std::string& command);
  // Something other than a call happens now: for `settle_ms` nothing is expected of the link.
  void Disturbed(std::int64_t settle_ms);
  // Something is wrong, and stays so until it is healed: nothing is expected before that.
  void SetFaulty(bool faulty) { faulty_ = faulty; }
  // After every event.
  void Look();
  // All is over; the program was closed. The files are read by a second one.
  void LookAtFiles();
  // "" as long as all held.
  [[nodiscard]] const std::string& violation() const { return violation_; }
  void Violated(const std::string& what);

  [[nodiscard]] int followed() const { return followed_; }
  [[nodiscard]] int expected() const { return expected_; }

 private:
  struct OnAir {
    std::int32_t group = 0;
    std::int32_t party = 0;
    int carrier = 0;
    int slot = 0;
    bool for_us = false;   // a group's call, granted, not encrypted
    bool never = false;    // neither now nor when the network decides otherwise
    bool released = true;  // the network says when it is over
    std::int64_t over_ms = 0;
  };
  struct Expected {
    int id = 0;
    std::int64_t by_ms = 0;
  };

  [[nodiscard]] bool MustBeFollowed(const OnAir& call) const;
  [[nodiscard]] bool Undisturbed() const {
    return !faulty_ && world_.loop.TickMs() >= calm_from_ms_;
  }
  [[nodiscard]] bool IsLocked(std::int32_t group) const;
  [[nodiscard]] std::int64_t VoiceEnds(const OnAir& call) const;
  void LookAtTheCall();
  void LookAtTheGroup();
  void LookAtTheTuning();
  void LookAtTheReceiver();
  void LookAtTheRelease(const OnAir& call);
  void LookAtTheHeard(int id);
  void LookAtTheWindow();
  void LookAtTheRecording();
  void LookAtWhatWasRecorded();
  [[nodiscard]] bool IsDropped(std::int32_t group) const;
  [[nodiscard]] int CountRecordings() const;

  World& world_;
  const App::View view_;  // whatever of it may be replaced, as the editor, is not looked at
  std::map<int, OnAir> on_air_;
  std::map<std::pair<int, int>, std::int64_t> voice_until_ms_;  // by carrier and timeslot
  std::optional<Expected> expecting_;
  bool faulty_ = false;
  std::int64_t calm_from_ms_ = 0;
  std::int64_t disturbed_ms_ = 0;
  std::int64_t last_setup_ms_ = 0;
  std::optional<int> following_;
  std::int64_t since_ms_ = 0;  // that is so
  std::int64_t recording_alone_since_ms_ = -1;
  // The recording that goes on: since when, and what there was before it.
  bool recording_ = false;
  std::int64_t recording_since_ms_ = 0;
  int recordings_before_ = 0;
  int order_faults_before_ = 0;
  int followed_ = 0;
  int expected_ = 0;
  std::string violation_;
};

}  // namespace corvane::sim
