// Finding out in which order the dates of a file were written.
#include "store/seen_dates.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane {

namespace {

constexpr std::array kOrders = {DateOrder::kDayFirst, DateOrder::kMonthFirst,
                                DateOrder::kYearFirst};
constexpr std::string_view kSeparators = " ./-:,";
// Two digits of a year are those of a year from 1950 on.
constexpr int kFirstShortYear = 50;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 128;
}

struct Number {
  int value = 0;
  std::size_t digits = 0;
};

// Takes the digits at the front, and what separates them from the next ones.
std::optional<Number> TakeNumber(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
  const auto value = ParseDecimal<int>(text.substr(0, end));
  if (!value) return std::nullopt;
  text.remove_prefix(end);
  text.remove_prefix(std::min(text.find_first_not_of(kSeparators), text.size()));
  return Number{*value, end};
}

// Hour, minute, perhaps second, perhaps AM or PM.
bool ReadTime(std::string_view text, DateTime& time) {
  const auto hour = TakeNumber(text);
  const auto minute = TakeNumber(text);
  if (!hour || !minute || minute->digits != 2) return false;
  const auto second = TakeNumber(text);
  time.hour = hour->value;
  time.minute = minute->value;
  time.second = second ? second->value : 0;
  if (text.empty()) return true;
  const std::string half = Lowered(text.substr(0, 1));
  if ((half != "a" && half != "p") || hour->value < 1 || hour->value > 12) return false;
  time.hour = hour->value % 12 + (half == "p" ? 12 : 0);
  return true;
}

int FullYear(const Number& year) {
  if (year.digits > 2) return year.value;
  return year.value + (year.value < kFirstShortYear ? 2000 : 1900);
}

// -> in which order these settings write.
std::optional<DateOrder> OrderOf(const WallClock& clock) {
  constexpr DateTime kProbe = {2001, 2, 3, 4, 5, 6};
  const std::string text = clock.GeneralDate(kProbe);
  for (const DateOrder order : kOrders) {
    if (ReadNumbers(text, order) == kProbe) return order;
  }
  return std::nullopt;
}

bool AllRead(const std::vector<std::string_view>& texts, DateOrder order) {
  return std::ranges::all_of(texts,
                             [order](auto text) { return ReadNumbers(text, order).has_value(); });
}

DateTime Latest(const std::vector<std::string_view>& texts, DateOrder order) {
  DateTime latest;
  for (const auto text : texts) latest = std::max(latest, ReadNumbers(text, order).value());
  return latest;
}

bool SameDates(const std::vector<std::string_view>& texts, DateOrder a, DateOrder b) {
  return std::ranges::all_of(
      texts, [a, b](auto text) { return ReadNumbers(text, a) == ReadNumbers(text, b); });
}

}  // namespace

std::optional<DateTime> ReadNumbers(std::string_view text, DateOrder order) {
  const auto first = TakeNumber(text);
  const auto second = TakeNumber(text);
  const auto third = TakeNumber(text);
  if (!first || !second || !third) return std::nullopt;
  const bool year_first = order == DateOrder::kYearFirst;
  const Number& year = year_first ? *first : *third;
  const Number& day = year_first ? *third : order == DateOrder::kDayFirst ? *first : *second;
  const Number& month = order == DateOrder::kMonthFirst ? *first : *second;
  if (day.digits > 2 || month.digits > 2) return std::nullopt;
  DateTime time{FullYear(year), month.value, day.value};
  if (!ReadTime(text, time) || !IsValid(time)) return std::nullopt;
  return time;
}

SeenDates::SeenDates(const std::vector<std::string_view>& texts, const WallClock& clock)
    : clock_(clock) {
  bool some_own = false;
  bool some_foreign = false;
  for (const std::string_view text : texts) {
    if (ParseIsoDate(text)) continue;
    const auto time = clock.ParseGeneralDate(text);
    const bool own = time && clock.GeneralDate(*time) == text;
    some_own = some_own || own;
    some_foreign = some_foreign || !own;
  }
  if (!some_foreign) return;

  std::vector<std::string_view> written;  // all but those that everybody reads
  for (const std::string_view text : texts) {
    const auto reads = [text](DateOrder order) { return ReadNumbers(text, order).has_value(); };
    if (!ParseIsoDate(text) && std::ranges::any_of(kOrders, reads)) written.push_back(text);
  }
  Decide(written, some_own);
}

void SeenDates::Decide(const std::vector<std::string_view>& written, bool some_own) {
  std::vector<DateOrder> possible;
  for (const DateOrder order : kOrders) {
    if (!written.empty() && AllRead(written, order)) possible.push_back(order);
  }
  // A moment that is still to come was not seen. The clock may be wrong: then all are kept.
  const DateTime now = clock_.Now();
  const auto to_come = [&](DateOrder order) { return Latest(written, order) > now; };
  if (!std::ranges::all_of(possible, to_come)) std::erase_if(possible, to_come);
  if (possible.empty()) return;

  const auto settings = OrderOf(clock_);
  const bool by_settings =
      settings && some_own && std::ranges::find(possible, *settings) != possible.end();
  order_ = by_settings ? *settings : possible.front();
  const bool all_the_same = std::ranges::all_of(
      possible, [&](DateOrder order) { return SameDates(written, order, order_); });
  way_ = by_settings || all_the_same ? Way::kByOrder : Way::kUndecided;
}

std::optional<DateTime> SeenDates::Read(std::string_view text) const {
  const auto by_settings = [&] { return clock_.ParseGeneralDate(text); };
  if (way_ == Way::kBySettings || ParseIsoDate(text)) return by_settings();
  const auto time = ReadNumbers(text, order_);
  if (!time) return by_settings();
  if (way_ == Way::kUndecided) return std::nullopt;
  return time;
}

std::string SeenDates::WhyNot(std::string_view text) const {
  constexpr std::size_t kLongestShown = 60;
  const auto reads = [text](DateOrder order) { return ReadNumbers(text, order).has_value(); };
  const bool in_numbers = std::ranges::any_of(kOrders, reads);
  const bool in_words = Contains(text, ":") && std::ranges::any_of(text, IsDigit) &&
                        std::ranges::any_of(text, IsLetter);
  if (!in_numbers && !in_words) return "";
  return "TETRA_SSI.txt was written under other regional settings:\r\n" +
         std::string(text.substr(0, kLongestShown)) +
         (way_ == Way::kUndecided ? "\r\ncan be more than one date." : "\r\ncannot be read.");
}

}  // namespace corvane
