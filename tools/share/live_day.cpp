// Following the event log and the folder of recordings.
#include "tools/share/live_day.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

#include "archive/day_folder.h"
#include "archive/instant.h"
#include "archive/log_lines.h"
#include "archive/recordings.h"
#include "archive/shared_file.h"
#include "archive/wav_file.h"

namespace corvane::tools {

namespace {

// A recording begins when SDR# is tuned: not before the call's entry, and soon after it.
constexpr std::int64_t kRecordingEarlyS = 1;
constexpr std::int64_t kRecordingLateS = 30;

double SecondsOfSound(const std::filesystem::path& path) {
  SharedFile file;
  if (!file.Open(path)) return 0;
  const auto format = ReadWavFormat(file);
  return format ? format->seconds() : 0;
}

}  // namespace

LiveDay::LiveDay(std::filesystem::path folder, const DateTime& day)
    : folder_(std::move(folder)), day_(day), name_(FolderDate(day)) {}

void LiveDay::ReadEvents() {
  const auto folder = OpenDayFolder(folder_);
  if (!folder || folder->event_log.empty()) return;
  if (!ordered_) {
    LogLines lines;
    if (!lines.Open(folder->event_log)) return;
    calls_.BeginDay(0, OrderOfDates(lines, day_));
    ordered_ = true;
  }
  for (const std::string& line : event_log_.NewLines(folder->event_log)) calls_.TakeLine(line);
}

const CallRecord* LiveDay::FindCall(const SharedCall& shared) const {
  const std::vector<CallRecord>& calls = calls_.calls();
  for (auto call = calls.rbegin(); call != calls.rend(); ++call) {
    if (!call->start || *call->start > shared.begin + kRecordingEarlyS) continue;
    if (*call->start < shared.begin - kRecordingLateS) return nullptr;
    if (call->followed && call->call_id == shared.call.call_id && call->gssi == shared.call.gssi) {
      return &*call;
    }
  }
  return nullptr;
}

std::vector<SharedCall> LiveDay::Look(std::int64_t now, const IsKnown& is_known,
                                      std::vector<std::string>& notices) {
  std::vector<SharedCall> ready;
  std::error_code error;
  const std::filesystem::path folder = folder_ / "Record";
  for (auto entry = std::filesystem::directory_iterator(folder, error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::filesystem::path& file = entry->path();
    const std::string name = file.filename().string();
    if (given_.contains(name) || IsUnderWay(name) || is_known(name_, name)) continue;
    const auto said = ParseRecordingName(name);
    if (!said) {
      given_.insert(name);
      continue;
    }
    SharedCall& shared = ready.emplace_back();
    shared.day = name_;
    shared.name = name;
    shared.file = file;
    shared.begin = SecondsOf(day_) + said->second_of_day;
    shared.call.gssi = said->gssi;
    shared.call.call_id = said->call_id;
    if (said->forced) shared.call.end = EndOfCall::kForced;
  }
  if (ready.empty()) return ready;
  ReadEvents();
  std::erase_if(ready, [&](SharedCall& shared) {
    const std::int64_t first = seen_.try_emplace(shared.name, now).first->second;
    const bool waited = now - first >= kEndComesLateS || now < first;
    if (const CallRecord* call = FindCall(shared)) {
      const EndOfCall end = shared.call.end;
      shared.call = *call;
      if (end == EndOfCall::kForced) shared.call.end = end;
    }
    if (shared.call.end == EndOfCall::kUnknown && !waited) return true;
    seen_.erase(shared.name);
    given_.insert(shared.name);
    shared.seconds = SecondsOfSound(shared.file);
    if (shared.seconds <= 0) notices.push_back(name_ + "/" + shared.name + " holds no sound");
    return shared.seconds <= 0;
  });
  std::ranges::sort(ready, {}, &SharedCall::name);
  return ready;
}

}  // namespace corvane::tools
