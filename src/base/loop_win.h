// The event loop as a Windows message loop.
//
// Timers and posted events go on inside the system's own loops (an open menu, a window being moved,
// a message box), because both are driven by messages to a hidden window.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "base/loop.h"

namespace corvane {

class LoopWin : public Loop {
 public:
  // Made and used on the main thread alone. Throws std::runtime_error when the system gives no
  // window.
  LoopWin();
  ~LoopWin() override;

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

  // Is shown each message (MSG*) of the thread's queue before it is dispatched; true means that it
  // was dealt with (keyboard navigation).
  void SetMessageFilter(std::function<bool(void* message)> filter);

  // Runs when no message and no event is left, before the loop waits for the next: for what need
  // not be done at once, like painting. `at_rest` is false where an event, or a loop of the
  // system's own (a menu, a box), is still under way and may have more to do.
  void SetIdleHandler(std::function<void(bool at_rest)> handler);

  // True while the loop itself takes messages: a message that another program sends directly comes
  // like an event then. False while a handler runs: a call to another program's window can let such
  // a message in where no event is expected.
  [[nodiscard]] bool TakingMessages() const;

  // Is told of an exception that a timer's handler or a posted event let escape. Without one the
  // program ends there.
  void SetErrorReporter(std::function<void(const std::string& what)> reporter);

  // Runs `work` like an event: what it throws goes to the reporter. For window procedures, which
  // nothing may be thrown through.
  void Guard(const std::function<void()>& work);

  // For sockets: messages from kFirstSocketMessage to kLastSocketMessage sent to socket_window()
  // are handed to `handler` as socket events.
  using SocketMessage = std::function<void(unsigned message, std::uintptr_t w, std::intptr_t l)>;
  static constexpr unsigned kFirstSocketMessage = 0x8100;
  static constexpr unsigned kLastSocketMessage = 0xBFFF;
  void SetSocketHandler(SocketMessage handler);
  [[nodiscard]] void* socket_window() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace corvane
