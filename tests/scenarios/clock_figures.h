// How soon the whole program acts, on the virtual clock: with a clock that tells every millisecond,
// as Wine's does, and with the one that Windows has unless a program asks for more.
#pragma once

#include <cstdint>
#include <string>

namespace corvane::sim {

struct ClockFigures {
  int calls = 0;
  int followed = 0;
  // From the setup line standing in the box to the frequency's command at the server.
  std::int64_t median_ms = 0;
  std::int64_t longest_ms = 0;
  // From the connection to the last command of its set-up.
  std::int64_t set_up_ms = 0;
  // From the frequency's command to the one behind it, at the most: an answer that takes SDR# 5 ms,
  // and the pause before the gain.
  std::int64_t answer_ms = 0;
};

// 200 calls that begin at every moment of the poll timer's period.
[[nodiscard]] ClockFigures MeasureOnClock(bool coarse);

// Both, in lines for people.
[[nodiscard]] std::string ClockTable(const ClockFigures& fine, const ClockFigures& coarse);

}  // namespace corvane::sim
