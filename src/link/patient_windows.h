// Keeps a program that stalls from stalling this one: after a message that it did not answer in
// time, further ones to it are not sent for a while but answered so at once. Other programs are
// asked as before.
#pragma once

#include <functional>
#include <map>

#include "base/loop.h"
#include "link/window_ops.h"

namespace corvane {

class PatientWindows : public WindowOps {
 public:
  // For how long nothing is sent to a program after a time-out.
  static constexpr int kPauseMs = 1000;

  PatientWindows(WindowOps& windows, Loop& loop) : windows_(windows), loop_(loop) {}

  // True while messages to the program that `window` belongs to are held back.
  [[nodiscard]] bool Paused(WindowHandle window) const;

  // Between the two, which enclose a poll cycle, a program that did not answer is asked nothing
  // more, however long that takes: all the waiting of a cycle for one program is one time-out.
  void BeginCycle();
  void EndCycle();

  // What a message was sent for: a text can be read where all else is refused.
  enum class Asked { kText, kOther };
  // Is told what came of each message that was really sent.
  using Listener = std::function<void(WindowHandle window, Asked asked, Reply reply)>;
  void SetListener(Listener listener) { listener_ = std::move(listener); }

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
  [[nodiscard]] WindowHandle OwnMainWindow() override;

  [[nodiscard]] Answer<std::string> Text(WindowHandle window) override;
  [[nodiscard]] Answer<std::int32_t> LineCount(WindowHandle edit) override;
  [[nodiscard]] Answer<std::string> Line(WindowHandle edit, std::int32_t index) override;
  [[nodiscard]] Answer<std::int32_t> LineStart(WindowHandle edit, std::int32_t index) override;

  Reply Press(WindowHandle button) override;
  Reply SetText(WindowHandle window, const std::string& text) override;
  Reply PressSelector(WindowHandle selector) override;
  // Neither is passed on while messages to one of the programs concerned are held back, because
  // moving a window and changing the front send messages.
  Reply SetPlacement(WindowHandle window, const Placement& placement) override;
  WindowHandle SetForeground(WindowHandle window) override;

 private:
  struct Patience {
    std::int64_t paused_until_ms = 0;
    bool silent_in_cycle = false;
  };
  [[nodiscard]] Reply Unasked(WindowHandle window);
  Reply Note(WindowHandle window, Asked asked, Reply reply);
  template <typename T>
  Answer<T> Note(WindowHandle window, Asked asked, Answer<T> answer) {
    Note(window, asked, answer.reply);
    return answer;
  }

  WindowOps& windows_;
  Loop& loop_;
  Listener listener_;
  bool in_cycle_ = false;
  std::map<ProgramId, Patience> silent_;  // programs that did not answer not long ago
};

}  // namespace corvane
