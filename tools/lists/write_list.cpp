// One row of each format.
#include "tools/lists/write_list.h"

#include <array>
#include <string_view>

#include "archive/utf8.h"
#include "base/number_text.h"
#include "base/text.h"
#include "tools/lists/label_text.h"

namespace corvane::tools {

namespace {

constexpr std::size_t kLongestTeliveLine = 98;
constexpr std::size_t kLongestFmeName = 49;
constexpr std::size_t kMostFmeRows = 1023;

std::string Hex(std::int32_t number) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (auto rest = static_cast<std::uint32_t>(number); rest != 0 || text.empty(); rest >>= 4U) {
    text.insert(text.begin(), kDigits[rest & 0xFU]);
  }
  return text;
}

// A table opened in a spreadsheet must not take a name for a formula; readers of tables drop the
// blank again.
std::string Harmless(const std::string& label) {
  return std::string_view("=+-@").find(label.front()) == std::string_view::npos ? label
                                                                                : " " + label;
}

std::string Cell(const std::string& label) {
  return CsvField(Harmless(label));
}

// For readers that split at every comma. Names here have no ";", so nothing is lost.
std::string WithoutCommas(const std::string& label) {
  return Harmless(ReplaceAll(label, ",", ";"));
}

// ISO 8859-1. What Windows-1252 has beyond it becomes the letter next to it, or "?".
std::string Latin1(std::string_view ansi) {
  constexpr std::string_view kNearest = "E?'f\".++^?S<O?Z  ''\"\"o--~?s>o?zY";
  std::string text;
  for (const char c : ansi) {
    const unsigned byte = static_cast<unsigned char>(c);
    text += byte >= 0x80 && byte < 0xA0 ? kNearest[byte - 0x80] : c;
  }
  return text;
}

const char* HeaderOf(ListFormat format) {
  switch (format) {
    case ListFormat::kTrunkRecorder:
      return "Decimal,Hex,Alpha Tag,Mode,Description,Tag,Category,Priority\n";
    case ListFormat::kRadioReference:
      return "Decimal,Hex,Alpha Tag,Mode,Description,Tag,Category\n";
    case ListFormat::kDsdPlusGroups:
      return "; protocol, networkID, group, priority, override, hits, timestamp, \"alias\"\r\n";
    case ListFormat::kDsdPlusRadios:
      return "; protocol, networkID, group, radio, priority, override, hits, timestamp, "
             "\"alias\"\r\n";
    case ListFormat::kDsdFme:
      return "id,mode,name,tag\n";
    default:
      return "";
  }
}

class RowWriter {
 public:
  RowWriter(ListFormat format, const std::string& network) : format_(format), network_(network) {}

  [[nodiscard]] std::string Row(const NamedNumber& named) const {
    const std::string number = Decimal(named.number);
    const std::string label = LabelTo(named.label);
    switch (format_) {
      case ListFormat::kTrunkRecorder:
        return Table(named, label) + (named.locked_out ? ",-1\n" : ",1\n");
      case ListFormat::kRadioReference:
        return Table(named, label) + "\n";
      case ListFormat::kTrunkRecorderUnits:
        return number + "," + Cell(label) + "\n";
      case ListFormat::kDsdPlusGroups:
        return "TETRA, " + network_ + ", " + number + Alias(named);
      case ListFormat::kDsdPlusRadios:
        return "TETRA, " + network_ + ", " + Decimal(named.group) + ", " + number + Alias(named);
      case ListFormat::kOp25:
        return number + "\t" + ReplaceAll(label, "#", "No") + "\n";
      case ListFormat::kTelive:
        return CutLetters(number + " " + label, kLongestTeliveLine) + "\n";
      case ListFormat::kDsdFme:
        return number + (named.locked_out ? ",B," : ",A,") +
               CutLetters(WithoutCommas(label), kLongestFmeName) + ",TETRA\n";
      case ListFormat::kRdioScanner:
        return number + "," + Hex(named.number) + "," + Plain(named) + ",T," + Plain(named) +
               ",TETRA," + network_ + "\n";
    }
    return "";
  }

  // "" when the format can carry it.
  [[nodiscard]] std::string WhyNot(const NamedNumber& named, std::size_t rows) const {
    if (named.number < 0 || named.number > kHighestNumber) {
      return "is none of 0 to " + Decimal(kHighestNumber);
    }
    if (LabelTo(named.label).empty()) return "has a name of control characters alone";
    if (format_ == ListFormat::kTrunkRecorderUnits && Contains(named.label, "$")) {
      return "has a \"$\" in its name, which stands for a part of a pattern there";
    }
    if (format_ == ListFormat::kDsdFme && rows == kMostFmeRows) {
      return "is one too many: its reader takes " + Decimal(kMostFmeRows);
    }
    return "";
  }

 private:
  [[nodiscard]] std::string Table(const NamedNumber& named, const std::string& label) const {
    return Decimal(named.number) + "," + Hex(named.number) + "," + Cell(label) + ",T," +
           Cell(label) + ",TETRA," + network_;
  }
  // Bytes of the code page, which is what that program shows.
  [[nodiscard]] static std::string Alias(const NamedNumber& named) {
    const std::string label = Ansi(LabelTo(named.label));
    return ", 50, Normal, 0, 0001/01/01  0:00, \"" + ReplaceAll(label, "\"", "'") + "\"\r\n";
  }
  [[nodiscard]] static std::string Plain(const NamedNumber& named) {
    return Latin1(Ansi(WithoutCommas(LabelTo(named.label))));
  }

  ListFormat format_;
  const std::string& network_;
};

}  // namespace

WrittenList WriteForeignList(ListFormat format, const std::vector<NamedNumber>& named,
                             const std::string& network) {
  const RowWriter writer(format, network);
  WrittenList list;
  list.text = HeaderOf(format);
  for (const NamedNumber& one : named) {
    const std::string why = writer.WhyNot(one, list.rows);
    if (why.empty()) {
      list.text += writer.Row(one);
      ++list.rows;
    } else {
      list.left_out.push_back((one.is_radio ? "radio " : "group ") + Decimal(one.number) + " " +
                              why);
    }
  }
  return list;
}

}  // namespace corvane::tools
