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
  // With Keep::kTrace alone:
  std::vector<std::string> trace;
  // Of the trace, of each message to a window with its time, of what both logs show and all files
  // hold at the end.
  std::uint64_t digest = 0;
};

// What is kept of a run beside what was found and counted. It plays the same way with either.
enum class Keep { kCounts, kTrace };

[[nodiscard]] Played Play(const Plan& plan, Keep keep = Keep::kTrace);

// A plan that fails like `plan` does and of which no step can be left out. `fails` says whether a
// plan still fails.
[[nodiscard]] Plan Shrink(const Plan& plan, const std::function<bool(const Plan&)>& fails);

}  // namespace corvane::sim
