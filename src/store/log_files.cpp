// Appending to logs, with one report per kind.
#include "store/log_files.h"

#include "base/number_text.h"
#include "panel/logs.h"

namespace corvane {

namespace {

// A path that begins with the file's "\" would name a file in the root of the drive.
bool HasFolder(const std::string& path) {
  const std::size_t folder_end = path.rfind('\\');
  return folder_end != std::string::npos && folder_end > 0;
}

}  // namespace

LogFiles::LogFiles(Files& files, const WallClock& clock, Form1& form)
    : files_(files), clock_(clock), form_(form) {}

bool LogFiles::Append(LogKind kind, const std::string& path, std::string_view lines) {
  if (!HasFolder(path)) return false;
  const FileError error = Write(kind, path, lines);
  if (error != kFileOk && failing_.insert(kind).second) {
    AddStatusLineInView(form_, "Error writing " + path.substr(path.rfind('\\') + 1) + " [" +
                                   Decimal(error) + "] - " + NowText(clock_));
  }
  return error == kFileOk;
}

bool LogFiles::AppendUnreported(LogKind kind, const std::string& path, std::string_view lines) {
  return HasFolder(path) && Write(kind, path, lines) == kFileOk;
}

FileError LogFiles::Write(LogKind kind, const std::string& path, std::string_view lines) {
  const FileError error = files_.Append(path, lines);
  if (error == kFileOk) failing_.erase(kind);
  return error;
}

}  // namespace corvane
