// WallClock: texts that hold date and time, and read back as what they were made of.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "contract/factories.h"

namespace corvane::contract {
namespace {

class WallClockContract : public ::testing::Test {
 protected:
  std::unique_ptr<LoopUnderTest> world_ = MakeLoop();
  std::vector<ClockUnderTest> clocks_ = MakeClocks(world_->loop());
};

const std::vector<DateTime>& Times() {
  static const std::vector<DateTime> times = {
      {2026, 11, 15, 14, 23, 5},  {2026, 11, 15, 0, 0, 0},    {2026, 11, 15, 12, 0, 0},
      {2026, 11, 15, 23, 59, 59}, {2028, 2, 29, 6, 7, 8},     {1999, 12, 31, 23, 59, 59},
      {2000, 1, 1, 0, 0, 0},      {2035, 1, 2, 3, 4, 5},      {2099, 12, 12, 12, 12, 12},
      {1899, 12, 30, 10, 0, 0},   {1899, 12, 29, 18, 30, 30}, {1850, 6, 15, 5, 6, 7},
      {100, 1, 1, 0, 0, 1},       {9999, 12, 31, 23, 59, 58}};
  return times;
}

TEST_F(WallClockContract, NowIsADateThatGoesOn) {
  ASSERT_FALSE(clocks_.empty());
  WallClock& clock = *clocks_.front().clock;
  const DateTime first = clock.Now();
  EXPECT_TRUE(IsValid(first));
  EXPECT_GE(first.year, 2020);
  world_->loop().Sleep(1100);
  EXPECT_NE(clock.Now(), first);
}

TEST_F(WallClockContract, EveryTextReadsBackAsItsTime) {
  for (const ClockUnderTest& tried : clocks_) {
    for (const DateTime& time : Times()) {
      const std::string text = tried.clock->GeneralDate(time);
      EXPECT_EQ(tried.clock->ParseGeneralDate(text), time) << tried.name << ": " << text;
    }
  }
}

TEST_F(WallClockContract, TheTextIsThatOfTheRegionalSettings) {
  int known = 0;
  for (const ClockUnderTest& tried : clocks_) {
    if (tried.shown.empty()) continue;
    ++known;
    EXPECT_EQ(tried.clock->GeneralDate({2026, 11, 15, 14, 23, 5}), tried.shown) << tried.name;
  }
  EXPECT_GE(known, 2) << "settings that differ from each other and from the ISO form";
}

TEST_F(WallClockContract, EverySecondOfADayHasATextOfItsOwn) {
  for (const ClockUnderTest& tried : clocks_) {
    for (int minute = 0; minute < 1440; minute += 7) {
      DateTime time{2026, 3, 4, minute / 60, minute % 60, 0};
      const std::string text = tried.clock->GeneralDate(time);
      time.second = 1;
      EXPECT_NE(tried.clock->GeneralDate(time), text) << tried.name;
      EXPECT_EQ(tried.clock->ParseGeneralDate(tried.clock->GeneralDate(time)), time) << text;
    }
  }
}

TEST_F(WallClockContract, MidnightHasItsTimeAndDayZeroItsDate) {
  for (const ClockUnderTest& tried : clocks_) {
    const std::string midnight = tried.clock->GeneralDate({2026, 11, 15, 0, 0, 0});
    const std::string later = tried.clock->GeneralDate({2026, 11, 15, 0, 0, 1});
    EXPECT_EQ(midnight.size(), later.size()) << tried.name << ": " << midnight;
    EXPECT_NE(midnight.find(' '), std::string::npos) << midnight;
    EXPECT_NE(tried.clock->GeneralDate({1899, 12, 30, 10, 0, 0}).find("30"), std::string::npos);
  }
}

TEST_F(WallClockContract, ReadsTheIsoForm) {
  for (const ClockUnderTest& tried : clocks_) {
    EXPECT_EQ(tried.clock->ParseGeneralDate("2026-02-03 04:05:06"), (DateTime{2026, 2, 3, 4, 5, 6}))
        << tried.name;
  }
}

TEST_F(WallClockContract, RefusesWhatIsNoDate) {
  const std::vector<std::string> refused = {
      "",           " ",
      "garbage",    "12:30:00",
      "99/99/9999", "2026-13-41 00:00:00",
      "1207",       std::string(100'000, '1'),
      "-",          std::string("15/11/2026 14:23:05\0x", 21)};
  for (const ClockUnderTest& tried : clocks_) {
    for (const std::string& text : refused) {
      EXPECT_EQ(tried.clock->ParseGeneralDate(text), std::nullopt)
          << tried.name << ": " << text.substr(0, 40);
    }
  }
}

TEST_F(WallClockContract, ATimeThatIsNoneHasNoText) {
  for (const ClockUnderTest& tried : clocks_) {
    EXPECT_EQ(tried.clock->GeneralDate(DateTime()), "") << tried.name;
    EXPECT_EQ(tried.clock->GeneralDate({2026, 2, 29, 0, 0, 0}), "") << tried.name;
  }
}

}  // namespace
}  // namespace corvane::contract
