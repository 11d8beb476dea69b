// The event loop on a virtual clock: a day of the program passes in an instant, and a run is
// exactly repeatable. The clock moves only in the calls that say so.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "base/loop.h"
#include "base/timer_table.h"

namespace corvane::sim {

class SimLoop final : public Loop {
 public:
  // So many dispatches or empty DoEvents at one moment count as a loop that waits for the clock:
  // it then moves by 1 ms.
  static constexpr int kSpinLimit = 5000;

  explicit SimLoop(std::int64_t start_ms = 1'000'000);
  ~SimLoop() override;

  [[nodiscard]] std::int64_t TickMs() const override { return coarse_ ? CoarseMs() : now_ms_; }
  [[nodiscard]] std::unique_ptr<Timer> MakeTimer(int interval_ms,
                                                 std::function<void()> handler) override;
  void Post(EventSource source, std::function<void()> event) override;
  // Moves the clock and dispatches nothing.
  void Sleep(int ms) override;
  void DoEvents() override;
  // Moves the clock up to the first socket event.
  void WaitForSocketEvents(int ms) override;

  // Windows' clock as it is unless a program asks for more: what the loop tells, and when sleeps
  // and timers end, moves in steps of 15.625 ms. What happens outside keeps its own time.
  void SetCoarse(bool coarse) { coarse_ = coarse; }

  // Posts `event` when the clock has moved by `ms`.
  void PostAfter(std::int64_t ms, EventSource source, std::function<void()> event);

  // Lets `ms` milliseconds pass as an idle program does: everything due on the way is dispatched at
  // its time. Also from inside an event, as a system's own loop (an open box) would.
  void AdvanceMs(std::int64_t ms);
  // The same until `done` answers true, which is tested after every event and move of the clock.
  // False when `limit_ms` passed first.
  [[nodiscard]] bool RunUntil(const std::function<bool()>& done, std::int64_t limit_ms);

  // Called after each dispatched event and tick, nested ones too.
  void SetAfterEvent(std::function<void()> hook) { after_event_ = std::move(hook); }
  // The world outside: `next_due_ms` says when something happens there next, `catch_up` makes it
  // happen. The clock stops at each such moment, also in Sleep and WaitForSocketEvents.
  void SetOutside(std::function<void()> catch_up,
                  std::function<std::optional<std::int64_t>()> next_due_ms);
  // What handles a std::exception that an event let escape, as the real loop does; without one it
  // reaches the test. Other exceptions always do.
  void SetErrorReporter(std::function<void(const std::string& what)> reporter) {
    error_reporter_ = std::move(reporter);
  }

  // Nothing is dispatched any more: the program has ended. The clock can still move.
  void Stop() { stopped_ = true; }
  [[nodiscard]] bool stopped() const { return stopped_; }

  [[nodiscard]] std::int64_t dispatched() const { return dispatched_; }
  [[nodiscard]] int depth() const { return depth_; }
  [[nodiscard]] int deepest() const { return deepest_; }
  // How often the clock had to be moved because nothing else did.
  [[nodiscard]] std::int64_t spins_broken() const { return spins_broken_; }

 private:
  class SimTimer;
  struct Delayed {
    EventSource source;
    std::function<void()> event;
  };

  [[nodiscard]] std::int64_t CoarseMs() const;
  // The first moment from `ms` on at which a sleep or a timer can end.
  [[nodiscard]] std::int64_t EndOfStep(std::int64_t ms) const;
  void MoveTo(std::int64_t ms);
  void SetClock(std::int64_t ms);
  void QueueDelayed();
  void NoteSpin();
  void RunEvent(const std::function<void()>& event);
  bool DispatchPosted();
  bool DispatchDue(TimerTable::Pass& pass);
  bool DispatchSocketEvents();
  [[nodiscard]] std::int64_t NextMoment(std::int64_t limit_ms, bool with_timers) const;

  std::int64_t now_ms_;
  bool coarse_ = false;
  TimerTable timers_;
  EventQueue queue_;
  std::multimap<std::int64_t, Delayed> delayed_;
  std::function<void()> after_event_;
  std::function<void()> catch_up_;
  std::function<std::optional<std::int64_t>()> outside_due_;
  std::function<void(const std::string&)> error_reporter_;
  bool stopped_ = false;
  bool catching_up_ = false;
  int depth_ = 0;
  int deepest_ = 0;
  int spins_ = 0;
  std::int64_t spins_broken_ = 0;
  std::int64_t dispatched_ = 0;
};

}  // namespace corvane::sim
