// The message box of a tested program as its user sees it: title, text, icon, buttons.
#pragma once

#include <optional>
#include <string>

#include "desktop/harness/foreign_windows.h"

namespace corvane::desktop {

enum class ShownIcon { kNone, kError, kWarning, kInformation, kQuestion, kUnknown };

struct ShownBox {
  std::string title;
  std::string text;
  ShownIcon icon = ShownIcon::kNone;
  int buttons = 0;
  bool operator==(const ShownBox&) const = default;
};

// The topmost open message box of the process; 0 when there is none.
[[nodiscard]] WindowHandle FindMessageBox(unsigned process_id);

// What it shows. The icon is judged by its pixels on the screen: kUnknown while the box is not
// painted yet or is covered. nullopt when the box is gone.
[[nodiscard]] std::optional<ShownBox> LookAtBox(WindowHandle box);

// Presses its OK button.
void AnswerBox(WindowHandle box);

}  // namespace corvane::desktop
