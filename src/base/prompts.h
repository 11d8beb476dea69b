// The seam for what stops the user: message boxes, and the end of the program.
#pragma once

#include <string>

namespace corvane {

enum class BoxIcon { kNone, kCritical };

class Prompts {
 public:
  virtual ~Prompts() = default;

  // Shows a box with an OK button and returns when it was answered. Lets events run.
  virtual void ShowBox(const std::string& text, const std::string& title, BoxIcon icon) = 0;

  // Ends the program without further saving. The caller returns at once to where events come
  // from; nothing of the program may run after it.
  virtual void EndProgram() = 0;
};

}  // namespace corvane
