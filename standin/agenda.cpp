// An ordered map by time and order of adding; an index by ticket for cancelling.
#include "standin/agenda.h"

namespace corvane::standin {

Agenda::Ticket Agenda::Add(std::int64_t due_ms, std::function<void()> action) {
  const Ticket ticket = ++last_ticket_;
  actions_.emplace(Key{due_ms, ticket}, std::move(action));
  due_.emplace(ticket, due_ms);
  return ticket;
}

void Agenda::Cancel(Ticket ticket) {
  const auto found = due_.find(ticket);
  if (found == due_.end()) return;
  actions_.erase(Key{found->second, ticket});
  due_.erase(found);
}

std::function<void()> Agenda::TakeDue(std::int64_t now_ms) {
  if (actions_.empty() || actions_.begin()->first.first > now_ms) return {};
  const auto first = actions_.begin();
  std::function<void()> action = std::move(first->second);
  due_.erase(first->first.second);
  actions_.erase(first);
  return action;
}

}  // namespace corvane::standin
