// A scenario file: the network, and what happens when. See docs/standin.md for the grammar.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "standin/commands.h"

namespace corvane::standin {

struct TimedCommand {
  std::int64_t ms = 0;  // after the scenario's start; midnight means nothing to it
  int line = 0;
  Command command;
};

struct Scenario {
  std::string name;
  std::int32_t base_hz = 300000000;
  std::int32_t offset_hz = 12500;
  int control_carrier = 2604;
  std::uint64_t seed = 1;
  std::vector<TimedCommand> commands;  // in order of time
};

inline constexpr std::size_t kMaxScenarioBytes = 4u << 20;
inline constexpr std::size_t kMaxScenarioLines = 50000;

// "" or the first fault, as "line 12: ...".
[[nodiscard]] std::string ParseScenario(std::string_view content, Scenario& scenario);

}  // namespace corvane::standin
