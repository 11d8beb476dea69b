// Texts and their grounds in the normal theme, in high contrast and in dark colours.
#include "ui/drawn_colours.h"

#include <gtest/gtest.h>

#include <map>

#include "sim/no_sink.h"
#include "ui/main_layout.h"

namespace corvane {

namespace {

// Button face and text, window and its text, grey text, highlight and its text, by number.
Theme ThemeOf(bool high_contrast, std::uint32_t ground, std::uint32_t text) {
  const std::map<int, std::uint32_t> colours = {
      {15, ground}, {18, text}, {5, ground}, {8, text}, {17, 0x3FF23F}, {13, 0xFFFF00}, {14, 0}};
  return {high_contrast, [colours](int number) { return colours.at(number); }};
}

const Theme kNormal = ThemeOf(false, 0xF0F0F0, 0);
const Theme kHighContrast = ThemeOf(true, 0, 0xFFFFFF);

TEST(Contrast, IsThatOfTheGuidelines) {
  EXPECT_NEAR(Contrast(0x000000, 0xFFFFFF), 21.0, 0.01);
  EXPECT_NEAR(Contrast(0xFFFFFF, 0x000000), 21.0, 0.01);
  EXPECT_NEAR(Contrast(0x777777, 0x777777), 1.0, 0.001);
  EXPECT_NEAR(Contrast(0x0000FF, 0xFFFFFF), 4.0, 0.01);   // red
  EXPECT_NEAR(Contrast(0xFF0000, 0xFFFFFF), 8.59, 0.01);  // blue
}

TEST(Mix, IsByHundredths) {
  EXPECT_EQ(Mix(0xFFFFFF, 0x000000, 100), 0xFFFFFFU);
  EXPECT_EQ(Mix(0xFFFFFF, 0x000000, 0), 0U);
  EXPECT_EQ(Mix(0x640000, 0x0000C8, 50), 0x320064U);
}

TEST(ColoursOfLine, TintsTheSelectedOneAndInHighContrastTakesTheSystemsPair) {
  const TextColours list{kWindowText, kWindowBackground};
  EXPECT_EQ(ColoursOfLine(list, false, kNormal), (DrawnColours{0, 0xF0F0F0}));
  EXPECT_EQ(ColoursOfLine(list, true, kNormal), (DrawnColours{0, Mix(0xFFFF00, 0xF0F0F0, 14)}));
  EXPECT_EQ(ColoursOfLine(list, false, kHighContrast), (DrawnColours{0xFFFFFF, 0}));
  EXPECT_EQ(ColoursOfLine(list, true, kHighContrast), (DrawnColours{0, 0xFFFF00}));
  EXPECT_EQ(ColoursOfLine({kGreyText, kButtonFace}, false, kHighContrast),
            (DrawnColours{0x3FF23F, 0}));
}

TEST(Legible, KeepsTheColoursOfTheNormalTheme) {
  for (const TextColours& wanted :
       {TextColours{kButtonText, kButtonFace}, TextColours{kButtonText, kStartGreen},
        TextColours{kButtonText, kShownTabGrey}, TextColours{kHoldOrange, kButtonFace},
        TextColours{kGreyText, kButtonFace}}) {
    EXPECT_EQ(Legible(wanted, kNormal), wanted) << std::hex << wanted.text << wanted.ground;
  }
}

TEST(Legible, TextOnTheWindowsGroundIsTheWindowsText) {
  const TextColours expected{kWindowText, kWindowBackground};
  EXPECT_EQ(Legible({kButtonText, kWindowBackground}, kNormal), expected);
  EXPECT_EQ(Legible({kButtonText, kWindowBackground}, kHighContrast), expected);
}

TEST(Legible, HighContrastKnowsOnlyPairsOfTheSystem) {
  const TextColours pair{kButtonText, kButtonFace};
  EXPECT_EQ(Legible({kButtonText, kStartGreen}, kHighContrast), pair);
  EXPECT_EQ(Legible({kButtonText, kShownTabGrey}, kHighContrast), pair);
  EXPECT_EQ(Legible({kHoldOrange, kButtonFace}, kHighContrast), pair);
  EXPECT_EQ(Legible({kRed, kWindowBackground}, kHighContrast),
            (TextColours{kWindowText, kWindowBackground}));
  EXPECT_EQ(Legible({kGreyText, kButtonFace}, kHighContrast),
            (TextColours{kGreyText, kButtonFace}));
  // As good a contrast as one could wish, and still none of the theme's.
  EXPECT_EQ(Legible({kButtonText, kStartGreen}, ThemeOf(true, 0xFFFFFF, 0)), pair);
}

TEST(Legible, LightTextLeavesALightGround) {
  EXPECT_EQ(Legible({kButtonText, kStartGreen}, ThemeOf(false, 0, 0xFFFFFF)),
            (TextColours{kButtonText, kButtonFace}));
}

// The held group's orange is laid down; everything else can be read.
TEST(Legible, EveryTextOfTheMainWindowHasItsContrast) {
  sim::NoSink sink;
  Form1 form(sink);
  form.cmdSettingTab[0].back_colour = kShownTabGrey;
  for (const Theme& theme : {kNormal, kHighContrast, ThemeOf(false, 0, 0xFFFFFF)}) {
    for (const ControlRow& row : MainWindowTable(form).controls) {
      const Control& control = row.control;
      const TextColours drawn = Legible({control.fore_colour, control.back_colour}, theme);
      EXPECT_GE(Contrast(theme.Drawn(drawn.text), theme.Drawn(drawn.ground)), kLeastContrast)
          << control.name();
    }
  }
}

}  // namespace

}  // namespace corvane
