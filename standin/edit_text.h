// The text of a multi-line edit box and where its lines are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::standin {

// How a multi-line edit box shows a line that is longer than the box is wide.
enum class Wrap {
  kNone,        // in one
  kWords,       // as several, broken behind blanks
  kSwallowing,  // likewise, and the blank at the break belongs to neither
};

// The text of a multi-line edit box, and its answers about lines. Lines are separated by CR LF, and
// where they are wrapped by nothing; a text always has at least one line, the last one being what
// follows the last break.
class EditText {
 public:
  EditText() : starts_(1, 0) {}

  // From now on, whatever the text is; `columns` is what fits into a line.
  void SetWrap(Wrap wrap, std::size_t columns);
  [[nodiscard]] bool wraps() const { return wrap_ != Wrap::kNone; }

  void Set(std::string_view text);
  void Append(std::string_view text);
  // Drops whole lines from the front until at most `bytes` are left.
  void KeepLast(std::size_t bytes);

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] std::int32_t LineCount() const;
  // Position of a line's first character; -1 beyond the last line. -1 asks for the caret's line.
  [[nodiscard]] std::int32_t LineIndex(std::int32_t line) const;
  // Length of the line that holds the character at `position`; 0 beyond the end.
  [[nodiscard]] std::int32_t LineLength(std::int32_t position) const;
  // The line without its line end; nothing when there is no such line.
  [[nodiscard]] std::string Line(std::int32_t line) const;

 private:
  void Index(std::size_t from);
  void IndexWrapped();
  [[nodiscard]] std::size_t LengthOf(std::size_t line) const;

  std::string text_;
  std::vector<std::size_t> starts_;
  std::size_t caret_line_ = 0;
  Wrap wrap_ = Wrap::kNone;
  std::size_t columns_ = 0;
};

}  // namespace corvane::standin
