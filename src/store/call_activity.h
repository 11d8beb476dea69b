// Calls counted per group in LOG mode: the table of the day's file, its loader and its writer.
#pragma once

#include <cstdint>
#include <string>

#include "base/files.h"
#include "base/wall_clock.h"
#include "panel/form1.h"
#include "store/day_folders.h"
#include "store/tables.h"

namespace corvane {

class CallActivity {
 public:
  CallActivity(Files& files, const WallClock& clock, const DayFolders& folders, Form1& form);

  CallCounts CallActivityTable;
  bool CallActivityLoaded = false;  // what is on disk is in the table
  std::string DayTag;               // "15-11-2026", set at the first load of the run

  // Reads today's file into the table; the first call of the run decides which file that is for
  // the rest of the run. A missing file leaves everything as it is. A bad line is skipped, reported
  // once, and the file copied beside itself with ".bad" appended unless such a copy exists. A copy
  // that cannot be made is reported once.
  void LoadCallActivity();

  // Replaces the file; one that could not be read so far is loaded first, and the copy of one with
  // bad lines is made if that failed before: without either the file is left alone. -1 on failure,
  // 0 with an empty table (file untouched), otherwise the number of records minus 1.
  std::int32_t SaveCallActivity();

 private:
  void CapturePath();
  void ReportError(const std::string& what, FileError error);
  [[nodiscard]] FileError KeepBadFile(const std::string& content);
  // What is on the disk and in neither the table nor a copy must not be written over.
  [[nodiscard]] bool MayReplaceFile();
  [[nodiscard]] std::string FileName() const;

  Files& files_;
  const WallClock& clock_;
  const DayFolders& folders_;
  Form1& form_;
  std::string path_;
  bool looked_for_ = false;
  FileError reported_ = kFileOk;  // of the last failed reading
  bool copy_due_ = false;         // the file has bad lines, of which there is no copy yet
};

// "GSSI;Call Activity" and one line per group, ascending by group, CR LF ends.
[[nodiscard]] std::string CallActivityText(const CallCounts& counts);

}  // namespace corvane
