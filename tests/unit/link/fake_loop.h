// A loop on a virtual clock for the link's unit tests, with a script of what happens outside.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "base/loop.h"
#include "base/wall_clock.h"

namespace corvane::test {

class FakeLoop : public Loop {
 public:
  std::int64_t now_ms = 1000;
  std::function<void(int ms)> on_sleep;  // called at each Sleep, before time passes
  std::vector<int> sleeps;               // every Sleep asked for
  int do_events_count = 0;
  int socket_waits = 0;

  // Has `action` happen outside of the program, `in_ms` from now; it may post events.
  void At(int in_ms, std::function<void()> action) {
    outside_.emplace(now_ms + in_ms, std::move(action));
  }

  // Lets the program wait for events for `ms`.
  void Run(std::int64_t ms) {
    const std::int64_t end = now_ms + ms;
    for (;;) {
      DispatchDue();
      std::int64_t next = end;
      if (!outside_.empty()) next = std::min(next, outside_.begin()->first);
      for (FakeTimer* timer : timers_) {
        if (timer->enabled_) next = std::min(next, timer->due_ms);
      }
      if (now_ms >= end && next >= end) return;
      PassTo(std::max(next, now_ms));
      if (now_ms >= end) {
        DispatchDue();
        return;
      }
    }
  }

  std::int64_t TickMs() const override { return now_ms; }

  std::unique_ptr<Timer> MakeTimer(int interval_ms, std::function<void()> handler) override {
    auto timer = std::make_unique<FakeTimer>(*this, interval_ms, std::move(handler));
    timers_.push_back(timer.get());
    return timer;
  }

  void Post(EventSource source, std::function<void()> event) override {
    events_.emplace_back(source, std::move(event));
  }

  void Sleep(int ms) override {
    sleeps.push_back(ms);
    if (on_sleep) on_sleep(ms);
    PassTo(now_ms + ms);
  }

  void DoEvents() override {
    ++do_events_count;
    DispatchDue();
  }

  void WaitForSocketEvents(int ms) override {
    ++socket_waits;
    const std::int64_t end = now_ms + ms;
    while (!DispatchSocketEvents() && now_ms < end) {
      PassTo(outside_.empty() ? end : std::min(end, std::max(now_ms, outside_.begin()->first)));
    }
  }

 private:
  class FakeTimer : public Timer {
   public:
    FakeTimer(FakeLoop& loop, int interval_ms, std::function<void()> handler)
        : loop_(loop), interval_ms_(interval_ms), handler_(std::move(handler)) {}
    ~FakeTimer() override { std::erase(loop_.timers_, this); }
    void SetEnabled(bool enabled) override {
      if (enabled && !enabled_) due_ms = loop_.now_ms + interval_ms_;
      enabled_ = enabled;
    }
    bool enabled() const override { return enabled_; }
    int interval_ms() const override { return interval_ms_; }

    FakeLoop& loop_;
    int interval_ms_;
    std::function<void()> handler_;
    bool enabled_ = false;
    std::int64_t due_ms = 0;
  };

  void PassTo(std::int64_t end) {
    while (!outside_.empty() && outside_.begin()->first <= end) {
      const auto first = outside_.begin();
      now_ms = std::max(now_ms, first->first);
      const std::function<void()> action = std::move(first->second);
      outside_.erase(first);
      action();
    }
    now_ms = std::max(now_ms, end);
  }

  bool DispatchSocketEvents() {
    bool any = false;
    for (;;) {
      const auto event = std::find_if(events_.begin(), events_.end(), [](const auto& queued) {
        return queued.first == EventSource::kSocket;
      });
      if (event == events_.end()) return any;
      const std::function<void()> handler = std::move(event->second);
      events_.erase(event);
      handler();
      any = true;
    }
  }

  void DispatchDue() {
    while (!events_.empty()) {
      const std::function<void()> handler = std::move(events_.front().second);
      events_.pop_front();
      handler();
    }
    for (FakeTimer* timer : std::vector<FakeTimer*>(timers_)) {
      const bool there = std::find(timers_.begin(), timers_.end(), timer) != timers_.end();
      if (!there || !timer->enabled_ || timer->due_ms > now_ms) continue;
      timer->due_ms = now_ms + timer->interval_ms_;
      timer->handler_();
    }
  }

  std::deque<std::pair<EventSource, std::function<void()>>> events_;
  std::multimap<std::int64_t, std::function<void()>> outside_;
  std::vector<FakeTimer*> timers_;
};

// The wall clock stands still, so that texts can be compared.
class FakeClock : public WallClock {
 public:
  DateTime now{2026, 11, 15, 14, 23, 5};
  DateTime Now() const override { return now; }
  std::string GeneralDate(const DateTime& time) const override { return FixedGeneralDate(time); }
  std::optional<DateTime> ParseGeneralDate(std::string_view text) const override {
    return ParseFixedGeneralDate(text);
  }
};

inline constexpr const char* kNow = "15/11/2026 14:23:05";

}  // namespace corvane::test
