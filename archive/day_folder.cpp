// Finding files in day folders, and day folders.
#include "archive/day_folder.h"

#include <algorithm>
#include <system_error>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane::tools {

namespace {

constexpr std::size_t kMostEntries = 100000;

std::vector<std::filesystem::path> Entries(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> paths;
  std::error_code error;
  for (auto entry = std::filesystem::directory_iterator(folder, error);
       !error && entry != std::filesystem::directory_iterator() && paths.size() < kMostEntries;
       entry.increment(error)) {
    paths.push_back(entry->path());
  }
  return paths;
}

// The last part of a path, whether or not a separator stands at its end.
std::filesystem::path Bare(const std::filesystem::path& path) {
  std::error_code error;
  std::filesystem::path whole = std::filesystem::absolute(path, error).lexically_normal();
  if (error) whole = path.lexically_normal();
  return whole.has_filename() ? whole : whole.parent_path();
}

}  // namespace

std::optional<DateTime> DateOfFolder(std::string_view name) {
  if (name.size() != 8) return std::nullopt;
  const auto year = ParseDecimal<int>(name.substr(0, 4));
  const auto month = ParseDecimal<int>(name.substr(4, 2));
  const auto day = ParseDecimal<int>(name.substr(6, 2));
  if (!year || !month || !day) return std::nullopt;
  const DateTime date{*year, *month, *day};
  if (!IsValid(date) || FolderDate(date) != name) return std::nullopt;
  return date;
}

std::optional<DayFolder> OpenDayFolder(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::is_directory(path, error)) return std::nullopt;
  DayFolder day;
  day.path = Bare(path);
  day.name = Utf8Name(day.path.filename());
  day.date = DateOfFolder(day.name);
  const std::string daily =
      day.date ? "DailyCallActivity_" + DashedDate(*day.date) + ".csv" : std::string();
  for (const std::filesystem::path& entry : Entries(day.path)) {
    const std::string name = Utf8Name(entry.filename());
    if (SameWord(name, "TETRA_event.log")) day.event_log = entry;
    if (SameWord(name, "TETRA_cc.log")) day.cc_log = entry;
    if (!daily.empty() && SameWord(name, daily)) day.daily_calls = entry;
  }
  return day;
}

std::filesystem::path ProgramFolderOf(const DayFolder& day) {
  std::filesystem::path folder = day.path.parent_path().parent_path();
  if (!SameWord(Utf8Name(day.path.parent_path().filename()), "Daily")) return {};
  for (const std::filesystem::path& entry : Entries(folder)) {
    const std::string name = Utf8Name(entry.filename());
    for (const char* known : {"TETRA_GSSI.txt", "TETRA_SSI.txt", "corvane_simple.dat"}) {
      if (SameWord(name, known)) return folder;
    }
  }
  return {};
}

std::vector<std::filesystem::path> EarlierDays(const DayFolder& day) {
  std::vector<std::filesystem::path> days;
  if (!day.date) return days;
  for (const std::filesystem::path& entry : Entries(day.path.parent_path())) {
    const auto date = DateOfFolder(Utf8Name(entry.filename()));
    std::error_code error;
    if (date && *date < *day.date && std::filesystem::is_directory(entry, error)) {
      days.push_back(entry);
    }
  }
  std::sort(days.begin(), days.end(),
            [](const auto& a, const auto& b) { return b.filename() < a.filename(); });
  return days;
}

}  // namespace corvane::tools
