// Following the event log and the folder of recordings.
#include "tools/share/live_day.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "archive/instant.h"
#include "archive/path_text.h"
#include "archive/recordings.h"
#include "archive/shared_file.h"
#include "archive/wav_file.h"

namespace corvane::tools {

namespace {

// Others that look at new files, such as virus scanners, let go of them before that.
constexpr std::int64_t kHeldLongS = 60;

// nullopt when the file cannot be opened now.
std::optional<double> SecondsOfSound(const std::filesystem::path& path) {
  SharedFile file;
  if (!file.Open(path)) return std::nullopt;
  const auto format = ReadWavFormat(file);
  return format ? format->seconds() : 0;
}

}  // namespace

LiveDay::LiveDay(std::filesystem::path folder, const DateTime& day, LiveCalls& calls)
    : folder_(std::move(folder)), day_(day), name_(FolderDate(day)), calls_(calls) {}

void LiveDay::ForgetGone(const std::vector<SharedCall>& there) {
  if (seen_.empty()) return;
  std::unordered_set<std::string_view> names;
  for (const SharedCall& shared : there) names.insert(shared.name);
  std::erase_if(seen_, [&](const auto& one) { return !names.contains(one.first); });
}

std::vector<SharedCall> LiveDay::Look(std::int64_t now, const IsKnown& is_known,
                                      std::vector<std::string>& notices) {
  std::vector<SharedCall> ready;
  std::error_code error;
  const std::filesystem::path folder = folder_ / "Record";
  for (auto entry = std::filesystem::directory_iterator(folder, error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::filesystem::path& file = entry->path();
    const std::string name = Utf8Name(file.filename());
    if (given_.contains(name) || IsUnderWay(name)) continue;
    const auto said = ParseRecordingName(name);
    if (!said || is_known(name_, name)) {
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
  ForgetGone(ready);
  if (ready.empty()) return ready;
  calls_.Read(now);
  std::erase_if(ready, [&](SharedCall& shared) { return !IsComplete(shared, now, notices); });
  if (seen_.empty()) calls_.ForgetOld(now);
  std::ranges::sort(ready, {}, &SharedCall::name);
  return ready;
}

bool LiveDay::IsComplete(SharedCall& shared, std::int64_t now, std::vector<std::string>& notices) {
  const std::int64_t first = seen_.try_emplace(shared.name, now).first->second;
  const bool waited = now - first >= kEndComesLateS || now < first;
  const auto seconds = SecondsOfSound(shared.file);
  if (!seconds) {
    if (now - first >= kHeldLongS && held_.insert(shared.name).second) {
      notices.push_back(name_ + "/" + shared.name + " cannot be opened");
    }
    return false;
  }
  shared.seconds = *seconds;
  shared.begin = BeginOfRecording(day_, shared.begin - SecondsOf(day_), shared.seconds);
  const CallRecord* call = calls_.Find(shared.call, shared.begin);
  // One that was short may have passed midnight all the same.
  if (call == nullptr && shared.begin > now) {
    call = calls_.Find(shared.call, shared.begin - kSecondsPerDay);
    if (call != nullptr) shared.begin -= kSecondsPerDay;
  }
  if (call != nullptr) {
    const EndOfCall end = shared.call.end;
    shared.call = *call;
    if (end == EndOfCall::kForced) shared.call.end = end;
  }
  if (shared.call.end == EndOfCall::kUnknown && !waited) return false;
  seen_.erase(shared.name);
  given_.insert(shared.name);
  if (shared.seconds <= 0) notices.push_back(name_ + "/" + shared.name + " holds no sound");
  return shared.seconds > 0;
}

}  // namespace corvane::tools
