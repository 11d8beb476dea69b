// Calendar arithmetic of the simulated wall clock.
#include "sim/sim_clock.h"

#include <cassert>
#include <chrono>
#include <utility>

namespace corvane::sim {

namespace {

constexpr DateTime kStart = {2026, 11, 15, 14, 23, 5};
constexpr std::int64_t kSecondsPerDay = 86400;

std::int64_t Seconds(const DateTime& time) {
  const std::chrono::year_month_day day{std::chrono::year(time.year),
                                        std::chrono::month(static_cast<unsigned>(time.month)),
                                        std::chrono::day(static_cast<unsigned>(time.day))};
  const std::int64_t days = std::chrono::sys_days(day).time_since_epoch().count();
  return days * kSecondsPerDay + time.hour * 3600 + time.minute * 60 + time.second;
}

DateTime FromSeconds(std::int64_t seconds) {
  const std::int64_t of_day = ((seconds % kSecondsPerDay) + kSecondsPerDay) % kSecondsPerDay;
  const std::chrono::year_month_day day{std::chrono::sys_days(
      std::chrono::days(static_cast<int>((seconds - of_day) / kSecondsPerDay)))};
  return {static_cast<int>(day.year()),
          static_cast<int>(static_cast<unsigned>(day.month())),
          static_cast<int>(static_cast<unsigned>(day.day())),
          static_cast<int>(of_day / 3600),
          static_cast<int>(of_day / 60 % 60),
          static_cast<int>(of_day % 60)};
}

}  // namespace

SimClock::SimClock(const Loop& loop)
    : loop_(loop),
      base_tick_ms_(loop.TickMs()),
      base_seconds_(Seconds(kStart)),
      told_seconds_(base_seconds_),
      told_(kStart) {}

DateTime SimClock::Now() const {
  const std::int64_t seconds = base_seconds_ + (loop_.TickMs() - base_tick_ms_) / 1000;
  if (seconds != told_seconds_) {
    told_ = FromSeconds(seconds);
    told_seconds_ = seconds;
  }
  return told_;
}

std::string SimClock::GeneralDate(const DateTime& time) const {
  return IsValid(time) ? write_(time) : std::string();
}

std::optional<DateTime> SimClock::ParseGeneralDate(std::string_view text) const {
  const std::optional<DateTime> time = read_(text);
  return time ? time : ParseIsoDate(text);
}

void SimClock::Set(const DateTime& time) {
  assert(IsValid(time));
  base_tick_ms_ = loop_.TickMs();
  base_seconds_ = Seconds(time);
}

void SimClock::SetFormat(std::function<std::string(const DateTime&)> write,
                         std::function<std::optional<DateTime>(std::string_view)> read) {
  write_ = std::move(write);
  read_ = std::move(read);
}

}  // namespace corvane::sim
