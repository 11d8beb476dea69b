// The entries of an event log one after the other, as far as they tell about lines of the control
// channel log or about what the user did.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "tools/log_lines.h"

namespace corvane::tools {

struct EventEntry {
  enum class Kind {
    // About a line.
    kSetup,  // followed or counted
    kLockedOut,
    kCeased,
    kGranted,
    kReleased,
    kDisconnected,
    kListed,  // the line itself
    // About no line.
    kTimedOut,
    kReset,
    kLogModeOn,
    kLogModeOff,
  };
  Kind kind = Kind::kListed;
  std::int64_t second = 0;  // since 1970
  std::int16_t call_id = 0;
  std::int32_t gssi = 0;     // of kSetup and kLockedOut
  std::int32_t carrier = 0;  // of kSetup
  std::size_t text = 0;      // of kListed: its hash

  [[nodiscard]] bool is_about_line() const { return kind < Kind::kTimedOut; }
};

// The order of the numbers in a date that does not begin with the year.
enum class DateOrder { kDayFirst, kMonthFirst };

// What one line of the log says; nullopt when it says nothing that is used here.
[[nodiscard]] std::optional<EventEntry> ParseEvent(std::string_view line, DateOrder order);

// The date and time that `line` begins with, under most regional settings; `rest` becomes what
// stands behind " - ".
[[nodiscard]] std::optional<DateTime> ParseStamp(std::string_view line, DateOrder order,
                                                 std::string_view& rest);

class EventFeed {
 public:
  // How far ahead can be looked.
  static constexpr std::size_t kHorizon = 4096;

  // False when the file cannot be read. Reads it once to learn the order of its dates.
  [[nodiscard]] bool Open(const std::string& path);

  // The entry that comes `ahead` entries after the next one; nullptr at the end, or beyond the
  // horizon.
  [[nodiscard]] const EventEntry* Peek(std::size_t ahead = 0);
  void Pop() { entries_.pop_front(); }

  [[nodiscard]] bool failed() const { return lines_.failed(); }

 private:
  LogLines lines_;
  DateOrder order_ = DateOrder::kDayFirst;
  std::deque<EventEntry> entries_;
  std::size_t last_listed_ = 0;
  bool ended_ = false;
};

}  // namespace corvane::tools
