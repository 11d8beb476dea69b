// The network that the plug-in decodes at the moment.
#pragma once

#include <cstdint>
#include <string>

namespace corvane {

// Plain decimal texts, each 0 to 32767; "0" when not known.
struct NetworkIdentity {
  std::string CurrentMcc = "0";
  std::string CurrentMnc = "0";
  std::string CurrentLa = "0";

  [[nodiscard]] std::int32_t mcc() const { return std::stoi(CurrentMcc); }
  [[nodiscard]] std::int32_t mnc() const { return std::stoi(CurrentMnc); }
  [[nodiscard]] std::int32_t la() const { return std::stoi(CurrentLa); }
};

}  // namespace corvane
