// One run of call following over the log.
#include "archive/cc_setups.h"

#include "archive/event_feed.h"
#include "archive/log_lines.h"
#include "archive/timed_lines.h"

namespace corvane::tools {

namespace {

constexpr double kPaceMs = 60;

class Handed : public ReplaySink {
 public:
  explicit Handed(CcSetups& to) : to_(to) {}
  void Setup(const SetupRecord& record) override {
    ++to_.setups;
    if (record.contradicts_events) ++to_.contradictions;
    if (to_.on_setup) to_.on_setup(record);
  }
  void End(const EndRecord&) override {}

 private:
  CcSetups& to_;
};

}  // namespace

void CcSetups::Read(const DayFolder& day, const ReplayStart& start) {
  LogLines lines;
  if (!lines.Open(day.cc_log)) {
    failed = true;
    return;
  }
  EventFeed events;
  TimedLines steps(lines, kPaceMs);
  timed = !day.event_log.empty() && events.Open(day.event_log, day.date);
  if (timed) steps.SetEvents(events);
  Handed sink(*this);
  Replay replay(start, sink);
  steps.SetDecision([&](std::string_view line) { return replay.OutcomeWhenFree(line); });
  for (LogStep step; steps.Next(step);) {
    replay.Take(step);
    if (on_progress) on_progress(lines.bytes_read());
  }
  failed = lines.failed() || events.failed();
}

}  // namespace corvane::tools
