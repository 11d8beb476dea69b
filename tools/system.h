// What only the system knows of files, of the time and of other programs.
#pragma once

#include <memory>
#include <string>

#include "base/files.h"
#include "base/wall_clock.h"

namespace corvane::tools {

// The files of the system. Paths are those of the command line, with "\" in front of the name that
// one of the program's own readers puts behind a folder.
[[nodiscard]] std::unique_ptr<Files> SystemFiles();

// Local date and time. Where there are no regional settings dates are written as
// "yyyy-mm-dd hh:nn:ss".
[[nodiscard]] std::unique_ptr<WallClock> SystemClock();

// Whether Corvane.exe runs in `folder`, as far as this system can tell.
[[nodiscard]] bool CorvaneRunsIn(const std::string& folder);

}  // namespace corvane::tools
