// What is due when.
#include "standin/agenda.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane::standin {
namespace {

std::vector<int> RunAll(Agenda& agenda, std::int64_t now_ms, std::vector<int>& ran) {
  while (const auto action = agenda.TakeDue(now_ms)) action();
  return ran;
}

TEST(AgendaTest, RunsInOrderOfTimeAndThenOfAdding) {
  Agenda agenda;
  std::vector<int> ran;
  agenda.Add(20, [&] { ran.push_back(3); });
  agenda.Add(10, [&] { ran.push_back(1); });
  agenda.Add(10, [&] { ran.push_back(2); });
  EXPECT_EQ(agenda.NextDueMs(), 10);
  EXPECT_EQ(RunAll(agenda, 10, ran), (std::vector<int>{1, 2}));
  EXPECT_EQ(agenda.NextDueMs(), 20);
  EXPECT_EQ(RunAll(agenda, 20, ran), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(agenda.NextDueMs(), std::nullopt);
}

TEST(AgendaTest, DoesNotRunWhatWasCancelled) {
  Agenda agenda;
  std::vector<int> ran;
  const Agenda::Ticket ticket = agenda.Add(10, [&] { ran.push_back(1); });
  agenda.Add(10, [&] { ran.push_back(2); });
  agenda.Cancel(ticket);
  agenda.Cancel(ticket);
  agenda.Cancel(0);
  EXPECT_EQ(RunAll(agenda, 10, ran), std::vector<int>{2});
}

TEST(AgendaTest, RunsAtOnceWhatAnActionAddsForTheSameTime) {
  Agenda agenda;
  std::vector<int> ran;
  agenda.Add(5, [&] { agenda.Add(5, [&] { ran.push_back(1); }); });
  EXPECT_EQ(RunAll(agenda, 5, ran), std::vector<int>{1});
}

}  // namespace
}  // namespace corvane::standin
