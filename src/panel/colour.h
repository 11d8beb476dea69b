// Colours of controls: 0xBBGGRR, or a system colour with the top bit set.
#pragma once

#include <cstdint>

namespace corvane {

using Colour = std::uint32_t;

inline constexpr Colour kButtonFace = 0x8000000F;
inline constexpr Colour kButtonText = 0x80000012;
inline constexpr Colour kWindowBackground = 0x80000005;
inline constexpr Colour kWindowText = 0x80000008;
inline constexpr Colour kGreen = 0x0000FF00;
inline constexpr Colour kRed = 0x000000FF;
inline constexpr Colour kHoldOrange = 33023;  // red 255, green 128, blue 0
inline constexpr Colour kShownTabGrey = 0x00C0C0C0;
inline constexpr Colour kStartGreen = 0x0090EE90;

}  // namespace corvane
