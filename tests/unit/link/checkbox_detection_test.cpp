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
  std::optional<std::int32_t> Colour() {
    return ReadCheckboxColour(windows, At(SdrRole::kDemodulatorBox));
  }
  void CoverWith(standin::Box box) { desktop.AddForeignWindow("Cover", "", box); }
  std::string Validated() { return form.lblValidateState.caption.get(); }

  CheckboxDetection detection{context, presets};
};

TEST_F(CheckboxDetectionTest, SamplesThePixelSevenInsideTheControl) {
  const standin::Box box = tree().ScreenBox(ids().demodulator);
  for (const bool checked : {true, false}) {
    tree().SetChecked(ids().demodulator, checked);
    EXPECT_EQ(Colour(), checked ? kChecked : kUnchecked);
  }
  // What lies around that pixel on all sides is not looked at.
  CoverWith({box.left, box.top, 120, 7});
  CoverWith({box.left, box.top, 7, 20});
  CoverWith({box.left + 8, box.top, 120, 20});
  CoverWith({box.left, box.top + 8, 120, 20});
  EXPECT_EQ(Colour(), kUnchecked);
  CoverWith({box.left + 7, box.top + 7, 1, 1});
  EXPECT_EQ(Colour(), std::nullopt);
}

TEST_F(CheckboxDetectionTest, ABoxThatIsNotThereOrCoveredHasNoColour) {
  for (const WindowHandle box : {WindowHandle{0}, WindowHandle{4711}}) {
    EXPECT_EQ(ReadCheckboxColour(windows, box), std::nullopt);
  }
  for (const char* cover : {"cover demodulator checked", "cover demodulator unchecked"}) {
    desktop.Do(cover);
    EXPECT_EQ(Colour(), std::nullopt);
    desktop.Do("cover none");
  }
  EXPECT_EQ(Colour(), kUnchecked);
}

// The very colours that are looked for, and those that the screen and its failures could have.
TEST_F(CheckboxDetectionTest, ACoveredBoxIsNeitherCheckedNorUncheckedWhateverTheReferences) {
  desktop.Do("cover demodulator unchecked");
  for (const char* const checked : {"10580318", "14934753", "-1", "-2", "-3", "-4", "0", ""}) {
    for (const char* const unchecked : {"10580318", "14934753", "-1", "-2", "-3", "-4", "0", ""}) {
      form.lblCheckedValue.caption = checked;
      form.lblUnCheckedValue.caption = unchecked;
      form.lblValidateState.caption = "before";
      detection.Tick();
      EXPECT_EQ(Validated(), "") << checked << " " << unchecked;
    }
  }
  EXPECT_EQ(form.lblTetraPanelExpanded.caption, "'Demodulator and Auto' are Visible");
  EXPECT_TRUE(form.cmdSetCheckedValue.enabled);
}

TEST_F(CheckboxDetectionTest, ReferencesAreTakenFromTheDemodulatorBoxAndShownInDecimal) {
  presets.CheckedColour = presets.UnCheckedColour = 0;
  tree().SetChecked(ids().demodulator, true);
  detection.SetCheckedValue();
  EXPECT_EQ(presets.CheckedColour, kChecked);
  EXPECT_EQ(form.lblCheckedValue.caption.get(), "10580318");
  EXPECT_EQ(presets.UnCheckedColour, 0);
  tree().SetBox(ids().main, {-5000, -5000, 1030, 690});
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

TEST_F(CheckboxDetectionTest, AReferenceIsKeptWhileTheBoxIsCovered) {
  presets.CheckedColour = 1;
  presets.UnCheckedColour = 2;
  desktop.Do("cover demodulator checked");
  detection.SetCheckedValue();
  detection.SetUnCheckedValue();
  EXPECT_EQ(presets.CheckedColour, 1);
  EXPECT_EQ(presets.UnCheckedColour, 2);
  EXPECT_EQ(form.lblCheckedValue.caption, "10580318");
  EXPECT_EQ(form.lblUnCheckedValue.caption, "14934753");
  desktop.Do("cover none");
  detection.SetUnCheckedValue();
  EXPECT_EQ(presets.CheckedColour, 1);
  EXPECT_EQ(presets.UnCheckedColour, kUnchecked);
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
