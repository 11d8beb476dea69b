// Lines and calls at random moments; each call has a carrier of its own, by which its command is
// known.
#include "scenarios/load_traffic.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <optional>
#include <random>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane::load {

namespace {

constexpr std::int64_t kAirMs = 6000;
constexpr std::int64_t kPauseMs = 2500;  // between two calls, and as long again at most
constexpr int kFirstId = 1000;
constexpr int kFirstCarrier = 2610;
constexpr unsigned kSeed = 20261122;

int CarrierOf(int id) {
  return kFirstCarrier + id - kFirstId;
}

std::string SetFrequency(int id, std::int64_t base_hz) {
  const std::int64_t hertz = base_hz + CarrierOf(id) * 25'000LL + 12'500;
  return "\"Frequency\", \"Value\": " + Decimal(hertz) + "}";
}

std::optional<std::int64_t> LatencyOf(const std::vector<LoggedLine>& log, int id,
                                      std::int64_t base_hz) {
  const std::string setup = "Call ID:" + Decimal(id) + " ";
  const std::string command = SetFrequency(id, base_hz);
  std::optional<std::int64_t> setup_ms;
  for (const LoggedLine& line : log) {
    if (!setup_ms && line.kind == "pdu" && Contains(line.detail, "D_Setup") &&
        Contains(line.detail, setup)) {
      setup_ms = line.ms;
    } else if (setup_ms && line.kind == "command" && Contains(line.detail, command)) {
      const std::int64_t latency_ms = line.ms - *setup_ms;
      if (latency_ms < kAirMs) return latency_ms;
      return std::nullopt;
    }
  }
  return std::nullopt;
}

std::string At(std::int64_t ms, const std::string& command) {
  return "at " + Decimal(ms / 1000) + "." + ZeroPadded(ms % 1000, 3) + " " + command + "\n";
}

}  // namespace

Traffic MakeTraffic(double lines_per_s, bool repeats, std::int64_t begin_ms,
                    std::int64_t measured_ms) {
  std::mt19937 random(kSeed);
  const double calls_lines_per_s = 2000.0 / (kAirMs + 1.5 * kPauseMs) + (repeats ? 0.25 : 0);
  std::exponential_distribution<double> gap_s(std::max(lines_per_s - calls_lines_per_s, 0.01));
  std::uniform_int_distribution<std::int64_t> pause_ms(kPauseMs, 2 * kPauseMs);

  Traffic traffic;
  const std::int64_t end_ms = begin_ms + measured_ms;
  std::int64_t next_line_ms = begin_ms;
  std::int64_t next_change_ms = begin_ms + pause_ms(random);
  int id = kFirstId;
  bool on_air = false;
  int line = 0;
  for (;;) {
    const std::int64_t now_ms = std::min(next_line_ms, next_change_ms);
    // The last call is released, but none begins that has not its time.
    if (now_ms >= end_ms && !on_air) break;
    if (now_ms == next_line_ms) {
      traffic.scenario += At(now_ms, "line \"SSI:4711 D_MM of radio " + Decimal(++line) + "\"");
      next_line_ms += std::lround(1000 * gap_s(random));
    } else if (on_air) {
      traffic.scenario += At(now_ms, "release id=" + Decimal(id));
      on_air = false;
      next_change_ms = now_ms + pause_ms(random);
    } else {
      ++id;
      traffic.scenario +=
          At(now_ms, "call id=" + Decimal(id) + " group=9001 party=5010 carrier=" +
                         Decimal(CarrierOf(id)) + " slot=2" + (repeats ? " repeat=2" : ""));
      on_air = true;
      next_change_ms = now_ms + kAirMs;
    }
  }
  traffic.calls = id - kFirstId;
  return traffic;
}

std::int64_t EndMs(std::int64_t begin_ms, std::int64_t measured_ms) {
  return begin_ms + measured_ms + 2 * kAirMs;
}

Figures FiguresOf(const std::vector<LoggedLine>& log, double lines_per_s, int calls,
                  std::int64_t base_hz) {
  Figures figures;
  figures.lines_per_s = lines_per_s;
  figures.calls = calls;
  std::vector<std::int64_t> latencies;
  for (int id = kFirstId + 1; id <= kFirstId + calls; ++id) {
    if (const auto latency_ms = LatencyOf(log, id, base_hz)) latencies.push_back(*latency_ms);
  }
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

std::string Table(const std::vector<Figures>& once, const std::vector<Figures>& repeated) {
  std::string table =
      "lines/s  setup to command, ms: mean (theory)  median  9 in 10  longest   calls followed";
  table += repeated.empty() ? "\n" : "   setup repeated\n";
  for (std::size_t row = 0; row < once.size(); ++row) {
    const Figures& figures = once[row];
    const double expected = ExpectedMeanMs(figures.lines_per_s);
    char theory[16] = "    -";
    if (expected >= 0) std::snprintf(theory, sizeof theory, "%5.0f", expected);
    char line[160];
    std::snprintf(line, sizeof line, "%7.0f %27.0f (%s) %8lld %8lld %8lld %9d of %d",
                  figures.lines_per_s, figures.mean_ms, theory,
                  static_cast<long long>(figures.median_ms),
                  static_cast<long long>(figures.nine_in_ten_ms),
                  static_cast<long long>(figures.longest_ms), figures.followed, figures.calls);
    table += line;
    if (!repeated.empty()) {
      std::snprintf(line, sizeof line, " %9d of %d", repeated[row].followed, repeated[row].calls);
      table += line;
    }
    table += "\n";
  }
  return table;
}

}  // namespace corvane::load
