#include "base/date_time.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace corvane {
namespace {

constexpr DateTime kAfternoon{2026, 11, 15, 14, 23, 5};

TEST(DateTime, DailyFilesAreNamedByDayMonthYear) {
  EXPECT_EQ(DashedDate(kAfternoon), "15-11-2026");
}

TEST(DateTime, DayFoldersAreNamedByYearMonthDay) {
  EXPECT_EQ(FolderDate({2026, 3, 7, 0, 0, 0}), "20260307");
}

TEST(DateTime, TimeOfRecordingsHasSixDigits) {
  EXPECT_EQ(ClockDigits({2026, 1, 1, 1, 2, 3}), "010203");
  EXPECT_EQ(ClockText(kAfternoon), "14:23:05");
}

TEST(DateTime, FixedGeneralDateReadsBackWhatItWrites) {
  EXPECT_EQ(FixedGeneralDate(kAfternoon), "15/11/2026 14:23:05");
  EXPECT_EQ(ParseFixedGeneralDate("15/11/2026 14:23:05"), kAfternoon);
}

TEST(DateTime, IsoDateIsWrittenAndRead) {
  EXPECT_EQ(IsoDate(kAfternoon), "2026-11-15 14:23:05");
  EXPECT_EQ(IsoDate({998, 1, 2, 3, 4, 5}), "0998-01-02 03:04:05");
  EXPECT_EQ(ParseIsoDate("2026-11-15 14:23:05"), kAfternoon);
}

TEST(DateTime, AnythingElseIsRefused) {
  for (const char* text : {"", "15/11/2026", "15/11/2026 14:23", "15-11-2026 14:23:05",
                           "15/11/2026 14:23:05 ", "31/02/2026 14:23:05", "15/11/2026 24:00:00",
                           "15/13/2026 10:00:00", "1a/11/2026 14:23:05", "15/11/2026T14:23:05"}) {
    EXPECT_FALSE(ParseFixedGeneralDate(text)) << text;
  }
  EXPECT_FALSE(ParseIsoDate("2026-11-31 14:23:05"));
  EXPECT_FALSE(ParseIsoDate("15/11/2026 14:23:05"));
}

TEST(DateTime, OneWrongCharacterAnywhereIsRefused) {
  const std::string general = "15/11/2026 14:23:05";
  const std::string iso = "2026-11-15 14:23:05";
  for (std::size_t at = 0; at < general.size(); ++at) {
    std::string text = general;
    text[at] = 'x';
    EXPECT_FALSE(ParseFixedGeneralDate(text)) << text;
    text = iso;
    text[at] = 'x';
    EXPECT_FALSE(ParseIsoDate(text)) << text;
  }
}

TEST(DateTime, EveryPartHasItsLeastAndItsGreatestValue) {
  const DateTime least = {100, 1, 1, 0, 0, 0};
  const DateTime greatest = {9999, 12, 31, 23, 59, 59};
  EXPECT_TRUE(IsValid(least));
  EXPECT_TRUE(IsValid(greatest));
  for (int DateTime::*part : {&DateTime::year, &DateTime::month, &DateTime::day, &DateTime::hour,
                              &DateTime::minute, &DateTime::second}) {
    DateTime below = least;
    --(below.*part);
    EXPECT_FALSE(IsValid(below)) << FixedGeneralDate(below);
    DateTime above = greatest;
    ++(above.*part);
    EXPECT_FALSE(IsValid(above)) << FixedGeneralDate(above);
  }
}

TEST(DateTime, EachMonthHasItsLastDay) {
  const std::array<int, 12> last = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (int month = 1; month <= 12; ++month) {
    const int day = last[static_cast<std::size_t>(month - 1)];
    EXPECT_TRUE(IsValid({2027, month, day, 0, 0, 0})) << month;
    EXPECT_FALSE(IsValid({2027, month, day + 1, 0, 0, 0})) << month;
  }
}

TEST(DateTime, LeapDaysFollowTheGregorianCalendar) {
  EXPECT_TRUE(IsValid({2028, 2, 29, 0, 0, 0}));
  EXPECT_FALSE(IsValid({2028, 2, 30, 0, 0, 0}));
  EXPECT_FALSE(IsValid({2027, 2, 29, 0, 0, 0}));
  EXPECT_FALSE(IsValid({2100, 2, 29, 0, 0, 0}));
  EXPECT_TRUE(IsValid({2000, 2, 29, 0, 0, 0}));
  EXPECT_FALSE(IsValid({}));
}

}  // namespace
}  // namespace corvane
