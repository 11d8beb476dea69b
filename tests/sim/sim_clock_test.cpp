// The simulated wall clock: with the loop, apart from it, and across midnights.
#include "sim/sim_clock.h"

#include <gtest/gtest.h>

#include "sim/sim_loop.h"

namespace corvane::sim {
namespace {

TEST(SimClock, GoesWithTheLoopOverMidnightAndNewYear) {
  SimLoop loop;
  SimClock clock(loop);
  clock.Set({2027, 12, 31, 23, 59, 58});
  loop.Sleep(1999);
  EXPECT_EQ(clock.Now(), (DateTime{2027, 12, 31, 23, 59, 59}));
  loop.Sleep(1);
  EXPECT_EQ(clock.Now(), (DateTime{2028, 1, 1, 0, 0, 0}));
  loop.AdvanceMs(59LL * 86'400'000);
  EXPECT_EQ(clock.Now(), (DateTime{2028, 2, 29, 0, 0, 0}));
}

TEST(SimClock, CanBeMovedWithoutTheLoop) {
  SimLoop loop;
  SimClock clock(loop);
  const std::int64_t tick = loop.TickMs();
  clock.Set({2026, 10, 25, 3, 0, 0});
  clock.MoveSeconds(-3600);
  EXPECT_EQ(clock.Now(), (DateTime{2026, 10, 25, 2, 0, 0}));
  clock.MoveSeconds(22 * 3600);
  EXPECT_EQ(clock.Now(), (DateTime{2026, 10, 26, 0, 0, 0}));
  EXPECT_EQ(loop.TickMs(), tick);
}

TEST(SimClock, WritesAndReadsByTheSettingsItIsGiven) {
  SimLoop loop;
  SimClock clock(loop);
  const DateTime time{2026, 11, 15, 14, 23, 5};
  EXPECT_EQ(clock.GeneralDate(time), "15/11/2026 14:23:05");
  clock.SetFormat([](const DateTime& written) { return FolderDate(written) + " x"; },
                  [&](std::string_view text) {
                    return text == "20261115 x" ? std::optional(time) : std::nullopt;
                  });
  EXPECT_EQ(clock.GeneralDate(time), "20261115 x");
  EXPECT_EQ(clock.ParseGeneralDate("20261115 x"), time);
  EXPECT_EQ(clock.ParseGeneralDate("15/11/2026 14:23:05"), std::nullopt);
  EXPECT_EQ(clock.ParseGeneralDate("2026-11-15 14:23:05"), time);
}

}  // namespace
}  // namespace corvane::sim
