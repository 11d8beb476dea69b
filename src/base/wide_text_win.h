// Texts in the code page of the system and in wide letters.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

// A letter that the code page does not hold becomes another one.
[[nodiscard]] std::string Narrow(std::wstring_view text);
[[nodiscard]] std::wstring Wide(std::string_view text);

}  // namespace corvane
