// The text of the list files: fields, numbers and labels of a line, and the order of the lines.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "store/start_error.h"
#include "store/tables.h"

namespace corvane {

// The line is empty, or begins with "'" or "#".
[[nodiscard]] bool IsEmptyOrComment(std::string_view line);

// Splits off the first `Count` fields at ";". False when there are fewer; further ones are ignored.
template <std::size_t Count>
[[nodiscard]] bool SplitFields(std::string_view line, std::array<std::string_view, Count>& fields) {
  bool more = true;
  for (std::string_view& field : fields) {
    if (!more) return false;
    const std::size_t end = line.find(';');
    field = line.substr(0, end);
    more = end != std::string_view::npos;
    if (more) line.remove_prefix(end + 1);
  }
  return true;
}

// Decimal digits, perhaps with a "-" in front and blanks around: the numeric test of all files.
[[nodiscard]] bool IsNumeric(std::string_view text);

// IsNumeric, and less than `limit`. There is no lower bound.
[[nodiscard]] bool IsNumberBelow(std::string_view text, std::int64_t limit);

// Reads a number into `value`: kTypeMismatch when it is not numeric, kOverflow when it does not
// fit.
template <std::integral Int>
[[nodiscard]] ErrorNumber ReadNumber(std::string_view text, Int& value) {
  text = Trim(text);
  const auto number = ParseDecimal<Int>(text);
  if (!number) return IsDecimal(text) ? kOverflow : kTypeMismatch;
  value = *number;
  return kNoError;
}

// The text without ";" and without characters below 32. Characters from 128 up are kept.
[[nodiscard]] std::string CleanLabel(std::string_view text);

// The label as a line holds it: cleaned, without blanks at both ends.
[[nodiscard]] FixedLabel StoredLabel(const FixedLabel& label);
void AppendLabel(std::string& line, const FixedLabel& label);

// Plain decimal, then `behind`.
void AppendNumber(std::string& line, std::int32_t number, char behind);

// The sort key of one line of a group or subscriber list: country in 4 digits, network in 5, group
// in 8, compared as text. Numbers that need more push the rest out at the end.
using ListKey = std::array<char, 17>;

[[nodiscard]] ListKey MakeListKey(std::int16_t mcc, std::int16_t mnc, std::int32_t gssi);

// The positions of `keys` in ascending order of the keys; equal keys keep their order.
[[nodiscard]] std::vector<std::uint32_t> ListOrder(const std::vector<ListKey>& keys);

// Sorts whole lines ascending by the `length` bytes of each that begin at `start` (counted from 1),
// compared as unsigned bytes; a line that ends earlier is compared as far as it goes. Lines with
// equal keys keep their order.
void SortKeyedLines(std::vector<std::string>& lines, std::size_t start, std::size_t length);

}  // namespace corvane
