// The parts of call following wired to each other, on whatever surroundings: shared by the unit
// tests, the benchmarks and the fuzz targets, which differ in what is around.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/bookkeeping.h"
#include "core/call_context.h"
#include "core/call_end.h"
#include "core/call_events.h"
#include "core/call_sequence.h"
#include "core/call_setup.h"
#include "core/daily_calls.h"
#include "core/log_mode.h"
#include "core/scanner.h"
#include "core/watchdog.h"
#include "sim/no_sink.h"

namespace corvane::sim {

// Never ticks.
class NoTimer : public Timer {
 public:
  void SetEnabled(bool enabled) override { enabled_ = enabled; }
  [[nodiscard]] bool enabled() const override { return enabled_; }
  [[nodiscard]] int interval_ms() const override { return 10; }

 private:
  bool enabled_ = false;
};

// Stands still until it is set.
class SetClock : public WallClock {
 public:
  [[nodiscard]] DateTime Now() const override { return now; }
  [[nodiscard]] std::string GeneralDate(const DateTime& time) const override {
    return FixedGeneralDate(time);
  }
  [[nodiscard]] std::optional<DateTime> ParseGeneralDate(std::string_view text) const override {
    const auto time = ParseFixedGeneralDate(text);
    return time ? time : ParseIsoDate(text);
  }
  DateTime now{2026, 11, 15, 14, 23, 5};
};

// Everything that a poll step touches, on network 262/1 with the link up.
struct CoreParts {
  CoreParts(Loop& loop, WallClock& wall_clock, Files& disk, Mci& mci,
            ProgramFlags& flags_of_program, SdrLink& link, NetworkInfoBox& box)
      : flags(flags_of_program),
        folders(disk, form, "C:\\Corvane"),
        logs(disk, wall_clock, form),
        activity(disk, wall_clock, folders, form),
        recorder(mci, disk, form, [this] { return folders.DayFolder(); }),
        context{loop,        wall_clock, form,    flags, presets,  network, groups,
                subscribers, recorder,   folders, logs,  activity, link,    box} {
    network.CurrentMcc = "262";
    network.CurrentMnc = "1";
    network.CurrentLa = "5";
    flags.NetRemoteLinkUp = true;
    flags.NetRemoteConnected = true;
  }

  NoSink sink;
  Form1 form{sink};
  ProgramFlags& flags;
  Presets presets;
  NetworkIdentity network;
  GssiTable groups;
  SsiTable subscribers;
  DayFolders folders;
  LogFiles logs;
  CallActivity activity;
  Recorder recorder;
  CallContext context;
  CallSequence sequence;
  Bookkeeping bookkeeping{context};
  CallEnd call_end{context, sequence, bookkeeping};
  DailyCalls daily{context};
  CallSetup setup{context, sequence, bookkeeping, daily};
  CallEvents events{context, call_end, bookkeeping};
  Scanner scanner{context, sequence, call_end, setup, events, daily};
  Watchdog watchdog{context, call_end};
  LogMode log_mode{context, sequence, call_end};
};

}  // namespace corvane::sim
