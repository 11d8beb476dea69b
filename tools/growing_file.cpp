// Taking up where the last look ended.
#include "tools/growing_file.h"

#include <string_view>
#include <utility>

#include "archive/log_lines.h"
#include "archive/shared_file.h"

namespace corvane::tools {

namespace {
constexpr std::size_t kPiece = 1U << 16U;
}  // namespace

std::vector<std::string> GrowingFile::NewLines(const std::filesystem::path& path) {
  std::vector<std::string> lines;
  SharedFile file;
  if (!file.Open(path)) return lines;
  if (file.Size() < read_) {
    read_ = 0;
    unfinished_.clear();
  }
  if (!file.Seek(read_)) return lines;
  std::string piece(kPiece, '\0');
  while (const std::size_t got = file.Read(piece.data(), piece.size())) {
    read_ += got;
    for (const char c : std::string_view(piece).substr(0, got)) {
      if (c != '\n') {
        if (unfinished_.size() < LogLines::kLongestLine) unfinished_ += c;
        continue;
      }
      if (unfinished_.ends_with('\r')) unfinished_.pop_back();
      lines.push_back(std::move(unfinished_));
      unfinished_.clear();
    }
  }
  return lines;
}

}  // namespace corvane::tools
