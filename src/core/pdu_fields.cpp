// Key search and number reading in signalling lines.
#include "core/pdu_fields.h"

#include "base/number_text.h"
#include "base/text.h"

namespace corvane {

namespace {

// Where a value lies, counted from the start of its key.
struct FieldShape {
  std::string_view key;
  std::size_t value_at;
  // The closing blank is searched from here; what lies between here and the value has none.
  std::size_t blank_from;
};

constexpr FieldShape kBasicService{"Basic_service:", 14, 0};
constexpr FieldShape kCallId{"Call ID:", 8, 5};  // past the blank inside the key
constexpr FieldShape kCallingParty{"Party_SSI:", 10, 0};
constexpr FieldShape kSetupStatus{"D_Setup", 8, 21};  // past the blank between the two words
constexpr FieldShape kGroup{"SSI:", 4, 0};
constexpr FieldShape kTimeSlot{"TimeSlot:", 9, 0};
constexpr FieldShape kCarrier{"Carrier:", 8, 0};

std::optional<std::string_view> Value(std::string_view line, const FieldShape& shape) {
  const std::size_t key = line.find(shape.key);
  if (key == std::string_view::npos) return std::nullopt;
  const std::size_t blank = line.find(' ', key + shape.blank_from);
  const std::size_t start = key + shape.value_at;
  if (blank == std::string_view::npos) return std::nullopt;
  return line.substr(start, blank - start);
}

template <typename Int>
std::optional<Int> Digits(std::string_view text) {
  if (text.starts_with('-')) return std::nullopt;
  return ParseDecimal<Int>(text);
}

template <typename Int>
std::optional<Int> Number(std::string_view line, const FieldShape& shape) {
  const auto value = Value(line, shape);
  if (!value) return std::nullopt;
  return Digits<Int>(*value);
}

}  // namespace

std::optional<std::string_view> BasicService(std::string_view line) {
  return Value(line, kBasicService);
}

std::optional<std::int16_t> CallId(std::string_view line) {
  return Number<std::int16_t>(line, kCallId);
}

std::optional<std::int32_t> CallingParty(std::string_view line) {
  return Number<std::int32_t>(line, kCallingParty);
}

std::optional<std::string_view> SetupStatus(std::string_view line) {
  return Value(line, kSetupStatus);
}

std::optional<std::int32_t> Group(std::string_view line) {
  return Number<std::int32_t>(line, kGroup);
}

std::optional<std::int16_t> TimeSlot(std::string_view line) {
  return Number<std::int16_t>(line, kTimeSlot);
}

std::optional<std::int32_t> Carrier(std::string_view line) {
  return Number<std::int32_t>(line, kCarrier);
}

std::optional<std::int32_t> GrantedParty(std::string_view line) {
  const std::size_t key = line.find(kCallingParty.key);
  if (key == std::string_view::npos) return std::nullopt;
  const std::string_view rest = Trim(line.substr(key + kCallingParty.value_at));
  if (const auto whole = Digits<std::int32_t>(rest)) return whole;
  return Digits<std::int32_t>(rest.substr(0, rest.find(' ')));
}

bool IsEncrypted(std::string_view line) {
  return Contains(line, "PDU encrypted");
}

bool IsSetup(std::string_view line) {
  return Contains(line, "D_Setup") && Contains(line, "Basic_service:");
}

}  // namespace corvane
