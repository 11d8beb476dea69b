// The day's call lines and counts of LOG mode.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/call_context.h"

namespace corvane {

class DailyCalls {
 public:
  explicit DailyCalls(CallContext& context) : context_(context) {}

  // When the date of `now` differs from CurrentDate: appends the ended day's counts to that day's
  // file, starts new ones and makes it the current date. Does not happen for the first date.
  void ChangeDay(const DateTime& now);

  // Writes the line of one setup, unless its Call ID says that it is a repeat or an old one. True
  // when it was not. A Call ID more than 50 below the highest one means that the network's counter
  // has wrapped.
  bool WriteCall(std::int32_t gssi, std::int16_t call_id, std::string_view status);

  // Adds one to the group's counts: those of this run since midnight, and the day's table.
  void Count(std::int32_t gssi);

  [[nodiscard]] const CallCounts& GroupCallCounts() const { return group_call_counts_; }

  std::string CurrentDate;          // dd-mm-yyyy; "" before the first poll
  std::int16_t LastCsvCallId = -1;  // highest Call ID written

 private:
  [[nodiscard]] std::string FilePath(const std::string& folder) const;
  void WriteSummary();

  CallContext& context_;
  DateTime current_day_;
  CallCounts group_call_counts_;
};

}  // namespace corvane
