// The lines of a control channel log in their order, each with the moment at which it was taken,
// and what the user did between them. The log has no times: they come from the event log beside it,
// or from a steady pace.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "archive/event_feed.h"
#include "archive/log_lines.h"
#include "core/setup_decision.h"

namespace corvane::tools {

struct LogStep {
  enum class What {
    kLine,
    kTimedOut,  // the followed call has been silent for too long
    kDropped,   // the user dropped the followed call, and its group for a while
    kParked,    // the display was reset
    kLogModeOn,
    kLogModeOff,
  };
  enum class TimeFrom { kPace, kNeighbours, kEvent };

  What what = What::kLine;
  std::string_view line;  // until the next step
  std::uint64_t number = 0;
  std::int64_t ms = 0;  // since 1970 when it comes from events, since the first line otherwise
  TimeFrom time_from = TimeFrom::kPace;
  std::int16_t call_id = 0;      // of kTimedOut
  bool covered = false;          // lies before the last entry of the event log
  bool setup_in_events = false;  // the event log says that this setup was followed or counted
  bool end_in_events = false;    // and how that call ended
};

class TimedLines {
 public:
  // A line's entry in the event log is looked for within so many lines.
  static constexpr std::size_t kSearchLines = 1000;

  // `pace_ms`: what lies between two lines where nothing else is known.
  TimedLines(LogLines& lines, double pace_ms) : lines_(lines), pace_ms_(pace_ms) {}

  // Takes the times from `events`, which outlives this.
  void SetEvents(EventFeed& events) { events_ = &events; }

  // `decide` tells what would become of a setup line if no call were followed. It helps to place
  // what ends a call: a line that would then have an entry in the event log, but has none, came
  // before.
  void SetDecision(std::function<SetupOutcome(std::string_view)> decide) {
    decide_ = std::move(decide);
  }

  [[nodiscard]] bool Next(LogStep& step);

  // Lines that repeat the one before them, as most of a control channel log do; they give no step.
  [[nodiscard]] std::uint64_t repeats() const { return repeats_; }
  // Entries of the event log for which no line was found.
  [[nodiscard]] std::uint64_t unmatched() const { return unmatched_; }

 private:
  // A line that waits for its time, and what of it entries are compared with.
  struct Waiting {
    std::string text;
    LogStep step;
    std::size_t hash = 0;
    bool is_setup = false;
    std::optional<std::int16_t> call_id;
    std::optional<std::int32_t> gssi;
    std::optional<std::int32_t> carrier;
  };

  [[nodiscard]] bool NextDistinct(std::string_view& line);
  [[nodiscard]] bool Read();
  void TimeSome();
  void GatherActs();
  [[nodiscard]] bool MatchNext(std::size_t& index);
  void Anchor(std::size_t index, const EventEntry& entry);
  void TimeRest();
  void Release(std::size_t lines);
  void PlaceActs(std::size_t lines);
  [[nodiscard]] std::size_t PlaceOf(const LogStep& act, std::size_t last) const;
  [[nodiscard]] bool ShowsThatCallGoesOn(const Waiting& line) const;
  [[nodiscard]] bool EndIsKnown() const;
  [[nodiscard]] bool GroupComesBack(const EventEntry& reset) const;
  [[nodiscard]] static bool Matches(const EventEntry& entry, const Waiting& line);

  LogLines& lines_;
  double pace_ms_;
  EventFeed* events_ = nullptr;
  std::function<SetupOutcome(std::string_view)> decide_;
  std::uint64_t taken_ = 0;
  std::uint64_t repeats_ = 0;
  std::uint64_t unmatched_ = 0;

  std::deque<Waiting> waiting_;  // not timed yet
  std::deque<Waiting> ready_;
  std::deque<LogStep> acts_;  // not placed yet
  Waiting current_;
  std::optional<Waiting> anchored_;  // the last line with an entry
  std::int64_t anchored_ms_ = 0;
  std::optional<std::int32_t> last_gssi_;         // of the last setup in the event log
  std::optional<std::int32_t> last_gssi_before_;  // the same, without the entry of the batch
  std::optional<std::int32_t> last_lockout_;      // the group that it last reports as locked out
};

}  // namespace corvane::tools
