// The accepted values behind the setting boxes. A box that is being edited may show something else.
#pragma once

#include <array>
#include <cstdint>

namespace corvane {

struct Presets {
  std::int32_t BaseFrequency = 800000000;  // Hz, 100 MHz times (entry of cboBaseFrequency + 1)
  std::int32_t FrequencyOffset = 12500;    // Hz, one of kCarrierOffsets
  std::int16_t ParkCarrier = 2604;         // carrier number of the control channel, 0 to 3999
  std::int16_t VcAudioGain = 47;           // SDR# audio level on a voice channel, 25 to 60
  std::int16_t CallTimeoutSeconds = 5;     // silence that ends a call, 1 to 30
  std::int32_t CheckedColour = 10580318;   // pixel of a checked box, as the screen gives it
  std::int32_t UnCheckedColour = 14934753;
};

// By index of optOffsets, in Hz.
inline constexpr std::array<std::int32_t, 4> kCarrierOffsets = {0, 6250, -6250, 12500};

inline constexpr std::int32_t kBandStepHz = 100000000;
inline constexpr std::int32_t kCarrierSpacingHz = 25000;
inline constexpr int kHighestParkCarrier = 3999;
inline constexpr int kLowestVolume = 25;
inline constexpr int kHighestVolume = 60;
inline constexpr int kLongestTimeoutSeconds = 30;

// Frequency of a carrier in Hz; 64 bits, because carrier numbers from the air can be anything.
[[nodiscard]] constexpr std::int64_t CarrierFrequency(const Presets& presets,
                                                      std::int32_t carrier) {
  return std::int64_t{carrier} * kCarrierSpacingHz + presets.BaseFrequency +
         presets.FrequencyOffset;
}

// Watchdog ticks of 300 ms in `seconds`, rounded down: 3, 6, 10, 13, ... for 1, 2, 3, 4, ...
[[nodiscard]] constexpr std::int32_t TimeoutTicks(int seconds) {
  return static_cast<std::int32_t>(static_cast<double>(seconds) / 0.3);
}

}  // namespace corvane
