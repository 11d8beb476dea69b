// Keys and order of list lines.
#include "store/list_sort.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <numeric>

namespace corvane {

namespace {

// Writes the number into [at, end) with at least `width` digits, as far as there is room; a "-"
// stands in front of them. Gives the place behind it.
char* PutNumber(char* at, char* end, std::int32_t value, std::ptrdiff_t width) {
  std::array<char, 12> digits{};
  const std::int64_t size = value < 0 ? -std::int64_t{value} : std::int64_t{value};
  const char* last = std::to_chars(digits.data(), digits.data() + digits.size(), size).ptr;
  const auto put = [&at, end](char c) {
    if (at != end) *at++ = c;
  };
  if (value < 0) put('-');
  for (std::ptrdiff_t missing = width - (last - digits.data()); missing > 0; --missing) put('0');
  for (const char* digit = digits.data(); digit != last; ++digit) put(*digit);
  return at;
}

}  // namespace

ListKey MakeListKey(std::int16_t mcc, std::int16_t mnc, std::int32_t gssi) {
  ListKey key{};
  char* const end = key.data() + key.size();
  char* at = PutNumber(key.data(), end, mcc, 4);
  at = PutNumber(at, end, mnc, 5);
  PutNumber(at, end, gssi, 8);
  return key;
}

std::vector<std::uint32_t> ListOrder(const std::vector<ListKey>& keys) {
  std::vector<std::uint32_t> order(keys.size());
  std::iota(order.begin(), order.end(), 0U);
  const auto less = [&keys](std::uint32_t a, std::uint32_t b) {
    return std::memcmp(keys[a].data(), keys[b].data(), keys[a].size()) < 0;
  };
  // The program writes its lists in this order already.
  if (!std::is_sorted(order.begin(), order.end(), less)) {
    std::stable_sort(order.begin(), order.end(), less);
  }
  return order;
}

}  // namespace corvane
