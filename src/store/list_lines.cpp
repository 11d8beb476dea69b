// Line and number reading of the list files.
#include "store/list_lines.h"

#include <cstring>

namespace corvane {

bool LineReader::Next(std::string_view& line) {
  if (rest_.empty()) return false;
  // Two runs of memchr over the short way to the next LF beat a search for either character.
  const auto* lf = static_cast<const char*>(std::memchr(rest_.data(), '\n', rest_.size()));
  std::size_t size = lf ? static_cast<std::size_t>(lf - rest_.data()) : rest_.size();
  std::size_t step = lf ? size + 1 : size;
  const auto* cr = static_cast<const char*>(std::memchr(rest_.data(), '\r', size));
  if (cr) {
    size = static_cast<std::size_t>(cr - rest_.data());
    const bool cr_lf = size + 1 < rest_.size() && rest_[size + 1] == '\n';
    step = size + (cr_lf ? 2 : 1);
  }
  line = rest_.substr(0, size);
  rest_.remove_prefix(step);
  return true;
}

bool IsEmptyOrComment(std::string_view line) {
  return line.empty() || line.front() == '\'' || line.front() == '#';
}

bool IsNumeric(std::string_view text) {
  return IsDecimal(Trim(text));
}

bool IsNumberBelow(std::string_view text, std::int64_t limit) {
  text = Trim(text);
  if (!IsDecimal(text)) return false;
  const auto number = ParseDecimal<std::int64_t>(text);
  if (!number) return text.front() == '-';
  return *number < limit;
}

}  // namespace corvane
