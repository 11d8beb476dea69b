#include "link/checkbox_detection.h"

#include "base/number_text.h"
#include "link_fixture.h"

namespace corvane::test {
namespace {

constexpr std::int32_t kChecked = standin::kCheckedColour;
constexpr std::int32_t kUnchecked = standin::kUncheckedColour;

class CheckboxDetectionTest : public LinkTest {
 protected:
  CheckboxDetectionTest() {
    Discover();
    tree().Raise(ids().main);
    form.lblCheckedValue.caption = Decimal(kChecked);
    form.lblUnCheckedValue.caption = Decimal(kUnchecked);
    form.lblTetraPanelExpanded.caption = "before";
    form.lblValidateState.caption = "before";
  }
  void Tick(bool checked) {
    tree().SetChecked(ids().demodulator, checked);
    detection.Tick();
  }
  std::string Validated() { return form.lblValidateState.caption.get(); }

  CheckboxDetection detection{context, presets};
};

TEST_F(CheckboxDetectionTest, SamplesThePixelSevenInsideTheControl) {
  const auto colour = [this] {
    return ReadCheckboxColour(windows, At(SdrRole::kDemodulatorBox), presets);
  };
  tree().SetChecked(ids().demodulator, true);
  EXPECT_EQ(colour(), kChecked);
  const standin::Box box = tree().ScreenBox(ids().demodulator);
  desktop.AddForeignWindow("Cover", "", {box.left + 7, box.top + 7, 1, 1});
  EXPECT_EQ(colour(), standin::kWindowColour);
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
}

TEST_F(CheckboxDetectionTest, ReferencesAreTakenFromTheDemodulatorBoxAndShownInDecimal) {
  presets.CheckedColour = presets.UnCheckedColour = 0;
  tree().SetChecked(ids().demodulator, true);
  detection.SetCheckedValue();
  EXPECT_EQ(presets.CheckedColour, kChecked);
  EXPECT_EQ(form.lblCheckedValue.caption.get(), "10580318");
  EXPECT_EQ(presets.UnCheckedColour, 0);
  tree().SetBox(ids().main, {-5000, -5000, 100, 100});
  detection.SetUnCheckedValue();
  EXPECT_EQ(presets.UnCheckedColour, -1) << "outside of the screen";
  EXPECT_EQ(form.lblUnCheckedValue.caption.get(), "-1");
  EXPECT_EQ(presets.CheckedColour, kChecked);
}

TEST_F(CheckboxDetectionTest, AReferenceIsKeptWhenThereIsNoBox) {
  tree().Destroy(ids().demodulator);
  detection.SetCheckedValue();
  detection.SetUnCheckedValue();
  EXPECT_EQ(presets.CheckedColour, kChecked);
  EXPECT_EQ(presets.UnCheckedColour, kUnchecked);
  EXPECT_EQ(form.lblCheckedValue.caption.get(), "10580318");
}

TEST_F(CheckboxDetectionTest, WithTheLinkDownNothingIsSampled) {
  flags.NetRemoteLinkUp = false;
  form.cmdSetCheckedValue.enabled = false;
  detection.Tick();
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(), "Is SDR# started?");
  EXPECT_EQ(Validated(), "before");
  EXPECT_FALSE(form.cmdSetCheckedValue.enabled);
}

TEST_F(CheckboxDetectionTest, ACollapsedPanelDisablesTheButtonsAndIsSampledAllTheSame) {
  desktop.Do("panel tetra collapse");
  detection.Tick();
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(),
            "NOT Visible - Is TETRA Demodulator panel expanded?");
  EXPECT_FALSE(form.cmdSetCheckedValue.enabled);
  EXPECT_FALSE(form.cmdSetUnCheckedValue.enabled);
  EXPECT_EQ(Validated(), "") << "what is shown at its place is no box";
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
  Tick(true);
  EXPECT_EQ(Validated(), "Demodulator is Checked?");
  Tick(false);
  EXPECT_EQ(Validated(), "Demodulator is UnChecked?");
  for (const std::int32_t near : {-1, 1}) {
    form.lblCheckedValue.caption = Decimal(kChecked + near);
    form.lblUnCheckedValue.caption = Decimal(kUnchecked + near);
    for (const bool checked : {true, false}) {
      Tick(checked);
      EXPECT_EQ(Validated(), "") << near << checked;
    }
  }
  desktop.Do("paint demodulator other");
  Tick(true);
  EXPECT_EQ(Validated(), "");
}

TEST_F(CheckboxDetectionTest, WithEqualReferencesTheSecondMessageWins) {
  form.lblUnCheckedValue.caption = Decimal(kChecked);
  Tick(true);
  EXPECT_EQ(Validated(), "Demodulator is UnChecked?");
}

TEST_F(CheckboxDetectionTest, TicksEvery500MsOnlyWhileEnabled) {
  EXPECT_EQ(detection.tmrDetectcheckbox().interval_ms(), 500);
  EXPECT_FALSE(detection.tmrDetectcheckbox().enabled());
  loop.AdvanceMs(2000);
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(), "before");
  detection.tmrDetectcheckbox().SetEnabled(true);
  loop.AdvanceMs(499);
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(), "before");
  loop.AdvanceMs(1);
  EXPECT_EQ(form.lblTetraPanelExpanded.caption.get(), "'Demodulator and Auto' are Visible");
}

}  // namespace
}  // namespace corvane::test
