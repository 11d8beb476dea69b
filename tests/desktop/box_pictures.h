// Pictures of the message boxes that Corvane shows, brought about as the program does it.
#pragma once

#include <string>

namespace corvane::ui_test {

struct BoxPictures {
  int taken = 0;
  int findings = 0;  // each is printed as a line
};

// Shows each form of box, saves "box-NAME-SUFFIX.png" in `folder` and answers it. Makes files of
// its own below the folder, and removes them.
[[nodiscard]] BoxPictures TakeBoxes(const std::string& folder, const std::string& suffix);

}  // namespace corvane::ui_test
