// What a label may hold so that it can stand in a line of a list file.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

// The text without ";" and without characters below 32. Characters from 128 up are kept.
[[nodiscard]] std::string CleanLabel(std::string_view text);

}  // namespace corvane
