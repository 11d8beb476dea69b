// The whole program on Windows' clock of 15.6 ms: sleeps and timers end late, answers do not.
#include <gtest/gtest.h>

#include <cstdio>

#include "scenarios/clock_figures.h"

namespace corvane::sim {
namespace {

constexpr int kStep_ms = 16;

TEST(CoarseClock, CostsACallNoMoreThanAStepOrTwo) {
  const ClockFigures fine = MeasureOnClock(false);
  const ClockFigures coarse = MeasureOnClock(true);
  std::fputs(ClockTable(fine, coarse).c_str(), stdout);
  EXPECT_EQ(fine.followed, fine.calls);
  EXPECT_EQ(coarse.followed, coarse.calls);
  EXPECT_GT(fine.median_ms, 0);
  EXPECT_LE(coarse.median_ms, fine.median_ms + kStep_ms);
  EXPECT_LE(coarse.longest_ms, fine.longest_ms + 2 * kStep_ms);
  EXPECT_GT(fine.set_up_ms, 0);
  EXPECT_LE(coarse.set_up_ms, fine.set_up_ms * 2);
  EXPECT_LE(coarse.answer_ms, fine.answer_ms + 2 * kStep_ms);
}

}  // namespace
}  // namespace corvane::sim
