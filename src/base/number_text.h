// Decimal numbers read from and written as text, the same under every regional setting.
#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "base/text.h"

namespace corvane {

// Reads a plain decimal integer: optional "-" for signed types, digits, nothing else (no blanks, no
// "+"). nullopt when the text is not of that form or the value does not fit `Int`.
template <std::integral Int>
[[nodiscard]] std::optional<Int> ParseDecimal(std::string_view text) {
  Int value{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value, 10);
  if (result.ec != std::errc{} || result.ptr != end) return std::nullopt;
  return value;
}

// True when the text is an optional "-" followed by at least one digit and nothing else, whatever
// its size: the sign that a failed ParseDecimal is an overflow and not a misspelling.
[[nodiscard]] bool IsDecimal(std::string_view text);

// Reads the number that a caption, tag or list entry shows: blanks around it are dropped first.
template <std::integral Int>
[[nodiscard]] std::optional<Int> ParseShown(std::string_view text) {
  return ParseDecimal<Int>(Trim(text));
}

// Plain decimal, no leading zeros, "-" in front of negative values.
template <std::integral Int>
[[nodiscard]] std::string Decimal(Int value) {
  return std::to_string(value);
}

// Decimal with at least `width` digits, padded with "0" on the left; the sign is not counted.
[[nodiscard]] std::string ZeroPadded(long long value, std::size_t width);

}  // namespace corvane
