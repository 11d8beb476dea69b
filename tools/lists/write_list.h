// Writing lists for other programs, each within what its format can carry.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/lists/foreign_list.h"

namespace corvane::tools {

struct NamedNumber {
  std::int32_t number = 0;
  std::int32_t group = 0;  // of a radio
  std::string label;       // of the code page, never empty
  bool locked_out = false;
  bool is_radio = false;
};

struct WrittenList {
  std::string text;
  std::size_t rows = 0;
  std::vector<std::string> left_out;  // what the format could not carry, a line for each
};

// `network` stands where a format has a column for where a group belongs, as "262-42".
[[nodiscard]] WrittenList WriteForeignList(ListFormat format, const std::vector<NamedNumber>& named,
                                           const std::string& network);

}  // namespace corvane::tools
