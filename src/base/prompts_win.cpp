// Message boxes of the system.
#include "base/prompts_win.h"

#include <windows.h>

namespace corvane {

void PromptsWin::ShowBox(const std::string& text, const std::string& title, BoxIcon icon) {
  HWND owner = static_cast<HWND>(owner_);
  if (owner != nullptr && IsWindow(owner) == 0) owner = nullptr;
  UINT style = MB_OK;
  if (icon == BoxIcon::kCritical) style |= MB_ICONERROR;
  // Without an owner the box could open behind the windows of others, unseen.
  if (owner == nullptr) style |= MB_SETFOREGROUND | MB_TASKMODAL;
  MessageBoxA(owner, text.c_str(), title.c_str(), style);
}

void PromptsWin::EndProgram() {
  ExitProcess(0);
}

}  // namespace corvane
