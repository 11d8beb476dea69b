// The folder of the day, in which everything that happens on that day is filed.
#pragma once

#include <array>
#include <set>
#include <string>

#include "base/date_time.h"
#include "base/files.h"
#include "panel/form1.h"

namespace corvane {

class DayFolders {
 public:
  // `program_folder` without a "\" at its end.
  DayFolders(Files& files, Form1& form, std::string program_folder);

  // Makes sure that "\Daily", the folder of the day of `now` in it and its "\Record" exist, and
  // that DayFolder() names it. A folder that cannot be made is reported in the status log, once per
  // distinct failure until it succeeds again; DayFolder() is set all the same. Asks one question of
  // the file system when all is there, and none twice.
  void CreateDayFolders(const DateTime& now);

  // "" before the first CreateDayFolders; else an absolute path without "\" at its end.
  [[nodiscard]] const std::string& DayFolder() const { return day_folder_; }
  [[nodiscard]] const std::string& program_folder() const { return program_folder_; }

  // The folder that belongs to another day, whether or not it exists.
  [[nodiscard]] std::string FolderOf(const DateTime& day) const;

 private:
  bool Ensure(const std::string& path);
  bool Make(const std::string& path);

  Files& files_;
  Form1& form_;
  std::string program_folder_;
  std::array<int, 3> day_{};  // that the next two are of: its year, month and day
  std::string day_folder_;
  std::string recordings_;
  std::set<std::string> reported_;
};

}  // namespace corvane
