// Line starts are kept beside the text, so that each answer takes a binary search at most.
#include "standin/edit_text.h"

#include <algorithm>

namespace corvane::standin {

void EditText::SetWrap(Wrap wrap, std::size_t columns) {
  wrap_ = wrap;
  columns_ = std::max<std::size_t>(columns, 1);
  IndexWrapped();
  caret_line_ = std::min(caret_line_, starts_.size() - 1);
}

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

// From the beginning each time: only boxes of tests wrap.
void EditText::IndexWrapped() {
  starts_.assign(1, 0);
  for (std::size_t at = 0; at <= text_.size();) {
    const std::size_t found = text_.find("\r\n", at);
    const std::size_t end = found == std::string::npos ? text_.size() : found;
    if (end - at > columns_) {
      const std::size_t blank = text_.rfind(' ', at + columns_ - 1);
      const bool in_line = blank != std::string::npos && blank >= at;
      at = in_line ? blank + 1 : at + columns_;
    } else if (found == std::string::npos) {
      return;
    } else {
      at = found + 2;
    }
    starts_.push_back(at);
  }
}

void EditText::Index(std::size_t from) {
  if (wraps()) return IndexWrapped();
  for (;;) {
    const std::size_t end = text_.find("\r\n", from);
    if (end == std::string::npos) return;
    from = end + 2;
    if (from > starts_.back()) starts_.push_back(from);
  }
}

std::size_t EditText::LengthOf(std::size_t line) const {
  const std::size_t begin = starts_[line];
  if (line + 1 == starts_.size()) return text_.size() - begin;
  const std::size_t end = starts_[line + 1];
  if (end >= begin + 2 && text_.compare(end - 2, 2, "\r\n") == 0) return end - 2 - begin;
  return wrap_ == Wrap::kSwallowing && text_[end - 1] == ' ' ? end - 1 - begin : end - begin;
}

}  // namespace corvane::standin
