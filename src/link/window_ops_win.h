// Other programs' windows through user32 and gdi32. No call waits longer than kSendLimitMs for
// another program, however that hangs.
#pragma once

#include "link/window_ops.h"

namespace corvane {

class WindowOpsWin : public WindowOps {
 public:
  // How long a message may take before the call gives up.
  static constexpr unsigned kSendLimitMs = 500;
  // Larger texts are cut: their size comes from the other program.
  static constexpr std::size_t kLargestText = 16 * 1024 * 1024;

  // What OwnMainWindow answers.
  void SetOwnMainWindow(WindowHandle window) { own_main_window_ = window; }

  void EnumTopLevel(const std::function<bool(WindowHandle)>& visit) override;
  void EnumChildren(WindowHandle parent, const std::function<bool(WindowHandle)>& visit) override;
  [[nodiscard]] std::string ClassName(WindowHandle window) override;
  [[nodiscard]] WindowHandle Parent(WindowHandle window) override;
  [[nodiscard]] bool IsAlive(WindowHandle window) override;
  [[nodiscard]] bool IsVisible(WindowHandle window) override;
  Answer Send(WindowHandle window, unsigned message, std::uintptr_t w_param,
              std::intptr_t l_param) override;
  Answer SetText(WindowHandle window, const std::string& text) override;
  TextAnswer GetText(WindowHandle window, std::size_t size) override;
  TextAnswer GetLine(WindowHandle window, std::int32_t line, std::size_t size) override;
  [[nodiscard]] bool GetPlacement(WindowHandle window, Placement& placement) override;
  // A window that does not answer is moved as soon as it does again.
  void SetPlacement(WindowHandle window, const Placement& placement) override;
  [[nodiscard]] bool GetRect(WindowHandle window, ScreenRect& rect) override;
  // Nothing happens while `window`, or the one in front of it now, does not answer.
  void SetForeground(WindowHandle window) override;
  [[nodiscard]] std::int32_t ScreenPixel(WindowHandle control, std::int32_t x,
                                         std::int32_t y) override;
  [[nodiscard]] WindowHandle OwnMainWindow() override { return own_main_window_; }

 private:
  WindowHandle own_main_window_ = 0;
};

}  // namespace corvane
