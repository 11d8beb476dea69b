// Other programs' windows through user32 and gdi32. No call waits longer than kSendLimitMs for
// another program, however that hangs.
#pragma once

#include <windows.h>

#include "link/window_ops.h"

namespace corvane {

[[nodiscard]] inline HWND ToHwnd(WindowHandle handle) {
  return reinterpret_cast<HWND>(handle);
}
[[nodiscard]] inline WindowHandle ToHandle(HWND window) {
  return reinterpret_cast<WindowHandle>(window);
}

class WindowOpsWin : public WindowOps {
 public:
  // How long a message may take before the call gives up.
  static constexpr unsigned kSendLimitMs = 500;

  // What OwnMainWindow answers.
  void SetOwnMainWindow(HWND window) { own_main_window_ = window; }

  void EnumTopLevel(const std::function<bool(WindowHandle)>& visit) override;
  void EnumChildren(WindowHandle parent, const std::function<bool(WindowHandle)>& visit) override;
  [[nodiscard]] std::string ClassName(WindowHandle window) override;
  [[nodiscard]] WindowHandle Parent(WindowHandle window) override;
  [[nodiscard]] bool IsAlive(WindowHandle window) override;
  [[nodiscard]] bool IsVisible(WindowHandle window) override;
  [[nodiscard]] bool GetPlacement(WindowHandle window, Placement& placement) override;
  [[nodiscard]] bool GetRect(WindowHandle window, ScreenRect& rect) override;
  [[nodiscard]] std::int32_t ScreenPixel(WindowHandle control, std::int32_t x,
                                         std::int32_t y) override;
  [[nodiscard]] bool IsSeenAt(WindowHandle window, std::int32_t x, std::int32_t y) override;
  [[nodiscard]] WindowHandle OwnMainWindow() override { return ToHandle(own_main_window_); }

  [[nodiscard]] Answer<std::string> Text(WindowHandle window) override;
  [[nodiscard]] Answer<std::int32_t> LineCount(WindowHandle edit) override;
  [[nodiscard]] Answer<std::string> Line(WindowHandle edit, std::int32_t index) override;

  Reply Press(WindowHandle button) override;
  Reply SetText(WindowHandle window, const std::string& text) override;
  Reply PressSelector(WindowHandle selector) override;
  // A window that does not answer is moved as soon as it does again.
  void SetPlacement(WindowHandle window, const Placement& placement) override;
  // Nothing happens while `window`, or the one in front of it now, does not answer.
  void SetForeground(WindowHandle window) override;

 private:
  HWND own_main_window_ = nullptr;
};

}  // namespace corvane
