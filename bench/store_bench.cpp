// Loading and saving of large lists: 100,000 groups and 100,000 subscribers, in time and in memory,
// beside the exchange sort whose order the loading must give; and lookups in tables of all sizes.
#include <malloc.h>

#include <cstdlib>
#include <fstream>
#include <new>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "base/number_text.h"
#include "base/wall_clock.h"
#include "bench/run.h"
#include "sim/sim_clock.h"
#include "sim/sim_loop.h"
#include "store/list_text.h"
#include "store/saved_lists.h"

namespace {

// Every allocation of the program is counted.
std::size_t live_bytes = 0;
std::size_t peak_bytes = 0;

void* Counted(std::size_t size) {
  void* memory = std::malloc(size);
  if (!memory) std::abort();
  live_bytes += malloc_usable_size(memory);
  if (live_bytes > peak_bytes) peak_bytes = live_bytes;
  return memory;
}

void Uncounted(void* memory) {
  if (memory) live_bytes -= malloc_usable_size(memory);
  std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
  return Counted(size);
}
void operator delete(void* memory) noexcept {
  Uncounted(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  Uncounted(memory);
}

namespace corvane {
namespace {

constexpr int kLargeList = 100000;
constexpr int kExchangedLines = 5000;
constexpr double kMegabyte = 1024.0 * 1024.0;
constexpr double kMemoryLimitMb = 40.0;

const sim::SimLoop kLoop;
const sim::SimClock kClock(kLoop);

// Lines in no order, as after years of adding at the end.
std::string GroupContent(int lines) {
  std::mt19937 random(1);
  std::string content;
  for (int i = 0; i < lines; ++i) {
    content += Decimal(random() % 16777216) + ";" + Decimal(200 + random() % 100) + ";" +
               Decimal(random() % 16384) + ";Group number " + Decimal(i) + ";0;True\r\n";
  }
  return content;
}

std::string SubscriberContent(int lines) {
  std::mt19937 random(2);
  std::string content;
  for (int i = 0; i < lines; ++i) {
    content += Decimal(random() % 16777216) + ";" + Decimal(random() % 16777216) + ";" +
               Decimal(200 + random() % 100) + ";" + Decimal(random() % 16384) + ";Subscriber " +
               Decimal(i) + ";15/11/2026 14:23:05\r\n";
  }
  return content;
}

struct Tables {
  GssiTable groups;
  SsiTable subscribers;
};

bool LoadBoth(const std::string& groups, const std::string& subscribers, Tables& tables) {
  return ParseGroupList(groups, tables.groups) == kNoError &&
         ParseSubscriberList(subscribers, kClock, tables.subscribers) == kNoError;
}

// Both lists together; 500 ms is the limit at the largest size.
void BM_LoadLists(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  const std::string groups = GroupContent(lines);
  const std::string subscribers = SubscriberContent(lines);
  for (auto _ : state) {
    Tables tables;
    if (!LoadBoth(groups, subscribers, tables)) state.SkipWithError("the lists do not load");
    benchmark::DoNotOptimize(tables);
  }
}
BENCHMARK(BM_LoadLists)->Arg(1000)->Arg(kLargeList)->Unit(benchmark::kMillisecond);

// What the tables hold, and the most that is in use while they are read and written again.
void BM_ListMemory(benchmark::State& state) {
  const std::string groups = GroupContent(kLargeList);
  const std::string subscribers = SubscriberContent(kLargeList);
  for (auto _ : state) {
    const std::size_t before = live_bytes;
    peak_bytes = live_bytes;
    Tables tables;
    if (!LoadBoth(groups, subscribers, tables)) state.SkipWithError("the lists do not load");
    const double held = static_cast<double>(live_bytes - before) / kMegabyte;
    { benchmark::DoNotOptimize(GroupListText(tables.groups)); }
    { benchmark::DoNotOptimize(SubscriberListText(tables.subscribers, kClock)); }
    const double most = static_cast<double>(peak_bytes - before) / kMegabyte;
    state.counters["held_MB"] = held;
    state.counters["most_MB"] = most;
    if (held > kMemoryLimitMb || most > kMemoryLimitMb) {
      state.SkipWithError("the tables take more than 40 MB");
    }
  }
}
BENCHMARK(BM_ListMemory)->Iterations(1)->Unit(benchmark::kMillisecond);

// Both lists together, each written to a real file; 300 ms is the limit.
void BM_SaveLists(benchmark::State& state) {
  Tables tables;
  if (!LoadBoth(GroupContent(kLargeList), SubscriberContent(kLargeList), tables)) {
    state.SkipWithError("the lists do not load");
    return;
  }
  const char* const folder = std::getenv("TMPDIR");
  const std::string path = std::string(folder ? folder : "/tmp") + "/corvane_store_bench.txt";
  for (auto _ : state) {
    for (const std::string& text :
         {GroupListText(tables.groups), SubscriberListText(tables.subscribers, kClock)}) {
      std::ofstream file(path, std::ios::binary | std::ios::trunc);
      file << text;
      file.flush();
      if (!file) state.SkipWithError("cannot write");
    }
  }
  std::remove(path.c_str());
}
BENCHMARK(BM_SaveLists)->Unit(benchmark::kMillisecond);

std::vector<std::string> KeyedLines(std::int64_t count) {
  std::mt19937 random(3);
  std::vector<std::string> lines;
  for (std::int64_t i = 0; i < count; ++i) {
    const unsigned number = static_cast<unsigned>(random());
    lines.push_back(ZeroPadded(200 + number % 100, 4) + ZeroPadded(number % 16384, 5) +
                    ZeroPadded(number % 16777216, 8) + ";Label " + Decimal(i));
  }
  return lines;
}

void BM_SortKeyedLines(benchmark::State& state) {
  const std::vector<std::string> unsorted = KeyedLines(state.range(0));
  for (auto _ : state) {
    std::vector<std::string> lines = unsorted;
    SortKeyedLines(lines, 1, 17);
    benchmark::DoNotOptimize(lines);
  }
}
BENCHMARK(BM_SortKeyedLines)->Arg(kExchangedLines)->Arg(kLargeList)->Unit(benchmark::kMillisecond);

// The sort that SortKeyedLines takes the place of.
void BM_ExchangeSort(benchmark::State& state) {
  const std::vector<std::string> unsorted = KeyedLines(state.range(0));
  for (auto _ : state) {
    std::vector<std::string> lines = unsorted;
    for (std::size_t pass = 1; pass < lines.size(); ++pass) {
      for (std::size_t j = 0; j + 1 < lines.size(); ++j) {
        if (lines[j].compare(0, 17, lines[j + 1], 0, 17) > 0) std::swap(lines[j], lines[j + 1]);
      }
    }
    benchmark::DoNotOptimize(lines);
  }
}
BENCHMARK(BM_ExchangeSort)->Arg(kExchangedLines)->Unit(benchmark::kMillisecond);

// One group that is there and one that is not.
void BM_FindGroup(benchmark::State& state) {
  GssiTable table;
  for (std::int32_t i = 0; i < state.range(0); ++i) {
    GssiRecord record;
    record.Gssi = i;
    record.Mcc = 262;
    record.Mnc = 1;
    table.Append(record);
  }
  std::mt19937 random(4);
  const auto count = static_cast<unsigned>(state.range(0));
  for (auto _ : state) {
    const auto gssi = static_cast<std::int32_t>(random() % count);
    benchmark::DoNotOptimize(table.Find(262, 1, gssi));
    benchmark::DoNotOptimize(table.Find(262, 2, gssi));
  }
}
BENCHMARK(BM_FindGroup)->Arg(100)->Arg(10000)->Arg(kLargeList);

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
  // A search from the first record would take a thousand times as long in the largest table.
  return corvane::bench::Run(argc, argv, {{"BM_FindGroup", 20.0}});
}
