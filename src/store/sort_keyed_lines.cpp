// A merge sort on views of the keys.
#include "store/sort_keyed_lines.h"

#include <algorithm>
#include <cassert>
#include <string_view>

namespace corvane {

void SortKeyedLines(std::vector<std::string>& lines, std::size_t start, std::size_t length) {
  assert(start >= 1);
  const auto key = [start, length](const std::string& line) {
    const std::string_view text = line;
    return start > text.size() ? std::string_view() : text.substr(start - 1, length);
  };
  std::stable_sort(lines.begin(), lines.end(),
                   [&key](const std::string& a, const std::string& b) { return key(a) < key(b); });
}

}  // namespace corvane
