// Acceptance of the presets' text boxes.
#include "ui/preset_boxes.h"

#include <string>

#include "base/number_text.h"
#include "ui/main_form.h"

namespace corvane {

namespace {

constexpr std::size_t kLongestParkText = 6;

// Pasted text can be anything; a number too large for the type is as wrong as letters.
bool Accept(TextBox& box, std::int16_t lowest, std::int16_t highest, std::int16_t& value) {
  const auto number = ParseDecimal<std::int16_t>(box.text.get());
  if (!number || *number < lowest || *number > highest) {
    box.text = Decimal(value);
    return false;
  }
  value = *number;
  return true;
}

}  // namespace

bool PassesDigitFilter(int code) {
  return code == kBackspaceCode || (code >= '0' && code <= '9');
}

bool AcceptTimeout(Form1& form, Presets& presets) {
  return Accept(form.txtTimeout, 1, kLongestTimeoutSeconds, presets.CallTimeoutSeconds);
}

bool AcceptVolume(Form1& form, Presets& presets) {
  return Accept(form.txtVcVolume, kLowestVolume, kHighestVolume, presets.VcAudioGain);
}

bool AcceptParkCarrier(Form1& form, Presets& presets) {
  if (form.txtParkCarrier.text.get().size() > kLongestParkText) {
    form.txtParkCarrier.text = Decimal(presets.ParkCarrier);
    return false;
  }
  return Accept(form.txtParkCarrier, 0, kHighestParkCarrier, presets.ParkCarrier);
}

}  // namespace corvane
