#include "store/seen_dates.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/text.h"
#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

struct Settings {
  const char* name;
  DateOrder order;
  const char* separator;
  bool twelve_hours;
};
constexpr Settings kBritain = {"British", DateOrder::kDayFirst, "/", false};
constexpr Settings kUnitedStates = {"American", DateOrder::kMonthFirst, "/", true};
constexpr Settings kGermany = {"German", DateOrder::kDayFirst, ".", false};
constexpr Settings kJapan = {"Japanese", DateOrder::kYearFirst, "/", false};
constexpr Settings kOwnChoice = {"American with 24 hours", DateOrder::kMonthFirst, "/", false};

std::string Two(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string WriteAs(const Settings& settings, const DateTime& time) {
  const std::string separator = settings.separator;
  const std::string year = std::to_string(time.year);
  std::string date;
  if (settings.order == DateOrder::kDayFirst) {
    date = Two(time.day) + separator + Two(time.month) + separator + year;
  } else if (settings.order == DateOrder::kMonthFirst) {
    date = Two(time.month) + separator + Two(time.day) + separator + year;
  } else {
    date = year + separator + Two(time.month) + separator + Two(time.day);
  }
  if (!settings.twelve_hours) return date + " " + ClockText(time);
  DateTime half = time;
  half.hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
  return date + " " + ClockText(half) + (time.hour < 12 ? " AM" : " PM");
}

// As the system reads: a month that there is not is taken for the day.
std::optional<DateTime> ReadAs(const Settings& settings, std::string_view text) {
  if (const auto time = ReadNumbers(text, settings.order)) return time;
  if (settings.order == DateOrder::kDayFirst) return ReadNumbers(text, DateOrder::kMonthFirst);
  return ReadNumbers(text, DateOrder::kDayFirst);
}

// One computer whose regional settings are changed between runs.
class SeenDatesTest : public ::testing::Test {
 protected:
  struct Run : StoreRun {
    Run(sim::SimFiles& disk, const Settings& settings) : StoreRun(disk) {
      clock.SetFormat([settings](const DateTime& time) { return WriteAs(settings, time); },
                      [settings](std::string_view text) { return ReadAs(settings, text); });
    }
  };
  void Save(const Settings& settings, const std::vector<DateTime>& times) {
    Run run(files_, settings);
    for (const DateTime& time : times) {
      SsiRecord record;
      record.Ssi = static_cast<std::int32_t>(run.subscriber_table.size());
      record.LastSeen = time;
      run.subscriber_table.Append(record);
    }
    ASSERT_NE(run.subscribers.SaveSsiList(), -1);
  }
  // What the next start makes of it; empty when it refuses.
  std::vector<DateTime> Load(const Settings& settings) {
    Run run(files_, settings);
    std::vector<DateTime> times;
    if (run.Start()) {
      for (const SsiRecord& record : run.subscriber_table) times.push_back(record.LastSeen);
    }
    boxes_ = run.prompts.boxes();
    return times;
  }
  void Put(const std::vector<std::string>& dates) {
    std::string lines;
    for (const std::string& date : dates) lines += "1;2;262;1;;" + date + "\r\n";
    files_.Put(kSubscriberPath, lines);
  }
  void ExpectRefused(const std::string& text, const std::string& why) {
    EXPECT_EQ(boxes_,
              (std::vector{Box{"TETRA_SSI.txt was written under other regional settings:\r\n" +
                                   text + "\r\n" + why,
                               "Notice", BoxIcon::kCritical},
                           FileAccessBox(13)}));
  }

  sim::SimFiles files_;
  std::vector<Box> boxes_;
};

// The simulated clock stands at 15 November 2026.
const std::vector<DateTime> kTelling = {
    {2026, 11, 10, 14, 23, 5}, {2026, 10, 31, 0, 0, 0}, {2025, 1, 2, 12, 0, 59}};
const std::vector<DateTime> kHidden = {{2026, 3, 4, 14, 23, 5}, {2026, 5, 6, 9, 0, 1}};

TEST_F(SeenDatesTest, UnderTheSameSettingsEveryMomentIsReadBack) {
  for (const Settings& settings : {kBritain, kUnitedStates, kGermany, kJapan, kOwnChoice}) {
    SCOPED_TRACE(settings.name);
    for (const auto& times : {kTelling, kHidden}) {
      Save(settings, times);
      EXPECT_EQ(Load(settings), times);
    }
  }
}

TEST_F(SeenDatesTest, AfterAChangeAFileThatTellsItsOrderIsReadAsItWasMeant) {
  for (const Settings& written : {kBritain, kUnitedStates, kGermany, kJapan, kOwnChoice}) {
    for (const Settings& read : {kBritain, kUnitedStates, kGermany, kJapan, kOwnChoice}) {
      SCOPED_TRACE(std::string(written.name) + ", then " + read.name);
      Save(written, kTelling);
      EXPECT_EQ(Load(read), kTelling);
    }
  }
}

TEST_F(SeenDatesTest, AfterAChangeAFileThatDoesNotTellIsRefusedInWords) {
  Save(kUnitedStates, kHidden);
  EXPECT_TRUE(Load(kBritain).empty());
  ExpectRefused("03/04/2026 02:23:05 PM", "can be more than one date.");
  Save(kBritain, kHidden);
  const auto written = files_.Content(kSubscriberPath);
  EXPECT_TRUE(Load(kUnitedStates).empty());
  EXPECT_EQ(files_.Content(kSubscriberPath), written) << "the file is left alone";
  EXPECT_EQ(Load(kBritain), kHidden) << "set back once";
}

TEST_F(SeenDatesTest, AMomentThatIsStillToComeWasNotSeen) {
  const std::vector<DateTime> times = {{2026, 11, 12, 8, 0, 0}};
  Save(kUnitedStates, times);  // 12 November, or 11 December, which has not come
  EXPECT_EQ(Load(kBritain), times);
}

TEST_F(SeenDatesTest, ADayThatIsTheSameBothWaysIsThatDay) {
  const std::vector<DateTime> times = {{2026, 5, 5, 20, 0, 0}};
  Save(kUnitedStates, times);
  EXPECT_EQ(Load(kBritain), times);
}

TEST_F(SeenDatesTest, TimesWithoutSecondsAndDatesTypedByHandAreRead) {
  Put({"31/10/2026 9:05", "2026-11-15 14:23:05", "1/2/26 9:05 pm"});
  EXPECT_EQ(Load(kGermany),
            (std::vector<DateTime>{
                {2026, 10, 31, 9, 5, 0}, {2026, 11, 15, 14, 23, 5}, {2026, 2, 1, 21, 5, 0}}));
  // A list of these settings, with one line by hand: read as the others are.
  Put({"03/04/2026 10:00:00", "5/6/2026 9:05"});
  EXPECT_EQ(Load(kBritain), (std::vector<DateTime>{{2026, 4, 3, 10, 0, 0}, {2026, 6, 5, 9, 5, 0}}));
}

TEST_F(SeenDatesTest, AMonthInLettersOfAnotherLanguageIsRefusedInWords) {
  Put({"15 listopada 2026 14:23:05"});
  EXPECT_TRUE(Load(kBritain).empty());
  ExpectRefused("15 listopada 2026 14:23:05", "cannot be read.");
}

TEST_F(SeenDatesTest, WhatIsNoDateAtAllIsRefusedAsEver) {
  for (const std::string text :
       {"", "never", "never: again", "99/99/9999 10:00:00", "15", "12:30"}) {
    Put({text});
    EXPECT_TRUE(Load(kBritain).empty());
    EXPECT_EQ(boxes_, std::vector{FileAccessBox(13)}) << text;
  }
}

// Settings whose text holds no seconds, or that do not read their own text, write the fixed form.
TEST_F(SeenDatesTest, TheFixedFormIsReadUnderAllSettings) {
  Put({"2026-03-04 05:06:07"});
  for (const Settings& settings : {kBritain, kUnitedStates, kGermany, kJapan}) {
    EXPECT_EQ(Load(settings), (std::vector<DateTime>{{2026, 3, 4, 5, 6, 7}}));
  }
}

TEST_F(SeenDatesTest, LettersAndDigitsOfAnyKindMakeADateInWords) {
  for (const std::string text : {"(Sun) ~ 15 listopada 2026 14:23:05", "~15 \xE9t\xE9 14:23"}) {
    Put({text});
    EXPECT_TRUE(Load(kBritain).empty());
    ExpectRefused(text, "cannot be read.");
  }
}

TEST_F(SeenDatesTest, TheFirstAndTheLastLetterAreLettersToo) {
  for (const std::string letter : {"A", "Z", "a", "z", "\x80", "\xFF"}) {
    Put({"15 " + letter + " 2026 14:23"});
    EXPECT_TRUE(Load(kBritain).empty());
    ExpectRefused("15 " + letter + " 2026 14:23", "cannot be read.");
  }
  for (const std::string other : {"@", "[", "`", "{"}) {
    Put({"15 " + other + " 2026 14:23"});
    EXPECT_TRUE(Load(kBritain).empty());
    EXPECT_EQ(boxes_, std::vector{FileAccessBox(13)}) << other;
  }
}

// Such as those with the month in letters.
TEST_F(SeenDatesTest, UnderSettingsThatWriteNoNumbersInARowDatesInNumbersAreStillRead) {
  Put({"31/10/2026 9:05", "on the 15/11/2026 14:00:00"});
  const std::string words = "on the ";
  StoreRun run(files_);
  run.clock.SetFormat([&](const DateTime& time) { return words + FixedGeneralDate(time); },
                      [&](std::string_view text) {
                        return text.starts_with(words)
                                   ? ParseFixedGeneralDate(text.substr(words.size()))
                                   : std::nullopt;
                      });
  ASSERT_TRUE(run.Start());
  ASSERT_EQ(run.subscriber_table.size(), 2U);
  EXPECT_EQ(run.subscriber_table[0].LastSeen, (DateTime{2026, 10, 31, 9, 5, 0}));
  EXPECT_EQ(run.subscriber_table[1].LastSeen, (DateTime{2026, 11, 15, 14, 0, 0}));
}

TEST(ReadNumbers, TimesThatNoClockShowsAreRefused) {
  const auto read = [](const std::string& text) { return ReadNumbers(text, DateOrder::kDayFirst); };
  EXPECT_EQ(read("15/11/2026 9:05"), (DateTime{2026, 11, 15, 9, 5, 0}));
  EXPECT_EQ(read("15/11/2026 12:05 am"), (DateTime{2026, 11, 15, 0, 5, 0}));
  for (const char* text : {"15/11/2026", "15/11/2026 9", "15/11/2026 9:5", "15/11/2026 9:055",
                           "15/11/2026 0:05 pm", "15/11/2026 13:05 pm", "15/11/2026 9:05 x"}) {
    EXPECT_EQ(read(text), std::nullopt) << text;
  }
}

TEST(ReadNumbers, TwoDigitsOfAYearAreOfThisCenturyUpTo49) {
  for (const auto& [text, year] : {std::pair("1/2/49 9:05", 2049), {"1/2/50 9:05", 1950}}) {
    EXPECT_EQ(ReadNumbers(text, DateOrder::kDayFirst), (DateTime{year, 2, 1, 9, 5, 0}));
  }
}

}  // namespace
}  // namespace corvane
