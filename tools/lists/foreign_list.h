// The lists of other programs: which formats there are, and what reading one gives. How each format
// is laid out stands in docs/formats/lists-of-others.md.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::tools {

enum class ListFormat {
  kTrunkRecorder,
  kTrunkRecorderUnits,
  kRadioReference,
  kDsdPlusGroups,
  kDsdPlusRadios,
  kOp25,
  kTelive,
  kDsdFme,
  kRdioScanner,
};
inline constexpr int kListFormats = static_cast<int>(ListFormat::kRdioScanner) + 1;

// What a list names.
enum class ListKind { kGroups, kRadios, kBoth };

[[nodiscard]] const char* NameOf(ListFormat format);
[[nodiscard]] std::optional<ListFormat> FormatNamed(std::string_view name);
[[nodiscard]] ListKind KindOf(ListFormat format);

// Numbers of groups and radios have 24 bits.
inline constexpr std::int32_t kHighestNumber = 16777215;

struct ForeignEntry {
  std::size_t line = 0;
  std::int32_t number = 0;
  std::string label;       // as the program keeps it, never empty
  std::int32_t group = 0;  // of a radio; 0: none is told
};

struct SkippedRow {
  std::size_t line = 0;
  std::string reason;
};

struct ForeignList {
  std::vector<ForeignEntry> entries;
  std::vector<SkippedRow> skipped;
  std::string problem;  // why nothing of it can be read; "" when it can

  // Files the row under `number`, or tells why it is skipped: a number that is none or too large,
  // or no name. Both are bytes of the file.
  void Add(std::size_t line, std::string_view number, std::string_view label,
           std::string_view group = "0");
  void Skip(std::size_t line, std::string reason) { skipped.push_back({line, std::move(reason)}); }
};

// Reads a list of any format but kRdioScanner, which is for export alone.
[[nodiscard]] ForeignList ReadForeignList(ListFormat format, std::string_view content);

}  // namespace corvane::tools
