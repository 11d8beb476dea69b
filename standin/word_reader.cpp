// Every fault names the word as the user wrote it.
#include "standin/word_reader.h"

#include <algorithm>
#include <optional>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane::standin {

namespace {

constexpr std::size_t kMaxListed = 1000;

bool IsNameCharacter(char c) {
  return (c >= 'a' && c <= 'z') || c == '-';
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// `line` stands behind the opening quote; afterwards behind the closing one.
std::string ReadQuoted(std::string_view& line, std::string& value) {
  while (!line.empty()) {
    const char c = line.front();
    line.remove_prefix(1);
    if (c == '"') return {};
    if (c != '\\') {
      value += c;
      continue;
    }
    if (line.empty()) break;
    const char escape = line.front();
    line.remove_prefix(1);
    if (escape == 'r' || escape == 'n' || escape == 't') {
      value += escape == 'r' ? '\r' : escape == 'n' ? '\n' : '\t';
    } else if (escape == 'x') {
      if (line.size() < 2 || HexDigit(line[0]) < 0 || HexDigit(line[1]) < 0) {
        return "\\x needs two hexadecimal digits";
      }
      value += static_cast<char>(HexDigit(line[0]) * 16 + HexDigit(line[1]));
      line.remove_prefix(2);
    } else if (escape == '"' || escape == '\\') {
      value += escape;
    } else {
      return std::string("unknown escape \\") + escape;
    }
  }
  return "the closing quote is missing";
}

}  // namespace

std::string SplitWords(std::string_view line, std::vector<Word>& words) {
  if (line.size() > kMaxLineBytes) return "the line is longer than 4096 characters";
  for (;;) {
    while (!line.empty() && (line.front() == ' ' || line.front() == '\t')) line.remove_prefix(1);
    if (line.empty() || line.front() == '#') return {};
    Word word;
    std::size_t name = 0;
    while (name < line.size() && IsNameCharacter(line[name])) ++name;
    if (name > 0 && name < line.size() && line[name] == '=') {
      word.name = line.substr(0, name);
      line.remove_prefix(name + 1);
    }
    if (line.starts_with('"')) {
      word.quoted = true;
      line.remove_prefix(1);
      const std::string fault = ReadQuoted(line, word.value);
      if (!fault.empty()) return fault;
      if (!line.empty() && line.front() != ' ' && line.front() != '\t') {
        return "a blank is missing behind the closing quote";
      }
    } else {
      const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
      word.value = line.substr(0, end);
      line.remove_prefix(end);
    }
    words.push_back(std::move(word));
  }
}

bool ParseTime(std::string_view text, std::int64_t& ms) {
  const std::vector<std::string> parts = Split(text, ':');
  if (parts.size() > 3) return false;
  std::int64_t seconds = 0;
  for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
    const std::optional<std::uint32_t> number = ParseDecimal<std::uint32_t>(parts[i]);
    if (!number || (i > 0 && *number > 59)) return false;
    seconds = (seconds + *number) * 60;
  }
  const std::size_t dot = parts.back().find('.');
  const std::string whole = parts.back().substr(0, dot);
  const std::optional<std::uint32_t> last = ParseDecimal<std::uint32_t>(whole);
  if (!last || (parts.size() > 1 && *last > 59)) return false;
  std::int64_t thousandths = 0;
  if (dot != std::string::npos) {
    std::string fraction = parts.back().substr(dot + 1);
    if (fraction.empty() || fraction.size() > 3) return false;
    fraction.resize(3, '0');
    const std::optional<std::uint32_t> number = ParseDecimal<std::uint32_t>(fraction);
    if (!number) return false;
    thousandths = *number;
  }
  ms = (seconds + *last) * 1000 + thousandths;
  return ms <= kMaxTimeMs;
}

std::string WordReader::Next(std::string_view what) {
  for (std::size_t i = 0; i < words_.size(); ++i) {
    if (taken_[i] || !words_[i].name.empty()) continue;
    taken_[i] = true;
    return words_[i].value;
  }
  Fail(std::string(what) + " is missing");
  return {};
}

std::int64_t WordReader::NextNumber(std::string_view what, std::int64_t low, std::int64_t high) {
  const std::string text = Next(what);
  return fault_.empty() ? Checked(what, text, low, high) : low;
}

std::size_t WordReader::NextChoice(std::string_view what,
                                   std::initializer_list<std::string_view> choices) {
  const std::string text = Next(what);
  std::string all;
  std::size_t index = 0;
  for (const std::string_view choice : choices) {
    if (text == choice) return index;
    all += (all.empty() ? "" : ", ") + std::string(choice);
    ++index;
  }
  Fail(std::string(what) + " is one of " + all + ", not \"" + text + "\"");
  return 0;
}

bool WordReader::Has(std::string_view name) const {
  for (const Word& word : words_) {
    if (word.name == name) return true;
  }
  return false;
}

std::string WordReader::Text(std::string_view name, std::string_view otherwise) {
  const Word* word = Take(name);
  return word == nullptr ? std::string(otherwise) : word->value;
}

std::int64_t WordReader::Number(std::string_view name, std::int64_t low, std::int64_t high) {
  const Word* word = Take(name);
  if (word == nullptr) Fail(std::string(name) + "= is missing");
  return word == nullptr ? low : Checked(name, word->value, low, high);
}

std::int64_t WordReader::Number(std::string_view name, std::int64_t low, std::int64_t high,
                                std::int64_t otherwise) {
  const Word* word = Take(name);
  return word == nullptr ? otherwise : Checked(name, word->value, low, high);
}

std::int64_t WordReader::NumberOrAll(std::string_view name, std::int64_t low, std::int64_t high,
                                     std::int64_t otherwise, std::int64_t all) {
  const Word* word = Take(name);
  if (word == nullptr) return otherwise;
  return word->value == "all" ? all : Checked(name, word->value, low, high);
}

std::int64_t WordReader::Seconds(std::string_view name) {
  const Word* word = Take(name);
  std::int64_t ms = 0;
  if (word != nullptr && !ParseTime(word->value, ms)) {
    Fail(std::string(name) + "= is a time like 2.5 or 1:30, not \"" + word->value + "\"");
  }
  return ms;
}

std::vector<std::int32_t> WordReader::Numbers(std::string_view name, std::int64_t low,
                                              std::int64_t high,
                                              std::vector<std::int32_t> otherwise) {
  const Word* word = Take(name);
  if (word == nullptr) return otherwise;
  std::vector<std::int32_t> numbers;
  for (const std::string& part : Split(word->value, ',')) {
    const std::size_t dash = part.find('-');
    const std::int64_t first = Checked(name, part.substr(0, dash), low, high);
    const std::int64_t last =
        dash == std::string::npos ? first : Checked(name, part.substr(dash + 1), low, high);
    if (!fault_.empty()) return {};
    if (last < first || last - first >= static_cast<std::int64_t>(kMaxListed)) {
      Fail(std::string(name) + "= holds a range that is backwards or too long");
      return {};
    }
    for (std::int64_t number = first; number <= last; ++number) {
      numbers.push_back(static_cast<std::int32_t>(number));
    }
    if (numbers.size() > kMaxListed) Fail(std::string(name) + "= holds too many numbers");
  }
  return numbers;
}

bool WordReader::Flag(std::string_view word) {
  for (std::size_t i = 0; i < words_.size(); ++i) {
    if (taken_[i] || !words_[i].name.empty() || words_[i].quoted || words_[i].value != word) {
      continue;
    }
    taken_[i] = true;
    return true;
  }
  return false;
}

void WordReader::Fail(const std::string& fault) {
  if (fault_.empty()) fault_ = fault;
}

std::string WordReader::Finish() {
  for (std::size_t i = 0; i < words_.size() && fault_.empty(); ++i) {
    if (taken_[i]) continue;
    const Word& word = words_[i];
    fault_ = "\"" + (word.name.empty() ? word.value : word.name + "=") + "\" does not belong here";
  }
  return fault_;
}

const Word* WordReader::Take(std::string_view name) {
  for (std::size_t i = 0; i < words_.size(); ++i) {
    if (taken_[i] || words_[i].name != name) continue;
    taken_[i] = true;
    return &words_[i];
  }
  return nullptr;
}

std::int64_t WordReader::Checked(std::string_view what, const std::string& text, std::int64_t low,
                                 std::int64_t high) {
  const std::optional<std::int64_t> number = ParseDecimal<std::int64_t>(text);
  if (!number || *number < low || *number > high) {
    Fail(std::string(what) + " is a number from " + Decimal(low) + " to " + Decimal(high) +
         ", not \"" + text + "\"");
    return low;
  }
  return *number;
}

}  // namespace corvane::standin
