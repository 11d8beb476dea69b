// The day's call lines and counts of LOG mode.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "base/wall_clock.h"
#include "panel/form1.h"
#include "store/call_activity.h"
#include "store/day_folders.h"
#include "store/log_files.h"

namespace corvane {

class DailyCalls {
 public:
  DailyCalls(const WallClock& clock, Form1& form, const DayFolders& folders, LogFiles& logs,
             CallActivity& activity)
      : clock_(clock), form_(form), folders_(folders), logs_(logs), activity_(activity) {}

  // When the date of `now` differs from CurrentDate: appends the ended day's counts to that day's
  // file, starts new ones and makes it the current date. Does not happen for the first date.
  void ChangeDay(const DateTime& now);

  // Writes the line of one setup, unless its Call ID says that it is a repeat or an old one.
  void WriteCall(std::int32_t gssi, std::int16_t call_id, std::string_view status);

  // Adds one to the group's counts: those of this run since midnight, and the day's table.
  void Count(std::int32_t gssi);

  [[nodiscard]] const CallCounts& GroupCallCounts() const { return group_call_counts_; }

  std::string CurrentDate;          // dd-mm-yyyy; "" before the first poll
  std::int16_t LastCsvCallId = -1;  // highest Call ID written

 private:
  [[nodiscard]] std::string FilePath(const std::string& folder) const;
  void WriteSummary();

  const WallClock& clock_;
  Form1& form_;
  const DayFolders& folders_;
  LogFiles& logs_;
  CallActivity& activity_;
  DateTime current_day_;
  CallCounts group_call_counts_;
};

}  // namespace corvane
