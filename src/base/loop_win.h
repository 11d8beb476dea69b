// The event loop as a Windows message loop.
//
// Timers and posted events go on inside the system's own loops (an open menu, a window being moved,
// a message box), because both are driven by messages to a hidden window. A handler that lets
// events run inside a menu or a move leaves what the user does then to that loop.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/loop.h"
#include "base/timer_table.h"

namespace corvane {

class LoopWin : public Loop {
 public:
  // Made and used on the main thread alone. Throws std::runtime_error when the system gives no
  // window.
  LoopWin();
  ~LoopWin() override;
  LoopWin(const LoopWin&) = delete;
  LoopWin& operator=(const LoopWin&) = delete;

  [[nodiscard]] std::int64_t TickMs() const override;
  [[nodiscard]] std::unique_ptr<Timer> MakeTimer(int interval_ms,
                                                 std::function<void()> handler) override;
  void Post(EventSource source, std::function<void()> event) override;
  void Sleep(int ms) override;
  void DoEvents() override;
  void WaitForSocketEvents(int ms) override;

  // Dispatches until Quit. Returns the exit code.
  int Run();
  // Makes Run return after the event under way. A DoEvents in between dispatches nothing more.
  void Quit(int exit_code = 0);

  // What a window of the program has of the loop.
  class Hook {
   public:
    // Is shown each message of the thread's queue before it is dispatched; true means that it was
    // dealt with (keyboard navigation), and no other hook is asked.
    virtual bool FilterMessage(MSG& message) = 0;
    // Comes when no message and no event is left, before the loop waits for the next: for what need
    // not be done at once, like painting. `at_rest` is false where an event, or a loop of the
    // system's own (a menu, a box), is still under way and may have more to do.
    virtual void Idle(bool at_rest) = 0;

   protected:
    ~Hook() = default;
  };
  // A hook may go, and another come, while one is at work.
  void AddHook(Hook& hook) { hooks_.push_back(&hook); }
  void RemoveHook(Hook& hook) { std::erase(hooks_, &hook); }

  // True while the loop itself takes messages: a message that another program sends directly comes
  // like an event then. False while a handler runs: a call to another program's window can let such
  // a message in where no event is expected.
  [[nodiscard]] bool TakingMessages() const { return taking_messages_; }

  // Is told of an exception that a timer's handler or a posted event let escape. Without one the
  // program ends there.
  using ErrorReporter = std::function<void(const std::string& what)>;
  void SetErrorReporter(ErrorReporter reporter) { error_reporter_ = std::move(reporter); }

  // Runs `work` like an event: what it throws goes to the reporter. For window procedures, which
  // nothing may be thrown through.
  void Guard(const std::function<void()>& work) noexcept;

  // For sockets: messages from kFirstSocketMessage to kLastSocketMessage sent to socket_window()
  // are handed to `handler` as socket events.
  using SocketMessage = std::function<void(UINT message, WPARAM w, LPARAM l)>;
  static constexpr UINT kFirstSocketMessage = 0x8100;
  static constexpr UINT kLastSocketMessage = 0xBFFF;
  void SetSocketHandler(SocketMessage handler) { socket_handler_ = std::move(handler); }
  [[nodiscard]] HWND socket_window() const { return socket_window_; }

 private:
  class TimerWin;

  static LRESULT CALLBACK WakeProcedure(HWND window, UINT message, WPARAM w, LPARAM l);
  static LRESULT CALLBACK SocketProcedure(HWND window, UINT message, WPARAM w, LPARAM l);

  void DestroyWindows();
  void Wake();
  void Arm();
  bool RunPosted();
  bool RunDue(TimerTable::Pass& pass);
  void RunTimers();
  template <typename Call>
  auto Taking(Call take);
  bool TakeMessage(MSG& message, bool in_menu_or_move);
  void Dispatch(MSG& message);
  bool DispatchSocketMessages();
  void Idle(bool at_rest);

  HWND window_ = nullptr;
  HWND socket_window_ = nullptr;
  TimerTable timers_;
  EventQueue queue_;
  bool wake_posted_ = false;
  std::optional<std::int64_t> armed_for_;
  std::int64_t socket_messages_ = 0;
  int depth_ = 0;
  bool taking_messages_ = false;
  std::vector<Hook*> hooks_;
  ErrorReporter error_reporter_;
  SocketMessage socket_handler_;
};

}  // namespace corvane
