#include "link/checkbox_detection.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

using ::testing::ElementsAre;

constexpr std::pair<std::int32_t, std::int32_t> kDemodulatorPixel{307, 407};

class CheckboxDetectionTest : public LinkTest {
 protected:
  void SetUp() override {
    AddSdr();
    AddNetworkInfo();
    FillHandles();
    flags.NetRemoteLinkUp = true;
    form.lblCheckedValue.caption = std::string("10580318");
    form.lblUnCheckedValue.caption = std::string("14934753");
    form.lblTetraPanelExpanded.caption = std::string("before");
    form.lblValidateState.caption = std::string("before");
  }
  void Colour(std::int32_t colour) { windows.pixels[kDemodulatorPixel] = colour; }
  std::string Validated() { return form.lblValidateState.caption.get(); }

  Presets presets;
  CheckboxDetection detection{context, presets};
};

TEST_F(CheckboxDetectionTest, SamplesThePixelSevenInsideTheControl) {
  Colour(123);
  EXPECT_EQ(ReadCheckboxColour(windows, kDemodulator, presets), 123);
  EXPECT_THAT(windows.sampled, ElementsAre(kDemodulatorPixel));
}

TEST_F(CheckboxDetectionTest, ABoxThatIsNotThereMatchesNeitherReference) {
  for (const std::int32_t checked : {-1, -2, -3, -4}) {
    for (const std::int32_t unchecked : {-1, -2, -3, -4}) {
      presets.CheckedColour = checked;
      presets.UnCheckedColour = unchecked;
      for (const WindowHandle box : {WindowHandle{0}, WindowHandle{4711}}) {
        const std::int32_t colour = ReadCheckboxColour(windows, box, presets);
        EXPECT_NE(colour, checked);
        EXPECT_NE(colour, unchecked);
      }
    }
  }
  EXPECT_TRUE(windows.sampled.empty());
}

TEST_F(CheckboxDetectionTest, ReferencesAreTakenFromTheDemodulatorBoxAndShownInDecimal) {
  Colour(16777215);
  detection.SetCheckedValue();
  EXPECT_EQ(presets.CheckedColour, 16777215);
  EXPECT_EQ(form.lblCheckedValue.caption.get(), "16777215");
  EXPECT_EQ(presets.UnCheckedColour, 14934753);
  Colour(-1);
  detection.SetUnCheckedValue();
  EXPECT_EQ(presets.UnCheckedColour, -1);
  EXPECT_EQ(form.lblUnCheckedValue.caption.get(), "-1");
  EXPECT_THAT(windows.sampled, ElementsAre(kDemodulatorPixel, kDemodulatorPixel));
}

TEST_F(CheckboxDetectionTest, AReferenceIsKeptWhenThereIsNoBox) {
  windows.Destroy(kDemodulator);
  detection.SetCheckedValue();
  detection.SetUnCheckedValue();
  EXPECT_EQ(presets.CheckedColour, 10580318);
  EXPECT_EQ(presets.UnCheckedColour, 14934753);
  EXPECT_EQ(form.lblCheckedValue.caption.get(), "10580318");
}

TEST_F(CheckboxDetectionTest, WithTheLinkDownNothingIsSampled) {
  flags.NetRemoteLinkUp = false;
  form.cmdSetCheckedValue.enabled = false;
  detection.Tick();
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(), "Is SDR# started?");
  EXPECT_EQ(Validated(), "before");
  EXPECT_FALSE(form.cmdSetCheckedValue.enabled);
  EXPECT_TRUE(windows.sampled.empty());
}

TEST_F(CheckboxDetectionTest, ACollapsedPanelDisablesTheButtonsAndIsSampledAllTheSame) {
  windows.At(kDemodulator).visible = false;
  Colour(10580318);
  detection.Tick();
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(),
            "NOT Visible - Is TETRA Demodulator panel expanded?");
  EXPECT_FALSE(form.cmdSetCheckedValue.enabled);
  EXPECT_FALSE(form.cmdSetUnCheckedValue.enabled);
  EXPECT_EQ(windows.sampled.size(), 2u);
  EXPECT_EQ(Validated(), "Demodulator is Checked?");
}

TEST_F(CheckboxDetectionTest, AVisiblePanelEnablesTheButtons) {
  form.cmdSetCheckedValue.enabled = false;
  form.cmdSetUnCheckedValue.enabled = false;
  detection.Tick();
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(), "'Demodulator and Auto' are Visible");
  EXPECT_TRUE(form.cmdSetCheckedValue.enabled);
  EXPECT_TRUE(form.cmdSetUnCheckedValue.enabled);
}

TEST_F(CheckboxDetectionTest, TheStateIsToldByAnExactMatchWithTheShownNumbers) {
  Colour(10580318);
  detection.Tick();
  EXPECT_EQ(Validated(), "Demodulator is Checked?");
  Colour(14934753);
  detection.Tick();
  EXPECT_EQ(Validated(), "Demodulator is UnChecked?");
  for (const std::int32_t near : {10580317, 10580319, 14934752, 14934754, 0, -1}) {
    Colour(near);
    detection.Tick();
    EXPECT_EQ(Validated(), "") << near;
  }
}

TEST_F(CheckboxDetectionTest, WithEqualReferencesTheSecondMessageWins) {
  form.lblUnCheckedValue.caption = std::string("10580318");
  Colour(10580318);
  detection.Tick();
  EXPECT_EQ(Validated(), "Demodulator is UnChecked?");
}

TEST_F(CheckboxDetectionTest, TicksEvery500MsOnlyWhileEnabled) {
  EXPECT_EQ(detection.tmrDetectcheckbox().interval_ms(), 500);
  EXPECT_FALSE(detection.tmrDetectcheckbox().enabled());
  loop.Run(2000);
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(), "before");
  detection.tmrDetectcheckbox().SetEnabled(true);
  loop.Run(499);
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(), "before");
  loop.Run(1);
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(), "'Demodulator and Auto' are Visible");
}

}  // namespace
}  // namespace corvane::test
