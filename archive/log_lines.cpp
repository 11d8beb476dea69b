// Buffered reading. A line that lies whole in the buffer is not copied.
#include "archive/log_lines.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace corvane::tools {

namespace {
constexpr std::size_t kBufferSize = 4 * LogLines::kLongestLine;
}  // namespace

bool LogLines::Open(const std::filesystem::path& path) {
  buffer_.resize(kBufferSize);
  other_buffer_.resize(kBufferSize);
  standard_ = path == "-";
  if (standard_) return true;
  if (!file_.Open(path)) return false;
  bytes_in_all_ = file_.Size();
  return true;
}

std::size_t LogLines::Read(char* to, std::size_t size) {
  if (!standard_) {
    const std::size_t got = file_.Read(to, size);
    failed_ = failed_ || file_.failed();
    return got;
  }
  const std::size_t got = std::fread(to, 1, size, stdin);
  if (got == 0 && std::ferror(stdin) != 0) failed_ = true;
  return got;
}

// Reads on behind what is left. When there is no room, that moves to the other buffer, so that the
// lines before stay where they are.
bool LogLines::Fill() {
  if (end_ == buffer_.size()) {
    std::memcpy(other_buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    buffer_.swap(other_buffer_);
    end_ -= begin_;
    begin_ = 0;
  }
  const std::size_t got = Read(buffer_.data() + end_, buffer_.size() - end_);
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
  previous_ = last_;
  if (!Find(line)) return false;
  last_ = line;
  return true;
}

bool LogLines::Find(std::string_view& line) {
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
  kept_.assign(previous_);
  previous_ = kept_;
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
