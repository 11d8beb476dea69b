// Splitting of lines.
#include "tools/lists/cells.h"

#include <array>

#include "base/text.h"

namespace corvane::tools {

namespace {

// What a quoted cell says, and how much of `text`, which begins behind its first mark, it takes up
// with the second one. nullopt when there is no second one before a separator or the end.
struct Quoted {
  std::string text;
  std::size_t size = 0;
};

bool EndsCell(std::string_view rest, char separator) {
  rest = Bare(rest.substr(0, rest.find(separator)));
  return rest.empty();
}

std::optional<Quoted> ReadQuoted(std::string_view text, const CellRules& rules) {
  Quoted quoted;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("\"\"")) {
      quoted.text += '"';
      ++at;
    } else if (rest.front() == '"') {
      if (!EndsCell(rest.substr(1), rules.separator)) return std::nullopt;
      quoted.size = at + 1;
      return quoted;
    } else if (rules.backslash && rest.starts_with("\\\"") && !rest.starts_with("\\\"\"") &&
               !EndsCell(rest.substr(2), rules.separator)) {
      quoted.text += '"';
      ++at;
    } else {
      quoted.text += rest.front();
    }
  }
  return std::nullopt;
}

}  // namespace

std::string_view Bare(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

std::optional<std::string_view> BytesOfText(std::string_view content) {
  if (content.starts_with("\xFF\xFE") || content.starts_with("\xFE\xFF")) return std::nullopt;
  if (content.starts_with("\xEF\xBB\xBF")) content.remove_prefix(3);
  return content;
}

std::vector<std::string> CellsOf(std::string_view line, const CellRules& rules) {
  std::vector<std::string> cells;
  for (;;) {
    const std::size_t begin = line.find_first_not_of(rules.separator == '\t' ? " " : " \t");
    std::optional<Quoted> quoted;
    if (rules.quotes && begin != std::string_view::npos && line[begin] == '"') {
      quoted = ReadQuoted(line.substr(begin + 1), rules);
    }
    const std::size_t end = line.find(rules.separator, quoted ? begin + 1 + quoted->size : 0);
    std::string cell = quoted ? quoted->text : std::string(Bare(line.substr(0, end)));
    if (!rules.skip_empty || !cell.empty()) cells.push_back(std::move(cell));
    if (end == std::string_view::npos) return cells;
    line.remove_prefix(end + 1);
  }
}

std::vector<Row> RowsOf(std::string_view content, const CellRules& rules) {
  std::vector<Row> rows;
  LineReader lines(content);
  std::size_t number = 0;
  for (std::string_view line; lines.Next(line);) {
    ++number;
    const std::string_view bare = Bare(line);
    if (bare.empty() || (rules.comment != '\0' && bare.front() == rules.comment)) continue;
    rows.push_back({number, CellsOf(line, rules)});
  }
  return rows;
}

char SeparatorOf(std::string_view content) {
  constexpr std::array kKnown = {',', ';', '\t', '|'};
  std::array<std::size_t, kKnown.size()> seen{};
  LineReader lines(content);
  std::string_view line;
  while (lines.Next(line) && Bare(line).empty()) {
  }
  bool quoted = false;
  for (const char c : line) {
    if (c == '"') quoted = !quoted;
    for (std::size_t i = 0; i < kKnown.size() && !quoted; ++i) seen[i] += c == kKnown[i] ? 1 : 0;
  }
  std::size_t best = 0;
  for (std::size_t i = 1; i < kKnown.size(); ++i) best = seen[i] > seen[best] ? i : best;
  return kKnown[best];
}

}  // namespace corvane::tools
