// What screen readers and other programs are told about a control: a name that stays, the text that
// a label shows as its value, and the lines of a list with their ticks.
#pragma once

#include <windows.h>

#include <optional>

#include "ui/child_windows_win.h"

namespace corvane {

// The answer to WM_GETOBJECT; nullopt when the request is for the control's own procedure.
[[nodiscard]] std::optional<LRESULT> AnswerAccessibility(const ChildWindow& child, WPARAM w_param,
                                                         LPARAM l_param);

}  // namespace corvane
