// The main window as a real one: mirrors the controls' state into child windows and turns their
// notifications into the user events of MainForm. Decides nothing.
#pragma once

#include <memory>

#include "panel/control_sink.h"

namespace corvane {

class LoopWin;
class MainForm;
struct Form1;

inline constexpr char kMainWindowClass[] = "Corvane main window class";

// Made before Form1, which needs it as its sink; what changes before Create is taken over there.
class MainWindowWin : public ControlSink {
 public:
  // Takes the loop's message filter for the keyboard's sake.
  explicit MainWindowWin(LoopWin& loop);
  ~MainWindowWin() override;

  // Makes the window and its controls, not shown yet. False when the system refuses. Both
  // references must stay valid until Destroy.
  [[nodiscard]] bool Create(Form1& form, MainForm& main_form);
  // Puts the window where Form1 says, moved into view if that is off every screen, and shows it,
  // never minimised.
  void Show();
  // Brings a shown window to the front, out of the task bar if need be.
  void BringToFront();
  // Ends the window. Calls of the sink are ignored from here on.
  void Destroy();

  // The window's handle; nullptr before Create and after Destroy.
  [[nodiscard]] void* handle() const;
  // Handles a message from the queue (MSG*) when it belongs to keyboard navigation.
  bool FilterMessage(void* message);
  // Lays the controls out as on a screen of `dpi`, for a client area of that scale. For tests of
  // screens that are not there.
  void SimulateDpi(int dpi);

  void Changed(const Control& control, Field field) override;
  void ListChanged(ListBox& list, ListChange change, std::size_t index) override;
  void FocusWanted(const Control& control) override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace corvane
