// What somebody who looked at a running Corvane all day would notice. Looks at its files, writes to
// none of them, holds none of them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "archive/event_calls.h"
#include "base/date_time.h"
#include "tools/growing_file.h"

namespace corvane::tools {

struct WatchLimits {
  std::int64_t deaf_s = 60;      // 0: never deaf
  std::uint64_t room_mb = 1000;  // 0: never short of room
  std::string copies;            // "": no copies are kept
};

class Watcher {
 public:
  Watcher(std::filesystem::path folder, WatchLimits limits)
      : folder_(std::move(folder)), limits_(std::move(limits)) {}

  struct Seen {
    std::vector<std::string> lines;    // of the control channel log, as they stand there
    std::vector<std::string> notices;  // each tells of a change; never a name from the air
  };
  // `now` is local time, `room` what is free on the disk of the folder.
  [[nodiscard]] Seen Look(std::int64_t now, std::optional<std::uint64_t> room);

 private:
  void BeginDay(std::int64_t now);
  void ReadEvents();
  void LookForSilence(std::int64_t now, bool lines, Seen& seen);
  void LookForRoom(std::optional<std::uint64_t> room, Seen& seen);
  void KeepCopies(Seen& seen);

  std::filesystem::path folder_;
  WatchLimits limits_;
  std::optional<DateTime> day_;
  std::filesystem::path day_folder_;
  GrowingFile cc_log_;
  GrowingFile event_log_;
  EventCalls calls_;
  bool ordered_ = false;
  std::optional<std::int64_t> last_line_;
  bool deaf_ = false;
  bool short_of_room_ = false;
  bool copies_failed_ = false;
};

}  // namespace corvane::tools
