// The calls of a running Corvane by its event logs: that of today, after that of the day before,
// from which a call may go on. Opens files for moments only, with full sharing.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "archive/event_calls.h"
#include "archive/event_feed.h"
#include "tools/growing_file.h"

namespace corvane::tools {

class LiveCalls {
 public:
  explicit LiveCalls(std::filesystem::path daily) : daily_(std::move(daily)) {}

  // What was written since the last time. `now` is local time.
  void Read(std::int64_t now);
  // The call that a recording is of which began at `begin`; nullptr when the logs do not tell.
  // Until the next change.
  [[nodiscard]] const CallRecord* Find(const CallRecord& said, std::int64_t begin) const;
  // Every recording that is there has found its call, or will not.
  void ForgetOld(std::int64_t now);

 private:
  struct Log {
    GrowingFile lines;
    std::optional<DateOrder> order;
  };
  void ReadLog(const std::filesystem::path& folder, std::int64_t midnight, Log& log);

  std::filesystem::path daily_;
  std::map<std::int64_t, Log> logs_;  // by their midnights; two at the most
  EventCalls calls_;
};

}  // namespace corvane::tools
