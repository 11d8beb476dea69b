// What the screen showed when a case failed.
#pragma once

namespace corvane::desktop {

// A picture of the screen, by the name of the running case, in the folder that the variable
// CORVANE_PICTURES names, else in the current one. That none could be saved is a failure of the
// case, too.
void SaveFailurePicture();

}  // namespace corvane::desktop
