// Date texts by OLE automation's conversions, date and time apart: together they leave out a time
// of midnight.
#include "base/wall_clock_win.h"

#include <windows.h>

#include <oleauto.h>

#include <array>
#include <cmath>
#include <cstdio>

namespace corvane {

static_assert(WallClockWin::kUserLocale == LOCALE_USER_DEFAULT);

namespace {

constexpr std::size_t kLongestDateText = 128;

constexpr wchar_t kNarrowNoBreakSpace = 0x202F;
constexpr wchar_t kNoBreakSpace = 0x00A0;
constexpr wchar_t kLeftToRightMark = 0x200E;
constexpr wchar_t kRightToLeftMark = 0x200F;

std::string Iso(const DateTime& time) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d ", time.year, time.month, time.day);
  return text.data() + ClockText(time);
}

std::optional<DATE> ToDate(const DateTime& time) {
  SYSTEMTIME parts{};
  parts.wYear = static_cast<WORD>(time.year);
  parts.wMonth = static_cast<WORD>(time.month);
  parts.wDay = static_cast<WORD>(time.day);
  parts.wHour = static_cast<WORD>(time.hour);
  parts.wMinute = static_cast<WORD>(time.minute);
  parts.wSecond = static_cast<WORD>(time.second);
  DATE date = 0;
  if (SystemTimeToVariantTime(&parts, &date) == 0) return std::nullopt;
  return date;
}

DateTime FromSystemTime(const SYSTEMTIME& parts) {
  return {parts.wYear, parts.wMonth, parts.wDay, parts.wHour, parts.wMinute, parts.wSecond};
}

std::string ToAnsi(const BSTR text) {
  std::wstring wide;
  for (UINT i = 0; i < SysStringLen(text); ++i) {
    const wchar_t c = text[i];
    if (c == kLeftToRightMark || c == kRightToLeftMark) continue;
    wide += c == kNarrowNoBreakSpace || c == kNoBreakSpace ? L' ' : c;
  }
  const int size = WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()),
                                       nullptr, 0, nullptr, nullptr);
  std::string ansi(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), ansi.data(), size,
                      nullptr, nullptr);
  return ansi;
}

std::string Part(DATE date, LCID locale, ULONG which) {
  BSTR text = nullptr;
  if (FAILED(VarBstrFromDate(date, locale, which, &text))) return {};
  std::string ansi = ToAnsi(text);
  SysFreeString(text);
  return ansi;
}

std::optional<DateTime> ReadBySettings(std::string_view text, LCID locale) {
  if (text.empty() || text.size() > kLongestDateText || text.find('\0') != text.npos) {
    return std::nullopt;
  }
  std::array<wchar_t, kLongestDateText + 1> wide{};
  const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                       wide.data(), static_cast<int>(kLongestDateText));
  if (size <= 0) return std::nullopt;
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
  const std::optional<DATE> date = ToDate(time);
  if (!date) return Iso(time);
  const std::string text =
      Part(*date, locale_, VAR_DATEVALUEONLY) + " " + Part(*date, locale_, VAR_TIMEVALUEONLY);
  return ReadBySettings(text, locale_) == time ? text : Iso(time);
}

std::optional<DateTime> WallClockWin::ParseGeneralDate(std::string_view text) const {
  // First, because the system may take the parts in another order.
  if (const std::optional<DateTime> iso = ParseIsoDate(text)) return iso;
  return ReadBySettings(text, locale_);
}

}  // namespace corvane
