// A few of the runs in which one call fails, under the sanitizers. All: `simulate --one-failure`.
#include "simulation/one_failure.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace corvane::sim {
namespace {

constexpr std::int64_t kRunsOfASeam = 2;

class OneFailureTest : public ::testing::TestWithParam<std::string> {};

TEST_P(OneFailureTest, IsSurvived) {
  const Script script = ReadScript(GetParam());
  for (const Seam seam : kSeams) {
    const FailureRun undisturbed = PlayWithOneFailure(script, {seam, 0}, nullptr);
    ASSERT_EQ(undisturbed.violation, "");
    ASSERT_EQ(undisturbed.boxes, 0);
    const std::int64_t step = std::max<std::int64_t>(1, undisturbed.calls / kRunsOfASeam);
    for (std::int64_t call = 1; call <= undisturbed.calls; call += step) {
      const FailureRun run = PlayWithOneFailure(script, {seam, call}, &undisturbed);
      EXPECT_EQ(run.violation, "") << NameOf(seam) << " call " << call;
      EXPECT_GE(run.calls, call) << "the same run up to there";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Runs, OneFailureTest, ::testing::ValuesIn(AllRuns()),
                         [](const auto& run) { return run.param; });

TEST(OneFailure, AProgramThatDoesNotRecoverIsFound) {
  Script script = ReadScript("one_call");
  script.options.scenario += "at 30 die\n";
  EXPECT_EQ(PlayWithOneFailure(script, {}, nullptr).violation, "not set up");
}

TEST(OneFailure, LostRecordingsAreFound) {
  const Script script = ReadScript("recorded");
  FailureRun undisturbed = PlayWithOneFailure(script, {Seam::kSound, 0}, nullptr);
  ASSERT_GT(undisturbed.recorded, 0);
  undisturbed.recorded += 2;
  EXPECT_NE(PlayWithOneFailure(script, {Seam::kSound, 1}, &undisturbed).violation, "");
}

}  // namespace
}  // namespace corvane::sim
