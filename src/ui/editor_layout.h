// The G/SSI editor's table of controls.
#pragma once

#include "panel/dialog.h"
#include "ui/layout.h"

namespace corvane {

inline constexpr char kEditorWindowClass[] = "Corvane editor window class";

// `dialog` outlives the table.
[[nodiscard]] WindowTable EditorWindowTable(Dialog& dialog);

}  // namespace corvane
