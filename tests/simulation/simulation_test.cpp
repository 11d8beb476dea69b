// Plans as text and shrunk, and a few runs under the sanitizers. Many runs: `simulate`.
//
// CORVANE_SEED=n runs that seed alone, CORVANE_SEEDS=n that many.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "simulation/player.h"

namespace corvane::sim {
namespace {

constexpr int kUsualSeeds = 24;
constexpr std::size_t kTraceShown = 150;

int FromEnvironment(const char* name, int otherwise) {
  const char* text = std::getenv(name);
  return text != nullptr ? std::atoi(text) : otherwise;
}

TEST(SimulatedRuns, NothingGetsStuckWhateverHappens) {
  const int single = FromEnvironment("CORVANE_SEED", 0);
  const int last = single != 0 ? single : FromEnvironment("CORVANE_SEEDS", kUsualSeeds);
  int in_waits = 0;
  int edits = 0;
  int expected = 0;
  for (int seed = single != 0 ? single : 1; seed <= last; ++seed) {
    const Played played = Play(MakePlan(static_cast<unsigned>(seed)));
    if (!played.violation.empty()) {
      const std::size_t shown = std::min(played.trace.size(), kTraceShown);
      for (auto line = played.trace.end() - static_cast<std::ptrdiff_t>(shown);
           line != played.trace.end(); ++line) {
        std::printf("%s\n", line->c_str());
      }
    }
    ASSERT_EQ(played.violation, "") << "seed " << seed;
    in_waits += played.in_waits;
    edits += played.edits;
    expected += played.expected;
  }
  if (single != 0) return;
  EXPECT_GT(in_waits, last) << "the user acts inside waits, too";
  EXPECT_GT(edits, last) << "and edits";
  EXPECT_GT(expected, last) << "and enough is undisturbed that calls must be followed";
}

TEST(SimulatedRuns, APlanIsPlayedTheSameWayEachTime) {
  const Plan plan = MakePlan(5, 3);
  const Played once = Play(plan);
  EXPECT_GT(once.followed, 0);
  EXPECT_EQ(Play(plan).trace, once.trace);
}

TEST(SimulatedRuns, WhatMustBeFollowedIsKnown) {
  Plan plan;
  plan.steps = {{60'000, "sdr call id=7 group=9001 party=5010 carrier=2610 slot=2 for=4"}};
  EXPECT_EQ(Play(plan).expected, 1);
  plan.steps[0].what = "sdr call id=7 group=9003 party=5010 carrier=2610 slot=2 for=4";
  EXPECT_EQ(Play(plan).expected, 0) << "a locked-out group's need not be";
}

// SDR# has hung, takes all that it was sent meanwhile for one command, and its refusal comes late.
TEST(SimulatedRuns, ARefusalOfTheWayBackThatComesLateIsHeard) {
  const Played played = Play(
      PlanFromText("seed 20188\nminutes 10\n131.180 user 41271\n411.840 user 688642\n"
                   "557.989 sdr call id=155 group=9005 party=5035 carrier=2609 slot=2 for=13\n"
                   "558.192 sdr hang 9000\n558.776 sdr reply join count=2\n563.357 user 527423\n"));
  EXPECT_EQ(played.violation, "");
}

TEST(Plan, ReadsBackWhatItWrites) {
  const Plan plan = MakePlan(3);
  EXPECT_GT(plan.steps.size(), 100U);
  EXPECT_EQ(PlanFromText(ToText(plan)), plan);
  EXPECT_EQ(MakePlan(3), plan);
  EXPECT_NE(MakePlan(4).steps, plan.steps);
}

TEST(Plan, AnyBytesChooseSteps) {
  std::string bytes;
  for (int i = 0; i < 400; ++i) bytes += static_cast<char>(i * 37);
  const Plan plan = PlanFromBytes(bytes);
  EXPECT_GT(plan.steps.size(), 10U);
  EXPECT_EQ(PlanFromText(ToText(plan)), plan);
  EXPECT_TRUE(std::ranges::is_sorted(plan.steps, {}, &Step::ms));
  EXPECT_LE(plan.steps.back().ms, std::int64_t{plan.minutes} * 60'000);
  bytes.back() = static_cast<char>(bytes.back() + 1);
  const Plan other = PlanFromBytes(bytes);
  EXPECT_EQ(other.steps.front(), plan.steps.front()) << "what comes later changes nothing before";
  EXPECT_TRUE(PlanFromBytes("").steps.empty());
  EXPECT_EQ(PlanFromBytes(std::string(100'000, '\x7f')).steps.size(), kMostStepsFromBytes);
}

TEST(Plan, AFaultyLineIsNamed) {
  for (const char* line :
       {"seed x", "minutes 0", "1.5 user 3", "1.500", "x.500 user 3", "1 user 3"}) {
    try {
      static_cast<void>(PlanFromText(std::string("seed 1\n") + line + "\n"));
      ADD_FAILURE() << line;
    } catch (const std::invalid_argument& error) {
      EXPECT_STREQ(error.what(), line);
    }
  }
}

TEST(Plan, KindsLeaveOutNamesAndNumbers) {
  EXPECT_EQ(KindOf("sdr call id=3 group=9001"), "sdr call");
  EXPECT_EQ(KindOf("sdr reply split 30 count=3"), "sdr reply split");
  EXPECT_EQ(KindOf("wait editor 17"), "wait editor");
}

TEST(Shrink, LeavesTheStepsThatMatter) {
  Plan plan;
  for (int i = 0; i < 100; ++i) plan.steps.push_back({i * 10, "user " + std::to_string(i)});
  const auto has = [](const Plan& tried, const char* what) {
    return std::ranges::any_of(tried.steps, [&](const Step& step) { return step.what == what; });
  };
  const Plan least = Shrink(
      plan, [&](const Plan& tried) { return has(tried, "user 13") && has(tried, "user 77"); });
  ASSERT_EQ(least.steps.size(), 2U);
  EXPECT_EQ(least.steps[0].what, "user 13");
  EXPECT_EQ(least.steps[1].what, "user 77");
}

}  // namespace
}  // namespace corvane::sim
