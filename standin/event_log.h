// What happened in the stand-in, one entry per event, for tests and for the log file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::standin {

struct LogEntry {
  std::int64_t ms = 0;  // since the start
  std::string kind;     // "command", "reply", "tune", ...: see docs/standin.md
  std::string detail;
};

// `text` with "\", control characters and bytes from 127 on written as \\, \r, \n, \t, \xNN.
[[nodiscard]] std::string Escaped(std::string_view text);

// "1240<TAB>reply<TAB>detail", escaped, without a line end.
[[nodiscard]] std::string LogLine(const LogEntry& entry);

// Keeps the newest kMaxEntries entries.
class EventLog {
 public:
  static constexpr std::size_t kMaxEntries = 100000;

  // Is told of every entry as it is added.
  void SetListener(std::function<void(const LogEntry&)> listener);
  void Add(std::int64_t ms, std::string_view kind, std::string_view detail);
  void Clear() { entries_.clear(); }

  [[nodiscard]] const std::deque<LogEntry>& entries() const { return entries_; }
  // The details of all entries of one kind, oldest first.
  [[nodiscard]] std::vector<std::string> Details(std::string_view kind) const;
  [[nodiscard]] std::size_t Count(std::string_view kind) const;

 private:
  std::deque<LogEntry> entries_;
  std::function<void(const LogEntry&)> listener_;
};

}  // namespace corvane::standin
