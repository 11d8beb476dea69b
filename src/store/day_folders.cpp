// Making the folders of the day.
#include "store/day_folders.h"

#include <utility>

#include "base/number_text.h"
#include "panel/logs.h"

namespace corvane {

namespace {
constexpr const char* kBase = "\\Daily";
constexpr const char* kRecordings = "\\Record";
}  // namespace

DayFolders::DayFolders(Files& files, Form1& form, std::string program_folder)
    : files_(files), form_(form), program_folder_(std::move(program_folder)) {}

std::string DayFolders::FolderOf(const DateTime& day) const {
  return program_folder_ + kBase + "\\" + FolderDate(day);
}

void DayFolders::CreateDayFolders(const DateTime& now) {
  const std::array day = {now.year, now.month, now.day};
  if (day_folder_.empty() || day != day_) {
    day_ = day;
    day_folder_ = FolderOf(now);
    recordings_ = day_folder_ + kRecordings;
  }
  // The innermost of the three is there only with the others. A folder inside one that is missing
  // cannot be made: the first failure is the one to report.
  const bool there = files_.IsDirectory(recordings_) ||
                     (Ensure(program_folder_ + kBase) && Ensure(day_folder_) && Make(recordings_));
  if (there) reported_.clear();
}

bool DayFolders::Ensure(const std::string& path) {
  return files_.IsDirectory(path) || Make(path);
}

bool DayFolders::Make(const std::string& path) {
  const FileError error = files_.MakeDirectory(path);
  if (error == kFileOk) return true;
  const std::string report = "Error creating folder " + path + " [" + Decimal(error) + "]";
  if (reported_.insert(report).second) AddStatusLineInView(form_, report);
  return false;
}

}  // namespace corvane
