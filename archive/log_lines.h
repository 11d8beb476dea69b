// The lines of a log file, read piece by piece, whatever is in it: any bytes, any ends of lines,
// any length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "archive/shared_file.h"

namespace corvane::tools {

class LogLines {
 public:
  // What stands behind this many bytes of a line is passed over.
  static constexpr std::size_t kLongestLine = 65536;

  // "-" is the standard input. False when it cannot be opened.
  [[nodiscard]] bool Open(const std::filesystem::path& path);

  // LF and CR LF end a line; a last line without an end counts. The view is good until the next
  // call. False at the end of the file and when reading failed.
  [[nodiscard]] bool Next(std::string_view& line);
  // The line before the last one, "" when that is the first; good until the next call, too.
  [[nodiscard]] std::string_view previous() const { return previous_; }

  [[nodiscard]] bool failed() const { return failed_; }
  // The number of the last line, from 1.
  [[nodiscard]] std::uint64_t number() const { return number_; }
  // Lines longer than kLongestLine.
  [[nodiscard]] std::uint64_t cut() const { return cut_; }
  [[nodiscard]] std::uint64_t bytes_read() const { return bytes_read_; }
  // 0 when it is not known, as that of a pipe.
  [[nodiscard]] std::uint64_t bytes_in_all() const { return bytes_in_all_; }

 private:
  [[nodiscard]] bool Find(std::string_view& line);
  [[nodiscard]] bool Fill();
  [[nodiscard]] bool LongLine(std::string_view& line);
  [[nodiscard]] std::string_view Ended(const char* begin, std::size_t size);

  [[nodiscard]] std::size_t Read(char* to, std::size_t size);

  SharedFile file_;
  bool standard_ = false;  // the standard input instead
  std::vector<char> buffer_;
  std::vector<char> other_buffer_;  // holds the lines before
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::string long_line_;
  std::string_view last_;
  std::string_view previous_;
  std::string kept_;
  std::uint64_t number_ = 0;
  std::uint64_t cut_ = 0;
  std::uint64_t bytes_read_ = 0;
  std::uint64_t bytes_in_all_ = 0;
  bool failed_ = false;
};

}  // namespace corvane::tools
