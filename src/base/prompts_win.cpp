// Message boxes of the system.
#include "base/prompts_win.h"

namespace corvane {

void PromptsWin::ShowBox(const std::string& text, const std::string& title, BoxIcon icon) {
  HWND owner = owner_ != nullptr && IsWindow(owner_) ? owner_ : nullptr;
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
