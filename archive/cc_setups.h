// The setups of a day's control channel log and what became of each, with the times of the event
// log beside it.
#pragma once

#include <cstdint>
#include <functional>

#include "archive/day_folder.h"
#include "archive/replay.h"

namespace corvane::tools {

struct CcSetups {
  std::function<void(const SetupRecord& setup)> on_setup;
  std::function<void(std::uint64_t bytes)> on_progress;

  std::uint64_t setups = 0;
  std::uint64_t contradictions = 0;  // setups that the event log shows otherwise
  bool failed = false;               // a log could not be read to its end
  bool timed = false;                // there is an event log to take times from

  // `day` has a control channel log.
  void Read(const DayFolder& day, const ReplayStart& start);
};

}  // namespace corvane::tools
