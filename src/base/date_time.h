// Calendar date and time of day, and the texts made of them that do not depend on the machine's
// regional settings. The one text that does is WallClock::GeneralDate.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

// Local date and time to the second. The default value is "never" (year 0) and is not valid.
struct DateTime {
  int year = 0;    // 100 to 9999
  int month = 0;   // 1 to 12
  int day = 0;     // 1 to 31
  int hour = 0;    // 0 to 23
  int minute = 0;  // 0 to 59
  int second = 0;  // 0 to 59

  auto operator<=>(const DateTime&) const = default;
};

// True when the fields name a day of the Gregorian calendar and a time of that day.
[[nodiscard]] bool IsValid(const DateTime& time);

// "15-11-2026": the date as it stands in the names of daily files.
[[nodiscard]] std::string DashedDate(const DateTime& time);
// "20261115": the date as it stands in the names of day folders.
[[nodiscard]] std::string FolderDate(const DateTime& time);
// "14:23:05", with colons whatever the regional settings say.
[[nodiscard]] std::string ClockText(const DateTime& time);
// "142305": the time as it stands in the names of recordings.
[[nodiscard]] std::string ClockDigits(const DateTime& time);

// "15/11/2026 14:23:05", the general date of builds without regional settings.
[[nodiscard]] std::string FixedGeneralDate(const DateTime& time);
// Reads "15/11/2026 14:23:05"; nullopt for anything else.
[[nodiscard]] std::optional<DateTime> ParseFixedGeneralDate(std::string_view text);

// "2026-11-15 14:23:05", which every WallClock reads.
[[nodiscard]] std::string IsoDate(const DateTime& time);
// Reads "2026-11-15 14:23:05"; nullopt for anything else.
[[nodiscard]] std::optional<DateTime> ParseIsoDate(std::string_view text);

}  // namespace corvane
