// From the child windows' notifications and messages to the user events of MainForm.
#pragma once

#include <cstdint>
#include <functional>

#include "ui/child_windows_win.h"

namespace corvane {

class LoopWin;
class MainForm;

class ChildEvents {
 public:
  explicit ChildEvents(LoopWin& loop) : loop_(loop) {}

  // Starts listening to the children of `owner` (HWND).
  void Connect(void* owner, ChildWindows& children, Form1& form, MainForm& main_form);
  // From here on no event reaches MainForm.
  void Disconnect();

  // WM_COMMAND of the owner: control or command id, and notification code (0 for menu items).
  void Command(int id, int code);
  void CloseRequested();
  void SessionEnding();
  // A message (MSG*) for the owner or one of its children; true when it was keyboard navigation
  // and has been dealt with.
  bool Navigate(void* message);

 private:
  struct Hook;

  void Run(const std::function<void(MainForm&)>& event);
  void RunCommand(int id, int code);
  void ListCommand(const ChildWindow& child, int code);
  void BoxCommand(const ChildWindow& child, int code);
  void MoveInOptions(const ChildWindow& option, bool back);
  [[nodiscard]] bool Pass(const ChildWindow& child, unsigned message, std::uintptr_t w_param);
  void Report(const ChildWindow& child, unsigned message, std::uintptr_t w_param);

  LoopWin& loop_;
  void* owner_ = nullptr;
  ChildWindows* children_ = nullptr;
  Form1* form_ = nullptr;
  MainForm* main_form_ = nullptr;
  int keys_under_way_ = 0;  // key messages that a list is handling
};

}  // namespace corvane
