// The notation of Net Remote commands: one flat object of texts, numbers and truth values. Anything
// nested is refused, so there is no depth to limit.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::standin {

enum class JsonKind { kString, kNumber, kTruth, kNull };

struct JsonValue {
  JsonKind kind = JsonKind::kNull;
  std::string text;  // of a string without quotes and escapes; else as it stands
};

struct JsonObject {
  std::vector<std::pair<std::string, JsonValue>> members;
  // The first member of that name, whatever its case; nullptr when there is none.
  [[nodiscard]] const JsonValue* Find(std::string_view name) const;
};

// False when the text is anything but exactly one object, with blanks and line ends around it.
[[nodiscard]] bool ParseJsonObject(std::string_view text, JsonObject& object);

// Equal but for the case of the letters A to Z.
[[nodiscard]] bool SameWord(std::string_view a, std::string_view b);

}  // namespace corvane::standin
