// Lookup of labels by the leading fields of their lines.
#include "store/labels.h"

#include <utility>

namespace corvane {

namespace {

// Where the field at `index` (from 0) of the line begins; npos when there are fewer fields.
std::size_t FieldStart(std::string_view line, std::size_t index) {
  std::size_t start = 0;
  for (; index > 0; --index) {
    const std::size_t end = line.find(';', start);
    if (end == std::string_view::npos) return end;
    start = end + 1;
  }
  return start;
}

}  // namespace

void LabelLines::Reset() {
  lines_.Reset();
  first_.clear();
}

void LabelLines::Append(std::string line) {
  const std::size_t label = FieldStart(line, key_fields_);
  std::string key = label == std::string::npos ? line : line.substr(0, label - 1);
  const std::size_t index = lines_.Append(std::move(line));
  first_.try_emplace(std::move(key), index);
}

std::optional<std::string> LabelLines::Find(std::string_view key) const {
  const auto found = first_.find(std::string(key));
  if (found == first_.end()) return std::nullopt;
  const std::string_view line = lines_[found->second];
  const std::size_t start = FieldStart(line, key_fields_);
  if (start == std::string_view::npos) return "";
  return std::string(line.substr(start, line.find(';', start) - start));
}

}  // namespace corvane
