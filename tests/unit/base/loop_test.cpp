// Waiting with events, and handlers that are not entered twice.
#include "base/loop.h"

#include <gtest/gtest.h>

#include "sim/sim_loop.h"

namespace corvane {
namespace {

TEST(SleepAndYieldTest, LetsTimePassAndEventsRun) {
  sim::SimLoop loop;
  int ticks = 0;
  const auto timer = loop.MakeTimer(60, [&] { ++ticks; });
  timer->SetEnabled(true);
  const std::int64_t begin = loop.TickMs();
  EXPECT_TRUE(SleepAndYield(loop, 250, nullptr));
  EXPECT_EQ(loop.TickMs() - begin, 250);
  EXPECT_EQ(ticks, 4);
}

TEST(SleepAndYieldTest, EndsEarlyWhenAskedTo) {
  sim::SimLoop loop;
  bool stop = false;
  const std::int64_t begin = loop.TickMs();
  loop.PostAfter(100, EventSource::kUser, [&] { stop = true; });
  EXPECT_FALSE(SleepAndYield(loop, 1000, [&] { return stop; }));
  EXPECT_EQ(loop.TickMs() - begin, 100);
  EXPECT_FALSE(SleepAndYield(loop, 1000, [&] { return stop; }));
  EXPECT_EQ(loop.TickMs() - begin, 100);
}

TEST(SleepAndYieldTest, AnEventThatTakesLongEndsTheWaitWithIt) {
  sim::SimLoop loop;
  loop.Post(EventSource::kUser, [&] { loop.Sleep(5000); });
  const std::int64_t begin = loop.TickMs();
  EXPECT_TRUE(SleepAndYield(loop, 100, nullptr));
  EXPECT_EQ(loop.TickMs() - begin, 5010);
}

TEST(NonReentrantTest, AnInnerEntryIsDroppedAndALaterOneIsNot) {
  int entries = 0;
  std::function<void()> handler;
  handler = NonReentrant([&] {
    ++entries;
    handler();
  });
  handler();
  EXPECT_EQ(entries, 1);
  handler();
  EXPECT_EQ(entries, 2);
}

TEST(NonReentrantTest, ItCanBeEnteredAgainAfterAnException) {
  int entries = 0;
  const auto handler = NonReentrant([&] {
    ++entries;
    throw 1;
  });
  EXPECT_THROW(handler(), int);
  EXPECT_THROW(handler(), int);
  EXPECT_EQ(entries, 2);
}

}  // namespace
}  // namespace corvane
