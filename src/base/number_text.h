// Decimal numbers read from and written as text, the same under every regional setting.
#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <limits>
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
  // Digits that fit, as nearly every text has them.
  if (!text.empty() && text.size() <= std::numeric_limits<Int>::digits10) {
    std::size_t digits = 0;
    for (; digits < text.size() && text[digits] >= '0' && text[digits] <= '9'; ++digits) {
      value = static_cast<Int>(value * Int{10} + static_cast<Int>(text[digits] - '0'));
    }
    if (digits == text.size()) return value;
    value = Int{};
  }
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

// The same behind what `text` holds.
template <std::integral Int>
void AppendDecimal(std::string& text, Int value) {
  std::array<char, std::numeric_limits<Int>::digits10 + 2> digits;
  const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  text.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

// Decimal with at least `width` digits, padded with "0" on the left; the sign is not counted.
[[nodiscard]] std::string ZeroPadded(long long value, std::size_t width);

}  // namespace corvane
