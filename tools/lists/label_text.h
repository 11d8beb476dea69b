// Labels on their way between the program's lists and those of others.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::tools {

// A label of another program's list as the program keeps it: Windows-1252, without control
// characters (tabs become blanks) and blanks at its ends, "," in the place of ";", cut to what a
// label holds. Bytes that are no UTF-8 are taken as Windows-1252 already.
[[nodiscard]] std::string LabelFrom(std::string_view bytes);

// The same without a limit, as UTF-8: for telling the user what stood there.
[[nodiscard]] std::string ShownFrom(std::string_view bytes);

// A label of the program as UTF-8 for the lists of others.
[[nodiscard]] std::string LabelTo(std::string_view label);

// As many whole letters of `utf8` as fit into `bytes`.
[[nodiscard]] std::string CutLetters(std::string_view utf8, std::size_t bytes);

}  // namespace corvane::tools
