// Reads the cases of tests/corpus: contents of files and what must become of them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "tests/unit/store/golden_files.h"

namespace corvane {

struct CorpusCase {
  std::string name;
  std::string outcome;
  std::string content;
  std::optional<std::string> after;
};

// Characters for their escapes, as the head of tests/corpus/group_list.txt explains them.
inline std::string Unescape(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      result += text[i];
      continue;
    }
    const char kind = text.at(++i);
    if (kind == 'x') {
      result += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    } else if (kind == '{') {
      const std::size_t star = text.find('*', i);
      const std::size_t end = text.find('}', i);
      const auto count = ParseDecimal<int>(text.substr(i + 1, star - i - 1));
      const std::string unit = Unescape(text.substr(star + 1, end - star - 1));
      for (int n = 0; n < count.value(); ++n) result += unit;
      i = end;
    } else {
      result += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind == 't' ? '\t' : kind;
    }
  }
  return result;
}

inline std::vector<CorpusCase> ReadCorpus(const std::string& name) {
  std::vector<CorpusCase> cases;
  for (const std::string& line : FileLines(TestFile("corpus/" + name + ".txt"))) {
    if (line.empty() || line.front() == '#') continue;
    const std::vector<std::string> fields = Split(line, '\t');
    if (fields.size() < 3 || fields.size() > 4) {
      ADD_FAILURE() << "bad case: " << line.substr(0, 100);
      continue;
    }
    CorpusCase one{fields[0], fields[1], Unescape(fields[2]), {}};
    if (fields.size() == 4) one.after = fields[3] == "=" ? one.content : Unescape(fields[3]);
    cases.push_back(std::move(one));
  }
  return cases;
}

}  // namespace corvane
