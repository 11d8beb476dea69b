// Daily call lines, counts and the summary at the change of day.
#include "core/daily_calls.h"

#include "base/number_text.h"
#include "panel/logs.h"

namespace corvane {

namespace {
constexpr int kWrapDistance = 50;
}  // namespace

void DailyCalls::ChangeDay(const DateTime& now) {
  const bool same_day = now.year == current_day_.year && now.month == current_day_.month &&
                        now.day == current_day_.day;
  if (same_day) return;
  if (!CurrentDate.empty() && !group_call_counts_.empty()) WriteSummary();
  group_call_counts_.Reset();
  current_day_ = now;
  CurrentDate = DashedDate(now);
}

bool DailyCalls::WriteCall(std::int32_t gssi, std::int16_t call_id, std::string_view status) {
  if (call_id < LastCsvCallId - kWrapDistance) LastCsvCallId = -1;
  if (call_id <= LastCsvCallId) return false;
  LastCsvCallId = call_id;
  const std::string& folder = context_.folders.DayFolder();
  if (folder.empty()) return true;
  const std::string line = ClockText(context_.clock.Now()) + ";" + Decimal(gssi) + ";" +
                           Decimal(call_id) + ";D-Setup " + std::string(status) + "\r\n";
  context_.logs.Append(LogKind::kDailyCalls, FilePath(folder), line);
  return true;
}

void DailyCalls::Count(std::int32_t gssi) {
  group_call_counts_.Count(gssi);
  context_.activity.CallActivityTable.Count(gssi);
}

std::string DailyCalls::FilePath(const std::string& folder) const {
  return folder + "\\DailyCallActivity_" + CurrentDate + ".csv";
}

void DailyCalls::WriteSummary() {
  const std::string path = FilePath(context_.folders.FolderOf(current_day_));
  if (context_.logs.Append(LogKind::kDailyCalls, path, CallActivityText(group_call_counts_))) {
    return;
  }
  AddStatusLine(context_.form, "Error saving Call Activity CVS. - " + NowText(context_.clock));
}

}  // namespace corvane
