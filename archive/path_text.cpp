// The same everywhere.
#include "archive/path_text.h"

namespace corvane::tools {

std::string Utf8Name(const std::filesystem::path& path) {
  const std::u8string text = path.generic_u8string();
  return {text.begin(), text.end()};
}

std::filesystem::path PathOfUtf8(std::string_view text) {
  return std::u8string(text.begin(), text.end());
}

}  // namespace corvane::tools
