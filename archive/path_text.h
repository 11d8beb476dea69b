// Paths as text and back.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane::tools {

// As the arguments of programs and the system's narrow functions have it: in the code page of the
// system under Windows, where a letter that it does not hold becomes another one.
[[nodiscard]] std::string NarrowName(const std::filesystem::path& path);
// Never the path's own constructor: since GCC 13 that takes narrow text for UTF-8.
[[nodiscard]] std::filesystem::path PathOfNarrow(std::string_view text);

// As notices, notes and records have it: UTF-8, "/" between folders.
[[nodiscard]] std::string Utf8Name(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path PathOfUtf8(std::string_view text);

}  // namespace corvane::tools
