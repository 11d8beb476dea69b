// The file beside a shared recording that tells what it is of, laid out as listeners' programs know
// it from trunk-recorder: docs/formats/sidecar.md.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "archive/call_record.h"

namespace corvane::tools {

// A call whose recording has its name.
struct SharedCall {
  std::string day;   // of its folder, "20261115"
  std::string name;  // of the recording, "142305_1207_9001.wav"; UTF-8
  std::filesystem::path file;
  CallRecord call;
  std::int64_t begin = 0;  // of the sound; local time, as of archive/instant.h
  double seconds = 0;      // of sound
};

struct SidecarFacts {
  std::int64_t begin_utc = 0;                // s since 1970
  std::optional<std::int64_t> frequency_hz;  // of the call's carrier
  std::optional<std::int64_t> system;        // the user's own number
};

// The call knows its group.
[[nodiscard]] std::string SidecarJson(const SharedCall& shared, const SidecarFacts& facts);

// Local time as UTC. Of an hour that there are two of, the first.
[[nodiscard]] std::int64_t UtcOf(std::int64_t local);

}  // namespace corvane::tools
