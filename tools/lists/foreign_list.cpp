// Reading the lists of other programs.
#include "tools/lists/foreign_list.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

#include "base/number_text.h"
#include "base/text.h"
#include "tools/lists/cells.h"
#include "tools/lists/label_text.h"

namespace corvane::tools {

namespace {

constexpr std::size_t kLongestShown = 40;

constexpr std::array<const char*, kListFormats> kNames = {"trunk-recorder", "trunk-recorder-units",
                                                          "radioreference", "dsdplus-groups",
                                                          "dsdplus-radios", "op25",
                                                          "telive",         "dsd-fme",
                                                          "rdio-scanner"};

std::string Shown(std::string_view bytes) {
  const std::string shown = ShownFrom(bytes);
  const std::string cut = CutLetters(shown, kLongestShown);
  return "\"" + cut + (cut.size() < shown.size() ? "...\"" : "\"");
}

std::string_view CellAt(const Row& row, std::size_t index) {
  return index < row.cells.size() ? std::string_view(row.cells[index]) : std::string_view();
}

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Where a table has what is taken from it.
struct Columns {
  std::size_t number = kNone;
  std::size_t tag = kNone;
  std::size_t description = kNone;
};

Columns ColumnsOf(const Row& header) {
  Columns columns;
  for (std::size_t i = 0; i < header.cells.size(); ++i) {
    const std::string name = Lowered(header.cells[i]);
    if (name == "decimal" || name == "dec") columns.number = i;
    if (name == "alpha tag") columns.tag = i;
    if (name == "description") columns.description = i;
  }
  return columns;
}

// Rows of a table with or without a header; without one the columns stand as in `usual`.
ForeignList ReadTable(const std::vector<Row>& rows, const Columns& usual) {
  ForeignList list;
  if (rows.empty()) return list;
  Columns columns = ColumnsOf(rows.front());
  const bool has_header = columns.number != kNone;
  if (!has_header) columns = usual;
  if (columns.tag == kNone && columns.description == kNone) {
    list.problem = "has no column of names: neither Alpha Tag nor Description";
    return list;
  }
  for (std::size_t i = has_header ? 1 : 0; i < rows.size(); ++i) {
    const std::string_view tag = CellAt(rows[i], columns.tag);
    list.Add(rows[i].line, CellAt(rows[i], columns.number),
             LabelFrom(tag).empty() ? CellAt(rows[i], columns.description) : tag);
  }
  return list;
}

ForeignList ReadTrunkRecorder(std::string_view content) {
  return ReadTable(RowsOf(content, {.backslash = true, .comment = '#'}), {0, 3, 4});
}

ForeignList ReadRadioReference(std::string_view content) {
  return ReadTable(RowsOf(content, {.separator = SeparatorOf(content)}), {0, 2, 4});
}

ForeignList ReadUnits(std::string_view content) {
  ForeignList list;
  for (const Row& row : RowsOf(content, {.backslash = true, .comment = '#'})) {
    const std::string_view id = CellAt(row, 0);
    if (id.starts_with('/')) {
      list.Skip(row.line, Shown(id) + " is a pattern of several numbers");
    } else {
      list.Add(row.line, id, CellAt(row, 1));
    }
  }
  return list;
}

// The alias stands in quotation marks, with "*" in front when it was learnt from the air. Nothing
// is escaped in it, and further fields may follow. Without quotation marks it is the cell at
// `usual`.
std::string_view AliasOf(std::string_view line, const Row& row, std::size_t usual) {
  const std::size_t mark = line.find('"');
  if (mark == std::string_view::npos) return CellAt(row, usual);
  const std::string_view alias = line.substr(mark + 1);
  for (std::size_t end = alias.find('"'); end != std::string_view::npos;
       end = alias.find('"', end + 1)) {
    const std::string_view behind = Bare(alias.substr(end + 1));
    if (behind.empty() || behind.front() == ',') return alias.substr(0, end);
  }
  return alias;
}

// `radios`: the column of the radio stands behind that of the group.
ForeignList ReadDsdPlus(std::string_view content, bool radios) {
  constexpr CellRules kRules = {.quotes = false, .comment = ';'};
  constexpr std::size_t kGroup = 2;
  const std::size_t number = radios ? kGroup + 1 : kGroup;
  const std::vector<Row> rows = RowsOf(content, kRules);
  const auto is_tetra = [](const Row& row) { return SameWord(CellAt(row, 0), "TETRA"); };
  const bool some_tetra = std::ranges::any_of(rows, is_tetra);
  ForeignList list;
  LineReader lines(content);
  std::string_view line;
  std::size_t at = 0;
  for (const Row& row : rows) {
    while (at < row.line && lines.Next(line)) ++at;
    if (some_tetra && !is_tetra(row)) {
      list.Skip(row.line, Shown(CellAt(row, 0)) + " is another protocol than TETRA");
    } else {
      list.Add(row.line, CellAt(row, number), AliasOf(line, row, number + 5),
               radios ? CellAt(row, kGroup) : "0");
    }
  }
  return list;
}

ForeignList ReadOp25(std::string_view content) {
  ForeignList list;
  LineReader lines(content);
  std::size_t number = 0;
  for (std::string_view line; lines.Next(line);) {
    ++number;
    line = line.substr(0, line.find('#'));
    if (Bare(line).empty()) continue;
    const Row row = {number, CellsOf(line, {.separator = '\t', .quotes = false})};
    list.Add(number, CellAt(row, 0), CellAt(row, 1));
  }
  return list;
}

ForeignList ReadTelive(std::string_view content) {
  ForeignList list;
  LineReader lines(content);
  std::size_t number = 0;
  for (std::string_view line; lines.Next(line);) {
    ++number;
    if (Bare(line).empty()) continue;
    const std::size_t blank = line.find(' ');
    list.Add(number, line.substr(0, blank),
             blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1));
  }
  return list;
}

ForeignList ReadDsdFme(std::string_view content) {
  constexpr CellRules kRules = {.quotes = false, .skip_empty = true};
  ForeignList list;
  for (const Row& row : RowsOf(content, kRules)) {
    // Whatever stands in the first line.
    if (row.line > 1) list.Add(row.line, CellAt(row, 0), CellAt(row, 2));
  }
  return list;
}

}  // namespace

const char* NameOf(ListFormat format) {
  return kNames[static_cast<std::size_t>(format)];
}

std::optional<ListFormat> FormatNamed(std::string_view name) {
  for (int index = 0; index < kListFormats; ++index) {
    const auto format = static_cast<ListFormat>(index);
    if (name == NameOf(format)) return format;
  }
  return std::nullopt;
}

ListKind KindOf(ListFormat format) {
  switch (format) {
    case ListFormat::kTrunkRecorderUnits:
    case ListFormat::kDsdPlusRadios:
      return ListKind::kRadios;
    case ListFormat::kTelive:
      return ListKind::kBoth;
    default:
      return ListKind::kGroups;
  }
}

void ForeignList::Add(std::size_t line, std::string_view number, std::string_view label,
                      std::string_view group) {
  ForeignEntry entry;
  entry.line = line;
  for (const auto& [text, value] : {std::pair{number, &entry.number}, {group, &entry.group}}) {
    const auto read = ParseDecimal<std::int32_t>(Bare(text));
    if (!read && !IsDecimal(Bare(text))) {
      return Skip(line, Bare(text).empty() ? "no number" : Shown(text) + " is no number");
    }
    if (!read || *read < 0 || *read > kHighestNumber) {
      return Skip(line, Shown(text) + " is none of 0 to " + Decimal(kHighestNumber));
    }
    *value = *read;
  }
  entry.label = LabelFrom(label);
  if (entry.label.empty()) return Skip(line, Decimal(entry.number) + " has no name");
  entries.push_back(std::move(entry));
}

ForeignList ReadForeignList(ListFormat format, std::string_view content) {
  const auto text = BytesOfText(content);
  if (!text) {
    ForeignList list;
    list.problem = "is UTF-16: save it as UTF-8";
    return list;
  }
  switch (format) {
    case ListFormat::kTrunkRecorder:
      return ReadTrunkRecorder(*text);
    case ListFormat::kTrunkRecorderUnits:
      return ReadUnits(*text);
    case ListFormat::kRadioReference:
      return ReadRadioReference(*text);
    case ListFormat::kDsdPlusGroups:
      return ReadDsdPlus(*text, false);
    case ListFormat::kDsdPlusRadios:
      return ReadDsdPlus(*text, true);
    case ListFormat::kOp25:
      return ReadOp25(*text);
    case ListFormat::kTelive:
      return ReadTelive(*text);
    case ListFormat::kDsdFme:
      return ReadDsdFme(*text);
    case ListFormat::kRdioScanner:
      break;
  }
  ForeignList list;
  list.problem = "is of a format that can be exported alone";
  return list;
}

}  // namespace corvane::tools
