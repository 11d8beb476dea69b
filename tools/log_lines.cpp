// Buffered reading. A line that lies whole in the buffer is not copied.
#include "tools/log_lines.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace corvane::tools {

namespace {
constexpr std::size_t kBufferSize = 4 * LogLines::kLongestLine;
}  // namespace

LogLines::~LogLines() {
  if (own_ && file_ != nullptr) std::fclose(file_);
}

bool LogLines::Open(const std::string& path) {
  buffer_.resize(kBufferSize);
  if (path == "-") {
    file_ = stdin;
    return true;
  }
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) return false;
  file_ = std::fopen(path.c_str(), "rb");
  own_ = true;
  if (file_ == nullptr) return false;
  std::setvbuf(file_, nullptr, _IONBF, 0);
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (!error) bytes_in_all_ = size;
  return true;
}

// Reads on behind what is left, which moves to the front.
bool LogLines::Fill() {
  std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
  end_ -= begin_;
  begin_ = 0;
  const std::size_t got = std::fread(buffer_.data() + end_, 1, buffer_.size() - end_, file_);
  if (got == 0 && std::ferror(file_) != 0) failed_ = true;
  end_ += got;
  bytes_read_ += got;
  return got > 0;
}

std::string_view LogLines::Ended(const char* begin, std::size_t size) {
  if (size > 0 && begin[size - 1] == '\r') --size;
  if (size > kLongestLine) ++cut_;
  return {begin, std::min(size, kLongestLine)};
}

bool LogLines::Next(std::string_view& line) {
  for (;;) {
    const char* from = buffer_.data() + begin_;
    const void* found = end_ == begin_ ? nullptr : std::memchr(from, '\n', end_ - begin_);
    if (found != nullptr) {
      const auto size = static_cast<std::size_t>(static_cast<const char*>(found) - from);
      begin_ += size + 1;
      ++number_;
      line = Ended(from, size);
      return true;
    }
    if (end_ - begin_ > kLongestLine + 1) return LongLine(line);
    if (Fill()) continue;
    if (begin_ == end_ || failed_) return false;
    line = Ended(buffer_.data() + begin_, end_ - begin_);
    begin_ = end_;
    ++number_;
    return true;
  }
}

// Keeps the beginning and passes over the rest, up to the end of the line.
bool LogLines::LongLine(std::string_view& line) {
  long_line_.assign(buffer_.data() + begin_, kLongestLine);
  ++cut_;
  ++number_;
  for (;;) {
    const char* from = buffer_.data() + begin_;
    const void* found = end_ == begin_ ? nullptr : std::memchr(from, '\n', end_ - begin_);
    if (found != nullptr) {
      begin_ += static_cast<std::size_t>(static_cast<const char*>(found) - from) + 1;
      break;
    }
    begin_ = end_;
    if (!Fill()) break;
  }
  line = long_line_;
  return !failed_;
}

}  // namespace corvane::tools
