// An icon beside the clock, which says the notices: Windows shows them as its notifications.
#include <windows.h>

#include <shellapi.h>

#include <algorithm>

#include "tools/watch/notifier.h"

namespace corvane::tools {

namespace {

constexpr const char* kClass = "STATIC";
constexpr const char* kTitle = "Corvane";
constexpr UINT kIcon = 1;

class NotifierWin : public Notifier {
 public:
  ~NotifierWin() override {
    if (there_) Shell_NotifyIconA(NIM_DELETE, &icon_);
    if (icon_.hWnd != nullptr) DestroyWindow(icon_.hWnd);
  }

  [[nodiscard]] bool Show(const std::string& text) override {
    if (icon_.hWnd == nullptr && !MakeWindow()) return false;
    const std::size_t size = std::min(text.size(), sizeof icon_.szInfo - 1);
    std::copy_n(text.begin(), size, icon_.szInfo);
    icon_.szInfo[size] = '\0';
    // The shell forgets all icons when it is started anew.
    if (there_ && Shell_NotifyIconA(NIM_MODIFY, &icon_) != 0) return true;
    there_ = Shell_NotifyIconA(NIM_ADD, &icon_) != 0;
    return there_;
  }

  void Attend() override {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageA(&message);
  }

 private:
  // Never shown: the icon must belong to one.
  bool MakeWindow() {
    icon_.hWnd = CreateWindowExA(0, kClass, kTitle, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                 GetModuleHandleA(nullptr), nullptr);
    icon_.cbSize = sizeof icon_;
    icon_.uID = kIcon;
    icon_.uFlags = NIF_ICON | NIF_TIP | NIF_INFO;
    icon_.hIcon = LoadIconA(nullptr, IDI_WARNING);
    icon_.dwInfoFlags = NIIF_WARNING;
    const std::string title = kTitle;
    title.copy(icon_.szTip, sizeof icon_.szTip - 1);
    title.copy(icon_.szInfoTitle, sizeof icon_.szInfoTitle - 1);
    return icon_.hWnd != nullptr;
  }

  NOTIFYICONDATAA icon_{};
  bool there_ = false;
};

}  // namespace

std::unique_ptr<Notifier> SystemNotifier() {
  return std::make_unique<NotifierWin>();
}

}  // namespace corvane::tools
