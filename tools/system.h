// What only the system knows of files, of the time and of other programs.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/wall_clock.h"

namespace corvane::tools {

// The files of the system. Paths are those of the command line, with "\" in front of the name that
// one of the program's own readers puts behind a folder.
[[nodiscard]] std::unique_ptr<Files> SystemFiles();

// Local date and time. Where there are no regional settings dates are written as
// "yyyy-mm-dd hh:nn:ss".
[[nodiscard]] std::unique_ptr<WallClock> SystemClock();

// By how many seconds local time is ahead of UTC, `second` s after the beginning of 1970 UTC.
[[nodiscard]] std::int64_t SecondsAheadAt(std::int64_t second);

// Does nothing for so long.
void WaitMs(int ms);
// What a command that goes on and on waits before it looks for news again.
inline constexpr int kBetweenLooksMs = 500;

// Another program that was started. It goes on when this object ends.
class StartedProgram {
 public:
  // The first word is the program, the others its arguments as they are: no shell sees them.
  // nullptr when it cannot be started.
  [[nodiscard]] static std::unique_ptr<StartedProgram> Start(const std::vector<std::string>& words);
  virtual ~StartedProgram() = default;
  // How it ended, 0 for success; nullopt while it runs.
  [[nodiscard]] virtual std::optional<int> Code() = 0;
};

// A file that one program at a time works with. Nobody is kept from reading or writing it; the
// claim ends with this object, or with the program however that ends.
class FileClaim {
 public:
  // Makes the file where there is none. nullptr when another program has claimed it; where the
  // system cannot tell, none has.
  [[nodiscard]] static std::unique_ptr<FileClaim> Take(const std::filesystem::path& file);
  virtual ~FileClaim() = default;
};

// Whether Corvane.exe runs in `folder`, as far as this system can tell.
[[nodiscard]] bool CorvaneRunsIn(const std::string& folder);

}  // namespace corvane::tools
