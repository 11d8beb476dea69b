// Reading whole files, and reading where opening a file never hinders anybody.
#include "archive/shared_file.h"

#include <algorithm>

namespace corvane::tools {

bool ReadShared(const std::filesystem::path& path, std::size_t most, std::string& content) {
  constexpr std::size_t kPiece = 1U << 16U;
  content.clear();
  SharedFile file;
  if (!file.Open(path)) return false;
  while (content.size() < most) {
    const std::size_t before = content.size();
    content.resize(before + std::min(kPiece, most - before));
    const std::size_t got = file.Read(content.data() + before, content.size() - before);
    content.resize(before + got);
    if (got == 0) break;
  }
  return !file.failed();
}

}  // namespace corvane::tools
