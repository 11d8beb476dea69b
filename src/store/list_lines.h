// Lines, fields and numbers of the list files, as views into the file's content.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/number_text.h"
#include "base/text.h"
#include "store/start_error.h"

namespace corvane {

// Walks through the lines of a text: CR LF, LF and CR all end a line, a last line without an end
// counts.
class LineReader {
 public:
  explicit LineReader(std::string_view content) : rest_(content) {}
  // False when no line is left.
  [[nodiscard]] bool Next(std::string_view& line);

 private:
  std::string_view rest_;
};

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

}  // namespace corvane
