// The standard library gives UTF-8, and takes the one or the other.
#include "archive/path_text.h"
#include "base/wide_text_win.h"

namespace corvane::tools {

std::string NarrowName(const std::filesystem::path& path) {
  return Narrow(path.native());
}

std::filesystem::path PathOfNarrow(std::string_view text) {
  return Wide(text);
}

}  // namespace corvane::tools
