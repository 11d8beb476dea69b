// Bringing two logs together: entries and lines have the same order, so each entry is looked for
// from the line of the one before it on.
#include "archive/timed_lines.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "base/text.h"
#include "core/group_locks.h"
#include "core/pdu_fields.h"

namespace corvane::tools {

namespace {

constexpr std::int64_t kMsPerSecond = 1000;

}  // namespace

bool TimedLines::NextDistinct(std::string_view& line) {
  while (lines_.Next(line)) {
    // The scanner drops such a line at once; leaving it out here is the same, and faster.
    if (lines_.number() == 1 || line != lines_.previous()) return true;
    ++repeats_;
  }
  return false;
}

bool TimedLines::Next(LogStep& step) {
  if (events_ == nullptr) {
    if (!NextDistinct(step.line)) return false;
    step.number = lines_.number();
    step.ms = static_cast<std::int64_t>(static_cast<double>(taken_++) * pace_ms_);
    return true;
  }
  while (ready_.empty()) {
    const bool more = !waiting_.empty() || Read() || !acts_.empty() || events_->Peek() != nullptr;
    if (!more) break;
    TimeSome();
  }
  if (ready_.empty()) return false;
  current_ = std::move(ready_.front());
  ready_.pop_front();
  step = current_.step;
  step.line = current_.text;
  return true;
}

// Takes one more line into waiting_.
bool TimedLines::Read() {
  std::string_view line;
  if (!NextDistinct(line)) return false;
  Waiting& next = waiting_.emplace_back();
  next.text = line;
  next.step.number = lines_.number();
  next.hash = std::hash<std::string_view>{}(line);
  next.is_setup = IsSetup(line) && !IsEncrypted(line);
  next.call_id = CallId(line);
  if (next.is_setup) {
    next.gssi = Group(line);
    next.carrier = Carrier(line);
  }
  return true;
}

bool TimedLines::Matches(const EventEntry& entry, const Waiting& line) {
  const auto is_call_line = [&](const char* name) {
    return line.call_id == entry.call_id && Contains(line.text, name);
  };
  switch (entry.kind) {
    case EventEntry::Kind::kSetup:
      return line.is_setup && line.call_id == entry.call_id && line.gssi == entry.gssi &&
             line.carrier == entry.carrier;
    case EventEntry::Kind::kLockedOut:
      return line.is_setup && line.gssi == entry.gssi;
    case EventEntry::Kind::kCeased:
      return is_call_line("D_TX_Ceased");
    case EventEntry::Kind::kGranted:
      return is_call_line("D_TX_Granted");
    case EventEntry::Kind::kReleased:
      return is_call_line("D_Release");
    case EventEntry::Kind::kDisconnected:
      return is_call_line("D_Disconnect");
    case EventEntry::Kind::kListed:
      return line.hash == entry.text;
    default:
      return false;
  }
}

// Moves the acts that stand before the next entry about a line to acts_.
void TimedLines::GatherActs() {
  for (const EventEntry* entry = events_->Peek(); entry != nullptr && !entry->is_about_line();
       entry = events_->Peek()) {
    LogStep act;
    act.ms = entry->second * kMsPerSecond;
    act.time_from = LogStep::TimeFrom::kEvent;
    act.call_id = entry->call_id;
    switch (entry->kind) {
      case EventEntry::Kind::kTimedOut:
        act.what = LogStep::What::kTimedOut;
        break;
      case EventEntry::Kind::kLogModeOn:
        act.what = LogStep::What::kLogModeOn;
        break;
      case EventEntry::Kind::kLogModeOff:
        act.what = LogStep::What::kLogModeOff;
        break;
      default:
        act.what = GroupComesBack(*entry) ? LogStep::What::kParked : LogStep::What::kDropped;
        break;
    }
    const EventEntry* next = events_->Peek(1);
    // Switching LOG mode on drops the call by itself.
    const bool part_of_next = entry->kind == EventEntry::Kind::kReset && next != nullptr &&
                              next->kind == EventEntry::Kind::kLogModeOn &&
                              next->second - entry->second <= 1;
    if (!part_of_next) acts_.push_back(act);
    events_->Pop();
  }
}

// Whether the group of the call that was reset is followed again within the time for which a group
// that the user dropped is left alone.
bool TimedLines::GroupComesBack(const EventEntry& reset) const {
  for (std::size_t ahead = 1; const EventEntry* entry = events_->Peek(ahead); ++ahead) {
    if (entry->second - reset.second >= GroupLocks::kLockoutTicks - 1) return false;
    if (entry->kind == EventEntry::Kind::kSetup && entry->gssi == last_gssi_) return true;
  }
  return false;
}

// Whether the event log tells how the call of its next entry ended.
bool TimedLines::EndIsKnown() const {
  const std::int16_t call_id = events_->Peek()->call_id;
  for (std::size_t ahead = 1; const EventEntry* entry = events_->Peek(ahead); ++ahead) {
    switch (entry->kind) {
      case EventEntry::Kind::kReleased:
      case EventEntry::Kind::kDisconnected:
      case EventEntry::Kind::kTimedOut:
        return entry->call_id == call_id;
      case EventEntry::Kind::kReset:
      case EventEntry::Kind::kLogModeOn:
        return true;
      case EventEntry::Kind::kSetup:
        return false;
      default:
        break;
    }
  }
  return false;
}

void TimedLines::TimeSome() {
  GatherActs();
  const EventEntry* entry = events_->Peek();
  if (entry == nullptr) {
    TimeRest();
    return;
  }
  if (anchored_ && entry->kind != EventEntry::Kind::kSetup && Matches(*entry, *anchored_)) {
    events_->Pop();  // one line can have several entries
    return;
  }
  std::size_t index = 0;
  if (MatchNext(index)) {
    Anchor(index, *entry);
  } else {
    ++unmatched_;
  }
  events_->Pop();
}

bool TimedLines::MatchNext(std::size_t& index) {
  const EventEntry entry = *events_->Peek();
  for (index = 0; index < kSearchLines; ++index) {
    if (index == waiting_.size() && !Read()) return false;
    if (Matches(entry, waiting_[index])) return true;
  }
  return false;
}

// The waiting line at `index` has the entry's time; those before it get times in between.
void TimedLines::Anchor(std::size_t index, const EventEntry& entry) {
  const std::int64_t ms = entry.second * kMsPerSecond;
  const std::int64_t from_ms = anchored_ ? std::min(anchored_ms_, ms) : ms;
  for (std::size_t at = 0; at < index; ++at) {
    waiting_[at].step.ms = from_ms + (ms - from_ms) * static_cast<std::int64_t>(at + 1) /
                                         static_cast<std::int64_t>(index + 1);
    waiting_[at].step.time_from = LogStep::TimeFrom::kNeighbours;
    waiting_[at].step.covered = true;
  }
  Waiting& line = waiting_[index];
  line.step.ms = ms;
  line.step.time_from = LogStep::TimeFrom::kEvent;
  line.step.covered = true;
  if (entry.kind == EventEntry::Kind::kSetup) {
    line.step.setup_in_events = true;
    line.step.end_in_events = EndIsKnown();
    last_gssi_before_ = last_gssi_;
    last_gssi_ = entry.gssi;
  }
  if (entry.kind == EventEntry::Kind::kLockedOut) last_lockout_ = entry.gssi;
  anchored_ = line;
  anchored_ms_ = ms;
  PlaceActs(index + 1);
  last_gssi_before_ = last_gssi_;
}

// No entry is left: the lines go on at the pace.
void TimedLines::TimeRest() {
  const bool more = !waiting_.empty();
  if (more) {
    LogStep& step = waiting_.front().step;
    ++taken_;
    step.ms = anchored_ms_ + static_cast<std::int64_t>(static_cast<double>(taken_) * pace_ms_);
    step.time_from = anchored_ ? LogStep::TimeFrom::kNeighbours : LogStep::TimeFrom::kPace;
    const bool act_is_due = !acts_.empty() && acts_.front().ms <= step.ms;
    if (!act_is_due) {
      Release(1);
      return;
    }
    --taken_;
  }
  while (!acts_.empty() && (!more || acts_.front().ms <= waiting_.front().step.ms)) {
    ready_.emplace_back().step = acts_.front();
    acts_.pop_front();
  }
}

// Puts each act between the first `lines` waiting lines, of which the last one alone has an entry.
void TimedLines::PlaceActs(std::size_t lines) {
  for (; !acts_.empty(); acts_.pop_front()) {
    const std::size_t place = PlaceOf(acts_.front(), lines - 1);
    Release(place);
    lines -= place;
    ready_.emplace_back().step = acts_.front();
  }
  Release(lines);
}

// Before which of the first `last` waiting lines the act comes: by its time, and by what the lines
// show.
std::size_t TimedLines::PlaceOf(const LogStep& act, std::size_t last) const {
  std::size_t place = 0;
  while (place < last && waiting_[place].step.ms <= act.ms) ++place;
  if (act.what == LogStep::What::kLogModeOn) return place;
  for (std::size_t at = place; at < last; ++at) {
    // The dropped group itself is left alone and has no entry either.
    const bool left_alone =
        act.what == LogStep::What::kDropped && waiting_[at].gssi == last_gssi_before_;
    if (!left_alone && ShowsThatCallGoesOn(waiting_[at])) place = at + 1;
  }
  if (act.what != LogStep::What::kTimedOut) return place;
  // Its end on the air came too late, or it would not have timed out.
  for (std::size_t at = 0; at < place; ++at) {
    const Waiting& line = waiting_[at];
    const bool ends = Contains(line.text, "D_Release") || Contains(line.text, "D_Disconnect");
    if (ends && line.call_id == act.call_id) return at;
  }
  return place;
}

bool TimedLines::ShowsThatCallGoesOn(const Waiting& line) const {
  if (!line.is_setup || !decide_) return false;
  switch (decide_(line.text)) {
    case SetupOutcome::kFollowed:
    case SetupOutcome::kBadTimeslot:
      return true;
    case SetupOutcome::kLockedOut:
      // Reports can be switched off, and a group is not reported again and again.
      return last_lockout_ && line.gssi != last_lockout_;
    default:
      return false;
  }
}

void TimedLines::Release(std::size_t lines) {
  for (; lines > 0; --lines) {
    ready_.push_back(std::move(waiting_.front()));
    waiting_.pop_front();
  }
}

}  // namespace corvane::tools
