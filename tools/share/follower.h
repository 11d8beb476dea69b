// Shares the calls of a running Corvane as they end: today's, and those of the day before while its
// last ones are completed. Knows the time only as it is told.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "tools/share/call_sharer.h"
#include "tools/share/live_calls.h"
#include "tools/share/live_day.h"

namespace corvane::tools {

class Follower {
 public:
  // Names that the user gives meanwhile are taken over after so long.
  static constexpr std::int64_t kListsAgeS = 60;

  Follower(std::filesystem::path program_folder, CallSharer& sharer);

  // One look; `now` is local time. "" or why there can be no further one.
  [[nodiscard]] std::string Look(std::int64_t now);

 private:
  void Watch(std::int64_t midnight);
  [[nodiscard]] std::string ShareReady(LiveDay& day, std::int64_t now);

  std::filesystem::path folder_;
  CallSharer& sharer_;
  LiveCalls calls_;
  std::map<std::int64_t, LiveDay> days_;  // by their midnights; two at the most
  std::int64_t loaded_ = 0;
};

}  // namespace corvane::tools
