// What each entry of the event log does to the record of its call.
#include "archive/event_calls.h"

#include <algorithm>
#include <utility>

#include "archive/utf8.h"

namespace corvane::tools {

void EventCalls::BeginDay(std::size_t day, DateOrder order) {
  day_ = day;
  order_ = order;
}

std::vector<CallRecord> EventCalls::TakeCalls() {
  open_ = false;
  return std::exchange(calls_, {});
}

void EventCalls::ForgetBefore(std::int64_t second) {
  if (calls_.empty()) return;
  const auto kept = std::find_if(calls_.begin(), calls_.end() - 1,
                                 [&](const CallRecord& call) { return *call.start >= second; });
  calls_.erase(calls_.begin(), kept);
  // A whole day that was read at once leaves a lot of room behind.
  constexpr std::size_t kRoom = 4;
  if (calls_.capacity() > kRoom * (calls_.size() + kRoom)) calls_.shrink_to_fit();
}

void EventCalls::NoteTime(std::int64_t second) {
  if (extent_.last && second - *extent_.last >= kShortestGapS) {
    gaps_.push_back({*extent_.last, second});
  }
  if (!extent_.first) extent_.first = second;
  extent_.last = std::max(extent_.last.value_or(second), second);
}

void EventCalls::TakeLine(std::string_view line) {
  if (line.empty()) return;
  ++extent_.lines;
  std::string_view rest;
  const auto entry = ParseEvent(line, order_);
  if (!entry) {
    if (!ParseStamp(line, order_, rest)) ++extent_.not_understood;
    return;
  }
  NoteTime(entry->second);
  switch (entry->kind) {
    case EventEntry::Kind::kSetup:
      return Begin(*entry);
    case EventEntry::Kind::kCalling:
    case EventEntry::Kind::kGranted:
      return AddTalker(*entry);
    case EventEntry::Kind::kReleased:
      return End(*entry, EndOfCall::kReleased);
    case EventEntry::Kind::kDisconnected:
      return End(*entry, EndOfCall::kDisconnected);
    case EventEntry::Kind::kTimedOut:
      return End(*entry, EndOfCall::kTimedOut);
    case EventEntry::Kind::kReset:
      if (open_ && calls_.back().followed) {
        EventEntry reset = *entry;
        reset.call_id = calls_.back().call_id.value_or(0);
        End(reset, EndOfCall::kForced);
      }
      return;
    case EventEntry::Kind::kAborted:
      if (open_) calls_.pop_back();
      open_ = false;
      return;
    case EventEntry::Kind::kNetwork:
      mcc_ = entry->mcc;
      mnc_ = entry->mnc;
      return;
    default:
      return;
  }
}

void EventCalls::Begin(const EventEntry& entry) {
  CallRecord& call = calls_.emplace_back();
  call.day = day_;
  call.start = entry.second;
  call.mcc = mcc_;
  call.mnc = mnc_;
  call.gssi = entry.gssi;
  call.label = Utf8(entry.label);
  call.call_id = entry.call_id;
  call.carrier = entry.carrier;
  open_ = true;
}

void EventCalls::AddTalker(const EventEntry& entry) {
  if (!open_ || calls_.back().call_id != entry.call_id) return;
  CallRecord& call = calls_.back();
  if (entry.kind == EventEntry::Kind::kCalling) call.followed = true;
  call.talkers.push_back(
      {entry.ssi, Utf8(entry.label), std::max<std::int64_t>(0, entry.second - *call.start)});
}

void EventCalls::End(const EventEntry& entry, EndOfCall how) {
  if (!open_ || calls_.back().call_id != entry.call_id) return;
  CallRecord& call = calls_.back();
  call.end = how;
  // The clock may have been set meanwhile.
  if (entry.second >= *call.start) {
    call.length_s = static_cast<double>(entry.second - *call.start);
  }
  open_ = false;
}

}  // namespace corvane::tools
