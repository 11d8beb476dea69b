// Reading of event log entries.
#include "archive/event_feed.h"

#include <algorithm>
#include <array>
#include <functional>

#include "archive/instant.h"
#include "base/number_text.h"
#include "base/text.h"

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

// What stands between the first "[" and the "]" at the end: a label may hold either.
std::string_view LabelIn(std::string_view text) {
  const std::size_t begin = text.find('[');
  if (begin == std::string_view::npos || !text.ends_with(']')) return {};
  return text.substr(begin + 1, text.size() - begin - 2);
}

struct CallLine {
  std::string_view key;
  EventEntry::Kind kind;
};

constexpr std::array<CallLine, 6> kCallLines = {
    {{" - On carrier: ", EventEntry::Kind::kSetup},
     {" - Calling SSI: ", EventEntry::Kind::kCalling},
     {" - VC D-TX-Ceased SSI: ", EventEntry::Kind::kCeased},
     {" - VC D-TX-Granted SSI: ", EventEntry::Kind::kGranted},
     {" - VC D-Released", EventEntry::Kind::kReleased},
     {" - VC D-Disconnect", EventEntry::Kind::kDisconnected}}};

// An entry that begins with "Call ID: ". Labels stand at its end and may hold any of these words.
bool ReadCallLine(std::string_view text, EventEntry& entry) {
  constexpr std::string_view kCallId = "Call ID: ";
  const auto call_id = NumberBehind<std::int16_t>(text, kCallId);
  text.remove_prefix(std::min(text.find_first_not_of("0123456789", kCallId.size()), text.size()));
  const auto* line =
      std::find_if(kCallLines.begin(), kCallLines.end(),
                   [text](const CallLine& known) { return text.starts_with(known.key); });
  if (!call_id || line == kCallLines.end()) return false;
  entry.kind = line->kind;
  entry.call_id = *call_id;
  if (entry.kind == EventEntry::Kind::kReleased || entry.kind == EventEntry::Kind::kDisconnected) {
    return true;
  }
  entry.label = LabelIn(text);
  if (entry.kind != EventEntry::Kind::kSetup) {
    const auto ssi = NumberBehind<std::int32_t>(text, line->key);
    entry.ssi = ssi.value_or(0);
    return ssi.has_value();
  }
  const auto gssi = NumberBehind<std::int32_t>(text, " - Group: ");
  const auto carrier = NumberBehind<std::int32_t>(text, line->key);
  entry.gssi = gssi.value_or(0);
  entry.carrier = carrier.value_or(0);
  return gssi && carrier;
}

bool ReadNetwork(std::string_view text, EventEntry& entry) {
  const auto mcc = NumberBehind<std::int32_t>(text, "MCC:");
  const auto mnc = NumberBehind<std::int32_t>(text, "  MNC:");
  entry.kind = EventEntry::Kind::kNetwork;
  entry.mcc = mcc.value_or(0);
  entry.mnc = mnc.value_or(0);
  return mcc && mnc;
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
    entry.label = LabelIn(text);
    return gssi.has_value();
  }
  if (text.starts_with("MCC:")) return ReadNetwork(text, entry);
  if (text.starts_with("Manual D-Release occured")) {
    entry.kind = EventEntry::Kind::kReset;
  } else if (text.starts_with("LOG mode active")) {
    entry.kind = EventEntry::Kind::kLogModeOn;
  } else if (text.starts_with("LOG mode de-activated")) {
    entry.kind = EventEntry::Kind::kLogModeOff;
  } else if (text.starts_with("Timeslot is not valid")) {
    entry.kind = EventEntry::Kind::kAborted;
  } else if (Contains(text, "D_")) {
    entry.kind = EventEntry::Kind::kListed;
    entry.text = std::hash<std::string_view>{}(text);
  } else {
    return false;
  }
  return true;
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

DateOrder OrderOfDates(LogLines& lines, const std::optional<DateTime>& day) {
  for (std::string_view line; lines.Next(line);) {
    std::array<int, 3> date{};
    if (!TakeNumbers(line, "/.-", date.size(), date) || date[0] >= kFirstFourDigitYear) continue;
    if (date[0] > 12) return DateOrder::kDayFirst;
    if (date[1] > 12) return DateOrder::kMonthFirst;
    if (!day || date[0] == date[1]) continue;
    if (date[0] == day->day && date[1] == day->month) return DateOrder::kDayFirst;
    if (date[0] == day->month && date[1] == day->day) return DateOrder::kMonthFirst;
  }
  return DateOrder::kDayFirst;
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

bool EventFeed::Open(const std::filesystem::path& path, const std::optional<DateTime>& day) {
  LogLines once;
  if (!once.Open(path)) return false;
  order_ = OrderOfDates(once, day);
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
    auto entry = ParseEvent(line, order_);
    if (!entry || entry->is_about_call_alone()) continue;
    entry->label = {};
    const bool listed = entry->kind == EventEntry::Kind::kListed;
    // A line is listed once for each name that it contains.
    const bool again = listed && entry->text == last_listed_;
    last_listed_ = listed ? entry->text : 0;
    if (!again) entries_.push_back(*entry);
  }
  return ahead < entries_.size() ? &entries_[ahead] : nullptr;
}

}  // namespace corvane::tools
