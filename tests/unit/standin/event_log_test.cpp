// The list of what happened, and its lines.
#include "standin/event_log.h"

#include <gtest/gtest.h>

namespace corvane::standin {
namespace {

TEST(EventLogTest, WritesALineThatCanBeSplitAtTabs) {
  EXPECT_EQ(LogLine({1240, "reply", "a\tb\r\n\\\x01\xE4"}),
            "1240\treply\ta\\tb\\r\\n\\\\\\x01\\xe4");
}

TEST(EventLogTest, GivesTheDetailsOfOneKind) {
  EventLog log;
  int told = 0;
  log.SetListener([&](const LogEntry&) { ++told; });
  log.Add(1, "command", "a");
  log.Add(2, "reply", "b");
  log.Add(3, "command", "c");
  EXPECT_EQ(log.Details("command"), (std::vector<std::string>{"a", "c"}));
  EXPECT_EQ(log.Count("reply"), 1u);
  EXPECT_EQ(told, 3);
}

TEST(EventLogTest, ForgetsTheOldest) {
  EventLog log;
  for (std::size_t i = 0; i < EventLog::kMaxEntries + 5; ++i) {
    log.Add(static_cast<std::int64_t>(i), "x", "");
  }
  EXPECT_EQ(log.entries().size(), EventLog::kMaxEntries);
  EXPECT_EQ(log.entries().front().ms, 5);
}

}  // namespace
}  // namespace corvane::standin
