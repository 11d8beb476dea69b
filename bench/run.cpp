// The fastest of several repetitions stands for a benchmark: other programs only ever slow it down.
#include "bench/run.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace corvane::bench {

namespace {

// Google Benchmark 1.8 gave the member that tells it another name.
template <typename Run>
bool Failed(const Run& run) {
  if constexpr (requires { run.error_occurred; }) {
    return run.error_occurred;
  } else {
    return run.skipped != 0;
  }
}

class Fastest : public benchmark::ConsoleReporter {
 public:
  Fastest() : ConsoleReporter(OO_None) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    std::vector<Run> shown;
    const auto is_shown = [](const Run& run) {
      return run.repetitions <= 1 || run.aggregate_name == "median" || Failed(run);
    };
    std::copy_if(runs.begin(), runs.end(), std::back_inserter(shown), is_shown);
    if (!shown.empty()) ConsoleReporter::ReportRuns(shown);
    for (const Run& run : runs) {
      if (Failed(run)) {
        failed = true;
      } else if (run.run_type == Run::RT_Iteration) {
        Note(run);
      }
    }
  }

  // By family and size, in the unit of the family.
  std::map<std::string, std::map<std::string, double>> times;
  bool failed = false;

 private:
  void Note(const Run& run) {
    const std::string& size = run.run_name.args;
    const double time = run.GetAdjustedCPUTime();
    const auto [place, is_new] = times[run.run_name.function_name].try_emplace(size, time);
    if (!is_new) place->second = std::min(place->second, time);
  }
};

bool Holds(const Flat& claim, const std::map<std::string, double>& sizes) {
  if (sizes.size() < 2) {
    std::printf("BROKEN: %s was not run in two sizes\n", claim.family);
    return false;
  }
  const auto by_time = [](const auto& a, const auto& b) { return a.second < b.second; };
  const auto [fast, slow] = std::minmax_element(sizes.begin(), sizes.end(), by_time);
  const double ratio = slow->second / fast->second;
  const bool holds = ratio <= claim.factor;
  std::printf("%s: %s at size %s takes %.2f times as long as at size %s (allowed: %.1f)\n",
              holds ? "holds" : "BROKEN", claim.family, slow->first.c_str(), ratio,
              fast->first.c_str(), claim.factor);
  return holds;
}

}  // namespace

int Run(int argc, char** argv, std::initializer_list<Flat> claims) {
  static char min_time[] = "--benchmark_min_time=0.03";
  static char repetitions[] = "--benchmark_repetitions=3";
  std::vector<char*> arguments(argv, argv + argc);
  const auto is_short = [](const char* argument) { return std::strcmp(argument, "--short") == 0; };
  const bool judge = std::erase_if(arguments, is_short) > 0;
  if (judge) arguments.insert(arguments.end(), {min_time, repetitions});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;

  Fastest reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  bool good = !reporter.failed;
  if (judge) {
    for (const Flat& claim : claims) good = Holds(claim, reporter.times[claim.family]) && good;
  }
  return good ? 0 : 1;
}

}  // namespace corvane::bench
