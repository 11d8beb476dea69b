// Periods, pending ticks, passes, and the order of posted events.
#include "base/timer_table.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace corvane {
namespace {

class TimerTableTest : public ::testing::Test {
 protected:
  // The names of the timers whose ticks are taken in one pass at `now_ms`.
  std::string Ticks(std::int64_t now_ms) {
    said_.clear();
    TimerTable::Pass pass;
    while (const TimerTable::Handler handler = table_.TakeDue(now_ms, pass)) (*handler)();
    return said_;
  }
  TimerTable::Id Add(int interval_ms, const std::string& name) {
    return table_.Add(interval_ms, [this, name] { said_ += name; });
  }
  TimerTable table_;
  std::string said_;
};

TEST_F(TimerTableTest, ADisabledTimerIsNeverDue) {
  Add(60, "a");
  EXPECT_EQ(table_.NextDueMs(), std::nullopt);
  EXPECT_EQ(Ticks(1'000'000), "");
}

TEST_F(TimerTableTest, ATimerThatWasRemovedIsNotTakenForTheNextOne) {
  const auto a = Add(60, "a");
  const auto b = Add(70, "b");
  table_.Remove(a);
  EXPECT_THROW((void)table_.interval_ms(a), std::out_of_range);
  EXPECT_EQ(table_.interval_ms(b), 70);
  table_.Remove(b);
  EXPECT_THROW((void)table_.interval_ms(b), std::out_of_range);
}

TEST_F(TimerTableTest, TicksStayOnTheGridOfTheirEnabling) {
  const auto a = Add(100, "a");
  table_.SetEnabled(a, true, 1000);
  EXPECT_EQ(table_.NextDueMs(), 1100);
  EXPECT_EQ(Ticks(1099), "");
  EXPECT_EQ(Ticks(1130), "a");
  EXPECT_EQ(table_.NextDueMs(), 1200);
  EXPECT_EQ(Ticks(1475), "a");
  EXPECT_EQ(table_.NextDueMs(), 1500);
}

TEST_F(TimerTableTest, TheLongestDueComesFirst) {
  const auto a = Add(300, "a");
  const auto b = Add(100, "b");
  const auto c = Add(200, "c");
  for (const auto id : {a, b, c}) table_.SetEnabled(id, true, 0);
  EXPECT_EQ(Ticks(350), "bca");
}

TEST_F(TimerTableTest, APassTakesEachTimerOnceHoweverOftenItIsDue) {
  const auto a = Add(10, "a");
  table_.SetEnabled(a, true, 0);
  TimerTable::Pass pass;
  EXPECT_NE(table_.TakeDue(10, pass), nullptr);
  EXPECT_EQ(table_.TakeDue(1000, pass), nullptr);
  EXPECT_EQ(Ticks(1000), "a");
}

TEST_F(TimerTableTest, EnablingAgainKeepsTheGridAndReEnablingRestartsIt) {
  const auto a = Add(100, "a");
  table_.SetEnabled(a, true, 0);
  table_.SetEnabled(a, true, 50);
  EXPECT_EQ(table_.NextDueMs(), 100);
  table_.SetEnabled(a, false, 60);
  EXPECT_EQ(table_.NextDueMs(), std::nullopt);
  table_.SetEnabled(a, true, 60);
  EXPECT_EQ(table_.NextDueMs(), 160);
}

TEST_F(TimerTableTest, ARemovedTimersHandlerLivesAsLongAsItRuns) {
  const auto a = Add(10, "a");
  table_.SetEnabled(a, true, 0);
  TimerTable::Pass pass;
  const TimerTable::Handler handler = table_.TakeDue(10, pass);
  ASSERT_NE(handler, nullptr);
  table_.Remove(a);
  (*handler)();
  EXPECT_EQ(said_, "a");
  EXPECT_EQ(Ticks(1000), "");
}

TEST_F(TimerTableTest, PeriodsBelowTenMillisecondsCountAsTen) {
  EXPECT_EQ(table_.interval_ms(Add(0, "a")), 10);
  EXPECT_EQ(table_.interval_ms(Add(-5, "b")), 10);
  EXPECT_EQ(table_.interval_ms(Add(11, "c")), 11);
}

TEST(EventQueueTest, GivesEventsInOrderAndSocketEventsOnRequest) {
  EventQueue queue;
  std::string said;
  queue.Add(EventSource::kUser, [&] { said += "1"; });
  queue.Add(EventSource::kSocket, [&] { said += "2"; });
  queue.Add(EventSource::kUser, [&] { said += "3"; });
  queue.Add(EventSource::kSocket, [&] { said += "4"; });
  EXPECT_EQ(queue.socket_events(), 2U);
  queue.TakeSocketEvent()();
  EXPECT_EQ(said, "2");
  while (const auto event = queue.Take()) event();
  EXPECT_EQ(said, "2134");
  EXPECT_FALSE(queue.TakeSocketEvent());
  EXPECT_TRUE(queue.empty());
}

TEST(EventQueueTest, PassesOverEmptyFunctions) {
  EventQueue queue;
  queue.Add(EventSource::kUser, {});
  EXPECT_TRUE(queue.empty());
}

}  // namespace
}  // namespace corvane
