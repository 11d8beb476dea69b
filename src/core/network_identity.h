// The network that the plug-in decodes at the moment.
#pragma once

#include <cstdint>
#include <string>

#include "base/number_text.h"

namespace corvane {

// Plain decimal texts, each 0 to 32767; "0" when not known.
struct NetworkIdentity {
  std::string CurrentMcc = "0";
  std::string CurrentMnc = "0";
  std::string CurrentLa = "0";

  [[nodiscard]] std::int32_t mcc() const { return Number(CurrentMcc); }
  [[nodiscard]] std::int32_t mnc() const { return Number(CurrentMnc); }
  [[nodiscard]] std::int32_t la() const { return Number(CurrentLa); }

 private:
  static std::int32_t Number(const std::string& text) {
    return ParseDecimal<std::int32_t>(text).value_or(0);
  }
};

}  // namespace corvane
