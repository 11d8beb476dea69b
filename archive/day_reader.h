// Day folders to call records: event logs, control channel logs, counted calls and recordings are
// brought together. Writes nothing, holds no file that the program wants to change, and takes the
// folders in whatever state they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "archive/call_record.h"
#include "archive/day_folder.h"
#include "archive/event_calls.h"
#include "archive/replay.h"
#include "archive/user_files.h"

namespace corvane::tools {

struct DayRequest {
  std::vector<DayFolder> days;  // by date
  const UserLists* lists = nullptr;
  // What the setups of the control channel logs are decided with; its network and groups come from
  // the days and the lists.
  ReplayStart start;
  // Each setup of the control channel logs and what became of it; may be empty.
  std::function<void(std::size_t day, const SetupRecord& setup)> on_setup;
  // How much was read, in bytes of log_bytes().
  std::function<void(std::uint64_t done)> on_progress;

  [[nodiscard]] std::uint64_t log_bytes() const;
};

struct DayResult {
  std::vector<CallRecord> calls;  // by their start; those without one at the end
  std::vector<EventCalls::Gap> gaps;
  // What is missing or could not be used, a line each, in UTF-8.
  std::vector<std::string> notices;
  std::uint64_t contradictions = 0;  // setups that the event log shows otherwise
};

[[nodiscard]] DayResult ReadDays(const DayRequest& request);

}  // namespace corvane::tools
