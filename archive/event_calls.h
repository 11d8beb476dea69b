// The calls of an event log: its lines go in one after the other, records come out. Keeps what is
// needed across lines alone, so that a log can be followed while it is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "archive/call_record.h"
#include "archive/event_feed.h"

namespace corvane::tools {

class EventCalls {
 public:
  // How far the times of a log reach, and what of it was understood.
  struct Extent {
    std::optional<std::int64_t> first;
    std::optional<std::int64_t> last;
    std::uint64_t lines = 0;
    std::uint64_t not_understood = 0;  // neither empty nor with a time in front
  };
  // No line of the log for so long.
  struct Gap {
    std::int64_t from = 0;
    std::int64_t to = 0;
  };
  static constexpr std::int64_t kShortestGapS = 1800;

  // The lines that follow are of this log; a call may go on from the one before.
  void BeginDay(std::size_t day, DateOrder order);
  void TakeLine(std::string_view line);

  // In the order in which they began; the last one may go on. A record is changed until the next
  // call begins or its end is told.
  [[nodiscard]] const std::vector<CallRecord>& calls() const { return calls_; }
  [[nodiscard]] std::vector<CallRecord> TakeCalls();
  // Calls that began before that are not needed any more, but the last one is.
  void ForgetBefore(std::int64_t second);
  // Whether the last call is followed and has not ended.
  [[nodiscard]] bool going_on() const { return open_ && calls_.back().followed; }
  [[nodiscard]] const Extent& extent() const { return extent_; }
  [[nodiscard]] const std::vector<Gap>& gaps() const { return gaps_; }

 private:
  void Begin(const EventEntry& entry);
  void AddTalker(const EventEntry& entry);
  void End(const EventEntry& entry, EndOfCall how);
  void NoteTime(std::int64_t second);

  std::vector<CallRecord> calls_;
  std::size_t day_ = 0;
  DateOrder order_ = DateOrder::kDayFirst;
  std::optional<std::int32_t> mcc_;
  std::optional<std::int32_t> mnc_;
  bool open_ = false;
  Extent extent_;
  std::vector<Gap> gaps_;
};

}  // namespace corvane::tools
