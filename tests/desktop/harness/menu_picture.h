// What is drawn in the menu bar of a tested program. Another program's menu cannot be asked for its
// texts on every system, so pictures are compared.
#pragma once

#include <string>

#include "desktop/harness/foreign_windows.h"

namespace corvane::desktop {

// The pixels of the menu bar as they are on the screen; "" when the window has none or is gone.
[[nodiscard]] std::string PictureOfMenuBar(WindowHandle window);

}  // namespace corvane::desktop
