// Reading one log after the other, and finding the call of a recording.
#include "tools/share/live_calls.h"

#include <vector>

#include "archive/day_folder.h"
#include "archive/instant.h"
#include "archive/log_lines.h"

namespace corvane::tools {

namespace {

// A recording begins when SDR# is tuned: not before the call's entry, and soon after it.
constexpr std::int64_t kBeginsEarlyS = 1;
constexpr std::int64_t kBeginsLateS = 30;
// A recording has its name before the next call begins.
constexpr std::int64_t kNamedLateS = 60;

}  // namespace

void LiveCalls::Read(std::int64_t now) {
  const std::int64_t midnight = now - now % kSecondsPerDay;
  logs_.try_emplace(midnight - kSecondsPerDay);
  logs_.try_emplace(midnight);
  while (logs_.size() > 2) logs_.erase(logs_.begin());
  for (auto& [day, log] : logs_) ReadLog(daily_ / FolderDate(TimeAt(day)), day, log);
}

void LiveCalls::ReadLog(const std::filesystem::path& folder, std::int64_t midnight, Log& log) {
  const auto found = OpenDayFolder(folder);
  if (!found || found->event_log.empty()) return;
  if (!log.order) {
    LogLines lines;
    if (!lines.Open(found->event_log)) return;
    log.order = OrderOfDates(lines, TimeAt(midnight));
  }
  calls_.BeginDay(0, *log.order);
  for (const std::string& line : log.lines.NewLines(found->event_log)) calls_.TakeLine(line);
}

const CallRecord* LiveCalls::Find(const CallRecord& said, std::int64_t begin) const {
  const std::vector<CallRecord>& calls = calls_.calls();
  for (auto call = calls.rbegin(); call != calls.rend(); ++call) {
    if (!call->start || *call->start > begin + kBeginsEarlyS) continue;
    if (*call->start < begin - kBeginsLateS) return nullptr;
    if (call->followed && call->call_id == said.call_id && call->gssi == said.gssi) return &*call;
  }
  return nullptr;
}

void LiveCalls::ForgetOld(std::int64_t now) {
  calls_.ForgetBefore(now - kNamedLateS);
}

}  // namespace corvane::tools
