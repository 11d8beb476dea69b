// The records that the program learns and keeps: groups, subscribers, counted calls.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/date_time.h"

namespace corvane {

// 30 bytes in the ANSI code page, padded with blanks on the right; longer text is cut.
class FixedLabel {
 public:
  static constexpr std::size_t kSize = 30;

  FixedLabel() { bytes_.fill(' '); }
  FixedLabel(std::string_view text) {  // NOLINT: a label is assigned from text
    bytes_.fill(' ');
    text.copy(bytes_.data(), kSize);
  }
  // All 30 bytes.
  [[nodiscard]] std::string_view padded() const { return {bytes_.data(), kSize}; }
  // Without the blanks at both ends.
  [[nodiscard]] std::string trimmed() const;

 private:
  std::array<char, kSize> bytes_;
};

// One talk group of one network.
struct GssiRecord {
  std::int32_t Gssi = 0;  // 0 to 16777215
  std::int16_t Mcc = 0;
  std::int16_t Mnc = 0;
  FixedLabel Label;
  std::int16_t Priority = 0;
  bool Follow = false;  // false: locked out
};

// One subscriber in one group of one network.
struct SsiRecord {
  std::int32_t Ssi = 0;
  std::int32_t LastGssi = 0;
  std::int16_t Mcc = 0;
  std::int16_t Mnc = 0;
  FixedLabel Label;
  DateTime LastSeen;
};

// How many calls of one group were counted.
struct CallActivityRecord {
  std::int32_t Gssi = 0;
  std::int32_t Calls = 0;
};

}  // namespace corvane
