// How soon the whole program follows a call on a network that has much to say, on the virtual
// clock. It takes one line a poll of 60 ms: 16.7 lines a second are its ceiling.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane::sim {

inline constexpr double kPollS = 0.06;

struct LoadFigures {
  double lines_per_s = 0;  // at random moments, those of the calls included
  int calls = 0;           // six seconds each
  int followed = 0;        // while they were on the air
  // From the first setup line standing in the box to the frequency's command at the server; of the
  // followed calls.
  double mean_ms = 0;
  std::int64_t median_ms = 0;
  std::int64_t nine_in_ten_ms = 0;  // 90 of 100 take no longer
  std::int64_t longest_ms = 0;
};

// Ten minutes. With `repeats` the network sends each setup again every two seconds.
[[nodiscard]] LoadFigures MeasureUnderLoad(double lines_per_s, bool repeats);

// What queueing theory says of lines that come at random and are taken one every 60 ms: the mean
// time from a line's coming to its being taken, in ms; -1 where more come than are taken.
[[nodiscard]] double ExpectedMeanMs(double lines_per_s);

// From `lines` lines that come at once to the command of a call that is set up behind them, in ms;
// -1: it was not followed.
[[nodiscard]] std::int64_t MeasureCatchingUp(int lines);

// A table for people.
[[nodiscard]] std::string LoadTable(const std::vector<LoadFigures>& once,
                                    const std::vector<LoadFigures>& repeated);

}  // namespace corvane::sim
