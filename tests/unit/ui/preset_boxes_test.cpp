// What the text boxes of the presets page accept.
#include "ui/preset_boxes.h"

#include "unit/ui/form_fixture.h"

namespace corvane {

namespace {

class PresetBoxesTest : public FormTest {};

TEST(DigitFilter, PassesBackspaceAndDigitsAlone) {
  for (int code = 0; code < 256; ++code) {
    EXPECT_EQ(PassesDigitFilter(code), code == 8 || (code >= 48 && code <= 57)) << code;
  }
}

TEST_F(PresetBoxesTest, TimeoutTakesOneToThirtySeconds) {
  for (const int seconds : {1, 5, 30}) {
    form_.txtTimeout.text = std::to_string(seconds);
    EXPECT_TRUE(AcceptTimeout(form_, presets_));
    EXPECT_EQ(presets_.CallTimeoutSeconds, seconds);
  }
}

TEST_F(PresetBoxesTest, TimeoutPutsBackWhatItCannotTake) {
  presets_.CallTimeoutSeconds = 7;
  for (const char* text : {"", "0", "31", "-1", "abc", "1a", " 5", "5 ", "1.5", "99999",
                           "99999999999999999999", "+5"}) {
    form_.txtTimeout.text = text;
    EXPECT_FALSE(AcceptTimeout(form_, presets_)) << text;
    EXPECT_EQ(form_.txtTimeout.text.get(), "7") << text;
    EXPECT_EQ(presets_.CallTimeoutSeconds, 7) << text;
  }
}

TEST_F(PresetBoxesTest, VolumeTakesTwentyFiveToSixty) {
  for (const int volume : {25, 47, 60}) {
    form_.txtVcVolume.text = std::to_string(volume);
    EXPECT_TRUE(AcceptVolume(form_, presets_));
    EXPECT_EQ(presets_.VcAudioGain, volume);
  }
  for (const char* text : {"", "24", "61", "x", "-30", "4711471147114711"}) {
    form_.txtVcVolume.text = text;
    EXPECT_FALSE(AcceptVolume(form_, presets_)) << text;
    EXPECT_EQ(form_.txtVcVolume.text.get(), "60") << text;
  }
}

TEST_F(PresetBoxesTest, ParkCarrierTakesUpToFourThousandLessOne) {
  for (const int carrier : {0, 2604, 3999}) {
    form_.txtParkCarrier.text = std::to_string(carrier);
    EXPECT_TRUE(AcceptParkCarrier(form_, presets_));
    EXPECT_EQ(presets_.ParkCarrier, carrier);
  }
  for (const char* text : {"", "4000", "1234567", "0000001", "26x4", "-1"}) {
    form_.txtParkCarrier.text = text;
    EXPECT_FALSE(AcceptParkCarrier(form_, presets_)) << text;
    EXPECT_EQ(form_.txtParkCarrier.text.get(), "3999") << text;
  }
  form_.txtParkCarrier.text = "000012";
  EXPECT_TRUE(AcceptParkCarrier(form_, presets_));
  EXPECT_EQ(presets_.ParkCarrier, 12);
}

}  // namespace

}  // namespace corvane
