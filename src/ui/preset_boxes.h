// The text boxes of the presets page: what may be typed, and what leaving a box accepts.
#pragma once

#include "panel/form1.h"
#include "panel/presets.h"

namespace corvane {

// Backspace and digits pass.
[[nodiscard]] bool PassesDigitFilter(int code);

// Each takes the box's text over as the new value, or puts the value in force back into the box.
// True when the text was accepted.
bool AcceptTimeout(Form1& form, Presets& presets);
bool AcceptVolume(Form1& form, Presets& presets);
bool AcceptParkCarrier(Form1& form, Presets& presets);

}  // namespace corvane
