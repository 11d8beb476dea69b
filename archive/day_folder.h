// One day folder: what is in it, and which day it is of.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "archive/path_text.h"
#include "base/date_time.h"

namespace corvane::tools {

struct DayFolder {
  std::filesystem::path path;
  std::string name;              // as notices call it, UTF-8
  std::optional<DateTime> date;  // its midnight
  std::filesystem::path event_log;
  std::filesystem::path cc_log;
  std::filesystem::path daily_calls;  // of the day itself; "" for each that is not there
};

// The day of "20261115"; nullopt for any other name.
[[nodiscard]] std::optional<DateTime> DateOfFolder(std::string_view name);

// nullopt when there is no such folder. Names of files count in any case.
[[nodiscard]] std::optional<DayFolder> OpenDayFolder(const std::filesystem::path& path);

// The folder of the program that wrote `day`: two levels above it, when it has a list or settings.
[[nodiscard]] std::filesystem::path ProgramFolderOf(const DayFolder& day);

// The day folders beside `day` that are older, the youngest first.
[[nodiscard]] std::vector<std::filesystem::path> EarlierDays(const DayFolder& day);

}  // namespace corvane::tools
