// A network with much to say as a scenario of the stand-in, and what its log tells of how soon the
// calls in it were followed. For the simulated program and the finished one alike.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane::load {

inline constexpr double kPollS = 0.06;

struct Traffic {
  std::string scenario;  // its commands with their times
  int calls = 0;         // six seconds each, at random moments
};

// `lines_per_s` lines at random moments, those of the calls included, from `begin_ms` after the
// stand-in's start on for `measured_ms`. With `repeats` the network sends each setup again every
// two seconds.
[[nodiscard]] Traffic MakeTraffic(double lines_per_s, bool repeats, std::int64_t begin_ms,
                                  std::int64_t measured_ms);

// When the last call is over.
[[nodiscard]] std::int64_t EndMs(std::int64_t begin_ms, std::int64_t measured_ms);

struct LoggedLine {
  std::int64_t ms = 0;
  std::string kind;
  std::string detail;
};

struct Figures {
  double lines_per_s = 0;
  int calls = 0;
  int followed = 0;  // while they were on the air
  // From the first setup line standing in the box to the frequency's command at the server; of the
  // followed calls.
  double mean_ms = 0;
  std::int64_t median_ms = 0;
  std::int64_t nine_in_ten_ms = 0;  // 90 of 100 take no longer
  std::int64_t longest_ms = 0;
};

// `base_hz`: of the network.
[[nodiscard]] Figures FiguresOf(const std::vector<LoggedLine>& log, double lines_per_s, int calls,
                                std::int64_t base_hz);

// What queueing theory says of lines that come at random and are taken one every 60 ms: the mean
// time from a line's coming to its being taken, in ms; -1 where more come than are taken.
[[nodiscard]] double ExpectedMeanMs(double lines_per_s);

// A table for people; `repeated` may be empty.
[[nodiscard]] std::string Table(const std::vector<Figures>& once,
                                const std::vector<Figures>& repeated);

}  // namespace corvane::load
