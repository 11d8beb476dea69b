// Text of the ANSI code page as other programs read it.
#pragma once

#include <string>
#include <string_view>

namespace corvane::tools {

// Windows-1252, the code page of western Europe, as UTF-8. Every byte gives one letter, so the
// result is always valid.
[[nodiscard]] std::string Utf8(std::string_view ansi);

// The same the other way; what the code page does not hold, and what is no UTF-8, becomes "?".
[[nodiscard]] std::string Ansi(std::string_view utf8);

// The text between quotation marks as JSON has it. `utf8` is valid UTF-8.
[[nodiscard]] std::string JsonString(std::string_view utf8);

// A field of a line of comma-separated values, in quotation marks where it needs them.
[[nodiscard]] std::string CsvField(std::string_view utf8);

// The same of text that others chose: one that a spreadsheet would take for a formula gets an
// apostrophe in front, which makes it text there.
[[nodiscard]] std::string SafeCsvField(std::string_view utf8);

// Whether all of it is UTF-8 as it should be: no cut letters, no surrogates, nothing in a longer
// form than needed.
[[nodiscard]] bool IsUtf8(std::string_view text);

}  // namespace corvane::tools
