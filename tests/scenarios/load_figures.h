// How soon the whole program follows a call on a network that has much to say, on the virtual
// clock. It takes one line a poll of 60 ms: 16.7 lines a second are its ceiling.
#pragma once

#include <cstdint>

#include "scenarios/load_traffic.h"

namespace corvane::sim {

// Ten minutes.
[[nodiscard]] load::Figures MeasureUnderLoad(double lines_per_s, bool repeats);

// From `lines` lines that come at once to the command of a call that is set up behind them, in ms;
// -1: it was not followed.
[[nodiscard]] std::int64_t MeasureCatchingUp(int lines);

}  // namespace corvane::sim
