// What a screen reader calls the controls whose own text does not say what they are, or changes.
#pragma once

#include "ui/control_ids.h"

namespace corvane {

// nullptr: the control is called by its caption, which stays as it is.
[[nodiscard]] const char* SpokenName(ControlId id);

}  // namespace corvane
