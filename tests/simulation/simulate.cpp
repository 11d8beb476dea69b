// The whole program against the radio model, seed after seed:
//   simulate [--from SEED] [--runs N] [--minutes M] [--jobs J] [--digest] [--go-on]
//   simulate --plan FILE                       one plan as it stands, with its trace
//   simulate --one-failure [--every N] [--jobs J]   each call that can fail, of the scripted runs,
//                                              fails once; of those to windows each N-th
//   simulate --hours N                         that long without an end: memory, hour by hour
// A seed that finds something is shrunk to its shortest failing plan and ends the runs, unless they
// are to go on; the exit code is then 1, after wrong arguments 2. At the end a table of what was
// done, and how often the program was well after it; --digest also tells each seed's.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <exception>
#include <fstream>
#include <iterator>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "base/number_text.h"
#include "simulation/long_life.h"
#include "simulation/one_failure.h"
#include "simulation/player.h"

namespace {

using corvane::sim::Keep;
using corvane::sim::Plan;
using corvane::sim::Played;

struct Wanted {
  int from = 1;
  int runs = 100;
  int minutes = 10;
  int jobs = 1;
  std::string plan;
  bool one_failure = false;
  int every = 1;
  int hours = 0;
  bool digest = false;
  bool go_on = false;
};

struct Sum {
  std::mutex lock;
  struct Kind {
    long times = 0;     // such steps carried out
    long runs = 0;      // with one of them at least
    long survived = 0;  // runs of these in which all held
  };
  std::map<std::string, Kind> kinds;
  long runs = 0;
  long followed = 0;
  long expected = 0;
  long in_waits = 0;
  long edits = 0;
  long long virtual_ms = 0;
  struct Failure {
    Plan plan;
    std::string violation;
  };
  std::map<unsigned, Failure> failures;       // by seed
  std::map<unsigned, std::uint64_t> digests;  // by seed
};

std::optional<Wanted> ReadArguments(int argc, char** argv) {
  Wanted wanted;
  for (int i = 1; i < argc; i += 2) {
    const std::string name = argv[i];
    bool* flag = name == "--one-failure" ? &wanted.one_failure
                 : name == "--digest"    ? &wanted.digest
                 : name == "--go-on"     ? &wanted.go_on
                                         : nullptr;
    if (flag != nullptr) {
      *flag = true;
      --i;  // it has no value
      continue;
    }
    if (i + 1 == argc) return std::nullopt;
    if (name == "--plan") {
      wanted.plan = argv[i + 1];
      continue;
    }
    int* value = name == "--from"      ? &wanted.from
                 : name == "--runs"    ? &wanted.runs
                 : name == "--minutes" ? &wanted.minutes
                 : name == "--jobs"    ? &wanted.jobs
                 : name == "--every"   ? &wanted.every
                 : name == "--hours"   ? &wanted.hours
                                       : nullptr;
    const auto number = corvane::ParseDecimal<int>(argv[i + 1]);
    if (value == nullptr || !number || *number < 1) return std::nullopt;
    *value = *number;
  }
  return wanted;
}

int PlayFile(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) {
    std::fprintf(stderr, "%s cannot be read\n", file.c_str());
    return 2;
  }
  const Played played =
      corvane::sim::Play(corvane::sim::PlanFromText(std::string(std::istreambuf_iterator(in), {})));
  for (const std::string& line : played.trace) std::printf("%s\n", line.c_str());
  std::printf("%s\n", played.violation.empty() ? "nothing found" : played.violation.c_str());
  return played.violation.empty() ? 0 : 1;
}

void Add(Sum& sum, const Plan& plan, const Played& played) {
  const std::lock_guard guard(sum.lock);
  ++sum.runs;
  sum.followed += played.followed;
  sum.expected += played.expected;
  sum.in_waits += played.in_waits;
  sum.edits += played.edits;
  sum.virtual_ms += played.at_ms;
  if (played.digest != 0) sum.digests[plan.seed] = played.digest;
  for (const auto& [kind, count] : played.kinds) {
    Sum::Kind& of_kind = sum.kinds[kind];
    of_kind.times += count;
    ++of_kind.runs;
    if (played.violation.empty()) ++of_kind.survived;
  }
  if (played.violation.empty()) return;
  sum.failures[plan.seed] = {plan, played.violation};
  std::printf("seed %u: %s\n", plan.seed, played.violation.c_str());
  std::fflush(stdout);
}

void RunAll(const Wanted& wanted, Sum& sum) {
  std::atomic<int> next = wanted.from;
  const Keep keep = wanted.digest ? Keep::kTrace : Keep::kCounts;
  const auto work = [&] {
    for (;;) {
      const int seed = next++;
      if (seed >= wanted.from + wanted.runs) return;
      {
        const std::lock_guard guard(sum.lock);
        if (!sum.failures.empty() && !wanted.go_on) return;
      }
      const Plan plan = corvane::sim::MakePlan(static_cast<unsigned>(seed), wanted.minutes);
      Add(sum, plan, corvane::sim::Play(plan, keep));
    }
  };
  // One job has no second thread: its memory and its shared pointers then cost no atomic step.
  std::vector<std::thread> others;
  for (int job = 1; job < wanted.jobs; ++job) others.emplace_back(work);
  work();
  for (std::thread& other : others) other.join();
}

// `seconds` on the clock and `core_seconds` of computing, which other programs do not lengthen.
void Report(const Sum& sum, double seconds, double core_seconds, int jobs) {
  std::printf("%-40s %9s %9s %9s\n", "injected", "times", "runs", "survived");
  for (const auto& [kind, of_kind] : sum.kinds) {
    std::printf("%-40s %9ld %9ld %9ld\n", kind.c_str(), of_kind.times, of_kind.runs,
                of_kind.survived);
  }
  const double hours = static_cast<double>(sum.virtual_ms) / 3'600'000.0;
  std::printf(
      "%ld runs, %zu of them found something; %.1f virtual hours in %.1f s on %d threads; %.1f s "
      "of one core: %.0f times real time\n"
      "%ld calls followed, %ld of them had to be; %ld actions inside waits, %ld edits\n",
      sum.runs, sum.failures.size(), hours, seconds, jobs, core_seconds,
      hours * 3600.0 / core_seconds, sum.followed, sum.expected, sum.in_waits, sum.edits);
}

void Explain(const Sum::Failure& failure) {
  std::printf("shrinking the %zu steps of seed %u...\n", failure.plan.steps.size(),
              failure.plan.seed);
  const Plan least = corvane::sim::Shrink(failure.plan, [&](const Plan& plan) {
    return corvane::sim::Play(plan, Keep::kCounts).violation == failure.violation;
  });
  std::printf("--- %s\n%s---\n", failure.violation.c_str(), corvane::sim::ToText(least).c_str());
}

// A table of the runs; 1 when one of them found something.
int FailEachCallOnce(const Wanted& wanted) {
  using namespace corvane::sim;
  std::printf("%-20s %-10s %9s %9s\n", "script", "seam", "calls", "runs");
  std::mutex lock;
  std::atomic<long> runs = 0;
  int found = 0;
  for (const std::string& name : AllRuns()) {
    const Script script = ReadScript(name);
    for (const Seam seam : kSeams) {
      const long before = runs;
      const FailureRun undisturbed = PlayWithOneFailure(script, {seam, 0}, nullptr);
      if (!undisturbed.violation.empty()) {
        std::printf("%s: %s\n", name.c_str(), undisturbed.violation.c_str());
        return 1;
      }
      const bool of_windows = seam == Seam::kMessages || seam == Seam::kWindows;
      const int step = of_windows ? wanted.every : 1;
      std::atomic<std::int64_t> next = 1;
      std::vector<std::thread> workers;
      for (int job = 0; job < wanted.jobs; ++job) {
        workers.emplace_back([&] {
          for (std::int64_t call = next.fetch_add(step); call <= undisturbed.calls;
               call = next.fetch_add(step)) {
            ++runs;
            const FailureRun run = PlayWithOneFailure(script, {seam, call}, &undisturbed);
            if (run.violation.empty()) continue;
            const std::lock_guard guard(lock);
            ++found;
            std::printf("%s, %s call %lld: %s\n", name.c_str(), NameOf(seam),
                        static_cast<long long>(call), run.violation.c_str());
          }
        });
      }
      for (std::thread& worker : workers) worker.join();
      std::printf("%-20s %-10s %9lld %9ld\n", name.c_str(), NameOf(seam),
                  static_cast<long long>(undisturbed.calls), runs - before);
      std::fflush(stdout);
    }
  }
  std::printf("%ld runs with one failure each, %d not survived\n", runs.load(), found);
  return found == 0 ? 0 : 1;
}

// Comma-separated figures of each hour; 1 when something is wrong, or when more of the heap is in
// use at an end of an hour than after the first few, beyond what lists of changing length take.
int LiveOn(int hours) {
  constexpr int kSettledAfter = 4;
  constexpr std::size_t kSpareBytes = 512 * 1024;
  std::size_t settled = 0;
  std::size_t most = 0;
  std::printf("hours,heap_kib,setups,followed,recordings\n");
  std::string wrong = corvane::sim::LiveFor(hours, [&](const corvane::sim::LifeFigures& now) {
    std::printf("%d,%zu,%d,%d,%d\n", now.hours, now.heap_bytes / 1024, now.setups, now.followed,
                now.recordings);
    std::fflush(stdout);
    if (now.hours <= kSettledAfter) {
      settled = std::max(settled, now.heap_bytes);
    } else {
      most = std::max(most, now.heap_bytes);
    }
  });
  if (wrong.empty() && most > settled + kSpareBytes) wrong = "the heap grows";
  std::fprintf(stderr, "%s\n", wrong.empty() ? "nothing grows" : wrong.c_str());
  return wrong.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const auto wanted = ReadArguments(argc, argv);
  if (!wanted) {
    std::fprintf(stderr,
                 "usage: simulate [--from SEED] [--runs N] [--minutes M] [--jobs J] [--digest] "
                 "[--go-on]\n"
                 "       simulate --plan FILE\n"
                 "       simulate --one-failure [--every N] [--jobs J]\n"
                 "       simulate --hours N\n");
    return 2;
  }
  try {
    if (!wanted->plan.empty()) return PlayFile(wanted->plan);
    if (wanted->one_failure) return FailEachCallOnce(*wanted);
    if (wanted->hours > 0) return LiveOn(wanted->hours);
    Sum sum;
    const auto begin = std::chrono::steady_clock::now();
    RunAll(*wanted, sum);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    if (wanted->digest) {
      for (const auto& [seed, digest] : sum.digests) {
        std::printf("%u %016llx\n", seed, static_cast<unsigned long long>(digest));
      }
    }
    const double computed = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    Report(sum, took.count(), computed, wanted->jobs);
    for (const auto& [seed, failure] : sum.failures) Explain(failure);
    return sum.failures.empty() ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}
