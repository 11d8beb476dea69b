// Which colours a text and its ground are drawn in, so that one can be read on the other whatever
// the system's colours are. Knows no window system.
#pragma once

#include <cstdint>
#include <functional>

#include "panel/colour.h"

namespace corvane {

inline constexpr Colour kGreyText = 0x80000011;
inline constexpr Colour kHighlight = 0x8000000D;
inline constexpr Colour kHighlightText = 0x8000000E;

// The system's colours of the moment.
struct Theme {
  bool high_contrast = false;
  std::function<std::uint32_t(int)> system_colour;  // by its number, as 0xBBGGRR

  // `colour` as 0xBBGGRR.
  [[nodiscard]] std::uint32_t Drawn(Colour colour) const;
};

struct TextColours {
  Colour text;
  Colour ground;
  bool operator==(const TextColours&) const = default;
};

// What is wanted, where it can be read; else a pair that the system made for each other. In a
// high-contrast theme a colour of the program's own gives way to such a pair, always.
[[nodiscard]] TextColours Legible(const TextColours& wanted, const Theme& theme);

// Two colours as they are drawn, 0xBBGGRR.
struct DrawnColours {
  std::uint32_t text;
  std::uint32_t ground;
  bool operator==(const DrawnColours&) const = default;
};

// Those of a line of a list whose lines have `colours`. The selected one is tinted, no more: its
// text counts, not its ground. A high-contrast theme has a pair for it.
[[nodiscard]] DrawnColours ColoursOfLine(const TextColours& colours, bool selected,
                                         const Theme& theme);

// How far two colours, 0xBBGGRR, differ in lightness: 1 to 21. A text wants 4.5.
[[nodiscard]] double Contrast(std::uint32_t one, std::uint32_t other);
inline constexpr double kLeastContrast = 4.5;

// A mixture: `weight` hundredths of `one`, the rest of `other`.
[[nodiscard]] std::uint32_t Mix(std::uint32_t one, std::uint32_t other, int weight);

}  // namespace corvane
