// Labels and numbers as they stand in a line of a list file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "store/records.h"

namespace corvane {

// The text without ";" and without characters below 32. Characters from 128 up are kept.
[[nodiscard]] std::string CleanLabel(std::string_view text);

// The label as a line holds it: cleaned, without blanks at both ends.
[[nodiscard]] FixedLabel StoredLabel(const FixedLabel& label);
void AppendLabel(std::string& line, const FixedLabel& label);

// Plain decimal, then `behind`.
void AppendNumber(std::string& line, std::int32_t number, char behind);

}  // namespace corvane
