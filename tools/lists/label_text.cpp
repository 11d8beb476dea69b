// Cleaning and converting labels.
#include "tools/lists/label_text.h"

#include <algorithm>

#include "archive/utf8.h"
#include "base/text.h"
#include "store/list_text.h"
#include "store/tables.h"

namespace corvane::tools {

namespace {

// The bytes that Windows-1252 has no letter for are control characters.
bool IsControl(char c) {
  const unsigned byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F || byte == 0x81 || byte == 0x8D || byte == 0x8F ||
         byte == 0x90 || byte == 0x9D;
}

// Control characters of UTF-8 would otherwise be letters that the code page does not hold.
std::string WithoutUpperControls(std::string_view utf8) {
  std::string text;
  for (std::size_t at = 0; at < utf8.size(); ++at) {
    const bool control = utf8[at] == '\xC2' && at + 1 < utf8.size() &&
                         static_cast<unsigned char>(utf8[at + 1]) < 0xA0;
    if (control) {
      ++at;
    } else {
      text += utf8[at];
    }
  }
  return text;
}

std::string Clean(std::string_view bytes) {
  std::string label = IsUtf8(bytes) ? Ansi(WithoutUpperControls(bytes)) : std::string(bytes);
  std::ranges::replace(label, '\t', ' ');
  std::ranges::replace(label, ';', ',');
  std::erase_if(label, IsControl);
  return std::string(Trim(CleanLabel(label)));
}

}  // namespace

std::string LabelFrom(std::string_view bytes) {
  return FixedLabel(Clean(bytes)).trimmed();
}

std::string ShownFrom(std::string_view bytes) {
  return Utf8(Clean(bytes));
}

std::string LabelTo(std::string_view label) {
  std::string clean(label);
  std::erase_if(clean, IsControl);
  return Utf8(Trim(clean));
}

std::string CutLetters(std::string_view utf8, std::size_t bytes) {
  std::size_t size = std::min(utf8.size(), bytes);
  while (size < utf8.size() && size > 0 &&
         (static_cast<unsigned char>(utf8[size]) & 0xC0U) == 0x80U) {
    --size;
  }
  return std::string(TrimRight(utf8.substr(0, size)));
}

}  // namespace corvane::tools
