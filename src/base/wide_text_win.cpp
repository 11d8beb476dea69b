// The system's own conversions: the size first, then the text.
#include "base/wide_text_win.h"

#include <windows.h>

namespace corvane {

std::string Narrow(std::wstring_view text) {
  const auto length = static_cast<int>(text.size());
  const int size =
      WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
  return narrow;
}

std::wstring Wide(std::string_view text) {
  const auto length = static_cast<int>(text.size());
  const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), size);
  return wide;
}

}  // namespace corvane
