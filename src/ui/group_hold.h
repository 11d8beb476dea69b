// The hold of one group, kept in lblGroupHold itself.
#pragma once

#include "panel/form1.h"

namespace corvane {

// True while a group is held; lblGroupHold's tag is then the held group as it was shown.
[[nodiscard]] bool HoldingGroup(const Form1& form);

// Holds the group on screen (nothing when there is none), or releases the held one.
void ToggleGroupHold(Form1& form);

// Releases the hold, whatever is held.
void ReleaseGroupHold(Form1& form);

}  // namespace corvane
