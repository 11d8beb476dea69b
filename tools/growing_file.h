// A log that is read while it is written. Each look opens the file for a moment, with full sharing.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace corvane::tools {

// The lines that were added to a file since it was looked at last.
class GrowingFile {
 public:
  // Complete lines alone; none when the file is not there. A file that became shorter is read from
  // its beginning.
  [[nodiscard]] std::vector<std::string> NewLines(const std::filesystem::path& path);
  // What is there already is passed over.
  void SkipTo(std::uint64_t size) { read_ = size; }

 private:
  std::uint64_t read_ = 0;
  std::string unfinished_;
};

}  // namespace corvane::tools
