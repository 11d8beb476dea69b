// Virtual time: who is due when, and how far the clock may jump.
#include "sim/sim_loop.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace corvane::sim {

namespace {

class DepthScope {
 public:
  DepthScope(int& depth, int& deepest) : depth_(depth) { deepest = std::max(deepest, ++depth_); }
  ~DepthScope() { --depth_; }
  DepthScope(const DepthScope&) = delete;
  DepthScope& operator=(const DepthScope&) = delete;

 private:
  int& depth_;
};

// Windows' steps, counted from 0: 64 of them a second. The `step`-th begins with this millisecond.
std::int64_t BeginOfStep(std::int64_t step) {
  return (step * 125 + 7) / 8;
}

std::int64_t StepOf(std::int64_t ms) {
  return ms * 8 / 125;
}

}  // namespace

class SimLoop::SimTimer : public Timer {
 public:
  SimTimer(SimLoop& loop, TimerTable::Id id) : loop_(loop), id_(id) {}
  ~SimTimer() override { loop_.timers_.Remove(id_); }
  void SetEnabled(bool enabled) override { loop_.timers_.SetEnabled(id_, enabled, loop_.TickMs()); }
  [[nodiscard]] bool enabled() const override { return loop_.timers_.enabled(id_); }
  [[nodiscard]] int interval_ms() const override { return loop_.timers_.interval_ms(id_); }

 private:
  SimLoop& loop_;
  TimerTable::Id id_;
};

SimLoop::SimLoop(std::int64_t start_ms) : now_ms_(start_ms) {}

SimLoop::~SimLoop() = default;

std::int64_t SimLoop::CoarseMs() const {
  return BeginOfStep(StepOf(now_ms_));
}

std::int64_t SimLoop::EndOfStep(std::int64_t ms) const {
  if (!coarse_) return ms;
  const std::int64_t begin = BeginOfStep(StepOf(ms));
  return begin == ms ? ms : BeginOfStep(StepOf(ms) + 1);
}

std::unique_ptr<Timer> SimLoop::MakeTimer(int interval_ms, std::function<void()> handler) {
  return std::make_unique<SimTimer>(*this, timers_.Add(interval_ms, std::move(handler)));
}

void SimLoop::Post(EventSource source, std::function<void()> event) {
  queue_.Add(source, std::move(event));
}

void SimLoop::PostAfter(std::int64_t ms, EventSource source, std::function<void()> event) {
  delayed_.emplace(now_ms_ + std::max<std::int64_t>(ms, 0), Delayed{source, std::move(event)});
  QueueDelayed();
}

void SimLoop::SetOutside(std::function<void()> catch_up,
                         std::function<std::optional<std::int64_t>()> next_due_ms) {
  catch_up_ = std::move(catch_up);
  outside_due_ = std::move(next_due_ms);
}

void SimLoop::Sleep(int ms) {
  if (ms > 0) {
    MoveTo(EndOfStep(now_ms_ + ms));
  } else {
    NoteSpin();
  }
}

void SimLoop::DoEvents() {
  NoteSpin();
  if (depth_ >= kDeepestYield) return;
  TimerTable::Pass pass;
  for (int budget = kEventsPerYield; budget > 0 && !stopped_; --budget) {
    if (!DispatchPosted() && !DispatchDue(pass)) return;
  }
  // Nor may the timers starve under events that never cease.
  while (!stopped_ && DispatchDue(pass)) {
  }
}

void SimLoop::WaitForSocketEvents(int ms) {
  const std::int64_t end = EndOfStep(TickMs() + std::max(ms, 0));
  if (ms <= 0) NoteSpin();
  while (!stopped_ && !DispatchSocketEvents() && now_ms_ < end) MoveTo(NextMoment(end, false));
}

void SimLoop::AdvanceMs(std::int64_t ms) {
  static_cast<void>(RunUntil([] { return false; }, ms));
}

bool SimLoop::RunUntil(const std::function<bool()>& done, std::int64_t limit_ms) {
  const std::int64_t end = now_ms_ + std::max<std::int64_t>(limit_ms, 0);
  TimerTable::Pass pass;
  for (;;) {
    pass.ticked.clear();  // a new one, in the memory of the one before
    const std::int64_t began = now_ms_;
    const std::int64_t spins_before = spins_broken_;
    if (done()) return true;
    // Events that post each other for ever end with the time, all others are dispatched.
    while (!stopped_ && (now_ms_ <= end || spins_broken_ == spins_before) &&
           (DispatchPosted() || DispatchDue(pass))) {
      NoteSpin();
      if (done()) return true;
    }
    if (now_ms_ >= end) return false;
    if (now_ms_ > began) continue;
    MoveTo(stopped_ ? end : NextMoment(end, true));
  }
}

std::int64_t SimLoop::NextMoment(std::int64_t limit_ms, bool with_timers) const {
  std::int64_t next = limit_ms;
  if (!delayed_.empty()) next = std::min(next, delayed_.begin()->first);
  if (outside_due_) next = std::min(next, outside_due_().value_or(next));
  if (const auto due = timers_.NextDueMs(); due && with_timers) {
    next = std::min(next, EndOfStep(*due));
  }
  // What is overdue although everything was dispatched waits for the clock to move.
  return std::max(next, std::min(now_ms_ + 1, limit_ms));
}

void SimLoop::MoveTo(std::int64_t ms) {
  while (outside_due_ && !catching_up_) {
    const std::optional<std::int64_t> due = outside_due_();
    if (!due || *due > ms || *due <= now_ms_) break;
    SetClock(*due);
  }
  if (ms > now_ms_) SetClock(ms);
}

void SimLoop::SetClock(std::int64_t ms) {
  now_ms_ = ms;
  spins_ = 0;
  QueueDelayed();
  if (!catch_up_ || catching_up_) return;
  catching_up_ = true;
  catch_up_();
  catching_up_ = false;
}

void SimLoop::QueueDelayed() {
  while (!delayed_.empty() && delayed_.begin()->first <= now_ms_) {
    Delayed due = std::move(delayed_.begin()->second);
    delayed_.erase(delayed_.begin());
    queue_.Add(due.source, std::move(due.event));
  }
}

void SimLoop::NoteSpin() {
  if (++spins_ < kSpinLimit) return;
  ++spins_broken_;
  MoveTo(now_ms_ + 1);
}

void SimLoop::RunEvent(const std::function<void()>& event) {
  {
    const DepthScope scope(depth_, deepest_);
    ++dispatched_;
    if (error_reporter_) {
      try {
        event();
      } catch (const std::exception& error) {
        error_reporter_(error.what());
      }
    } else {
      event();
    }
  }
  if (after_event_) after_event_();
}

bool SimLoop::DispatchPosted() {
  if (queue_.empty()) return false;
  RunEvent(queue_.Take());
  return true;
}

bool SimLoop::DispatchDue(TimerTable::Pass& pass) {
  const TimerTable::Handler handler = timers_.TakeDue(TickMs(), pass);
  if (!handler) return false;
  RunEvent(*handler);
  return true;
}

bool SimLoop::DispatchSocketEvents() {
  std::size_t waiting = queue_.socket_events();
  const bool any = waiting > 0;
  for (; waiting > 0 && !stopped_; --waiting) {
    const std::function<void()> event = queue_.TakeSocketEvent();
    if (!event) break;
    RunEvent(event);
  }
  return any;
}

}  // namespace corvane::sim
