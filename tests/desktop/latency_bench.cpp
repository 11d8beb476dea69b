// How soon Corvane answers a call: from the setup line being whole in the Network Info box to the
// voice frequency's command arriving at the server. A measurement: the only thing that can fail is
// a call that is not followed.
//
// latency_bench [CALLS]
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "desktop/harness/corvane_program.h"
#include "desktop/harness/program_folder.h"
#include "desktop/harness/standin_program.h"
#include "desktop/harness/wait.h"

namespace corvane::desktop {
namespace {

constexpr int kCalls = 200;
constexpr int kFirstCarrier = 2610;
constexpr int kFirstCallId = 1'000;
// The poll timer's period: a line that comes at any moment waits half of it on average.
constexpr int kTick_ms = 60;
constexpr int kExpectedMedian_ms = 40;
constexpr int kExpected95_ms = 70;
// Looking at a window costs its program time: not more often than this.
constexpr int kLookAgain_ms = 120;

int Percentile(const std::vector<int>& sorted, int percent) {
  return sorted[(sorted.size() - 1) * static_cast<std::size_t>(percent) / 100];
}

// From the call's setup line to the first command with a frequency after it; nullopt when there is
// none.
std::optional<int> LatencyOf(const std::vector<LogLine>& log, int call_id) {
  const std::string id = "Call ID:" + std::to_string(call_id) + " ";
  std::optional<std::int64_t> line_ms;
  for (const LogLine& line : log) {
    if (line.kind == "pdu" && line.detail.find("D_Setup") != std::string::npos &&
        line.detail.find(id) != std::string::npos) {
      line_ms = line.ms;
    }
    if (line_ms && line.kind == "command" &&
        line.detail.find("\"Frequency\"") != std::string::npos) {
      return static_cast<int>(line.ms - *line_ms);
    }
  }
  return std::nullopt;
}

// Whether the call was followed; ended and parked again afterwards.
bool MakeCall(StandinProgram& sdr, CorvaneProgram& corvane, int call_id) {
  const std::string id = std::to_string(call_id);
  const std::string carrier = std::to_string(kFirstCarrier + call_id % 8);
  if (!sdr.Do("call id=" + id + " group=9001 party=5010 slot=1 carrier=" + carrier)) return false;
  const auto shows = [&](const std::string& text) {
    return [&corvane, text] { return corvane.Caption(ControlId::lblCallID) == text; };
  };
  const bool followed = WaitFor(shows(id), kGenerousLimit_ms, kLookAgain_ms);
  const bool released = sdr.Do("release id=" + id);
  return WaitFor(shows(""), kGenerousLimit_ms, kLookAgain_ms) && followed && released;
}

bool Begin(StandinProgram& sdr, CorvaneProgram& corvane, const ProgramFolder& folder) {
  folder.Write("corvane_simple.dat", SettingsFile({}));
  if (!sdr.Start() || !corvane.Start()) return false;
  Click(corvane.Control(ControlId::cmdStartAll));
  return WaitFor([&] { return !corvane.Caption(ControlId::lblNetworkInfo).empty(); });
}

int Measure(int calls) {
  const ProgramFolder folder;
  StandinProgram sdr(folder.Path());
  CorvaneProgram corvane(folder.Path());
  if (!Begin(sdr, corvane, folder)) {
    std::puts("the programs did not get ready");
    return 1;
  }
  constexpr unsigned kSeed = 20260101;
  std::mt19937 random(kSeed);
  int missed = 0;
  for (int call = 0; call < calls; ++call) {
    // At any moment of the poll timer's period.
    (void)WaitFor([] { return false; }, static_cast<int>(random() % kTick_ms));
    if (!MakeCall(sdr, corvane, kFirstCallId + call)) ++missed;
  }
  const std::vector<LogLine> log = sdr.Log();
  std::vector<int> latencies;
  for (int call = 0; call < calls; ++call) {
    if (const auto latency = LatencyOf(log, kFirstCallId + call)) latencies.push_back(*latency);
  }
  std::sort(latencies.begin(), latencies.end());
  if (latencies.empty()) {
    std::puts("no call was followed");
    return 1;
  }
  std::printf("setup line to \"Frequency\": %zu calls, seed %u\n", latencies.size(), kSeed);
  std::printf("  median          %3d ms  (expected at most %d; the tick alone: %d)\n",
              Percentile(latencies, 50), kExpectedMedian_ms, kTick_ms / 2);
  std::printf("  95th percentile %3d ms  (expected at most %d; the tick alone: %d)\n",
              Percentile(latencies, 95), kExpected95_ms, kTick_ms * 95 / 100);
  std::printf("  longest         %3d ms\n", latencies.back());
  std::printf("  calls missed    %3d\n", missed);
  return missed == 0 && latencies.size() == static_cast<std::size_t>(calls) ? 0 : 1;
}

}  // namespace
}  // namespace corvane::desktop

int main(int argc, char** argv) {
  const int calls = argc > 1 ? std::atoi(argv[1]) : corvane::desktop::kCalls;
  return corvane::desktop::Measure(calls > 0 ? calls : corvane::desktop::kCalls);
}
