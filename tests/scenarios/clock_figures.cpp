// From the log of the stand-in, which has every line and every command with its time.
#include "scenarios/clock_figures.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <string_view>
#include <vector>

#include "scenarios/world.h"

namespace corvane::sim {

namespace {

constexpr int kCalls = 200;
constexpr int kPeriod_ms = 60;

using Entries = std::deque<standin::LogEntry>;

bool IsCommand(const standin::LogEntry& entry, std::string_view method) {
  return entry.kind == "command" && entry.detail.find(method) != std::string::npos;
}

// What came last of the set-up of the first connection, after it.
std::int64_t SetUpMs(const Entries& log) {
  const auto accepted = std::ranges::find(log, "accept", &standin::LogEntry::kind);
  const auto start = std::find_if(accepted, log.end(), [](const standin::LogEntry& entry) {
    return IsCommand(entry, "\"Start\"");
  });
  return start == log.end() ? -1 : start->ms - accepted->ms;
}

void AddCalls(const Entries& log, std::vector<std::int64_t>& latencies,
              std::vector<std::int64_t>& answers) {
  const standin::LogEntry* line = nullptr;
  const standin::LogEntry* frequency = nullptr;
  for (const standin::LogEntry& entry : log) {
    if (entry.kind == "pdu" && entry.detail.find("D_Setup") != std::string::npos) {
      line = &entry;
    } else if (line != nullptr && IsCommand(entry, "\"Frequency\"")) {
      latencies.push_back(entry.ms - line->ms);
      frequency = &entry;
      line = nullptr;
    } else if (frequency != nullptr && entry.kind == "command") {
      answers.push_back(entry.ms - frequency->ms);
      frequency = nullptr;
    }
  }
}

}  // namespace

ClockFigures MeasureOnClock(bool coarse) {
  WorldOptions options;
  options.scenario = "base 800000000\n";
  World world(options);
  world.loop.SetCoarse(coarse);
  world.Do("handling 5");
  world.BringUp();
  ClockFigures figures;
  figures.calls = kCalls;
  for (int call = 0; call < kCalls; ++call) {
    const int id = 1000 + call;
    const std::string name = std::to_string(id);
    world.Run(3 * kPeriod_ms + call % kPeriod_ms);
    world.Do("call id=" + name + " group=9001 party=5010 carrier=2610 slot=3");
    const bool followed = world.RunUntil(
        [&] { return world.Following() && world.view().call.FollowedCallId() == id; }, 2000);
    world.Do("release id=" + name);
    const bool parked = world.RunUntil([&] { return !world.Following() && world.Parked(); }, 5000);
    figures.followed += followed && parked ? 1 : 0;
  }
  const Entries& log = world.desktop->model().log().entries();
  std::vector<std::int64_t> latencies;
  std::vector<std::int64_t> answers;
  AddCalls(log, latencies, answers);
  figures.set_up_ms = SetUpMs(log);
  if (latencies.empty() || answers.empty()) return figures;
  std::ranges::sort(latencies);
  figures.median_ms = latencies[latencies.size() / 2];
  figures.longest_ms = latencies.back();
  figures.answer_ms = std::ranges::max(answers);
  return figures;
}

std::string ClockTable(const ClockFigures& fine, const ClockFigures& coarse) {
  std::string table = "                                 steps of 1 ms   of 15.6 ms\n";
  const auto row = [&table](const char* what, std::int64_t first, std::int64_t second) {
    char line[96];
    std::snprintf(line, sizeof line, "%-32s %10lld ms %9lld ms\n", what,
                  static_cast<long long>(first), static_cast<long long>(second));
    table += line;
  };
  row("setup line to command, median", fine.median_ms, coarse.median_ms);
  row("setup line to command, longest", fine.longest_ms, coarse.longest_ms);
  row("set-up of a connection", fine.set_up_ms, coarse.set_up_ms);
  row("command to the next, longest", fine.answer_ms, coarse.answer_ms);
  return table;
}

}  // namespace corvane::sim
