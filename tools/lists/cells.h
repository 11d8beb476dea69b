// Rows and cells of the lists of other programs: separators, quotation marks, comments, byte order
// marks. It knows no columns.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::tools {

struct CellRules {
  char separator = ',';
  // '"' around a cell keeps separators in it, and "" stands for one of them.
  bool quotes = true;
  // Within quotation marks \" stands for one of them too.
  bool backslash = false;
  // A row that begins with it is a comment. '\0': there are none.
  char comment = '\0';
  // Nothing stands between two separators: the cell is passed over.
  bool skip_empty = false;
};

struct Row {
  std::size_t line = 0;  // from 1
  // Without blanks and tabs at their ends, except within quotation marks.
  std::vector<std::string> cells;
};

// The content without the byte order mark of UTF-8; nullopt when it is UTF-16.
[[nodiscard]] std::optional<std::string_view> BytesOfText(std::string_view content);

// A row is one line, whatever stands in it: a quotation mark that is not closed there is a letter.
// Empty lines are no rows.
[[nodiscard]] std::vector<Row> RowsOf(std::string_view content, const CellRules& rules);

// The cells of one line.
[[nodiscard]] std::vector<std::string> CellsOf(std::string_view line, const CellRules& rules);

// What separates the cells of the first line that is not empty: the one of , ; tab | that stands
// there most often outside of quotation marks.
[[nodiscard]] char SeparatorOf(std::string_view content);

// Without blanks and tabs at both ends.
[[nodiscard]] std::string_view Bare(std::string_view text);

}  // namespace corvane::tools
