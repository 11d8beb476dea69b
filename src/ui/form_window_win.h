// A window of the program as a real one: mirrors the controls of its table into child windows and
// turns their notifications into the user events of its handlers. Decides nothing.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "base/loop_win.h"
#include "panel/control_sink.h"
#include "ui/child_events_win.h"
#include "ui/child_windows_win.h"
#include "ui/layout.h"
#include "ui/user_events.h"

namespace corvane {

// Made before its controls, which need it as their sink; what changes before Create is taken over
// there. After Destroy it can be created again, for controls of its next life.
class FormWindow : public ControlSink, private LoopWin::Hook {
 public:
  explicit FormWindow(LoopWin& loop) : loop_(loop), events_(loop) {}
  ~FormWindow() override { Destroy(); }
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  // Makes the window and its controls, not shown yet. False when the system refuses. The controls
  // and the handlers must stay valid until Destroy. A window with an `owner` stands in front of it
  // and is hidden while that one is minimised.
  [[nodiscard]] bool Create(const WindowTable& table, UserEvents& handlers, HWND owner = nullptr);
  // Puts the window where its state says, moved into view if that is off every screen, and shows
  // it, never minimised.
  void Show();
  // Brings a shown window to the front, out of the task bar if need be.
  void BringToFront();
  // Ends the window. Calls of the sink are ignored from here on.
  void Destroy();

  // nullptr before Create and after Destroy.
  [[nodiscard]] HWND handle() const { return window_; }

  void Changed(const Control& control, Field field) override;
  void ListChanged(ListBox& list, ListChange change, std::size_t index) override;
  void FocusWanted(const Control& control) override;

 private:
  // Keyboard navigation in this window.
  bool FilterMessage(MSG& message) override;
  // Shows the lines that lists have got, unless an event is still under way that may have more to
  // do.
  void Idle(bool at_rest) override;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w_param, LPARAM l_param);
  [[nodiscard]] bool RegisterWindowClass() const;
  LRESULT Handle(UINT message, WPARAM w_param, LPARAM l_param);
  LRESULT HandleDpiChange(int dpi, const RECT& suggested);
  void HandleActivation(bool active);
  [[nodiscard]] SIZE OuterSize(int dpi) const;
  void NotePosition();
  void Place();
  void ArrangeLater();
  void ArrangeNow();
  void Arrange(int dpi, POINT corner);

  LoopWin& loop_;
  HWND window_ = nullptr;
  HWND focus_ = nullptr;  // what had the keyboard when the window was last active
  std::optional<WindowTable> table_;
  int dpi_ = kDesignDpi;
  bool shown_ = false;
  bool arrange_waits_ = false;
  bool arranging_ = false;
  std::optional<std::int64_t> lists_wait_since_ms_;
  ChildWindows children_;
  ChildEvents events_;
};

}  // namespace corvane
