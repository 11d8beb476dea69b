// The event loop seam: timers, posted events, and the two ways a handler can wait.
//
// Everything that the user, the network or the passing of time can do to the program is an event
// that a Loop dispatches on the one thread. This file must not know any window system.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace corvane {

// A periodic timer, disabled when made. Ticks do not queue: at most one is pending, missed ones
// are dropped. Enabling an enabled timer does not restart its period; disabling and enabling does.
// The tick of a disabled timer does not come, even if it was already due.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual void SetEnabled(bool enabled) = 0;
  [[nodiscard]] virtual bool enabled() const = 0;
  [[nodiscard]] virtual int interval_ms() const = 0;
};

// Where a posted event comes from. WaitForSocketEvents dispatches kSocket events alone.
enum class EventSource { kSocket, kUser };

class Loop {
 public:
  virtual ~Loop() = default;

  // Milliseconds on a clock that only moves forward and is not the wall clock.
  [[nodiscard]] virtual std::int64_t TickMs() const = 0;

  // Makes a disabled timer. `interval_ms` is at least 10. The handler may be entered again while it
  // is on the stack (a handler that waits lets other events run); see NonReentrant.
  // The timer must not outlive the loop.
  [[nodiscard]] virtual std::unique_ptr<Timer> MakeTimer(int interval_ms,
                                                         std::function<void()> handler) = 0;

  // Queues `event`; dispatched in the order of posting, before any timer that is due.
  virtual void Post(EventSource source, std::function<void()> event) = 0;

  // Blocks for `ms` milliseconds. Dispatches nothing.
  virtual void Sleep(int ms) = 0;

  // Dispatches what is due now, nested on the caller's stack, and returns. Lets events run.
  virtual void DoEvents() = 0;

  // Waits up to `ms` milliseconds for socket events and dispatches those alone: no timer, no user
  // input. Returns as soon as at least one was dispatched.
  virtual void WaitForSocketEvents(int ms) = 0;
};

// Sleeps for `ms` milliseconds in short pieces, letting events run after each. Returns early, with
// false, as soon as `stop` answers true. Lets events run.
bool SleepAndYield(Loop& loop, int ms, const std::function<bool()>& stop);

// Wraps a handler so that an entry while it is already on the stack is dropped.
[[nodiscard]] std::function<void()> NonReentrant(std::function<void()> handler);

}  // namespace corvane
