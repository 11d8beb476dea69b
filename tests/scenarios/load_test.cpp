// A network with much to say: what the lines that stand in front cost a call.
#include <gtest/gtest.h>

#include "scenarios/load_figures.h"

namespace corvane::sim {
namespace {

TEST(Load, BelowTheCeilingACallWaitsAsLongAsAQueueOfOneLineAPollSays) {
  for (const double lines_per_s : {4.0, 12.0, 15.0}) {
    const load::Figures figures = MeasureUnderLoad(lines_per_s, false);
    EXPECT_EQ(figures.followed, figures.calls) << lines_per_s;
    EXPECT_GE(figures.calls, 55) << lines_per_s;
    const double expected = load::ExpectedMeanMs(lines_per_s);
    EXPECT_NEAR(figures.mean_ms, expected, 10 + expected / 4) << lines_per_s;
  }
}

TEST(Load, AboveTheCeilingCallsAreLostAndRepeatedSetupsSaveSome) {
  const load::Figures once = MeasureUnderLoad(17, false);
  const load::Figures repeated = MeasureUnderLoad(17, true);
  EXPECT_LT(once.followed, once.calls);
  EXPECT_GT(repeated.followed, once.followed);
  EXPECT_LT(load::ExpectedMeanMs(17), 0);
}

TEST(Load, AThousandLinesAtOnceAreTakenOneAPoll) {
  const std::int64_t caught_up_ms = MeasureCatchingUp(1000);
  EXPECT_GE(caught_up_ms, 60'000);
  EXPECT_LE(caught_up_ms, 62'000);
}

}  // namespace
}  // namespace corvane::sim
