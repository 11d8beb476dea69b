// Byte strings in the ANSI code page: blanks, letters, lines, splitting, replacing. No conversion
// anywhere.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

// Trim* remove blanks (character 32) alone, as the text functions of the record files do.
[[nodiscard]] std::string_view TrimRight(std::string_view text);
[[nodiscard]] std::string_view Trim(std::string_view text);

// Pieces between separators; an empty text gives one empty piece.
[[nodiscard]] std::vector<std::string> Split(std::string_view text, char separator);

[[nodiscard]] bool Contains(std::string_view text, std::string_view part);

// Every occurrence of `what` replaced by `with`; `what` is not empty.
[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view what,
                                     std::string_view with);

// A label as a caption shows it: "&" doubled, because a single one would mark an access key.
[[nodiscard]] std::string ForCaption(std::string_view label);

// "[" + label + "]", or nothing when the label is empty.
[[nodiscard]] std::string Bracketed(std::string_view label);

// Small letters for A to Z; other letters of the code page stay as they are.
[[nodiscard]] std::string Lowered(std::string_view text);
// Equal but for the case of A to Z.
[[nodiscard]] bool SameWord(std::string_view a, std::string_view b);

// Walks through the lines of a text file: CR LF, LF and CR all end a line, a last line without an
// end counts. The lines are views into the content.
class LineReader {
 public:
  explicit LineReader(std::string_view content) : rest_(content) {}
  // False when no line is left.
  [[nodiscard]] bool Next(std::string_view& line);

 private:
  std::string_view rest_;
};

// The same lines all at once, as copies.
[[nodiscard]] std::vector<std::string> FileLines(std::string_view content);

}  // namespace corvane
