// Appending to logs, with one report per kind.
#include "store/log_files.h"

#include "base/number_text.h"
#include "panel/logs.h"

namespace corvane {

LogFiles::LogFiles(Files& files, const WallClock& clock, Form1& form)
    : files_(files), clock_(clock), form_(form) {}

bool LogFiles::Append(LogKind kind, const std::string& path, std::string_view lines) {
  const std::size_t folder_end = path.rfind('\\');
  // A path that begins with the file's "\" would name a file in the root of the drive.
  if (folder_end == std::string::npos || folder_end == 0) return false;
  const FileError error = files_.Append(path, lines);
  if (error == kFileOk) {
    failing_.erase(kind);
    return true;
  }
  if (failing_.insert(kind).second) {
    AddStatusLineInView(form_, "Error writing " + path.substr(folder_end + 1) + " [" +
                                   Decimal(error) + "] - " + NowText(clock_));
  }
  return false;
}

}  // namespace corvane
