// The program's own lists in its folder, read and written as the program does it.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/wall_clock.h"
#include "store/tables.h"
#include "tools/replay_options.h"

namespace corvane::tools {

class ProgramLists {
 public:
  // `folder` as it was given on the command line.
  explicit ProgramLists(const std::string& folder);

  // Each gives "" or what is wrong. With `writable` a save that was cut short is completed first,
  // as the program does when it starts.
  [[nodiscard]] std::string LoadGroups(bool writable);
  [[nodiscard]] std::string LoadRadios(bool writable);

  GssiTable groups;
  SsiTable radios;

  // Why the lists cannot be written while the program runs.
  [[nodiscard]] std::string Running() const;
  // Whether `path` is one of the lists.
  [[nodiscard]] bool IsOneOf(const std::string& path) const;

  // The networks that the loaded lists know.
  [[nodiscard]] std::set<NetworkCode> Networks() const;

  // Writes the lists that changed, after keeping a copy of each with the date in its name.
  // `written` gets the names of the files. Refuses while the program runs in the folder.
  [[nodiscard]] std::string Save(bool groups_changed, bool radios_changed,
                                 std::vector<std::string>& written);

 private:
  [[nodiscard]] std::string KeepCopy(const char* name, std::vector<std::string>& written);

  std::string folder_;
  std::unique_ptr<Files> files_;
  std::unique_ptr<Files> read_only_;
  std::unique_ptr<WallClock> clock_;
};

}  // namespace corvane::tools
