// How many objects of the system a process has. Windows counts them itself. Wine answers those
// questions with 0: there the handles are asked of its server, the GDI objects are counted in the
// process's own table of them, and of what belongs to USER the windows are.
#pragma once

#include <windows.h>

namespace corvane::desktop {

struct SystemObjects {
  unsigned handles = 0;
  unsigned gdi = 0;
  unsigned user = 0;  // Wine: windows, with all their children
};

// `process` may be asked for information, and its memory read.
[[nodiscard]] SystemObjects ObjectsOf(HANDLE process);

}  // namespace corvane::desktop
