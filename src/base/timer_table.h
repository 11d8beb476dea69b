// When the timers of a loop are due, on whatever clock that loop has, and the queue of its posted
// events: what the laws of Loop say about both, kept apart from any message pump.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/loop.h"

namespace corvane {

// One DoEvents dispatches at most so many posted events and messages before it returns.
inline constexpr int kEventsPerYield = 5000;
// A DoEvents nested deeper than this dispatches nothing: handlers that wait inside handlers that
// wait must not use up the stack.
inline constexpr int kDeepestYield = 50;

class TimerTable {
 public:
  using Id = std::uint64_t;
  using Handler = std::shared_ptr<const std::function<void()>>;

  // Which timers have ticked in one pass: each does at most once.
  struct Pass {
    std::vector<Id> ticked;
  };

  // A disabled timer. `interval_ms` below 10 counts as 10.
  Id Add(int interval_ms, std::function<void()> handler);
  void Remove(Id id);
  void SetEnabled(Id id, bool enabled, std::int64_t now_ms);
  [[nodiscard]] bool enabled(Id id) const;
  [[nodiscard]] int interval_ms(Id id) const;

  // When the next tick of an enabled timer is due; in the past while one is pending.
  [[nodiscard]] std::optional<std::int64_t> NextDueMs() const;

  // Takes the tick that has been due for longest among the timers that have not ticked in `pass`:
  // the handler to call, nullptr when none is due. The timer's ticks that were missed are dropped.
  [[nodiscard]] Handler TakeDue(std::int64_t now_ms, Pass& pass);

 private:
  struct Entry {
    Id id = 0;
    int interval_ms = 0;
    bool enabled = false;
    std::int64_t due_ms = 0;
    Handler handler;
  };
  // The place of a timer that is there; throws std::out_of_range for another.
  [[nodiscard]] std::size_t IndexOf(Id id) const;

  std::vector<Entry> entries_;  // by id
  Id last_id_ = 0;
};

class EventQueue {
 public:
  void Add(EventSource source, std::function<void()> event);
  [[nodiscard]] bool empty() const { return events_.empty(); }
  [[nodiscard]] std::size_t socket_events() const;

  // The oldest event of all; an empty function when there is none.
  [[nodiscard]] std::function<void()> Take();
  // The oldest socket event.
  [[nodiscard]] std::function<void()> TakeSocketEvent();

 private:
  struct Event {
    EventSource source;
    std::function<void()> run;
  };
  std::deque<Event> events_;
};

}  // namespace corvane
