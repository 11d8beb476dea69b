// Files that only ever grow by whole lines: the logs of the day and the error report.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "base/files.h"
#include "base/wall_clock.h"
#include "panel/form1.h"

namespace corvane {

enum class LogKind { kCcLog, kEventLog, kDailyCalls, kErrors };

class LogFiles {
 public:
  LogFiles(Files& files, const WallClock& clock, Form1& form);

  // Opens `path` for appending, writes `lines` (which ends with CR LF) and closes it. False when
  // that failed or `path` has no folder: nothing of it was written then. The first failure of a
  // kind adds one status line; the next one only after the kind has worked again.
  bool Append(LogKind kind, const std::string& path, std::string_view lines);

  // As Append, but without a status line: for what the caller reports in words of its own.
  [[nodiscard]] bool AppendUnreported(LogKind kind, const std::string& path,
                                      std::string_view lines);

 private:
  [[nodiscard]] FileError Write(LogKind kind, const std::string& path, std::string_view lines);

  Files& files_;
  const WallClock& clock_;
  Form1& form_;
  std::set<LogKind> failing_;
};

}  // namespace corvane
