// Check boxes that are known by a pixel of the screen, calibrated by the user; and where SDR#
// stands.
#include <algorithm>
#include <cstring>

#include "desktop/call_test.h"
#include "desktop/harness/screen_points.h"
#include "desktop/harness/user_input.h"
#include "standin/window_tree.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

constexpr std::int32_t kTicked = standin::kCheckedColour;
constexpr std::int32_t kUnticked = standin::kUncheckedColour;
constexpr std::string_view kVisible = "'Demodulator and Auto' are Visible";
constexpr std::string_view kCollapsed = "NOT Visible - Is TETRA Demodulator panel expanded?";
constexpr std::string_view kIsTicked = "Demodulator is Checked?";
constexpr std::string_view kIsUnticked = "Demodulator is UnChecked?";
// Several ticks of the display.
constexpr int kTickWatch_ms = 2'500;
// In the settings file.
constexpr std::size_t kColoursAt = 28;
constexpr std::size_t kPositionAt = 39;

class CalibrationTest : public CallTest {
 protected:
  [[nodiscard]] WindowHandle Box(std::string_view caption) {
    return ChildByText(Sdr().Window(), "BUTTON", caption);
  }
  void AwaitColour(std::string_view caption, std::int32_t colour) {
    Await(std::string(caption) + " to have its colour",
          [&] { return ColourInside(Box(caption)) == colour; });
  }
  // As the user of SDR# ticks it, and sees it ticked.
  void TickDemodulator(bool on) {
    Do(on ? "check demodulator on" : "check demodulator off");
    AwaitColour("Demodulator", on ? kTicked : kUnticked);
  }
  // A window of another program lies over the box in that colour.
  void CoverBox(std::string_view caption, bool ticked) {
    Do(std::string("cover ") + (caption == "Auto" ? "auto" : "demodulator") +
       (ticked ? " checked" : " unchecked"));
    AwaitCover(caption, ticked);
  }
  void AwaitCover(std::string_view caption, bool ticked) {
    Await("the cover", [&] {
      return ClassOf(SeenInside(Box(caption))) == standin::kCoverClass &&
             ColourInside(Box(caption)) == (ticked ? kTicked : kUnticked);
    });
  }
  [[nodiscard]] std::ptrdiff_t Presses(std::string_view caption, std::size_t since = 0) {
    const std::vector<std::string> pressed = Sdr().Details("press", since);
    return std::count(pressed.begin(), pressed.end(), caption);
  }
  [[nodiscard]] bool ReceiverHas(std::string_view what) {
    const std::vector<std::string> states = Sdr().Details("tune");
    return !states.empty() && states.back().find(what) != std::string::npos;
  }

  void ShowPage(ControlId tab, ControlId frame) {
    TakeTheFront();
    HandClick(Corvane().Control(tab));
    Await("the page", [&] { return Visible(Corvane().Control(frame)); });
  }
  void ShowCalibration() {
    ShowPage(cmdSettingTab_4, fraCheckboxDetection);
    AwaitShown(lblTetraPanelExpanded, kVisible);
  }
  void AwaitShown(ControlId label, std::string_view text) {
    Await("\"" + std::string(text) + "\" to be shown",
          [&] { return Corvane().Caption(label) == text; });
  }
  void PressAndAwait(ControlId button, ControlId label, std::int32_t colour) {
    Await("the button", [&] { return Enabled(Corvane().Control(button)); });
    TakeTheFront();
    HandClick(Corvane().Control(button));
    AwaitShown(label, std::to_string(colour));
  }

  void DoubleClickPosition() {
    TakeTheFront();
    HandDoubleClick(Corvane().Control(lblPositionSdrSharpCC));
    AwaitHandsHandled();
    ShowPage(cmdSettingTab_2, fraOptions);
  }
  [[nodiscard]] std::string Position() { return Corvane().Caption(lblPositionSdrSharpCC); }
  void MoveSdr(int left, int top) {
    Do("move main " + std::to_string(left) + " " + std::to_string(top));
    Await("SDR# to be moved", [&] {
      const WindowPlace place = PlaceOf(Sdr().Window());
      return place.left == left && place.top == top;
    });
  }
  [[nodiscard]] std::string PlaceOfSdr() {
    const WindowPlace place = PlaceOf(Sdr().Window());
    return std::to_string(place.left) + "," + std::to_string(place.top) + "," +
           std::to_string(place.left + place.width) + "," +
           std::to_string(place.top + place.height);
  }

  void CloseCorvane() {
    Close(Corvane().Window());
    Await("Corvane's end", [this] { return !Corvane().Running(); });
  }
  [[nodiscard]] std::int32_t StoredColour(std::size_t index) {
    const std::string file = Folder().Read("corvane_simple.dat");
    std::int32_t colour = 0;
    const std::size_t at = kColoursAt + index * sizeof colour;
    if (file.size() >= at + sizeof colour) std::memcpy(&colour, file.data() + at, sizeof colour);
    return colour;
  }
  [[nodiscard]] std::string StoredPosition() {
    const std::string file = Folder().Read("corvane_simple.dat");
    return file.size() > kPositionAt ? file.substr(kPositionAt) : "";
  }
};

// --- What lies over a box ---

TEST_F(CalibrationTest, AnUntickedLookOfAnotherWindowSwitchesDemodulatorNotOff) {
  StartSdr({"--demodulator-on"});
  CoverBox("Demodulator", false);
  StartCorvane();
  PressStart();
  AwaitScanning();
  AwaitCover("Demodulator", false);
  EXPECT_EQ(Presses("Demodulator"), 0);
  EXPECT_TRUE(ReceiverHas("demodulator=1"));
  EXPECT_EQ(Presses("Auto"), 1) << "nothing lies over that one";
}

TEST_F(CalibrationTest, ATickedLookOfAnotherWindowSwitchesAutoNotOn) {
  StartSdr({"--auto-off"});
  CoverBox("Auto", true);
  StartCorvane();
  PressStart();
  AwaitScanning();
  AwaitCover("Auto", true);
  EXPECT_EQ(Presses("Auto"), 0);
  EXPECT_TRUE(ReceiverHas("auto=0"));
  EXPECT_EQ(Presses("Demodulator"), 1) << "nothing lies over that one";
}

TEST_F(CalibrationTest, ACoveredBoxIsInNoStateAndNoReference) {
  Begin();
  ShowCalibration();
  AwaitShown(lblValidateState, kIsTicked);
  CoverBox("Demodulator", false);
  AwaitShown(lblValidateState, "");
  EXPECT_EQ(Corvane().Caption(lblTetraPanelExpanded), kVisible);
  HandClick(Corvane().Control(cmdSetCheckedValue));
  HandClick(Corvane().Control(cmdSetUnCheckedValue));
  AwaitHandsHandled();
  EXPECT_EQ(Corvane().Caption(lblCheckedValue), std::to_string(kTicked));
  EXPECT_EQ(Corvane().Caption(lblUnCheckedValue), std::to_string(kUnticked));
  Do("cover none");
  ShowCalibration();
  AwaitShown(lblValidateState, kIsTicked);
}

// --- Calibrating ---

TEST_F(CalibrationTest, BothReferencesAreTakenShownAndStored) {
  Settings strange;
  strange.checked_colour = 1;
  strange.unchecked_colour = 2;
  Begin(strange, {"--demodulator-on", "--auto-off"});
  EXPECT_EQ(Presses("Demodulator") + Presses("Auto"), 0) << "their colours are unknown";
  ShowCalibration();
  EXPECT_EQ(Corvane().Caption(lblCheckedValue), "1");
  EXPECT_EQ(Corvane().Caption(lblUnCheckedValue), "2");
  EXPECT_EQ(Corvane().Caption(lblValidateState), "");
  PressAndAwait(cmdSetCheckedValue, lblCheckedValue, kTicked);
  AwaitShown(lblValidateState, kIsTicked);
  EXPECT_EQ(Corvane().Caption(lblUnCheckedValue), "2");
  TickDemodulator(false);
  AwaitShown(lblValidateState, "");
  PressAndAwait(cmdSetUnCheckedValue, lblUnCheckedValue, kUnticked);
  AwaitShown(lblValidateState, kIsUnticked);
  EXPECT_EQ(Corvane().Caption(lblCheckedValue), std::to_string(kTicked));
  CloseCorvane();
  EXPECT_EQ(StoredColour(0), kTicked);
  EXPECT_EQ(StoredColour(1), kUnticked);
}

// Calibrated the wrong way round, so that nothing but these two values can explain what is pressed.
TEST_F(CalibrationTest, TheSetUpGoesByTheCalibratedColours) {
  Begin({}, {"--demodulator-on", "--auto-off"});
  ASSERT_EQ(Presses("Demodulator") + Presses("Auto"), 0);
  ShowCalibration();
  PressAndAwait(cmdSetUnCheckedValue, lblUnCheckedValue, kTicked);
  TickDemodulator(false);
  PressAndAwait(cmdSetCheckedValue, lblCheckedValue, kUnticked);
  TickDemodulator(true);
  const std::size_t mark = Sdr().Count("press");
  Do("cut");
  Await("both boxes to be pressed",
        [&] { return Presses("Demodulator", mark) > 0 && Presses("Auto", mark) > 0; });
  EXPECT_TRUE(ReceiverHas("demodulator=0"));
  EXPECT_TRUE(ReceiverHas("auto=1"));
}

class ScaledCalibrationTest : public CalibrationTest, public ::testing::WithParamInterface<int> {};

TEST_P(ScaledCalibrationTest, TheBoxesAreKnownOnceTheyAreCalibratedThere) {
  const standin::Glyph glyph = standin::GlyphAt(GetParam());
  Begin({}, {"--demodulator-on", "--auto-off", "--scale", std::to_string(GetParam())});
  AwaitColour("Demodulator", glyph.checked);
  EXPECT_EQ(Presses("Demodulator") + Presses("Auto"), 0) << "they look otherwise at 100 %";
  ShowCalibration();
  AwaitShown(lblValidateState, "");
  PressAndAwait(cmdSetCheckedValue, lblCheckedValue, glyph.checked);
  Do("check demodulator off");
  AwaitColour("Demodulator", glyph.unchecked);
  PressAndAwait(cmdSetUnCheckedValue, lblUnCheckedValue, glyph.unchecked);
  AwaitShown(lblValidateState, kIsUnticked);

  Do("check auto on");
  AwaitColour("Auto", glyph.checked);
  const std::size_t mark = Sdr().Count("press");
  Do("cut");
  Await("both boxes to be pressed",
        [&] { return Presses("Demodulator", mark) > 0 && Presses("Auto", mark) > 0; });
  EXPECT_TRUE(ReceiverHas("demodulator=1"));
  EXPECT_TRUE(ReceiverHas("auto=0"));
  SetUpUntilFollowed(7, 9001, 2610, 2);
}

INSTANTIATE_TEST_SUITE_P(Percent, ScaledCalibrationTest, ::testing::Values(150, 200));

TEST_F(CalibrationTest, ACollapsedPanelDisablesTheButtonsUntilItIsExpanded) {
  Begin();
  ShowCalibration();
  AwaitShown(lblValidateState, kIsTicked);
  Do("panel tetra collapse");
  AwaitShown(lblTetraPanelExpanded, kCollapsed);
  Await("the buttons to be disabled", [this] {
    return !Enabled(Corvane().Control(cmdSetCheckedValue)) &&
           !Enabled(Corvane().Control(cmdSetUnCheckedValue));
  });
  AwaitShown(lblValidateState, "");
  Do("panel tetra expand");
  AwaitShown(lblTetraPanelExpanded, kVisible);
  Await("the buttons to be enabled", [this] {
    return Enabled(Corvane().Control(cmdSetCheckedValue)) &&
           Enabled(Corvane().Control(cmdSetUnCheckedValue));
  });
  AwaitShown(lblValidateState, kIsTicked);
}

TEST_F(CalibrationTest, NothingIsSampledOnceThePageIsLeft) {
  Begin();
  ShowCalibration();
  AwaitShown(lblValidateState, kIsTicked);
  ShowPage(cmdSettingTab_0, fraPresets);
  TickDemodulator(false);
  EXPECT_FALSE(
      WaitFor([this] { return Corvane().Caption(lblValidateState) != kIsTicked; }, kTickWatch_ms));
  ShowCalibration();
  AwaitShown(lblValidateState, kIsUnticked);
}

// --- Where SDR# stands ---

TEST_F(CalibrationTest, TheDoubleClickTakesThePlaceOfAnSdrThatIsShownNormally) {
  Begin();
  ShowPage(cmdSettingTab_2, fraOptions);
  EXPECT_EQ(Position(), "");
  MoveSdr(60, 30);
  DoubleClickPosition();
  const std::string normal = PlaceOfSdr();
  EXPECT_EQ(Position(), normal);

  MoveSdr(20, 50);
  Do("window main minimise");
  Await("SDR# to be minimised", [this] { return Minimised(Sdr().Window()); });
  DoubleClickPosition();
  EXPECT_EQ(Position(), normal);
  Do("window main restore");
  Await("SDR# to be restored", [this] { return !Minimised(Sdr().Window()); });

  Maximise(Sdr().Window());
  Await("SDR# to be maximised and in front",
        [this] { return Maximised(Sdr().Window()) && ForegroundWindow() == Sdr().Window(); });
  DoubleClickPosition();
  EXPECT_EQ(Position(), normal);
  Restore(Sdr().Window());
  Await("SDR# to be restored", [this] { return !Maximised(Sdr().Window()); });

  MoveSdr(30, 35);
  DoubleClickPosition();
  EXPECT_EQ(Position(), PlaceOfSdr());
  EXPECT_NE(Position(), normal);
  const std::string last = Position();
  CloseCorvane();
  EXPECT_EQ(StoredPosition(), last);
}

TEST_F(CalibrationTest, SdrIsPutWhereTheUserWantsIt) {
  Begin({.position_sdr = true, .sdr_position = "25,15,1095,715"});
  EXPECT_EQ(PlaceOf(Sdr().Window()), (WindowPlace{25, 15, 1070, 700}));
}

TEST_F(CalibrationTest, SdrStaysWhereItIsUnlessThatIsAskedFor) {
  StartSdr();
  const WindowPlace before = PlaceOf(Sdr().Window());
  StartCorvane({.position_sdr = false, .sdr_position = "25,15,1095,715"});
  PressStart();
  AwaitScanning();
  EXPECT_EQ(PlaceOf(Sdr().Window()), before);
}

}  // namespace
}  // namespace corvane::desktop
