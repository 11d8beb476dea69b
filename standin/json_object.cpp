// A reader that moves a view forward; every step fails softly.
#include "standin/json_object.h"

#include <algorithm>

namespace corvane::standin {

namespace {

class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool AtEnd() {
    SkipBlanks();
    return rest_.empty();
  }

  bool Take(char wanted) {
    SkipBlanks();
    if (rest_.empty() || rest_.front() != wanted) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool TakeString(std::string& text) {
    if (!Take('"')) return false;
    while (!rest_.empty()) {
      const char c = Next();
      if (c == '"') return true;
      if (static_cast<unsigned char>(c) < 32) return false;
      if (c != '\\') {
        text += c;
      } else if (!TakeEscape(text)) {
        return false;
      }
    }
    return false;
  }

  bool TakeValue(JsonValue& value) {
    SkipBlanks();
    if (rest_.starts_with('"')) {
      value.kind = JsonKind::kString;
      return TakeString(value.text);
    }
    const std::size_t end = std::min(rest_.find_first_of(" \t\r\n,}"), rest_.size());
    value.text = rest_.substr(0, end);
    rest_.remove_prefix(end);
    if (value.text == "true" || value.text == "false") {
      value.kind = JsonKind::kTruth;
    } else if (value.text == "null") {
      value.kind = JsonKind::kNull;
    } else {
      value.kind = JsonKind::kNumber;
      return IsNumber(value.text);
    }
    return true;
  }

 private:
  void SkipBlanks() {
    const std::size_t first = std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size());
    rest_.remove_prefix(first);
  }

  char Next() {
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  bool TakeEscape(std::string& text) {
    constexpr std::string_view kEscapes = "\"\\/bfnrt";
    constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
    if (rest_.empty()) return false;
    const char c = Next();
    const std::size_t known = kEscapes.find(c);
    if (known != std::string_view::npos) {
      text += kMeanings[known];
      return true;
    }
    if (c != 'u' || rest_.size() < 4) return false;
    unsigned code = 0;
    for (int i = 0; i < 4; ++i) {
      const std::size_t digit =
          std::string_view("0123456789abcdef")
              .find(static_cast<char>(rest_.front() >= 'A' && rest_.front() <= 'F'
                                          ? rest_.front() + 32
                                          : rest_.front()));
      if (digit == std::string_view::npos) return false;
      code = code * 16 + static_cast<unsigned>(digit);
      rest_.remove_prefix(1);
    }
    text += code < 128 ? static_cast<char>(code) : '?';
    return true;
  }

  static bool IsNumber(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    if (text.empty() || !is_digit(text.front()) || !is_digit(text.back())) return false;
    return std::all_of(text.begin(), text.end(), [&](char c) {
      return is_digit(c) || c == '.' || c == 'e' || c == 'E' || c == '+' || c == '-';
    });
  }

  std::string_view rest_;
};

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

}  // namespace

const JsonValue* JsonObject::Find(std::string_view name) const {
  for (const auto& [key, value] : members) {
    if (SameWord(key, name)) return &value;
  }
  return nullptr;
}

bool ParseJsonObject(std::string_view text, JsonObject& object) {
  Reader reader(text);
  if (!reader.Take('{')) return false;
  if (reader.Take('}')) return reader.AtEnd();
  do {
    std::string key;
    JsonValue value;
    if (!reader.TakeString(key) || !reader.Take(':') || !reader.TakeValue(value)) return false;
    object.members.emplace_back(std::move(key), std::move(value));
  } while (reader.Take(','));
  return reader.Take('}') && reader.AtEnd();
}

bool SameWord(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Lower(x) == Lower(y); });
}

}  // namespace corvane::standin
