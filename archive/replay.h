// Call following over a log: the program's own scanner and call follower take one line after the
// other, on a clock that goes with the lines, and tell what becomes of each setup.
//
// A log has no sound. A followed call counts as silent from its setup and each D_TX_Granted on,
// unless the event log tells how it ended.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "archive/replay_ports.h"
#include "archive/timed_lines.h"
#include "core/call_follower.h"
#include "core/call_watcher.h"
#include "core/daily_calls.h"
#include "core/scanner.h"
#include "store/call_activity.h"

namespace corvane::tools {

// A setup line and what became of it.
struct SetupRecord {
  std::uint64_t number = 0;  // of the line
  std::int64_t ms = 0;
  LogStep::TimeFrom time_from = LogStep::TimeFrom::kPace;
  SetupOutcome outcome = SetupOutcome::kMalformed;
  // As far as the line has them, whatever was decided.
  std::optional<std::int16_t> call_id;
  std::optional<std::int32_t> gssi;
  std::optional<std::int32_t> party;
  std::optional<std::int32_t> carrier;
  std::optional<std::int16_t> slot;
  std::string label;   // of the group, in the ANSI code page
  std::string detail;  // why, in ASCII
  bool contradicts_events = false;
};

// The way back to the control channel.
struct EndRecord {
  std::uint64_t number = 0;  // of the last line that was taken by then
  std::int64_t ms = 0;
  LogStep::TimeFrom time_from = LogStep::TimeFrom::kPace;
  std::int16_t call_id = 0;
  CallEnd how = CallEnd::kReleased;
  std::int32_t park_carrier = 0;
  std::int64_t park_hz = 0;
};

class ReplaySink {
 public:
  virtual ~ReplaySink() = default;
  virtual void Setup(const SetupRecord& record) = 0;
  virtual void End(const EndRecord& record) = 0;
};

// What a replay begins with.
struct ReplayStart {
  const GssiTable* groups = nullptr;  // none: every group is new
  std::int32_t mcc = 0;
  std::int32_t mnc = 0;
  Presets presets;
  bool zero_offset = false;  // the offset of 0 Hz is selected
  bool log_mode = false;
  std::optional<std::int32_t> held;
};

class Replay : private CallWatcher {
 public:
  // Polls are this far apart: lines that come faster wait.
  static constexpr std::int64_t kPollMs = 60;
  // Groups and subscribers that the log brings are forgotten when they are more than this; nothing
  // is decided by them.
  static constexpr std::size_t kMostLearnt = 65536;

  Replay(const ReplayStart& start, ReplaySink& sink);

  void Take(const LogStep& step);

  // What would become of a setup line now if no call were followed.
  [[nodiscard]] SetupOutcome OutcomeWhenFree(std::string_view line) const;

  [[nodiscard]] bool following() const { return follower_.FollowingCall(); }

 private:
  void SetupDecided(const SetupDecision& decision) override;
  void FollowedCallEnded(std::int16_t call_id, CallEnd how) override;

  void TakeLine(const LogStep& step);
  void PassTimeUntil(std::int64_t ms);
  void TimeOut(std::int16_t call_id);
  void SetLogMode(bool on);
  void ForgetLearnt();
  [[nodiscard]] std::string Why(const SetupDecision& decision) const;

  ReplaySink& sink_;
  GssiTable start_groups_;
  ReplayLoop loop_;
  ReplayClock clock_{loop_};
  NoFiles files_;
  NoMci mci_;
  NoWindow window_;
  Form1 form_{window_};
  ProgramFlags flags_;
  Presets presets_;
  NetworkIdentity network_;
  GssiTable groups_;
  SsiTable subscribers_;
  DayFolders folders_{files_, form_, "C:"};
  LogFiles logs_{files_, clock_, form_};
  CallActivity activity_{files_, clock_, folders_, form_};
  Recorder recorder_{mci_, files_, form_, [this] { return folders_.DayFolder(); }};
  ReplayLink link_;
  NoBox box_;
  DailyCalls daily_{clock_, form_, folders_, logs_, activity_};
  CallFollower follower_;
  Scanner scanner_;

  const Call no_call_{form_};
  LogStep step_;              // the one under way
  std::uint64_t number_ = 0;  // of the last line
  std::int64_t forgotten_ = 0;
  bool begun_ = false;
  std::int64_t next_watchdog_ms_ = 0;
  std::int64_t next_lockout_ms_ = 0;
};

}  // namespace corvane::tools
