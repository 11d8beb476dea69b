// Byte string helpers.
#include "base/text.h"

namespace corvane {

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

std::vector<std::string> FileLines(std::string_view content) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < content.size()) {
    const std::size_t end = content.find_first_of("\r\n", start);
    if (end == std::string_view::npos) {
      lines.emplace_back(content.substr(start));
      break;
    }
    lines.emplace_back(content.substr(start, end - start));
    const bool cr_lf = content[end] == '\r' && end + 1 < content.size() && content[end + 1] == '\n';
    start = end + (cr_lf ? 2 : 1);
  }
  return lines;
}

}  // namespace corvane
