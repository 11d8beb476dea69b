// Fixed date and time texts.
#include "base/date_time.h"

#include <array>

#include "base/number_text.h"

namespace corvane {

namespace {

int DaysInMonth(int year, int month) {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  if (month == 2 && leap) return 29;
  return kDays[static_cast<std::size_t>(month - 1)];
}

// Reads exactly `size` digits at `at`.
std::optional<int> Digits(std::string_view text, std::size_t at, std::size_t size) {
  return ParseDecimal<int>(text.substr(at, size));
}

// Reads "hh:nn:ss" at `at` into `time`; false when it is not there.
bool ReadClock(std::string_view text, std::size_t at, DateTime& time) {
  if (text[at + 2] != ':' || text[at + 5] != ':') return false;
  const auto hour = Digits(text, at, 2);
  const auto minute = Digits(text, at + 3, 2);
  const auto second = Digits(text, at + 6, 2);
  if (!hour || !minute || !second) return false;
  time.hour = *hour;
  time.minute = *minute;
  time.second = *second;
  return true;
}

// `pattern` with the digits of the date and time in place of d, m, y, h, n (minute) and s.
std::string Written(const DateTime& time, std::string_view pattern) {
  struct Part {
    char letter;
    int left;
  };
  std::array<Part, 6> parts = {{{'d', time.day},
                                {'m', time.month},
                                {'y', time.year},
                                {'h', time.hour},
                                {'n', time.minute},
                                {'s', time.second}}};
  std::string text(pattern);
  for (std::size_t at = text.size(); at-- > 0;) {
    for (Part& part : parts) {
      if (pattern[at] != part.letter) continue;
      text[at] = static_cast<char>('0' + part.left % 10);
      part.left /= 10;
    }
  }
  return text;
}

constexpr std::size_t kDateTimeSize = 19;

}  // namespace

bool IsValid(const DateTime& time) {
  if (time.year < 100 || time.year > 9999 || time.month < 1 || time.month > 12) return false;
  if (time.day < 1 || time.day > DaysInMonth(time.year, time.month)) return false;
  return time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 &&
         time.second >= 0 && time.second < 60;
}

std::string DashedDate(const DateTime& time) {
  return Written(time, "dd-mm-yyyy");
}

std::string FolderDate(const DateTime& time) {
  return Written(time, "yyyymmdd");
}

std::string ClockText(const DateTime& time) {
  return Written(time, "hh:nn:ss");
}

std::string ClockDigits(const DateTime& time) {
  return Written(time, "hhnnss");
}

std::string FixedGeneralDate(const DateTime& time) {
  return Written(time, "dd/mm/yyyy hh:nn:ss");
}

std::optional<DateTime> ParseFixedGeneralDate(std::string_view text) {
  if (text.size() != kDateTimeSize || text[2] != '/' || text[5] != '/' || text[10] != ' ') {
    return std::nullopt;
  }
  DateTime time;
  const auto day = Digits(text, 0, 2);
  const auto month = Digits(text, 3, 2);
  const auto year = Digits(text, 6, 4);
  if (!day || !month || !year || !ReadClock(text, 11, time)) return std::nullopt;
  time.day = *day;
  time.month = *month;
  time.year = *year;
  if (!IsValid(time)) return std::nullopt;
  return time;
}

std::string IsoDate(const DateTime& time) {
  return Written(time, "yyyy-mm-dd hh:nn:ss");
}

std::optional<DateTime> ParseIsoDate(std::string_view text) {
  if (text.size() != kDateTimeSize || text[4] != '-' || text[7] != '-' || text[10] != ' ') {
    return std::nullopt;
  }
  DateTime time;
  const auto year = Digits(text, 0, 4);
  const auto month = Digits(text, 5, 2);
  const auto day = Digits(text, 8, 2);
  if (!day || !month || !year || !ReadClock(text, 11, time)) return std::nullopt;
  time.day = *day;
  time.month = *month;
  time.year = *year;
  if (!IsValid(time)) return std::nullopt;
  return time;
}

}  // namespace corvane
