// Plays a plan: the whole program, the simulated SDR#, the virtual clock.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "simulation/plan.h"

namespace corvane::sim {

// What a program that is well takes to follow a call, and to be parked again after its end.
inline constexpr std::int64_t kFollowLimitMs = 5000;
inline constexpr std::int64_t kWayBackMs = 10'000;

struct Played {
  std::string violation;             // "": all that must hold held
  std::int64_t at_ms = 0;            // of the violation, or of the end
  std::map<std::string, int> kinds;  // of steps that were carried out
  int followed = 0;
  int expected = 0;  // calls that had to be followed, whatever else
  int in_waits = 0;
  int edits = 0;
  std::vector<std::string> trace;
};

[[nodiscard]] Played Play(const Plan& plan);

// A plan that fails like `plan` does and of which no step can be left out. `fails` says whether a
// plan still fails.
[[nodiscard]] Plan Shrink(const Plan& plan, const std::function<bool(const Plan&)>& fails);

}  // namespace corvane::sim
