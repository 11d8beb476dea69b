// Labels without the characters that a line is built of.
#include "store/label_text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/text.h"

namespace corvane {

namespace {

bool BreaksLines(char c) {
  return c == ';' || static_cast<unsigned char>(c) < 32;
}

}  // namespace

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
  std::array<char, 12> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  line.append(digits.data(), end);
  line += behind;
}

}  // namespace corvane
