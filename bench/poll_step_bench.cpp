// What one poll step costs, with none, a thousand and a hundred thousand groups and subscribers
// known. It comes 16 times a second beside a receiver that needs the processor: 20 microseconds are
// the aim, whatever is known. Each step looks whether the day's folders are there, on a disk that
// is a real one here: DayFoldersAlone is that part of the others' figures.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/following_rig.h"
#include "bench/run.h"

namespace corvane {
namespace {

constexpr int kLines = 1024;
constexpr int kTalkers = 8;

// The `index`-th of `count` numbers spread over 1 to `known`; 1 when nothing is known.
int Spread(int index, int count, int known) {
  return known == 0 ? 1 : static_cast<int>(std::int64_t{index} * known / count) + 1;
}

std::string SetupOf(int gssi, int call_id, int party) {
  return "SSI:" + std::to_string(gssi) +
         " D_Setup Transmission Granted Call ID:" + std::to_string(call_id) +
         " Basic_service:Point_to_multipoint Party_SSI:" + std::to_string(party) +
         " TimeSlot:2 Carrier:2610 ";
}

std::unique_ptr<rig::Following> Known(int known, bool follow) {
  auto following = std::make_unique<rig::Following>();
  following->groups.Reserve(static_cast<std::size_t>(known));
  following->subscribers.Reserve(static_cast<std::size_t>(known));
  for (int number = 1; number <= known; ++number) {
    GssiRecord group;
    group.Gssi = number;
    group.Mcc = 262;
    group.Mnc = 1;
    group.Label = std::string_view("Group");
    group.Follow = follow;
    following->groups.Append(group);
    SsiRecord subscriber;
    subscriber.Ssi = 1000000 + number;
    subscriber.LastGssi = number;
    subscriber.Mcc = 262;
    subscriber.Mnc = 1;
    subscriber.Label = std::string_view("Subscriber");
    subscriber.LastSeen = {2025, 1, 2, 3, 4, 5};
    following->subscribers.Append(subscriber);
  }
  return following;
}

void PollLines(benchmark::State& state, rig::Following& following,
               const std::vector<std::string>& lines) {
  std::size_t next = 0;
  for (auto _ : state) {
    following.Poll(lines[next]);
    next = next + 1 == lines.size() ? 0 : next + 1;
  }
}

void DayFoldersAlone(benchmark::State& state) {
  const auto following = Known(0, true);
  for (auto _ : state) following->folders.CreateDayFolders(following->clock.Now());
}

void NothingNew(benchmark::State& state) {
  const auto following = Known(static_cast<int>(state.range(0)), true);
  for (auto _ : state) following->scanner.ScanNetworkInfo();
}

void ForeignLine(benchmark::State& state) {
  const auto following = Known(static_cast<int>(state.range(0)), true);
  std::vector<std::string> lines;
  for (int i = 0; i < kLines; ++i) {
    lines.push_back("SSI:" + std::to_string(i) + " D_Info Call ID:" + std::to_string(i) + " x ");
  }
  PollLines(state, *following, lines);
}

// Only at size 0 the group, met for the first time, is followed; the setups are then passed over
// because a call is under way.
void LockedOutSetup(benchmark::State& state) {
  const int known = static_cast<int>(state.range(0));
  const auto following = Known(known, false);
  std::vector<std::string> lines;
  for (int i = 0; i < kLines; ++i) {
    lines.push_back(SetupOf(Spread(i, kLines, known), i, 1000000));
  }
  PollLines(state, *following, lines);
}

void TalkerOfTheCall(benchmark::State& state) {
  const int known = static_cast<int>(state.range(0));
  const auto following = Known(known, true);
  const int gssi = Spread(kLines / 2, kLines, known);
  following->Poll(SetupOf(gssi, 7, 1000000 + gssi));
  if (!following->follower.FollowingCall()) state.SkipWithError("the call is not followed");
  std::vector<std::string> lines;
  for (int i = 0; i < kTalkers; ++i) {
    lines.push_back("SSI:" + std::to_string(gssi) +
                    " D_TX_Granted Call ID:7 Transmission_grant:Granted_to_another_user "
                    "Party_SSI:" +
                    std::to_string(1000000 + gssi + i));
  }
  PollLines(state, *following, lines);
}

// Setup, two talkers and release of a call on ever another group: five poll steps.
void WholeCall(benchmark::State& state) {
  const int known = static_cast<int>(state.range(0));
  const auto following = Known(known, true);
  std::vector<std::string> lines;
  for (int i = 0; i < kLines; ++i) {
    const int gssi = Spread((i * 389) % kLines, kLines, known);
    const std::string start = "SSI:" + std::to_string(gssi);
    const std::string id = " Call ID:" + std::to_string(i) + " ";
    lines.push_back(SetupOf(gssi, i, 1000000 + gssi));
    lines.push_back(start + " D_TX_Granted" + id + "Party_SSI:" + std::to_string(1000001 + gssi));
    lines.push_back(start + " D_TX_Ceased" + id);
    lines.push_back(start + " D_TX_Granted" + id + "Party_SSI:" + std::to_string(1000002 + gssi));
    lines.push_back(start + " D_Release" + id + "Disconnect_cause:User_requested ");
  }
  std::size_t next = 0;
  for (auto _ : state) {
    for (int step = 0; step < 5; ++step) following->Poll(lines[next + static_cast<unsigned>(step)]);
    next = next + 5 == lines.size() ? 0 : next + 5;
  }
  if (following->follower.FollowingCall()) state.SkipWithError("a call did not end");
  if (following->link.commands == 0) state.SkipWithError("no call was followed");
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(0)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(DayFoldersAlone)->Unit(benchmark::kMicrosecond);
BENCHMARK(NothingNew)->Apply(Sizes);
BENCHMARK(ForeignLine)->Apply(Sizes);
BENCHMARK(LockedOutSetup)->Apply(Sizes);
BENCHMARK(TalkerOfTheCall)->Apply(Sizes);
BENCHMARK(WholeCall)->Apply(Sizes);

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
  // A search through a hundred thousand records would be thousands of times slower; what is allowed
  // here is the memory's own slowness.
  return corvane::bench::Run(argc, argv,
                             {{"NothingNew", 4},
                              {"ForeignLine", 4},
                              {"LockedOutSetup", 8},
                              {"TalkerOfTheCall", 8},
                              {"WholeCall", 8}});
}
