// Calendar arithmetic.
#include "archive/instant.h"

#include <chrono>

namespace corvane::tools {

namespace {
namespace chrono = std::chrono;
}  // namespace

std::int64_t SecondsOf(const DateTime& time) {
  const chrono::sys_days day = chrono::year(time.year) /
                               chrono::month(static_cast<unsigned>(time.month)) /
                               chrono::day(static_cast<unsigned>(time.day));
  const std::int64_t minutes = std::int64_t{time.hour} * 60 + time.minute;
  return std::int64_t{day.time_since_epoch().count()} * kSecondsPerDay + minutes * 60 + time.second;
}

DateTime TimeAt(std::int64_t seconds) {
  std::int64_t days_passed = seconds / kSecondsPerDay;
  std::int64_t second = seconds % kSecondsPerDay;
  if (second < 0) {
    second += kSecondsPerDay;
    --days_passed;
  }
  const chrono::year_month_day date(chrono::sys_days(chrono::days(static_cast<int>(days_passed))));
  DateTime time;
  time.year = static_cast<int>(date.year());
  time.month = static_cast<int>(static_cast<unsigned>(date.month()));
  time.day = static_cast<int>(static_cast<unsigned>(date.day()));
  time.hour = static_cast<int>(second / 3600);
  time.minute = static_cast<int>(second / 60 % 60);
  time.second = static_cast<int>(second % 60);
  return time;
}

}  // namespace corvane::tools
