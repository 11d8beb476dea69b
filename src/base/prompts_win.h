// Real message boxes, and the real end of the program.
#pragma once

#include <windows.h>

#include "base/prompts.h"

namespace corvane {

class PromptsWin : public Prompts {
 public:
  // The window that boxes belong to: it takes no input while one is open. nullptr, or one that is
  // gone by then: the box stands alone.
  void SetOwner(HWND window) { owner_ = window; }

  void ShowBox(const std::string& text, const std::string& title, BoxIcon icon) override;
  // Does not return.
  void EndProgram() override;

 private:
  HWND owner_ = nullptr;
};

}  // namespace corvane
