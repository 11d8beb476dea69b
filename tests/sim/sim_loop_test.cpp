// What the simulated loop promises beyond the laws of Loop: how its clock moves.
#include "sim/sim_loop.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace corvane::sim {
namespace {

using Times = std::vector<std::int64_t>;

class SimLoopTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::int64_t Now() const { return loop_.TickMs() - start_; }
  std::function<void()> Note() {
    return [this] { times_.push_back(Now()); };
  }
  SimLoop loop_;
  const std::int64_t start_ = loop_.TickMs();
  Times times_;
};

TEST_F(SimLoopTest, TicksComeExactlyAtTheirTimes) {
  const auto timer = loop_.MakeTimer(60, Note());
  timer->SetEnabled(true);
  loop_.AdvanceMs(300);
  EXPECT_EQ(times_, (Times{60, 120, 180, 240, 300}));
  EXPECT_EQ(Now(), 300);
}

TEST_F(SimLoopTest, TimersDueTogetherTickInTheOrderOfTheirMaking) {
  std::string order;
  const auto first = loop_.MakeTimer(100, [&] { order += "1"; });
  const auto second = loop_.MakeTimer(50, [&] { order += "2"; });
  second->SetEnabled(true);
  first->SetEnabled(true);
  loop_.AdvanceMs(100);
  EXPECT_EQ(order, "212");
}

TEST_F(SimLoopTest, AHandlerThatSleepsLosesTheTicksItMissed) {
  const auto timer = loop_.MakeTimer(100, [this] {
    times_.push_back(Now());
    loop_.Sleep(250);
  });
  timer->SetEnabled(true);
  loop_.AdvanceMs(1000);
  EXPECT_EQ(times_, (Times{100, 350, 600, 850}));
}

TEST_F(SimLoopTest, DelayedEventsComeAtTheirTimeInTheirOrder) {
  std::string order;
  loop_.PostAfter(50, EventSource::kUser, [&] { order += "b"; });
  loop_.PostAfter(20, EventSource::kSocket, [&] { order += "a"; });
  loop_.PostAfter(50, EventSource::kUser, [&] { order += "c"; });
  loop_.Sleep(60);
  EXPECT_EQ(order, "");
  loop_.DoEvents();
  EXPECT_EQ(order, "abc");
}

TEST_F(SimLoopTest, WaitForSocketEventsEndsAtTheEventsTime) {
  loop_.PostAfter(30, EventSource::kUser, Note());
  loop_.PostAfter(70, EventSource::kSocket, Note());
  loop_.WaitForSocketEvents(200);
  EXPECT_EQ(times_, Times{70});
  loop_.WaitForSocketEvents(100);
  EXPECT_EQ(Now(), 170);
  EXPECT_EQ(times_, Times{70});
}

TEST_F(SimLoopTest, RunUntilStopsAtOnceOrAtItsLimit) {
  const auto timer = loop_.MakeTimer(10, Note());
  timer->SetEnabled(true);
  EXPECT_TRUE(loop_.RunUntil([this] { return times_.size() == 5; }, 1000));
  EXPECT_EQ(Now(), 50);
  EXPECT_FALSE(loop_.RunUntil([] { return false; }, 100));
  EXPECT_EQ(Now(), 150);
}

TEST_F(SimLoopTest, TheWorldOutsideSeesEachOfItsMoments) {
  Times due = {5, 30, 31, 90};
  loop_.SetOutside(
      [&] {
        while (!due.empty() && start_ + due.front() <= loop_.TickMs()) {
          times_.push_back(Now());
          due.erase(due.begin());
        }
      },
      [&]() -> std::optional<std::int64_t> {
        if (due.empty()) return std::nullopt;
        return start_ + due.front();
      });
  loop_.Sleep(20);
  loop_.WaitForSocketEvents(20);
  loop_.AdvanceMs(60);
  EXPECT_EQ(times_, (Times{5, 30, 31, 90}));
  EXPECT_EQ(Now(), 100);
}

TEST_F(SimLoopTest, AnOutsideThatNeverCatchesUpDoesNotStopTheClock) {
  loop_.SetOutside([] {}, [this]() -> std::optional<std::int64_t> { return start_ + 10; });
  loop_.AdvanceMs(100);
  EXPECT_EQ(Now(), 100);
}

TEST_F(SimLoopTest, AWaitThatNeverSleepsStillEnds) {
  const std::int64_t end = loop_.TickMs() + 3;
  while (loop_.TickMs() < end) loop_.DoEvents();
  EXPECT_EQ(loop_.spins_broken(), 3);
}

TEST_F(SimLoopTest, EventsThatPostEachOtherForEverLetTheClockGoOn) {
  const std::function<void()> event = [&] { loop_.Post(EventSource::kUser, event); };
  event();
  loop_.AdvanceMs(3);
  EXPECT_GE(Now(), 3);
  loop_.Stop();
}

TEST_F(SimLoopTest, TheHookIsCalledAfterEachEventNestedOnesToo) {
  std::string order;
  loop_.SetAfterEvent([&] { order += "."; });
  loop_.Post(EventSource::kUser, [&] {
    order += "outer";
    loop_.Post(EventSource::kUser, [&] { order += "inner"; });
    loop_.DoEvents();
  });
  loop_.DoEvents();
  EXPECT_EQ(order, "outerinner..");
  EXPECT_EQ(loop_.dispatched(), 2);
  EXPECT_EQ(loop_.deepest(), 2);
  EXPECT_EQ(loop_.depth(), 0);
}

TEST_F(SimLoopTest, AfterStopNothingIsDispatchedAndTimeStillPasses) {
  const auto timer = loop_.MakeTimer(10, Note());
  timer->SetEnabled(true);
  loop_.Post(EventSource::kSocket, Note());
  loop_.Stop();
  loop_.AdvanceMs(100);
  loop_.DoEvents();
  loop_.WaitForSocketEvents(100);
  loop_.Sleep(10);
  EXPECT_EQ(times_, Times());
  EXPECT_GE(Now(), 110);
}

TEST_F(SimLoopTest, WithoutAReporterAnExceptionReachesTheTest) {
  loop_.Post(EventSource::kUser, [] { throw std::runtime_error("event"); });
  EXPECT_THROW(loop_.DoEvents(), std::runtime_error);
  EXPECT_EQ(loop_.depth(), 0);
}

TEST_F(SimLoopTest, WhatIsNoStdExceptionReachesTheTestInAnyCase) {
  loop_.SetErrorReporter([](const std::string&) { FAIL(); });
  loop_.Post(EventSource::kUser, [] { throw 7; });
  EXPECT_THROW(loop_.DoEvents(), int);
}

TEST_F(SimLoopTest, ADayPassesQuickly) {
  int ticks = 0;
  const auto timer = loop_.MakeTimer(60, [&] { ++ticks; });
  timer->SetEnabled(true);
  loop_.AdvanceMs(24LL * 3600 * 1000);
  EXPECT_EQ(ticks, 24 * 3600 * 1000 / 60);
}

}  // namespace
}  // namespace corvane::sim
