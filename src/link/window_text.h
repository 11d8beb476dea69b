// Reading the texts of other programs' controls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "link/window_ops.h"

namespace corvane {

// What a control without a text reads as.
inline constexpr const char* kNoWindowText = ">No text for this class<";

// Longest text that is asked for; what is behind it is cut off.
inline constexpr std::size_t kLongestWindowText = 65535;

struct WindowText {
  std::string text;
  bool timed_out = false;  // the window is there but gave no answer
};

// The text of a window; kNoWindowText when it has none or there is no such window. `timed_out` is
// told apart from a window that is gone.
[[nodiscard]] WindowText ReadWindowText(WindowOps& windows, WindowHandle window);

// The same without the difference.
[[nodiscard]] std::string GetWindowTextOf(WindowOps& windows, WindowHandle window);

// One line of an edit box by its zero-based index. "" for a negative index, no window, or a line
// that is not there or empty; nullopt when the box gave no answer.
[[nodiscard]] std::optional<std::string> GetEditLine(WindowOps& windows, WindowHandle window,
                                                     std::int32_t line);

}  // namespace corvane
