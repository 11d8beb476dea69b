// From the log of the stand-in, which has every line and every command with its time.
#include "scenarios/load_figures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <optional>
#include <random>

#include "base/number_text.h"
#include "base/text.h"
#include "scenarios/world.h"

namespace corvane::sim {

namespace {

constexpr std::int64_t kMeasuredMs = 600'000;
constexpr std::int64_t kAirMs = 6000;
constexpr std::int64_t kPauseMs = 2500;  // between two calls, and as long again at most
constexpr int kFirstId = 1000;
constexpr int kFirstCarrier = 2610;
constexpr unsigned kSeed = 20261122;

// Each call has a carrier of its own, by which its command is known.
int CarrierOf(int id) {
  return kFirstCarrier + id - kFirstId;
}

std::string SetFrequency(int id) {
  const std::int64_t hertz = 800'000'000 + CarrierOf(id) * 25'000LL + 12'500;
  return "\"Frequency\", \"Value\": " + Decimal(hertz) + "}";
}

// For each call that was followed while it was on the air, how long after its first setup.
std::vector<std::int64_t> Latencies(standin::Model& model, int last_id) {
  std::vector<std::int64_t> latencies;
  for (int id = kFirstId + 1; id <= last_id; ++id) {
    const std::string setup = "Call ID:" + Decimal(id) + " ";
    const std::string command = SetFrequency(id);
    std::optional<std::int64_t> setup_ms;
    for (const standin::LogEntry& entry : model.log().entries()) {
      if (!setup_ms && entry.kind == "pdu" && Contains(entry.detail, "D_Setup") &&
          Contains(entry.detail, setup)) {
        setup_ms = entry.ms;
      } else if (setup_ms && entry.kind == "command" && Contains(entry.detail, command)) {
        if (entry.ms - *setup_ms < kAirMs) latencies.push_back(entry.ms - *setup_ms);
        break;
      }
    }
  }
  return latencies;
}

}  // namespace

LoadFigures MeasureUnderLoad(double lines_per_s, bool repeats) {
  WorldOptions options;
  options.scenario = "base 800000000\n";
  World world(options);
  world.BringUp();
  std::mt19937 random(kSeed);
  const double calls_lines_per_s = 2000.0 / (kAirMs + 1.5 * kPauseMs) + (repeats ? 0.25 : 0);
  std::exponential_distribution<double> gap_s(std::max(lines_per_s - calls_lines_per_s, 0.01));
  std::uniform_int_distribution<std::int64_t> pause_ms(kPauseMs, 2 * kPauseMs);

  const std::int64_t begin = world.loop.TickMs();
  std::int64_t next_line = begin;
  std::int64_t next_change = begin + pause_ms(random);
  int id = kFirstId;
  bool on_air = false;
  int line = 0;
  while (world.loop.TickMs() - begin < kMeasuredMs) {
    const std::int64_t now = std::min(next_line, next_change);
    world.Run(std::max<std::int64_t>(0, now - world.loop.TickMs()));
    if (next_line <= next_change) {
      world.Do("line \"SSI:4711 D_MM of radio " + Decimal(++line) + "\"");
      next_line = now + std::lround(1000 * gap_s(random));
    } else if (on_air) {
      world.Do("release id=" + Decimal(id));
      on_air = false;
      next_change = now + pause_ms(random);
    } else {
      ++id;
      world.Do("call id=" + Decimal(id) + " group=9001 party=5010 carrier=" +
               Decimal(CarrierOf(id)) + " slot=2" + (repeats ? " repeat=2" : ""));
      on_air = true;
      next_change = now + kAirMs;
    }
  }
  world.Run(kAirMs);

  LoadFigures figures;
  figures.lines_per_s = lines_per_s;
  figures.calls = id - kFirstId;
  std::vector<std::int64_t> latencies = Latencies(world.desktop->model(), id);
  figures.followed = static_cast<int>(latencies.size());
  if (latencies.empty()) return figures;
  std::ranges::sort(latencies);
  figures.mean_ms =
      static_cast<double>(std::accumulate(latencies.begin(), latencies.end(), std::int64_t{0})) /
      static_cast<double>(latencies.size());
  figures.median_ms = latencies[latencies.size() / 2];
  figures.nine_in_ten_ms = latencies[latencies.size() * 9 / 10];
  figures.longest_ms = latencies.back();
  return figures;
}

// A queue with one place of service that opens every T: half a T until it opens, and what stands in
// front, rho T / (2 (1 - rho)) of it on average.
double ExpectedMeanMs(double lines_per_s) {
  const double busy = lines_per_s * kPollS;
  if (busy >= 1) return -1;
  return 1000 * kPollS * (0.5 + busy / (2 * (1 - busy)));
}

std::int64_t MeasureCatchingUp(int lines) {
  WorldOptions options;
  options.scenario = "base 800000000\n";
  World world(options);
  world.BringUp();
  for (int line = 0; line < lines; ++line) {
    world.Do("line \"SSI:4711 D_MM of radio " + Decimal(line) + "\"");
  }
  const std::int64_t begin = world.loop.TickMs();
  world.Do("call id=77 group=9001 party=5010 carrier=2610 slot=2");
  const bool followed =
      world.RunUntil([&world] { return world.Following(); }, 2000 + 100 * std::int64_t{lines});
  return followed ? world.loop.TickMs() - begin : -1;
}

std::string LoadTable(const std::vector<LoadFigures>& once,
                      const std::vector<LoadFigures>& repeated) {
  std::string table =
      "lines/s  setup to command, ms: mean (theory)  median  9 in 10  longest   calls followed"
      "   setup repeated\n";
  for (std::size_t row = 0; row < once.size(); ++row) {
    const LoadFigures& figures = once[row];
    const double expected = ExpectedMeanMs(figures.lines_per_s);
    char theory[16] = "    -";
    if (expected >= 0) std::snprintf(theory, sizeof theory, "%5.0f", expected);
    char line[160];
    std::snprintf(
        line, sizeof line, "%7.0f %27.0f (%s) %8lld %8lld %8lld %9d of %d %9d of %d\n",
        figures.lines_per_s, figures.mean_ms, theory, static_cast<long long>(figures.median_ms),
        static_cast<long long>(figures.nine_in_ten_ms), static_cast<long long>(figures.longest_ms),
        figures.followed, figures.calls, repeated[row].followed, repeated[row].calls);
    table += line;
  }
  return table;
}

}  // namespace corvane::sim
