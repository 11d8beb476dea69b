// The groups to be recorded in "Record select GSSIs" mode: the items of lstRecOnlyGSSI and
// "\TETRA_rec_gssi.txt".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "base/wall_clock.h"
#include "panel/form1.h"
#include "store/start_error.h"

namespace corvane {

class RecOnlyList {
 public:
  // `program_folder` without a "\" at its end.
  RecOnlyList(Files& files, const WallClock& clock, Form1& form, std::string program_folder);

  // Adds the file's accepted lines as items. A missing file is no error.
  [[nodiscard]] ErrorNumber Load();

  // Takes the text of txtRecOnlyGSSI: selects the item of that very text, or adds, selects and
  // saves it. Clears the box, also when the text is refused.
  void AddRecOnlyGssi();

  // Removes the selected item, if any, and saves.
  void RemoveSelected();

  // Replaces the file by the items, one a line. A failure adds one status line; the old file is
  // then whole.
  void SaveRecOnlyGssiList();

 private:
  Files& files_;
  const WallClock& clock_;
  Form1& form_;
  std::string path_;
};

// A number from 0 to 16777215.
[[nodiscard]] bool IsGssiText(std::string_view text);

// The accepted lines, exactly as they stand in the content.
[[nodiscard]] std::vector<std::string> ParseRecOnlyList(std::string_view content);

}  // namespace corvane
