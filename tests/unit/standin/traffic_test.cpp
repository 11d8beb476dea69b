// Random calls that are the same every time.
#include "standin/traffic.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane::standin {
namespace {

struct Played {
  std::vector<std::string> lines;
  std::size_t most_calls = 0;
  std::size_t left = 0;
};

Played Play(std::uint64_t seed, const TrafficSettings& settings, int noise_per_hour = 0) {
  constexpr std::int64_t kEndMs = 3600000;
  Played run;
  std::int64_t now_ms = 0;
  Air air;
  Agenda agenda;
  air.SetEvents({[&](const Pdu& pdu) { run.lines.push_back(pdu.line); },
                 [&] { run.most_calls = std::max(run.most_calls, air.calls().size()); }});
  Traffic traffic(
      air, agenda, [&] { return now_ms; }, seed);
  traffic.SetTraffic(settings);
  traffic.SetNoise(noise_per_hour);
  const auto run_until = [&](std::int64_t end) {
    while (agenda.NextDueMs() && *agenda.NextDueMs() <= end) {
      now_ms = *agenda.NextDueMs();
      if (const auto action = agenda.TakeDue(now_ms)) action();
    }
  };
  run_until(kEndMs);
  traffic.SetTraffic({});
  traffic.SetNoise(0);
  run_until(2 * kEndMs);
  run.left = air.calls().size();
  return run;
}

std::size_t Count(const Played& run, std::string_view part) {
  std::size_t count = 0;
  for (const std::string& line : run.lines) count += line.find(part) != std::string::npos ? 1 : 0;
  return count;
}

TrafficSettings Busy() {
  TrafficSettings settings;
  settings.calls_per_hour = 600;
  return settings;
}

TEST(TrafficTest, IsTheSameForTheSameSeed) {
  const Played one = Play(5, Busy());
  EXPECT_EQ(one.lines, Play(5, Busy()).lines);
  EXPECT_NE(one.lines, Play(6, Busy()).lines);
}

TEST(TrafficTest, KeepsToTheRateAndEndsEveryCall) {
  const Played run = Play(1, Busy());
  const std::size_t setups = Count(run, "D_Setup");
  EXPECT_GT(setups, 540u);
  EXPECT_LT(setups, 660u);
  EXPECT_EQ(Count(run, "D_Release"), setups);
  EXPECT_GT(Count(run, "D_TX_Granted"), setups / 2);
  EXPECT_EQ(run.left, 0u);
  EXPECT_LE(run.most_calls, 8u);
}

TEST(TrafficTest, MixesKindsOfCallsAsAsked) {
  TrafficSettings settings = Busy();
  settings.individual = 20;
  settings.encrypted = 20;
  settings.queued = 20;
  settings.not_granted = 20;
  settings.missed = 30;
  settings.disconnected = 30;
  const Played run = Play(2, settings);
  EXPECT_GT(Count(run, "Basic_service:Individual"), 20u);
  EXPECT_GT(Count(run, "PDU encrypted"), 20u);
  EXPECT_GT(Count(run, "Transmission Request_queued"), 20u);
  EXPECT_GT(Count(run, "Transmission Not_granted"), 20u);
  EXPECT_GT(Count(run, "D_Disconnect "), 20u);
  EXPECT_LT(Count(run, "D_Release") + Count(run, "D_Disconnect "), Count(run, "D_Setup"));
  EXPECT_EQ(run.left, 0u);
}

TEST(TrafficTest, StartsNoCallWhereAllTimeslotsAreTaken) {
  TrafficSettings settings;
  settings.calls_per_hour = 36000;
  settings.carriers = {2604};
  const Played run = Play(3, settings);
  EXPECT_EQ(run.most_calls, 3u);  // timeslot 1 of the control carrier carries no calls
}

TEST(TrafficTest, SendsNoise) {
  const Played run = Play(4, {}, 3600);
  EXPECT_GT(run.lines.size(), 3000u);
  EXPECT_GT(Count(run, "D_SDS_Data"), 100u);
}

TEST(RandomTest, StaysInsideItsBounds) {
  Random random(1);
  bool low = false;
  bool high = false;
  for (int i = 0; i < 1000; ++i) {
    const std::int64_t value = random.Between(-2, 3);
    EXPECT_GE(value, -2);
    EXPECT_LE(value, 3);
    low = low || value == -2;
    high = high || value == 3;
  }
  EXPECT_TRUE(low && high);
  EXPECT_EQ(random.Between(7, 7), 7);
}

}  // namespace
}  // namespace corvane::standin
