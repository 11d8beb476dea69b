// A run of the whole program as a list of steps: what is on the air, what the user does and what
// goes wrong, each at its time. Every step stands for itself, so a run goes on without any of them.
// The text form, one step a line, its time in seconds since the link is up:
//   seed 7
//   minutes 10
//   12.350 sdr call id=3 group=9001 party=5010 carrier=2610 slot=2 for=4
//   14.000 user 81
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::sim {

struct Step {
  std::int64_t ms = 0;
  // `sdr` and a command of the stand-in; `user` or `editor` and a number that what is done comes
  // from, with `wait` before them inside the next wait of the program; `files fail PART NUMBER MS`,
  // `files full MS`, `files scan HOLD_MS MS`; `sound fail COMMAND NUMBER MS`, `sound slow COMMAND
  // BY_MS MS`, `sound unplug MS`; `clock SECONDS`, which moves the clock on the wall.
  std::string what;
  bool operator==(const Step&) const = default;
};

struct Plan {
  unsigned seed = 1;  // also decides how SDR# begins
  int minutes = 10;
  std::vector<Step> steps;  // by time
  bool operator==(const Plan&) const = default;
};

// Commands of the stand-in that leave something wrong, and what cures it some time later.
struct Lasting {
  const char* fault;
  const char* cure;
};
inline constexpr std::array<Lasting, 9> kLasting = {{
    {"refuse on", "refuse off"},
    {"source error", "source ok"},
    {"handling 80", "handling 0"},
    {"panel tetra collapse", "panel tetra expand"},
    {"network none", "network 262 42 101"},
    {"die", "revive"},
    {"check demodulator off", "check demodulator on"},
    {"check auto on", "check auto off"},
    {"cover demodulator unchecked", "cover none"},
}};

// The same seed gives the same plan, on every machine.
[[nodiscard]] Plan MakePlan(unsigned seed, int minutes = 10);

// The steps that `bytes` choose, one after the other until they are used up; any bytes will do. A
// search that changes bytes changes steps.
inline constexpr std::size_t kMostStepsFromBytes = 60;
[[nodiscard]] Plan PlanFromBytes(std::string_view bytes);

[[nodiscard]] std::string ToText(const Plan& plan);
// Throws std::invalid_argument with the line that is wrong.
[[nodiscard]] Plan PlanFromText(std::string_view text);

// The kind of a step for counting: its first words without names and numbers, as "sdr reply split".
[[nodiscard]] std::string KindOf(const std::string& what);

}  // namespace corvane::sim
