// The stable sort of keyed lines.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace corvane {

// Sorts whole lines ascending by the `length` bytes of each that begin at `start` (counted from 1),
// compared as unsigned bytes; a line that ends earlier is compared as far as it goes. Lines with
// equal keys keep their order.
void SortKeyedLines(std::vector<std::string>& lines, std::size_t start, std::size_t length);

}  // namespace corvane
