// Number helpers that need no template.
#include "base/number_text.h"

#include <algorithm>

namespace corvane {

bool IsDecimal(std::string_view text) {
  if (!text.empty() && text.front() == '-') text.remove_prefix(1);
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string ZeroPadded(long long value, std::size_t width) {
  const bool negative = value < 0;
  std::string digits = std::to_string(value);
  if (negative) digits.erase(0, 1);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return negative ? "-" + digits : digits;
}

}  // namespace corvane
