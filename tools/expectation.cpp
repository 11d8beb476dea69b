// The comparison.
#include "tools/expectation.h"

#include "base/number_text.h"

namespace corvane::tools {

bool Expectation::Put(std::string_view text) {
  next_.Write(text);
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    begun_ += text.substr(0, end);
    Compare(begun_);
    begun_.clear();
    text.remove_prefix(end + 1);
  }
  begun_ += text;
  return next_.ok();
}

void Expectation::Compare(std::string_view line) {
  if (!difference_.empty()) return;
  ++number_;
  std::string_view expected;
  const bool there = expected_.Next(expected);
  if (there && expected == line) return;
  difference_ = "line " + Decimal(number_) +
                " differs\n  expected: " + (there ? std::string(expected) : "nothing more") +
                "\n  found:    " + std::string(line) + "\n";
}

std::string Expectation::Difference() {
  std::string_view expected;
  if (difference_.empty() && expected_.Next(expected)) {
    difference_ = "line " + Decimal(number_ + 1) +
                  " differs\n  expected: " + std::string(expected) + "\n  found:    nothing more\n";
  }
  return difference_;
}

}  // namespace corvane::tools
