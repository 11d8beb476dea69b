// Which days are looked at, and what is done with what is found.
#include "tools/share/follower.h"

#include <system_error>
#include <utility>
#include <vector>

#include "archive/instant.h"

namespace corvane::tools {

Follower::Follower(std::filesystem::path program_folder, CallSharer& sharer)
    : folder_(std::move(program_folder)), sharer_(sharer), calls_(folder_ / "Daily") {
  sharer_.SetFolder(folder_);
}

std::string Follower::Look(std::int64_t now) {
  if (now - loaded_ >= kListsAgeS || now < loaded_) {
    sharer_.around().Load();
    loaded_ = now;
  }
  const std::int64_t midnight = now - now % kSecondsPerDay;
  if (!days_.contains(midnight)) {
    // A run that goes on where another ended takes up the day before too.
    const std::int64_t before = midnight - kSecondsPerDay;
    if (days_.empty() && sharer_.outbox().HasDay(FolderDate(TimeAt(before)))) Watch(before);
    Watch(midnight);
    while (days_.size() > 2) days_.erase(days_.begin());
    sharer_.outbox().ForgetDaysBefore(FolderDate(TimeAt(days_.begin()->first)));
  }
  for (auto& [day, live] : days_) {
    std::string wrong = ShareReady(live, now);
    if (!wrong.empty()) return wrong;
  }
  sharer_.TellFailedHooks();
  return sharer_.FlushOutput() ? "" : "the output was lost";
}

void Follower::Watch(std::int64_t midnight) {
  const DateTime day = TimeAt(midnight);
  days_.try_emplace(midnight, folder_ / "Daily" / FolderDate(day), day, calls_);
}

std::string Follower::ShareReady(LiveDay& day, std::int64_t now) {
  std::vector<std::string> notices;
  const auto known = [this](const std::string& folder, const std::string& name) {
    return sharer_.outbox().HasShared(folder, name);
  };
  for (const SharedCall& call : day.Look(now, known, notices)) {
    std::string wrong = sharer_.Share(call);
    std::error_code error;
    // The user renames and deletes recordings too: a new name is found by the next look.
    if (!wrong.empty() && std::filesystem::exists(call.file, error)) return wrong;
    if (!wrong.empty()) notices.push_back(call.day + "/" + call.name + " is gone");
  }
  for (const std::string& notice : notices) sharer_.Tell(notice);
  return "";
}

}  // namespace corvane::tools
