// Reading of event log entries.
#include "tools/event_feed.h"

#include <array>
#include <functional>

#include "base/number_text.h"
#include "base/text.h"
#include "tools/instant.h"

namespace corvane::tools {

namespace {

constexpr int kFirstFourDigitYear = 1000;
constexpr int kCentury = 2000;

// Takes the digits at the front of `text`.
std::optional<int> TakeNumber(std::string_view& text) {
  const std::size_t size = std::min(text.find_first_not_of("0123456789"), text.size());
  const auto number = ParseDecimal<int>(text.substr(0, size));
  text.remove_prefix(size);
  return number;
}

// Takes three numbers with one character between them; fewer when `needed` are enough.
bool TakeNumbers(std::string_view& text, std::string_view separators, std::size_t needed,
                 std::array<int, 3>& numbers) {
  for (std::size_t index = 0; index < numbers.size(); ++index) {
    if (index > 0) {
      if (text.empty() || separators.find(text.front()) == std::string_view::npos) {
        return index >= needed;
      }
      text.remove_prefix(1);
    }
    const auto number = TakeNumber(text);
    if (!number) return false;
    numbers[index] = *number;
  }
  return true;
}

bool TakeWord(std::string_view& text, std::string_view word) {
  if (!SameWord(text.substr(0, word.size()), word)) return false;
  text.remove_prefix(word.size());
  return true;
}

// The number right behind `key`.
template <typename Int>
std::optional<Int> NumberBehind(std::string_view text, std::string_view key) {
  const std::size_t at = text.find(key);
  if (at == std::string_view::npos) return std::nullopt;
  text.remove_prefix(at + key.size());
  return ParseDecimal<Int>(text.substr(0, text.find_first_not_of("0123456789")));
}

std::optional<EventEntry::Kind> KindOfCallLine(std::string_view text) {
  if (Contains(text, " - On carrier: ")) return EventEntry::Kind::kSetup;
  if (Contains(text, " - VC D-TX-Ceased")) return EventEntry::Kind::kCeased;
  if (Contains(text, " - VC D-TX-Granted")) return EventEntry::Kind::kGranted;
  if (Contains(text, " - VC D-Released")) return EventEntry::Kind::kReleased;
  if (Contains(text, " - VC D-Disconnect")) return EventEntry::Kind::kDisconnected;
  return std::nullopt;
}

// An entry that begins with "Call ID: ".
bool ReadCallLine(std::string_view text, EventEntry& entry) {
  const auto kind = KindOfCallLine(text);
  const auto call_id = NumberBehind<std::int16_t>(text, "Call ID: ");
  if (!kind || !call_id) return false;
  entry.kind = *kind;
  entry.call_id = *call_id;
  if (*kind != EventEntry::Kind::kSetup) return true;
  const auto gssi = NumberBehind<std::int32_t>(text, " - Group: ");
  const auto carrier = NumberBehind<std::int32_t>(text, " - On carrier: ");
  entry.gssi = gssi.value_or(0);
  entry.carrier = carrier.value_or(0);
  return gssi && carrier;
}

bool ReadEntry(std::string_view text, EventEntry& entry) {
  if (text.starts_with("Call ID: ")) return ReadCallLine(text, entry);
  if (text.starts_with("Call timeout occured")) {
    const auto call_id = NumberBehind<std::int16_t>(text, "Call ID: ");
    entry.kind = EventEntry::Kind::kTimedOut;
    entry.call_id = call_id.value_or(0);
    return call_id.has_value();
  }
  if (text.starts_with("Skipping Call, lockout found GSSI: ")) {
    const auto gssi = NumberBehind<std::int32_t>(text, "GSSI: ");
    entry.kind = EventEntry::Kind::kLockedOut;
    entry.gssi = gssi.value_or(0);
    return gssi.has_value();
  }
  if (text.starts_with("Manual D-Release occured")) {
    entry.kind = EventEntry::Kind::kReset;
  } else if (text.starts_with("LOG mode active")) {
    entry.kind = EventEntry::Kind::kLogModeOn;
  } else if (text.starts_with("LOG mode de-activated")) {
    entry.kind = EventEntry::Kind::kLogModeOff;
  } else if (Contains(text, "D_")) {
    entry.kind = EventEntry::Kind::kListed;
    entry.text = std::hash<std::string_view>{}(text);
  } else {
    return false;
  }
  return true;
}

// Which order the dates of the file have, by the first one that can be read in one way only.
DateOrder OrderOfDates(LogLines& lines) {
  for (std::string_view line; lines.Next(line);) {
    std::array<int, 3> date{};
    if (!TakeNumbers(line, "/.-", date.size(), date) || date[0] >= kFirstFourDigitYear) continue;
    if (date[0] > 12) return DateOrder::kDayFirst;
    if (date[1] > 12) return DateOrder::kMonthFirst;
  }
  return DateOrder::kDayFirst;
}

}  // namespace

std::optional<DateTime> ParseStamp(std::string_view line, DateOrder order, std::string_view& rest) {
  std::array<int, 3> date{};
  std::array<int, 3> clock{};
  if (!TakeNumbers(line, "/.-", date.size(), date) || !TakeWord(line, " ")) return std::nullopt;
  if (!TakeNumbers(line, ":.", 2, clock)) return std::nullopt;
  DateTime time{date[0], date[1], date[2], clock[0], clock[1], clock[2]};
  if (date[0] < kFirstFourDigitYear) {
    const bool day_first = order == DateOrder::kDayFirst;
    time.year = date[2] < 100 ? date[2] + kCentury : date[2];
    time.month = day_first ? date[1] : date[0];
    time.day = day_first ? date[0] : date[1];
  }
  const bool before_noon = TakeWord(line, " am");
  if (before_noon || TakeWord(line, " pm")) time.hour = time.hour % 12 + (before_noon ? 0 : 12);
  if (!IsValid(time) || !TakeWord(line, " - ")) return std::nullopt;
  rest = line;
  return time;
}

std::optional<EventEntry> ParseEvent(std::string_view line, DateOrder order) {
  std::string_view text;
  const auto time = ParseStamp(line, order, text);
  if (!time) return std::nullopt;
  EventEntry entry;
  entry.second = SecondsOf(*time);
  if (!ReadEntry(text, entry)) return std::nullopt;
  return entry;
}

bool EventFeed::Open(const std::string& path) {
  LogLines once;
  if (!once.Open(path)) return false;
  order_ = OrderOfDates(once);
  return !once.failed() && lines_.Open(path);
}

const EventEntry* EventFeed::Peek(std::size_t ahead) {
  if (ahead >= kHorizon) return nullptr;
  std::string_view line;
  while (entries_.size() <= ahead && !ended_) {
    if (!lines_.Next(line)) {
      ended_ = true;
      break;
    }
    const auto entry = ParseEvent(line, order_);
    if (!entry) continue;
    const bool listed = entry->kind == EventEntry::Kind::kListed;
    // A line is listed once for each name that it contains.
    const bool again = listed && entry->text == last_listed_;
    last_listed_ = listed ? entry->text : 0;
    if (!again) entries_.push_back(*entry);
  }
  return ahead < entries_.size() ? &entries_[ahead] : nullptr;
}

}  // namespace corvane::tools
