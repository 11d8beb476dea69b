// Other programs' windows through user32 and gdi32. No call waits longer than kSendLimitMs for
// one other program, however that hangs and however many messages the call is made of.
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
  // How long all messages of one call may take together before it gives up.
  static constexpr unsigned kSendLimitMs = 500;

  // What OwnMainWindow answers.
  void SetOwnMainWindow(HWND window) { own_main_window_ = window; }

  void EnumTopLevel(const std::function<bool(WindowHandle)>& visit) override;
  void EnumChildren(WindowHandle parent, const std::function<bool(WindowHandle)>& visit) override;
  [[nodiscard]] std::string ClassName(WindowHandle window) override;
  [[nodiscard]] WindowHandle Parent(WindowHandle window) override;
  [[nodiscard]] ProgramId Program(WindowHandle window) override;
  [[nodiscard]] std::string Title(WindowHandle window) override;
  [[nodiscard]] bool IsAlive(WindowHandle window) override;
  [[nodiscard]] bool IsVisible(WindowHandle window) override;
  [[nodiscard]] bool GetPlacement(WindowHandle window, Placement& placement) override;
  [[nodiscard]] bool GetRect(WindowHandle window, ScreenRect& rect) override;
  [[nodiscard]] std::int32_t ScreenPixel(WindowHandle control, std::int32_t x,
                                         std::int32_t y) override;
  [[nodiscard]] bool IsSeenAt(WindowHandle window, std::int32_t x, std::int32_t y) override;
  [[nodiscard]] bool WrapsLines(WindowHandle edit) override;
  [[nodiscard]] WindowHandle Foreground() override;
  [[nodiscard]] WindowHandle OwnMainWindow() override { return ToHandle(own_main_window_); }

  [[nodiscard]] Answer<std::string> Text(WindowHandle window) override;
  [[nodiscard]] Answer<std::int32_t> LineCount(WindowHandle edit) override;
  [[nodiscard]] Answer<std::string> Line(WindowHandle edit, std::int32_t index) override;
  [[nodiscard]] Answer<std::int32_t> LineStart(WindowHandle edit, std::int32_t index) override;

  Reply Press(WindowHandle button) override;
  Reply SetText(WindowHandle window, const std::string& text) override;
  Reply PressSelector(WindowHandle selector) override;
  Reply SetPlacement(WindowHandle window, const Placement& placement) override;
  WindowHandle SetForeground(WindowHandle window) override;

 private:
  HWND own_main_window_ = nullptr;
};

}  // namespace corvane
