// Calls and other lines at random, exactly repeatable from a seed.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "standin/agenda.h"
#include "standin/air.h"
#include "standin/commands.h"

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

}  // namespace corvane::standin
