// Bytes are bytes.
#include "archive/path_text.h"

namespace corvane::tools {

std::string NarrowName(const std::filesystem::path& path) {
  return path.string();
}

std::filesystem::path PathOfNarrow(std::string_view text) {
  return text;
}

}  // namespace corvane::tools
