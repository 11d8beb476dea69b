// Bounded list of what happened, and its text form.
#include "standin/event_log.h"

#include <utility>

#include "base/number_text.h"

namespace corvane::standin {

std::string Escaped(std::string_view text) {
  constexpr char kHex[] = "0123456789abcdef";
  std::string result;
  result.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\') {
      result += "\\\\";
    } else if (c == '\r') {
      result += "\\r";
    } else if (c == '\n') {
      result += "\\n";
    } else if (c == '\t') {
      result += "\\t";
    } else if (byte < 32 || byte >= 127) {
      result += {'\\', 'x', kHex[byte >> 4], kHex[byte & 15]};
    } else {
      result += c;
    }
  }
  return result;
}

std::string LogLine(const LogEntry& entry) {
  return Decimal(entry.ms) + "\t" + Escaped(entry.kind) + "\t" + Escaped(entry.detail);
}

void EventLog::SetListener(std::function<void(const LogEntry&)> listener) {
  listener_ = std::move(listener);
}

void EventLog::Add(std::int64_t ms, std::string_view kind, std::string_view detail) {
  if (entries_.size() >= kMaxEntries) entries_.pop_front();
  entries_.push_back({ms, std::string(kind), std::string(detail)});
  if (listener_) listener_(entries_.back());
}

std::vector<std::string> EventLog::Details(std::string_view kind) const {
  std::vector<std::string> details;
  for (const LogEntry& entry : entries_) {
    if (entry.kind == kind) details.push_back(entry.detail);
  }
  return details;
}

std::size_t EventLog::Count(std::string_view kind) const {
  return Details(kind).size();
}

}  // namespace corvane::standin
