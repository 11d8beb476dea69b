// A WAV file of 16 bits, mono.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane::tools {

inline std::string LowFirst(std::uint32_t number, int size) {
  std::string bytes;
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
  return bytes;
}

inline std::string WavBytes(const std::vector<int>& samples, std::uint32_t rate) {
  const auto data = static_cast<std::uint32_t>(2 * samples.size());
  std::string bytes = "RIFF" + LowFirst(36 + data, 4) + "WAVEfmt " + LowFirst(16, 4) +
                      LowFirst(1, 2) + LowFirst(1, 2) + LowFirst(rate, 4) + LowFirst(2 * rate, 4) +
                      LowFirst(2, 2) + LowFirst(16, 2) + "data" + LowFirst(data, 4);
  for (const int sample : samples) bytes += LowFirst(static_cast<std::uint32_t>(sample), 2);
  return bytes;
}

}  // namespace corvane::tools
