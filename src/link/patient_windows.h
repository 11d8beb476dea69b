// Keeps a stalled SDR# from stalling this program: after a message that got no answer in time,
// further ones are not sent for a while but answered so at once.
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
  [[nodiscard]] bool GetPlacement(WindowHandle window, Placement& placement) override;
  [[nodiscard]] bool GetRect(WindowHandle window, ScreenRect& rect) override;
  [[nodiscard]] std::int32_t ScreenPixel(WindowHandle control, std::int32_t x,
                                         std::int32_t y) override;
  [[nodiscard]] bool IsSeenAt(WindowHandle window, std::int32_t x, std::int32_t y) override;
  [[nodiscard]] WindowHandle OwnMainWindow() override;

  [[nodiscard]] Answer<std::string> Text(WindowHandle window) override;
  [[nodiscard]] Answer<std::int32_t> LineCount(WindowHandle edit) override;
  [[nodiscard]] Answer<std::string> Line(WindowHandle edit, std::int32_t index) override;

  Reply Press(WindowHandle button) override;
  Reply SetText(WindowHandle window, const std::string& text) override;
  Reply PressSelector(WindowHandle selector) override;
  // Not passed on while messages are held back, because moving a window sends it messages.
  void SetPlacement(WindowHandle window, const Placement& placement) override;
  void SetForeground(WindowHandle window) override;

 private:
  [[nodiscard]] Reply Unasked(WindowHandle window);
  Reply Note(Reply reply);
  template <typename T>
  Answer<T> Note(Answer<T> answer) {
    Note(answer.reply);
    return answer;
  }

  WindowOps& windows_;
  Loop& loop_;
  std::int64_t paused_until_ms_ = 0;
};

}  // namespace corvane
