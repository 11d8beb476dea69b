// The laws of Loop, each as one case. Times are chosen so that a slow machine changes nothing;
// where a time must not have passed, the clock says whether it has.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/timer_table.h"
#include "contract/factories.h"

namespace corvane::contract {
namespace {

using Trace = std::vector<std::string>;

class LoopContract : public ::testing::Test {
 protected:
  std::function<void()> Say(const std::string& what) {
    return [this, what] { trace_.push_back(what); };
  }
  std::unique_ptr<Timer> Started(int interval_ms, std::function<void()> handler) {
    auto timer = loop_.MakeTimer(interval_ms, std::move(handler));
    timer->SetEnabled(true);
    return timer;
  }

  std::unique_ptr<LoopUnderTest> world_ = MakeLoop();
  Loop& loop_ = world_->loop();
  Trace trace_;
};

TEST_F(LoopContract, TheTickClockGoesOnWhileSleeping) {
  const std::int64_t before = loop_.TickMs();
  loop_.Sleep(200);
  EXPECT_GE(loop_.TickMs() - before, 180);  // system ticks are up to 16 ms long
}

TEST_F(LoopContract, SleepDispatchesNothing) {
  const auto timer = Started(10, Say("tick"));
  loop_.Post(EventSource::kUser, Say("user"));
  loop_.Post(EventSource::kSocket, Say("socket"));
  loop_.Sleep(200);
  EXPECT_EQ(trace_, Trace());
}

TEST_F(LoopContract, PostedEventsComeInTheirOrderWhateverTheirSource) {
  loop_.Post(EventSource::kUser, Say("1"));
  loop_.Post(EventSource::kSocket, Say("2"));
  loop_.Post(EventSource::kUser, Say("3"));
  loop_.DoEvents();
  EXPECT_EQ(trace_, (Trace{"1", "2", "3"}));
}

TEST_F(LoopContract, PostedEventsComeBeforeADueTimer) {
  const auto timer = Started(20, Say("tick"));
  loop_.Sleep(100);
  loop_.Post(EventSource::kUser, Say("posted"));
  loop_.DoEvents();
  EXPECT_EQ(trace_, (Trace{"posted", "tick"}));
}

TEST_F(LoopContract, WhatATickPostsComesBeforeTheNextDueTimer) {
  const auto first = Started(20, [this] {
    Say("first")();
    loop_.Post(EventSource::kUser, Say("posted"));
  });
  const auto second = Started(200, Say("second"));
  loop_.Sleep(300);
  loop_.DoEvents();
  EXPECT_EQ(trace_, (Trace{"first", "posted", "second"}));
}

TEST_F(LoopContract, AnIdleLoopDispatchesTimersAndPostedEvents) {
  const auto timer = Started(50, Say("tick"));
  loop_.Post(EventSource::kUser, Say("posted"));
  ASSERT_TRUE(world_->IdleUntil([this] { return trace_.size() >= 4; }));
  // Between two looks more than one tick may come.
  EXPECT_EQ(Trace(trace_.begin(), trace_.begin() + 4), (Trace{"posted", "tick", "tick", "tick"}));
}

TEST_F(LoopContract, TicksComeNoFasterThanTheirPeriod) {
  const std::int64_t begin = loop_.TickMs();
  const auto timer = Started(50, Say("tick"));
  world_->Idle(1000);
  EXPECT_LE(static_cast<std::int64_t>(trace_.size()), (loop_.TickMs() - begin) / 50 + 1);
  EXPECT_GE(trace_.size(), 1U);
}

TEST_F(LoopContract, AtMostOneTickIsPending) {
  const auto timer = Started(20, Say("tick"));
  loop_.Sleep(500);
  loop_.DoEvents();
  EXPECT_EQ(trace_, Trace{"tick"});
}

TEST_F(LoopContract, MissedTicksAreDroppedAndNotMadeUpFor) {
  const auto timer = Started(200, Say("tick"));
  loop_.Sleep(5000);
  const std::int64_t begin = loop_.TickMs();
  for (int i = 0; i < 20; ++i) loop_.DoEvents();
  const std::int64_t took = loop_.TickMs() - begin;
  EXPECT_GE(trace_.size(), 1U);
  // One for all that were missed, and those that became due since.
  EXPECT_LE(static_cast<std::int64_t>(trace_.size()), 2 + took / 200);
}

TEST_F(LoopContract, EnablingAnEnabledTimerDoesNotRestartIt) {
  const auto timer = Started(600, Say("tick"));
  loop_.Sleep(400);
  timer->SetEnabled(true);
  loop_.Sleep(400);
  loop_.DoEvents();
  EXPECT_EQ(trace_, Trace{"tick"});
}

TEST_F(LoopContract, DisablingAndEnablingRestartsATimer) {
  const auto timer = Started(3000, Say("tick"));
  loop_.Sleep(1700);
  const std::int64_t restarted = loop_.TickMs();
  timer->SetEnabled(false);
  timer->SetEnabled(true);
  loop_.Sleep(1500);
  loop_.DoEvents();
  EXPECT_TRUE(trace_.empty() || loop_.TickMs() - restarted >= 3000);
}

TEST_F(LoopContract, TheDueTickOfADisabledTimerDoesNotCome) {
  const auto timer = Started(20, Say("tick"));
  loop_.Sleep(100);
  timer->SetEnabled(false);
  loop_.DoEvents();
  world_->Idle(100);
  EXPECT_EQ(trace_, Trace());
  EXPECT_FALSE(timer->enabled());
}

TEST_F(LoopContract, ATickThatWasDueBeforeARestartDoesNotCome) {
  const auto timer = Started(2000, Say("tick"));
  loop_.Sleep(2100);
  const std::int64_t restarted = loop_.TickMs();
  timer->SetEnabled(false);
  timer->SetEnabled(true);
  loop_.DoEvents();
  EXPECT_TRUE(trace_.empty() || loop_.TickMs() - restarted >= 2000);
}

TEST_F(LoopContract, AHandlerMayDisableAnotherDueTimer) {
  std::unique_ptr<Timer> second;
  const auto first = Started(20, [&] {
    Say("first")();
    second->SetEnabled(false);
  });
  second = Started(100, Say("second"));
  loop_.Sleep(300);
  loop_.DoEvents();
  EXPECT_EQ(trace_, Trace{"first"});
}

TEST_F(LoopContract, AHandlerMayDisableItself) {
  std::unique_ptr<Timer> timer;
  timer = Started(20, [&] {
    Say("tick")();
    timer->SetEnabled(false);
  });
  world_->Idle(300);
  EXPECT_EQ(trace_, Trace{"tick"});
}

TEST_F(LoopContract, AHandlerMayReEnableItselfAndThenWaitsAWholePeriod) {
  std::unique_ptr<Timer> timer;
  std::int64_t enabled = 0;
  timer = Started(1500, [&] {
    Say("tick")();
    timer->SetEnabled(false);
    loop_.Sleep(1600);
    enabled = loop_.TickMs();
    timer->SetEnabled(true);
  });
  ASSERT_TRUE(world_->IdleUntil([this] { return !trace_.empty(); }));
  loop_.DoEvents();
  EXPECT_TRUE(trace_.size() == 1 || loop_.TickMs() - enabled >= 1500);
  ASSERT_TRUE(world_->IdleUntil([this] { return trace_.size() > 1; }));
}

TEST_F(LoopContract, AHandlerMayBeEnteredWhileItIsOnTheStackAndTheInnerEndsFirst) {
  int depth = 0;
  std::unique_ptr<Timer> timer;
  timer = Started(20, [&] {
    if (depth == 2) return;
    ++depth;
    const std::string level = std::to_string(depth);
    Say("in " + level)();
    if (depth == 2) timer->SetEnabled(false);
    if (depth == 1) SleepAndYield(loop_, kPatienceMs, [this] { return trace_.size() == 3; });
    Say("out " + level)();
    --depth;
  });
  ASSERT_TRUE(world_->IdleUntil([this] { return trace_.size() >= 4; }));
  EXPECT_EQ(trace_, (Trace{"in 1", "in 2", "out 2", "out 1"}));
}

TEST_F(LoopContract, ATimerMayBeDestroyedInItsOwnHandler) {
  std::unique_ptr<Timer> timer;
  auto kept = std::make_shared<std::string>("kept by the handler");
  timer = Started(20, [&timer, this, kept] {
    timer.reset();
    trace_.push_back(*kept);
  });
  ASSERT_TRUE(world_->IdleUntil([this] { return !trace_.empty(); }));
  world_->Idle(100);
  EXPECT_EQ(trace_, Trace{"kept by the handler"});
}

TEST_F(LoopContract, ADestroyedTimerDoesNotTick) {
  auto timer = Started(20, Say("tick"));
  loop_.Sleep(100);
  timer.reset();
  loop_.DoEvents();
  world_->Idle(100);
  EXPECT_EQ(trace_, Trace());
}

TEST_F(LoopContract, ATimerKnowsItsPeriodAndIsDisabledWhenMade) {
  const auto timer = loop_.MakeTimer(300, Say("tick"));
  EXPECT_FALSE(timer->enabled());
  EXPECT_EQ(timer->interval_ms(), 300);
  timer->SetEnabled(true);
  EXPECT_TRUE(timer->enabled());
}

TEST_F(LoopContract, DoEventsReturnsAlthoughEveryEventPostsAnother) {
  bool going = true;
  std::int64_t count = 0;
  const std::function<void()> event = [&] {
    ++count;
    if (going) loop_.Post(EventSource::kUser, event);
  };
  event();
  loop_.DoEvents();
  EXPECT_GE(count, 2);
  going = false;
}

TEST_F(LoopContract, ATimerTicksAtMostOnceInOneDoEvents) {
  int ticks = 0;
  const auto timer = Started(10, [&] {
    ++ticks;
    loop_.Sleep(30);
  });
  loop_.Sleep(50);
  loop_.DoEvents();
  EXPECT_EQ(ticks, 1);
  loop_.DoEvents();
  EXPECT_EQ(ticks, 2);
}

TEST_F(LoopContract, TimersTickInDoEventsUnderInputThatNeverCeases) {
  bool going = true;
  int ticks = 0;
  const std::function<void()> event = [&] {
    if (going) loop_.Post(EventSource::kUser, event);
  };
  const auto timer = Started(20, [&] { ++ticks; });
  event();
  const std::int64_t end = loop_.TickMs() + kPatienceMs;
  while (ticks < 3 && loop_.TickMs() < end) {
    loop_.DoEvents();
    loop_.Sleep(1);
  }
  EXPECT_EQ(ticks, 3);
  going = false;
}

TEST_F(LoopContract, WaitsInsideWaitsDoNotUseUpTheStack) {
  int depth = 0;
  int deepest = 0;
  int left = 2000;
  const std::function<void()> event = [&] {
    deepest = std::max(deepest, ++depth);
    if (--left > 0) {
      loop_.Post(EventSource::kUser, event);
      loop_.DoEvents();
    }
    --depth;
  };
  loop_.Post(EventSource::kUser, event);
  ASSERT_TRUE(world_->IdleUntil([&] { return left <= 0 && depth == 0; }));
  EXPECT_LE(deepest, kDeepestYield + 1);
  EXPECT_GE(deepest, 2);
}

TEST_F(LoopContract, WaitForSocketEventsDispatchesSocketEventsAlone) {
  const auto timer = Started(20, Say("tick"));
  loop_.Sleep(100);
  loop_.Post(EventSource::kUser, Say("user"));
  loop_.Post(EventSource::kSocket, Say("socket"));
  loop_.WaitForSocketEvents(kPatienceMs);
  EXPECT_EQ(trace_, Trace{"socket"});
  loop_.DoEvents();
  EXPECT_EQ(trace_, (Trace{"socket", "user", "tick"}));
}

TEST_F(LoopContract, WaitForSocketEventsWithoutAnyLastsItsTime) {
  loop_.Post(EventSource::kUser, Say("user"));
  const std::int64_t begin = loop_.TickMs();
  loop_.WaitForSocketEvents(200);
  EXPECT_GE(loop_.TickMs() - begin, 180);
  EXPECT_EQ(trace_, Trace());
}

TEST_F(LoopContract, WaitForSocketEventsOfNoTimeServesWhatWaits) {
  loop_.WaitForSocketEvents(0);
  loop_.Post(EventSource::kSocket, Say("socket"));
  loop_.WaitForSocketEvents(0);
  EXPECT_EQ(trace_, Trace{"socket"});
}

TEST_F(LoopContract, ASocketEventMayWaitForTheNext) {
  loop_.Post(EventSource::kSocket, [this] {
    Say("outer begins")();
    loop_.Post(EventSource::kSocket, Say("inner"));
    loop_.WaitForSocketEvents(kPatienceMs);
    Say("outer ends")();
  });
  loop_.WaitForSocketEvents(kPatienceMs);
  EXPECT_EQ(trace_, (Trace{"outer begins", "inner", "outer ends"}));
}

TEST_F(LoopContract, WhatAnEventThrowsIsReportedAndTheLoopGoesOn) {
  world_->SetErrorReporter([this](const std::string& what) { trace_.push_back("error " + what); });
  loop_.Post(EventSource::kUser, [] { throw std::runtime_error("posted"); });
  const auto timer = Started(20, [this] {
    Say("tick")();
    throw std::runtime_error("timer");
  });
  loop_.Post(EventSource::kUser, Say("next"));
  ASSERT_TRUE(world_->IdleUntil([this] { return trace_.size() >= 6; }));
  EXPECT_EQ(Trace(trace_.begin(), trace_.begin() + 6),
            (Trace{"error posted", "next", "tick", "error timer", "tick", "error timer"}));
}

}  // namespace
}  // namespace corvane::contract
