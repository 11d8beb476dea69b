// Daily call lines, counts and the summary at the change of day.
#include "core/daily_calls.h"

#include "base/number_text.h"
#include "core/setup_decision.h"
#include "panel/logs.h"

namespace corvane {

void DailyCalls::ChangeDay(const DateTime& now) {
  const bool same_day = now.year == current_day_.year && now.month == current_day_.month &&
                        now.day == current_day_.day;
  if (same_day) return;
  if (!CurrentDate.empty() && !group_call_counts_.empty()) WriteSummary();
  group_call_counts_.Reset();
  current_day_ = now;
  CurrentDate = DashedDate(now);
}

void DailyCalls::WriteCall(std::int32_t gssi, std::int16_t call_id, std::string_view status) {
  if (!IsNewCallId(call_id, LastCsvCallId)) return;
  LastCsvCallId = call_id;
  const std::string& folder = folders_.DayFolder();
  if (folder.empty()) return;
  const std::string line = ClockText(clock_.Now()) + ";" + Decimal(gssi) + ";" + Decimal(call_id) +
                           ";D-Setup " + std::string(status) + "\r\n";
  logs_.Append(LogKind::kDailyCalls, FilePath(folder), line);
}

void DailyCalls::Count(std::int32_t gssi) {
  group_call_counts_.Count(gssi);
  activity_.CallActivityTable.Count(gssi);
}

std::string DailyCalls::FilePath(const std::string& folder) const {
  return folder + "\\DailyCallActivity_" + CurrentDate + ".csv";
}

void DailyCalls::WriteSummary() {
  const std::string path = FilePath(folders_.FolderOf(current_day_));
  if (logs_.AppendUnreported(LogKind::kDailyCalls, path, CallActivityText(group_call_counts_))) {
    return;
  }
  AddStatusLine(form_, "Error saving Call Activity CVS. - " + NowText(clock_));
}

}  // namespace corvane
