// The standard library gives UTF-8, and takes the one or the other.
#include <windows.h>

#include "archive/path_text.h"

namespace corvane::tools {

std::string NarrowName(const std::filesystem::path& path) {
  const std::wstring& wide = path.native();
  const auto length = static_cast<int>(wide.size());
  const int size =
      WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), length, text.data(), size, nullptr, nullptr);
  return text;
}

std::filesystem::path PathOfNarrow(std::string_view text) {
  const auto length = static_cast<int>(text.size());
  const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), size);
  return wide;
}

}  // namespace corvane::tools
