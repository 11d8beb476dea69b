// The values that start in force, the carrier arithmetic and the watchdog's ticks.
#include "panel/presets.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace corvane {

namespace {

TEST(Presets, StartWithTheDefaults) {
  const Presets presets;
  EXPECT_EQ(presets.BaseFrequency, 800000000);
  EXPECT_EQ(presets.FrequencyOffset, 12500);
  EXPECT_EQ(presets.ParkCarrier, 2604);
  EXPECT_EQ(presets.VcAudioGain, 47);
  EXPECT_EQ(presets.CallTimeoutSeconds, 5);
  EXPECT_EQ(presets.CheckedColour, 0xA1715E);
  EXPECT_EQ(presets.UnCheckedColour, 0xE3E2E1);
}

TEST(Presets, CarrierFrequencyIsCarrierTimesSpacingPlusBasePlusOffset) {
  Presets presets;
  EXPECT_EQ(CarrierFrequency(presets, 2604), 865112500);
  presets.BaseFrequency = 300000000;
  EXPECT_EQ(CarrierFrequency(presets, 2604), 365112500);
  presets.FrequencyOffset = -6250;
  EXPECT_EQ(CarrierFrequency(presets, 0), 299993750);
}

TEST(Presets, CarrierFrequencyOfAnyNumberFitsItsType) {
  const Presets presets;
  const std::int32_t largest = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(CarrierFrequency(presets, largest), 53687891187500);
  EXPECT_EQ(CarrierFrequency(presets, std::numeric_limits<std::int32_t>::min()), -53686291187500);
}

TEST(Presets, OffsetsStandInTheOrderOfTheirButtons) {
  EXPECT_EQ(kCarrierOffsets, (std::array<std::int32_t, 4>{0, 6250, -6250, 12500}));
}

TEST(TimeoutTicks, AreSecondsByThreeTenthsRoundedDown) {
  constexpr std::array kTicks = {3,  6,  10, 13, 16, 20, 23, 26, 30, 33, 36, 40, 43, 46, 50,
                                 53, 56, 60, 63, 66, 70, 73, 76, 80, 83, 86, 90, 93, 96, 100};
  static_assert(kTicks.size() == kLongestTimeoutSeconds);
  for (int seconds = 1; seconds <= kLongestTimeoutSeconds; ++seconds) {
    EXPECT_EQ(TimeoutTicks(seconds), kTicks[static_cast<std::size_t>(seconds - 1)]) << seconds;
  }
}

}  // namespace

}  // namespace corvane
