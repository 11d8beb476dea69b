#include "archive/event_feed.h"

#include <gtest/gtest.h>

#include "archive/instant.h"
#include "base/date_time.h"
#include "unit/archive/folder_fixture.h"

namespace corvane::tools {
namespace {

using Kind = EventEntry::Kind;

constexpr DateTime kMoment{2026, 11, 5, 14, 23, 5};

std::optional<DateTime> Stamp(const std::string& text, DateOrder order) {
  std::string_view rest;
  const std::string line = text + " - Text";
  const auto time = ParseStamp(line, order, rest);
  EXPECT_TRUE(!time || rest == "Text") << text;
  return time;
}

TEST(ParseStamp, TimesOfManyRegions) {
  for (const char* text : {"05/11/2026 14:23:05", "5.11.2026 14:23:05", "05-11-26 2:23:05 PM",
                           "2026-11-05 14:23:05", "05/11/2026 14.23.05"}) {
    EXPECT_EQ(Stamp(text, DateOrder::kDayFirst), kMoment) << text;
  }
  EXPECT_EQ(Stamp("11/5/2026 2:23:05 pm", DateOrder::kMonthFirst), kMoment);
  const DateTime midnight{2026, 11, 5, 0, 5, 0};
  EXPECT_EQ(Stamp("11/5/2026 12:05:00 AM", DateOrder::kMonthFirst), midnight);
}

TEST(ParseStamp, WhatIsNoTime) {
  for (const char* text : {"", "05/11/2026", "31/02/2026 14:23:05", "05/11/2026 25:00:00",
                           "99999999999/1/1 1:1:1", "05/11/2026  14:23:05", "a/b/c 1:2:3"}) {
    EXPECT_EQ(Stamp(text, DateOrder::kDayFirst), std::nullopt) << text;
  }
}

std::optional<EventEntry> Parse(const std::string& text) {
  return ParseEvent("05/11/2026 14:23:05 - " + text, DateOrder::kDayFirst);
}

TEST(ParseEvent, WhatTheProgramWrites) {
  const auto setup = Parse("Call ID: 151 - On carrier: 2610 - Group: 9006 [x]");
  ASSERT_TRUE(setup);
  EXPECT_EQ(setup->kind, Kind::kSetup);
  EXPECT_EQ(setup->second, SecondsOf(kMoment));
  EXPECT_EQ(setup->call_id, 151);
  EXPECT_EQ(setup->carrier, 2610);
  EXPECT_EQ(setup->gssi, 9006);
  const struct {
    const char* text;
    Kind kind;
    int call_id;
  } rows[] = {
      {"Call ID: 7 - VC D-TX-Ceased SSI: 5011", Kind::kCeased, 7},
      {"Call ID: 7 - VC D-TX-Granted SSI: 5011 [y]", Kind::kGranted, 7},
      {"Call ID: 7 - VC D-Released", Kind::kReleased, 7},
      {"Call ID: 7 - VC D-Disconnect", Kind::kDisconnected, 7},
      {"Call timeout occured - Did not see D-Release for Call ID: 7", Kind::kTimedOut, 7},
      {"Manual D-Release occured and UI reset", Kind::kReset, 0},
      {"LOG mode active - No calls will be heard", Kind::kLogModeOn, 0},
      {"LOG mode de-activated - Calls can now be heard", Kind::kLogModeOff, 0},
      {"Skipping Call, lockout found GSSI: 9004 [z]", Kind::kLockedOut, 0},
      {"SSI:5023 D_Wait Reference:191 ", Kind::kListed, 0},
      {"Call ID: 151 - Calling SSI: 5011", Kind::kCalling, 151},
      {"MCC:262  MNC:42  LA:101", Kind::kNetwork, 0},
      {"Timeslot is not valid - call setup aborted", Kind::kAborted, 0},
  };
  for (const auto& row : rows) {
    const auto entry = Parse(row.text);
    ASSERT_TRUE(entry) << row.text;
    EXPECT_EQ(entry->kind, row.kind) << row.text;
    EXPECT_EQ(entry->call_id, row.call_id) << row.text;
  }
}

TEST(ParseEvent, TalkersNetworksAndLabels) {
  EXPECT_EQ(Parse("Call ID: 7 - Calling SSI: 5011 [a]")->ssi, 5011);
  EXPECT_EQ(Parse("Call ID: 7 - VC D-TX-Granted SSI: 5012")->ssi, 5012);
  EXPECT_EQ(Parse("MCC:262  MNC:42  LA:101 [x]")->mcc, 262);
  EXPECT_EQ(Parse("MCC:262  MNC:42  LA:101 [x]")->mnc, 42);
  const auto label = [](const std::string& text) {
    const std::string line = "05/11/2026 14:23:05 - " + text;
    return std::string(ParseEvent(line, DateOrder::kDayFirst)->label);
  };
  EXPECT_EQ(label("Call ID: 7 - On carrier: 2610 - Group: 9006 "), "");
  EXPECT_EQ(label("Call ID: 7 - On carrier: 2610 - Group: 9006 [a [b]]"), "a [b]");
  EXPECT_EQ(label("Call ID: 7 - Calling SSI: 5011 [x]"), "x");
  EXPECT_EQ(label("Skipping Call, lockout found GSSI: 9004 [z]"), "z");
}

TEST(ParseEvent, NoLabelPassesForAnotherEntry) {
  const auto entry = Parse("Call ID: 7 - Calling SSI: 5011 [ - VC D-Released - On carrier: 1]");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->kind, Kind::kCalling);
}

TEST(ParseEvent, WhatSaysNothing) {
  for (const char* text :
       {"Call ID: 99999 - VC D-Released", "Call ID: 1 - On carrier: x - Group: 1",
        "Call ID: 151 - Calling SSI: ", "MCC:262  LA:101", "Call ID: 1", "Call ID: ", ""}) {
    EXPECT_FALSE(Parse(text)) << text;
  }
  EXPECT_FALSE(ParseEvent("", DateOrder::kDayFirst));
}

class EventFeedTest : public FolderTest {};

TEST_F(EventFeedTest, LearnsTheOrderOfTheDatesFromTheWholeFile) {
  EventFeed feed;
  ASSERT_TRUE(feed.Open(Put("log",
                            "11/5/2026 2:23:05 PM - LOG mode active\r\n\r\n"
                            "11/13/2026 2:23:05 PM - LOG mode de-activated\r\n")));
  ASSERT_NE(feed.Peek(), nullptr);
  EXPECT_EQ(feed.Peek()->second, SecondsOf(kMoment));
  ASSERT_NE(feed.Peek(1), nullptr);
  EXPECT_EQ(feed.Peek(1)->kind, Kind::kLogModeOff);
  feed.Pop();
  feed.Pop();
  EXPECT_EQ(feed.Peek(), nullptr);
}

TEST_F(EventFeedTest, TheDayOfTheFolderTellsTheOrderOfTheDates) {
  const std::string path = Put("log", "11/5/2026 2:23:05 PM - LOG mode active\r\n");
  EventFeed feed;
  ASSERT_TRUE(feed.Open(path, DateTime{2026, 11, 5}));
  ASSERT_NE(feed.Peek(), nullptr);
  EXPECT_EQ(feed.Peek()->second, SecondsOf(kMoment));
}

TEST_F(EventFeedTest, EntriesAboutCallsAloneArePassedOver) {
  EventFeed feed;
  ASSERT_TRUE(feed.Open(Put("log",
                            "05/11/2026 14:23:05 - MCC:262  MNC:42  LA:101\r\n"
                            "05/11/2026 14:23:05 - Call ID: 7 - Calling SSI: 5011\r\n"
                            "05/11/2026 14:23:05 - LOG mode active\r\n")));
  ASSERT_NE(feed.Peek(), nullptr);
  EXPECT_EQ(feed.Peek()->kind, Kind::kLogModeOn);
}

TEST_F(EventFeedTest, ALineThatIsListedTwiceIsOneEntry) {
  EventFeed feed;
  const std::string twice = "05/11/2026 14:23:05 - SSI:1 D_Connect_Acknowledge \r\n";
  ASSERT_TRUE(feed.Open(Put("log", twice + twice + "05/11/2026 14:23:06 - SSI:1 D_Wait \r\n")));
  ASSERT_NE(feed.Peek(1), nullptr);
  EXPECT_EQ(feed.Peek(1)->second, SecondsOf(kMoment) + 1);
  EXPECT_EQ(feed.Peek(2), nullptr);
}

}  // namespace
}  // namespace corvane::tools
