// The timers' periods and the order of posted events.
#include "base/timer_table.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace corvane {

namespace {
constexpr int kShortestIntervalMs = 10;
}  // namespace

TimerTable::Id TimerTable::Add(int interval_ms, std::function<void()> handler) {
  Entry entry;
  entry.id = ++last_id_;
  entry.interval_ms = std::max(interval_ms, kShortestIntervalMs);
  entry.handler = std::make_shared<const std::function<void()>>(std::move(handler));
  entries_.push_back(std::move(entry));
  return last_id_;
}

void TimerTable::Remove(Id id) {
  std::erase_if(entries_, [id](const Entry& entry) { return entry.id == id; });
}

std::size_t TimerTable::IndexOf(Id id) const {
  const auto found = std::ranges::lower_bound(entries_, id, {}, &Entry::id);
  if (found == entries_.end() || found->id != id) throw std::out_of_range("no such timer");
  return static_cast<std::size_t>(found - entries_.begin());
}

void TimerTable::SetEnabled(Id id, bool enabled, std::int64_t now_ms) {
  Entry& entry = entries_[IndexOf(id)];
  if (entry.enabled == enabled) return;
  entry.enabled = enabled;
  entry.due_ms = now_ms + entry.interval_ms;
}

bool TimerTable::enabled(Id id) const {
  return entries_[IndexOf(id)].enabled;
}

int TimerTable::interval_ms(Id id) const {
  return entries_[IndexOf(id)].interval_ms;
}

std::optional<std::int64_t> TimerTable::NextDueMs() const {
  std::optional<std::int64_t> next;
  for (const Entry& entry : entries_) {
    if (entry.enabled && (!next || entry.due_ms < *next)) next = entry.due_ms;
  }
  return next;
}

TimerTable::Handler TimerTable::TakeDue(std::int64_t now_ms, Pass& pass) {
  Entry* first = nullptr;
  for (Entry& entry : entries_) {
    if (!entry.enabled || entry.due_ms > now_ms) continue;
    if (std::ranges::find(pass.ticked, entry.id) != pass.ticked.end()) continue;
    if (first == nullptr || entry.due_ms < first->due_ms) first = &entry;
  }
  if (first == nullptr) return nullptr;
  const std::int64_t missed = (now_ms - first->due_ms) / first->interval_ms;
  first->due_ms += (missed + 1) * first->interval_ms;
  pass.ticked.push_back(first->id);
  return first->handler;
}

void EventQueue::Add(EventSource source, std::function<void()> event) {
  if (event) events_.push_back({source, std::move(event)});
}

std::size_t EventQueue::socket_events() const {
  return static_cast<std::size_t>(
      std::ranges::count(events_, EventSource::kSocket, &Event::source));
}

std::function<void()> EventQueue::Take() {
  if (events_.empty()) return {};
  std::function<void()> run = std::move(events_.front().run);
  events_.pop_front();
  return run;
}

std::function<void()> EventQueue::TakeSocketEvent() {
  const auto at = std::ranges::find(events_, EventSource::kSocket, &Event::source);
  if (at == events_.end()) return {};
  std::function<void()> run = std::move(at->run);
  events_.erase(at);
  return run;
}

}  // namespace corvane
