// From the child windows' notifications and messages to the user events of a window's handlers.
#pragma once

#include <windows.h>

#include <functional>

#include "ui/child_windows_win.h"
#include "ui/user_events.h"

namespace corvane {

class LoopWin;

// What comes while a handler is at work waits in the loop: the object outlives it.
class ChildEvents {
 public:
  explicit ChildEvents(LoopWin& loop) : loop_(loop) {}

  // Starts listening to the children of `owner`.
  void Connect(HWND owner, ChildWindows& children, UserEvents& handlers);
  // From here on no event reaches the handlers.
  void Disconnect();

  // WM_COMMAND of the owner: control or command id, and notification code (0 for menu items).
  void Command(int id, int code);
  void CloseRequested();
  void SessionEnding();
  // The pointer is at this place of `window`. False when it was there before: what stands under a
  // pointer at rest is told of it too, whenever something moves.
  bool NotePointer(HWND window, LPARAM place);
  // A message for the owner or one of its children; true when it was keyboard navigation and has
  // been dealt with.
  bool Navigate(MSG& key);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w_param, LPARAM l_param);
  LRESULT Handle(const ChildWindow& child, UINT message, WPARAM w_param, LPARAM l_param);
  void Run(const std::function<void(UserEvents&)>& event);
  void RunCommand(int id, int code);
  void ReportMovement(const ChildWindow& child);
  void EnterPressed(const ChildWindow& list);
  [[nodiscard]] bool RunShortcut(const MSG& key);
  void ListCommand(const ChildWindow& child, int code);
  void BoxCommand(const ChildWindow& child, int code);
  void MoveInOptions(const ChildWindow& option, bool back);
  [[nodiscard]] bool Pass(const ChildWindow& child, UINT message, WPARAM w_param);
  void Report(const ChildWindow& child, UINT message, WPARAM w_param, LPARAM l_param);

  LoopWin& loop_;
  HWND owner_ = nullptr;
  ChildWindows* children_ = nullptr;
  UserEvents* handlers_ = nullptr;
  POINT pointer_{};
  int keys_under_way_ = 0;  // key messages that a list is handling
};

}  // namespace corvane
