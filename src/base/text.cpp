// Byte string helpers.
#include "base/text.h"

#include <algorithm>
#include <cstring>

namespace corvane {

namespace {

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view TrimRight(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  return TrimRight(text);
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find(separator, start);
    pieces.emplace_back(text.substr(start, end - start));
    if (end == std::string_view::npos) return pieces;
    start = end + 1;
  }
}

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
  std::string result;
  std::size_t start = 0;
  for (;;) {
    const std::size_t at = text.find(what, start);
    result.append(text.substr(start, at - start));
    if (at == std::string_view::npos) return result;
    result.append(with);
    start = at + what.size();
  }
}

std::string ForCaption(std::string_view label) {
  return ReplaceAll(label, "&", "&&");
}

std::string Bracketed(std::string_view label) {
  return label.empty() ? std::string() : "[" + std::string(label) + "]";
}

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  std::ranges::transform(lowered, lowered.begin(), Lower);
  return lowered;
}

bool SameWord(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, Lower, Lower);
}

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

std::vector<std::string> FileLines(std::string_view content) {
  std::vector<std::string> lines;
  LineReader reader(content);
  for (std::string_view line; reader.Next(line);) lines.emplace_back(line);
  return lines;
}

}  // namespace corvane
