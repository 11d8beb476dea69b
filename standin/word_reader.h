// The language of scenario lines: a line as words, and a command's words taken apart by place, by
// name, with ranges.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::standin {

// One word of a line: `value`, or `name=value`; a value may stand in double quotes.
struct Word {
  std::string name;
  std::string value;
  bool quoted = false;
};
inline constexpr std::size_t kMaxLineBytes = 4096;

// "" or what is wrong.
[[nodiscard]] std::string SplitWords(std::string_view line, std::vector<Word>& words);

inline constexpr std::int64_t kMaxTimeMs = 1000LL * 3600 * 1000;  // a thousand hours
// Reads "12.5", "1:02", "1:02:03.250" as milliseconds; false when it is none of these or more than
// kMaxTimeMs.
[[nodiscard]] bool ParseTime(std::string_view text, std::int64_t& ms);

// The first fault is kept; after it every answer is the default.
class WordReader {
 public:
  explicit WordReader(const std::vector<Word>& words) : words_(words), taken_(words.size()) {}

  // The next word without a name; `what` is what the fault calls it.
  std::string Next(std::string_view what);
  std::int64_t NextNumber(std::string_view what, std::int64_t low, std::int64_t high);
  // One of `choices`, as its index.
  std::size_t NextChoice(std::string_view what, std::initializer_list<std::string_view> choices);

  // "name=value".
  [[nodiscard]] bool Has(std::string_view name) const;
  std::string Text(std::string_view name, std::string_view otherwise);
  std::int64_t Number(std::string_view name, std::int64_t low, std::int64_t high);
  std::int64_t Number(std::string_view name, std::int64_t low, std::int64_t high,
                      std::int64_t otherwise);
  // A number, or "all" for `all`.
  std::int64_t NumberOrAll(std::string_view name, std::int64_t low, std::int64_t high,
                           std::int64_t otherwise, std::int64_t all);
  std::int64_t Seconds(std::string_view name);  // as milliseconds; 0 when it is not given
  // "9001-9005,9010" as a list of numbers; `otherwise` when it is not given.
  std::vector<std::int32_t> Numbers(std::string_view name, std::int64_t low, std::int64_t high,
                                    std::vector<std::int32_t> otherwise);
  // A word that stands alone.
  bool Flag(std::string_view word);

  void Fail(const std::string& fault);
  // "" or the first fault; words that nobody asked for are one.
  [[nodiscard]] std::string Finish();

 private:
  const Word* Take(std::string_view name);
  std::int64_t Checked(std::string_view what, const std::string& text, std::int64_t low,
                       std::int64_t high);

  const std::vector<Word>& words_;
  std::vector<bool> taken_;
  std::string fault_;
};

}  // namespace corvane::standin
