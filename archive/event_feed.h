// The entries of an event log one after the other, as far as they tell about lines of the control
// channel log or about what the user did.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "archive/log_lines.h"
#include "base/date_time.h"

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
    // About calls alone; no feed gives these.
    kCalling,  // who began the call of the entry before, which is followed
    kAborted,  // that call is not followed after all
    kNetwork,
  };
  Kind kind = Kind::kListed;
  std::int64_t second = 0;  // since 1970
  std::int16_t call_id = 0;
  std::int32_t gssi = 0;     // of kSetup and kLockedOut
  std::int32_t carrier = 0;  // of kSetup
  std::int32_t ssi = 0;      // of kCalling, kGranted and kCeased
  std::int32_t mcc = 0;      // of kNetwork
  std::int32_t mnc = 0;
  std::size_t text = 0;    // of kListed: its hash
  std::string_view label;  // of the group or talker, in the line that was read

  [[nodiscard]] bool is_about_line() const { return kind < Kind::kTimedOut; }
  [[nodiscard]] bool is_about_call_alone() const { return kind >= Kind::kCalling; }
};

// The order of the numbers in a date that does not begin with the year.
enum class DateOrder { kDayFirst, kMonthFirst };

// What one line of the log says; nullopt when it says nothing that is used here.
[[nodiscard]] std::optional<EventEntry> ParseEvent(std::string_view line, DateOrder order);

// The date and time that `line` begins with, under most regional settings; `rest` becomes what
// stands behind " - ".
[[nodiscard]] std::optional<DateTime> ParseStamp(std::string_view line, DateOrder order,
                                                 std::string_view& rest);

// Reads `lines` to the first date that can be taken in one way only. `day`: the day that the log is
// filed under, if that is known; a date that is just it in one order alone decides, too.
[[nodiscard]] DateOrder OrderOfDates(LogLines& lines, const std::optional<DateTime>& day);

class EventFeed {
 public:
  // How far ahead can be looked.
  static constexpr std::size_t kHorizon = 4096;

  // False when the file cannot be read. Reads it once to learn the order of its dates.
  [[nodiscard]] bool Open(const std::filesystem::path& path,
                          const std::optional<DateTime>& day = std::nullopt);

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
