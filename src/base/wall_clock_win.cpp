// Date texts by the system's formats for dates and for times, read back by OLE automation, which
// knows all of them.
#include "base/wall_clock_win.h"

#include <oleauto.h>

#include <array>
#include <cmath>

#include "base/wide_text_win.h"

namespace corvane {

namespace {

constexpr std::size_t kLongestDateText = 128;

constexpr wchar_t kNarrowNoBreakSpace = 0x202F;
constexpr wchar_t kNoBreakSpace = 0x00A0;
constexpr wchar_t kLeftToRightMark = 0x200E;
constexpr wchar_t kRightToLeftMark = 0x200F;

SYSTEMTIME ToSystemTime(const DateTime& time) {
  SYSTEMTIME parts{};
  parts.wYear = static_cast<WORD>(time.year);
  parts.wMonth = static_cast<WORD>(time.month);
  parts.wDay = static_cast<WORD>(time.day);
  parts.wHour = static_cast<WORD>(time.hour);
  parts.wMinute = static_cast<WORD>(time.minute);
  parts.wSecond = static_cast<WORD>(time.second);
  return parts;
}

DateTime FromSystemTime(const SYSTEMTIME& parts) {
  return {parts.wYear, parts.wMonth, parts.wDay, parts.wHour, parts.wMinute, parts.wSecond};
}

// Drops what no code page holds and no reader needs.
std::string ToAnsi(std::wstring_view text) {
  std::wstring wide;
  for (const wchar_t c : text) {
    if (c == kLeftToRightMark || c == kRightToLeftMark) continue;
    wide += c == kNarrowNoBreakSpace || c == kNoBreakSpace ? L' ' : c;
  }
  return Narrow(wide);
}

using TextBuffer = std::array<wchar_t, kLongestDateText>;

// The system counts the zero at the end; 0 is failure.
std::string FromBuffer(const TextBuffer& buffer, int count) {
  if (count <= 1) return {};
  return ToAnsi({buffer.data(), static_cast<std::size_t>(count - 1)});
}

std::string DatePart(const SYSTEMTIME& parts, LCID locale) {
  TextBuffer text{};
  return FromBuffer(text, GetDateFormatW(locale, DATE_SHORTDATE, &parts, nullptr, text.data(),
                                         static_cast<int>(text.size())));
}

std::string TimePart(const SYSTEMTIME& parts, LCID locale) {
  TextBuffer text{};
  return FromBuffer(
      text, GetTimeFormatW(locale, 0, &parts, nullptr, text.data(), static_cast<int>(text.size())));
}

std::optional<DateTime> ReadBySettings(std::string_view text, LCID locale) {
  if (text.empty() || text.size() > kLongestDateText || text.find('\0') != text.npos) {
    return std::nullopt;
  }
  std::wstring wide = Wide(text);
  DATE date = 0;
  SYSTEMTIME parts{};
  if (FAILED(VarDateFromStr(wide.data(), locale, 0, &date))) return std::nullopt;
  // Day 0 is what a text without a date reads as.
  if (std::trunc(date) == 0.0 || VariantTimeToSystemTime(date, &parts) == 0) return std::nullopt;
  const DateTime time = FromSystemTime(parts);
  if (!IsValid(time)) return std::nullopt;
  return time;
}

}  // namespace

DateTime WallClockWin::Now() const {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return FromSystemTime(now);
}

std::string WallClockWin::GeneralDate(const DateTime& time) const {
  if (!IsValid(time)) return {};
  const SYSTEMTIME parts = ToSystemTime(time);
  const std::string date = DatePart(parts, locale_);
  const std::string clock = TimePart(parts, locale_);
  if (date.empty() || clock.empty()) return IsoDate(time);
  std::string text = date + " " + clock;
  return ReadBySettings(text, locale_) == time ? text : IsoDate(time);
}

std::optional<DateTime> WallClockWin::ParseGeneralDate(std::string_view text) const {
  // First, because the system may take the parts in another order.
  if (const std::optional<DateTime> iso = ParseIsoDate(text)) return iso;
  return ReadBySettings(text, locale_);
}

}  // namespace corvane
