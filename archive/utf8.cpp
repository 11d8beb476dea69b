// Code page, JSON and CSV.
#include "archive/utf8.h"

#include <array>

namespace corvane::tools {

namespace {

// 0x80 to 0x9F; the five bytes without a letter stay control characters, as Windows has it.
constexpr std::array<unsigned, 32> kUpper = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

void AppendLetter(std::string& text, unsigned letter) {
  if (letter < 0x80) {
    text += static_cast<char>(letter);
  } else if (letter < 0x800) {
    text += static_cast<char>(0xC0U | (letter >> 6U));
    text += static_cast<char>(0x80U | (letter & 0x3FU));
  } else {
    text += static_cast<char>(0xE0U | (letter >> 12U));
    text += static_cast<char>(0x80U | ((letter >> 6U) & 0x3FU));
    text += static_cast<char>(0x80U | (letter & 0x3FU));
  }
}

}  // namespace

std::string Utf8(std::string_view ansi) {
  std::string text;
  text.reserve(ansi.size());
  for (const char c : ansi) {
    const unsigned byte = static_cast<unsigned char>(c);
    AppendLetter(text, byte >= 0x80 && byte < 0xA0 ? kUpper[byte - 0x80] : byte);
  }
  return text;
}

std::string Ansi(std::string_view utf8) {
  std::string text;
  while (!utf8.empty()) {
    if (static_cast<unsigned char>(utf8.front()) < 0x80) {
      text += utf8.front();
      utf8.remove_prefix(1);
      continue;
    }
    // The letters are few: the one whose UTF-8 stands here is looked for.
    bool found = false;
    for (unsigned byte = 0x80; byte < 0x100 && !found; ++byte) {
      const char letter = static_cast<char>(byte);
      const std::string bytes = Utf8({&letter, 1});
      if (!utf8.starts_with(bytes)) continue;
      text += letter;
      utf8.remove_prefix(bytes.size());
      found = true;
    }
    if (found) continue;
    text += '?';
    utf8.remove_prefix(1);
    while (!utf8.empty() && (static_cast<unsigned char>(utf8.front()) & 0xC0U) == 0x80U) {
      utf8.remove_prefix(1);
    }
  }
  return text;
}

std::string JsonString(std::string_view utf8) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text = "\"";
  for (const char c : utf8) {
    const unsigned byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      text += '\\';
      text += c;
    } else if (byte < 0x20) {
      text += "\\u00";
      text += kDigits[byte >> 4U];
      text += kDigits[byte & 0xFU];
    } else {
      text += c;
    }
  }
  return text + '"';
}

std::string CsvField(std::string_view utf8) {
  if (utf8.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(utf8);
  std::string text = "\"";
  for (const char c : utf8) {
    if (c == '"') text += '"';
    text += c;
  }
  return text + '"';
}

std::string SafeCsvField(std::string_view utf8) {
  // Blanks and control characters in front are passed over by some of them.
  const std::size_t first = utf8.find_first_not_of(" \t\r\n\v\f");
  const bool formula = first != std::string_view::npos &&
                       std::string_view("=+-@").find(utf8[first]) != std::string_view::npos;
  const bool control = !utf8.empty() && static_cast<unsigned char>(utf8.front()) < ' ';
  return CsvField(formula || control ? "'" + std::string(utf8) : std::string(utf8));
}

bool IsUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const auto byte = [&](std::size_t index) -> unsigned {
      return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const unsigned first = byte(at);
    if (first < 0x80) {
      ++at;
      continue;
    }
    const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    unsigned letter = first & (size == 4 ? 0x07U : size == 3 ? 0x0FU : 0x1FU);
    if (first < 0xC2 || first > 0xF4) return false;
    for (std::size_t next = 1; next < size; ++next) {
      if ((byte(at + next) & 0xC0U) != 0x80U) return false;
      letter = letter << 6U | (byte(at + next) & 0x3FU);
    }
    const unsigned least = size == 4 ? 0x10000U : size == 3 ? 0x800U : 0x80U;
    if (letter < least || letter > 0x10FFFF || (letter >= 0xD800 && letter < 0xE000)) return false;
    at += size;
  }
  return true;
}

}  // namespace corvane::tools
