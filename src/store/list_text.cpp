// Fields, numbers and labels of list lines, their keys and their order.
#include "store/list_text.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <compare>

namespace corvane {

namespace {

bool BreaksLines(char c) {
  return c == ';' || static_cast<unsigned char>(c) < 32;
}

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

// Eight bytes as a number that is less where they are less, byte by byte.
std::uint64_t BytesAsNumber(const char* bytes) {
  std::uint64_t number = 0;
  for (int at = 0; at < 8; ++at) number = number << 8U | static_cast<unsigned char>(bytes[at]);
  return number;
}

// A key in numbers, and where it stood: of equal ones the earlier is less.
struct PlacedKey {
  std::uint64_t front;
  std::uint64_t middle;
  unsigned char last;
  std::uint32_t position;
  auto operator<=>(const PlacedKey&) const = default;
};
static_assert(std::tuple_size_v<ListKey> == 2 * sizeof(std::uint64_t) + 1);

}  // namespace

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

std::string CleanLabel(std::string_view text) {
  std::string clean(text);
  std::erase_if(clean, BreaksLines);
  return clean;
}

FixedLabel StoredLabel(const FixedLabel& label) {
  const std::string_view padded = label.padded();
  if (padded.front() != ' ' && std::none_of(padded.begin(), padded.end(), BreaksLines)) {
    return label;
  }
  const std::string clean = CleanLabel(padded);
  return FixedLabel(Trim(clean));
}

void AppendLabel(std::string& line, const FixedLabel& label) {
  for (const char c : Trim(label.padded())) {
    if (!BreaksLines(c)) line += c;
  }
}

void AppendNumber(std::string& line, std::int32_t number, char behind) {
  AppendDecimal(line, number);
  line += behind;
}

ListKey MakeListKey(std::int16_t mcc, std::int16_t mnc, std::int32_t gssi) {
  ListKey key{};
  char* const end = key.data() + key.size();
  char* at = PutNumber(key.data(), end, mcc, 4);
  at = PutNumber(at, end, mnc, 5);
  PutNumber(at, end, gssi, 8);
  return key;
}

std::vector<std::uint32_t> ListOrder(const std::vector<ListKey>& keys) {
  std::vector<PlacedKey> placed;
  placed.reserve(keys.size());
  for (const ListKey& key : keys) {
    placed.push_back({BytesAsNumber(key.data()), BytesAsNumber(key.data() + 8),
                      static_cast<unsigned char>(key.back()),
                      static_cast<std::uint32_t>(placed.size())});
  }
  // The program writes its lists in this order already.
  if (!std::is_sorted(placed.begin(), placed.end())) std::sort(placed.begin(), placed.end());
  std::vector<std::uint32_t> order;
  order.reserve(placed.size());
  for (const PlacedKey& key : placed) order.push_back(key.position);
  return order;
}

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
