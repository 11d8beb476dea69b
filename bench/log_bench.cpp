// What writing the logs adds to a poll step, on real files, and whether it grows with the files: a
// day of LOG mode writes well over a hundred thousand lines.
#include <string>

#include <benchmark/benchmark.h>

#include "bench/following_rig.h"
#include "bench/run.h"

namespace corvane {
namespace {

constexpr int kMeasuredLines = 2000;

// Each goes into the call log.
std::string NextEvent(int number) {
  return "SSI:" + std::to_string(9000 + number % 40) + " D_Info Call ID:" + std::to_string(number) +
         " Carrier:2610 ";
}

// Calls with ever new IDs, so that LOG mode writes and counts each of them.
std::string NextCall(int number) {
  return "SSI:" + std::to_string(9000 + number % 40) +
         " D_Setup Transmission Granted Call ID:" + std::to_string(number % 30000) +
         " Basic_service:Point_to_multipoint Party_SSI:5010 TimeSlot:2 Carrier:2610 ";
}

enum class Logs { kNone, kAll };

void Poll(benchmark::State& state, Logs logs, bool log_mode) {
  rig::Following following;
  following.form.chkCreateCcVcLog.value = logs == Logs::kAll ? 1 : 0;
  following.form.chkCreateEventLog.value = logs == Logs::kAll ? 1 : 0;
  following.form.chkCreateCallActivityCvsFile.value = log_mode ? 1 : 0;
  const auto line = log_mode ? NextCall : NextEvent;
  int number = 0;
  while (number < state.range(0)) following.Poll(line(number++));
  following.files.ResetSteps();
  for (auto _ : state) following.Poll(line(number++));
  const int steps = following.files.steps();
  state.counters["steps/line"] = benchmark::Counter(steps, benchmark::Counter::kAvgIterations);
  if (following.form.lstStatusLog.count() > 1) state.SkipWithError("a log could not be written");
  if (logs == Logs::kAll && steps == 0) state.SkipWithError("nothing was written");
}

void NoLogs(benchmark::State& state) {
  Poll(state, Logs::kNone, false);
}
void CcAndEventLog(benchmark::State& state) {
  Poll(state, Logs::kAll, false);
}
void AllLogsInLogMode(benchmark::State& state) {
  Poll(state, Logs::kAll, true);
}

// By lines written before.
void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(0)->Arg(10000)->Arg(100000)->Iterations(kMeasuredLines);
  benchmark->Unit(benchmark::kMicrosecond);
}

BENCHMARK(NoLogs)->Apply(Sizes);
BENCHMARK(CcAndEventLog)->Apply(Sizes);
BENCHMARK(AllLogsInLogMode)->Apply(Sizes);

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
  return corvane::bench::Run(argc, argv, {{"CcAndEventLog", 4}, {"AllLogsInLogMode", 4}});
}
