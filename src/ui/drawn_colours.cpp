// Contrast as the web's accessibility guidelines reckon it.
#include "ui/drawn_colours.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr Colour kSystemColourBit = 0x80000000;

bool IsSystemColour(Colour colour) {
  return (colour & kSystemColourBit) != 0;
}

double Lightness(std::uint32_t colour) {
  const auto channel = [colour](int shift) {
    const double part = static_cast<double>((colour >> shift) & 0xFF) / 255;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * channel(0) + 0.7152 * channel(8) + 0.0722 * channel(16);
}

TextColours PairOf(Colour ground) {
  if (ground == kWindowBackground) return {kWindowText, kWindowBackground};
  return {kButtonText, kButtonFace};
}

}  // namespace

std::uint32_t Theme::Drawn(Colour colour) const {
  if (!IsSystemColour(colour)) return colour & 0x00FFFFFF;
  return system_colour(static_cast<int>(colour & 0xFF));
}

TextColours Legible(const TextColours& wanted, const Theme& theme) {
  const TextColours pair = PairOf(wanted.ground);
  const bool own_ground = !IsSystemColour(wanted.ground);
  if (theme.high_contrast && (own_ground || !IsSystemColour(wanted.text))) return pair;
  if (own_ground && Contrast(theme.Drawn(wanted.text), wanted.ground) < kLeastContrast) {
    return pair;
  }
  // The texts of lists and boxes are made as button texts, as all controls' are.
  return wanted.text == kButtonText ? TextColours{pair.text, wanted.ground} : wanted;
}

DrawnColours ColoursOfLine(const TextColours& colours, bool selected, const Theme& theme) {
  constexpr int kTint = 14;
  if (selected && theme.high_contrast) {
    return {theme.Drawn(kHighlightText), theme.Drawn(kHighlight)};
  }
  const std::uint32_t ground = theme.Drawn(colours.ground);
  return {theme.Drawn(colours.text),
          selected ? Mix(theme.Drawn(kHighlight), ground, kTint) : ground};
}

double Contrast(std::uint32_t one, std::uint32_t other) {
  const double first = Lightness(one);
  const double second = Lightness(other);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

std::uint32_t Mix(std::uint32_t one, std::uint32_t other, int weight) {
  const auto channel = [&](int shift) {
    const int first = static_cast<int>((one >> shift) & 0xFF);
    const int second = static_cast<int>((other >> shift) & 0xFF);
    return static_cast<std::uint32_t>((first * weight + second * (100 - weight)) / 100) << shift;
  };
  return channel(0) | channel(8) | channel(16);
}

}  // namespace corvane
