// What is to happen when, on a clock that its owner moves. Knows nothing of what it runs.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace corvane::standin {

class Agenda {
 public:
  using Ticket = std::uint64_t;  // 0: none

  // Runs `action` once when the clock reaches `due_ms`; actions of one time run in the order in
  // which they were added.
  Ticket Add(std::int64_t due_ms, std::function<void()> action);
  // Nothing happens when the action has run already.
  void Cancel(Ticket ticket);

  [[nodiscard]] std::optional<std::int64_t> NextDueMs() const {
    if (actions_.empty()) return std::nullopt;
    return actions_.begin()->first.first;
  }
  // Takes out the next action that is due at `now_ms`; an empty function when none is.
  [[nodiscard]] std::function<void()> TakeDue(std::int64_t now_ms);
  [[nodiscard]] std::size_t size() const { return actions_.size(); }

 private:
  using Key = std::pair<std::int64_t, Ticket>;
  std::map<Key, std::function<void()>> actions_;
  std::map<Ticket, std::int64_t> due_;
  Ticket last_ticket_ = 0;
};

}  // namespace corvane::standin
