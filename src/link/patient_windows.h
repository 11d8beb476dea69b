// Keeps a stalled SDR# from stalling this program: after a message that timed out, further messages
// are not sent for a while but answered at once as unanswered.
#pragma once

#include "base/loop.h"
#include "link/window_ops.h"

namespace corvane {

class PatientWindows : public WindowOps {
 public:
  // For how long nothing is sent after a time-out.
  static constexpr int kPauseMs = 1000;

  PatientWindows(WindowOps& windows, Loop& loop) : windows_(windows), loop_(loop) {}

  // True while messages are held back.
  [[nodiscard]] bool Paused() const;

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
  // Not passed on while messages are held back, because moving a window sends it messages.
  void SetPlacement(WindowHandle window, const Placement& placement) override;
  [[nodiscard]] bool GetRect(WindowHandle window, ScreenRect& rect) override;
  void SetForeground(WindowHandle window) override;
  [[nodiscard]] std::int32_t ScreenPixel(WindowHandle control, std::int32_t x,
                                         std::int32_t y) override;
  [[nodiscard]] WindowHandle OwnMainWindow() override;

 private:
  void NoteAnswer(WindowHandle window, bool answered);

  WindowOps& windows_;
  Loop& loop_;
  std::int64_t paused_until_ms_ = 0;
};

}  // namespace corvane
