// Line starts are kept beside the text, so that each answer takes a binary search at most.
#include "standin/edit_text.h"

#include <algorithm>

namespace corvane::standin {

void EditText::Set(std::string_view text) {
  text_ = text;
  starts_.assign(1, 0);
  Index(0);
  caret_line_ = 0;
}

void EditText::Append(std::string_view text) {
  // The text before may end in a CR whose LF comes only now.
  const std::size_t from = text_.empty() ? 0 : text_.size() - 1;
  text_ += text;
  Index(from);
  caret_line_ = starts_.size() - 1;
}

void EditText::KeepLast(std::size_t bytes) {
  if (text_.size() <= bytes) return;
  const std::size_t surplus = text_.size() - bytes;
  const auto first = std::lower_bound(starts_.begin(), starts_.end(), surplus);
  const std::size_t cut = first == starts_.end() ? starts_.back() : *first;
  const std::string rest = text_.substr(cut);
  Set(rest);
  caret_line_ = starts_.size() - 1;
}

std::int32_t EditText::LineCount() const {
  return static_cast<std::int32_t>(starts_.size());
}

std::int32_t EditText::LineIndex(std::int32_t line) const {
  const std::size_t wanted = line == -1 ? caret_line_ : static_cast<std::size_t>(line);
  if (line < -1 || wanted >= starts_.size()) return -1;
  return static_cast<std::int32_t>(starts_[wanted]);
}

std::int32_t EditText::LineLength(std::int32_t position) const {
  if (position == -1) return static_cast<std::int32_t>(LengthOf(caret_line_));
  if (position < 0 || static_cast<std::size_t>(position) > text_.size()) return 0;
  const auto after =
      std::upper_bound(starts_.begin(), starts_.end(), static_cast<std::size_t>(position));
  return static_cast<std::int32_t>(LengthOf(static_cast<std::size_t>(after - starts_.begin()) - 1));
}

std::string EditText::Line(std::int32_t line) const {
  if (line < 0 || line >= LineCount()) return {};
  const auto index = static_cast<std::size_t>(line);
  return text_.substr(starts_[index], LengthOf(index));
}

void EditText::Index(std::size_t from) {
  for (;;) {
    const std::size_t end = text_.find("\r\n", from);
    if (end == std::string::npos) return;
    from = end + 2;
    if (from > starts_.back()) starts_.push_back(from);
  }
}

std::size_t EditText::LengthOf(std::size_t line) const {
  const std::size_t end = line + 1 < starts_.size() ? starts_[line + 1] - 2 : text_.size();
  return end - starts_[line];
}

}  // namespace corvane::standin
