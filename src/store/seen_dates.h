// The dates of one subscriber list. They are written by the user's regional settings, and these may
// have been changed since: 11/10/2026 is then another day. What the present settings write in just
// that form is read by them; of other dates the order of day, month and year is sought that fits
// all of the file.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/wall_clock.h"

namespace corvane {

// In which order a date has its numbers.
enum class DateOrder { kDayFirst, kMonthFirst, kYearFirst };

// Reads a date and a time that are written in numbers, with or without seconds, with or without AM
// or PM behind them. nullopt for anything else, and for a day that there is not.
[[nodiscard]] std::optional<DateTime> ReadNumbers(std::string_view text, DateOrder order);

class SeenDates {
 public:
  // `texts`: every date of the file. The clock outlives this object.
  SeenDates(const std::vector<std::string_view>& texts, const WallClock& clock);

  // nullopt when the text is no date, or can be more than one.
  [[nodiscard]] std::optional<DateTime> Read(std::string_view text) const;

  // Why `text`, which could not be read, could not: words for the user when it seems to be a date
  // of other regional settings, else "".
  [[nodiscard]] std::string WhyNot(std::string_view text) const;

 private:
  enum class Way { kBySettings, kByOrder, kUndecided };
  void Decide(const std::vector<std::string_view>& written, bool some_own);

  const WallClock& clock_;
  Way way_ = Way::kBySettings;
  DateOrder order_ = DateOrder::kDayFirst;
};

}  // namespace corvane
