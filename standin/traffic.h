// Where calls come from besides the scenario: at random, exactly repeatable from a seed, and from
// the practice buttons.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "standin/agenda.h"
#include "standin/air.h"

namespace corvane::standin {

// A small generator of its own, so that a seed gives the same calls with every compiler.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  // From `low` to `high`, both included.
  std::int64_t Between(std::int64_t low, std::int64_t high);
  bool Percent(int percent) { return Between(1, 100) <= percent; }

 private:
  std::uint64_t Next();
  std::uint64_t state_;
};

// Percentages are of all calls.
struct TrafficSettings {
  int calls_per_hour = 0;  // 0: no traffic
  std::vector<std::int32_t> groups = {9001, 9002, 9003};
  std::int32_t first_party = 5010;
  std::int32_t last_party = 5040;
  std::vector<int> carriers = {2610, 2611};
  int shortest_ms = 5000;
  int longest_ms = 40000;
  int individual = 0;
  int encrypted = 0;
  int queued = 0;
  int not_granted = 0;
  int missed = 0;        // their release is not sent
  int disconnected = 0;  // end with D_Disconnect
  int first_id = 1;
};

class Traffic {
 public:
  Traffic(Air& air, Agenda& agenda, std::function<std::int64_t()> now_ms, std::uint64_t seed);

  // Calls that go on are ended as they were planned.
  void SetTraffic(const TrafficSettings& settings);
  // Lines of other kinds, and damaged ones; 0: none.
  void SetNoise(int per_hour);

 private:
  struct Plan;
  void PlanNextCall();
  void PlanNextNoise();
  void BeginCall();
  void Speak(const std::shared_ptr<Plan>& plan);
  void Pause(const std::shared_ptr<Plan>& plan);
  void EndCall(const Plan& plan);
  [[nodiscard]] bool FindFree(int& carrier, int& slot);
  [[nodiscard]] int NextId();
  [[nodiscard]] std::int32_t AnyParty();
  [[nodiscard]] std::string NoiseLine();

  Air& air_;
  Agenda& agenda_;
  std::function<std::int64_t()> now_ms_;
  Random random_;
  TrafficSettings settings_;
  int next_id_ = 1;
  int noise_per_hour_ = 0;
  Agenda::Ticket next_call_ = 0;
  Agenda::Ticket next_noise_ = 0;
};

// What the practice buttons do; each acts on the call that was started last by the first of them.
class HandCalls {
 public:
  explicit HandCalls(Air& air) : air_(air) {}

  // On the sixth carrier above the control channel. "" or why there is no call.
  std::string Start();
  void NextSpeaker();
  void Pause();
  // Afterwards the buttons act on the call started before, if it goes on.
  void End();

 private:
  Air& air_;
  int id_ = 0;
  int count_ = 0;
};

}  // namespace corvane::standin
