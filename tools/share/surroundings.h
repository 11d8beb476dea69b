// What the program's folder adds to the facts of a call.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>

#include "archive/call_record.h"
#include "archive/user_files.h"
#include "panel/presets.h"

namespace corvane::tools {

class Surroundings {
 public:
  // "" knows nothing.
  explicit Surroundings(std::filesystem::path folder) : folder_(std::move(folder)) {}

  // What cannot be read is not there; what was read before stays.
  void Load();
  [[nodiscard]] const UserLists& lists() const { return lists_; }

  // The user's names, and the network where there is only one.
  void Complete(CallRecord& call) const;
  // In Hz; nullopt where the carrier or the settings are not known.
  [[nodiscard]] std::optional<std::int64_t> FrequencyOf(const CallRecord& call) const;

 private:
  std::filesystem::path folder_;
  UserLists lists_;
  std::optional<Presets> presets_;
  std::optional<std::pair<std::int32_t, std::int32_t>> only_;
};

}  // namespace corvane::tools
