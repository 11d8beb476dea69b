// A call as the files of its day tell of it. Whatever they do not tell is empty.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvane::tools {

enum class EndOfCall { kReleased, kDisconnected, kTimedOut, kForced, kUnknown };
inline constexpr int kEndsOfCall = static_cast<int>(EndOfCall::kUnknown) + 1;

// "released", "disconnected", "timed_out", "forced", "unknown".
[[nodiscard]] const char* NameOf(EndOfCall end);

// Somebody who was given the word.
struct Talker {
  std::int32_t ssi = 0;
  std::string label;       // UTF-8; "": none
  std::int64_t pos_s = 0;  // after the call's start
};

struct RecordingFile {
  std::filesystem::path file;  // where it is
  std::string relative;        // to the folder of the call's day; UTF-8, "/" between the parts
  std::uint64_t bytes = 0;     // of the whole file
  double seconds = 0;          // of sound, as far as it is written
};

struct CallRecord {
  // Whether SDR# was tuned to it; otherwise it was counted in LOG mode.
  bool followed = false;
  std::size_t day = 0;                // which of the folders that were read
  std::optional<std::int64_t> start;  // local time, as of archive/instant.h
  std::optional<double> length_s;
  std::optional<std::int32_t> mcc;
  std::optional<std::int32_t> mnc;
  std::optional<std::int32_t> gssi;
  std::string label;  // of the group; UTF-8; "": none
  std::optional<std::int16_t> call_id;
  std::optional<std::int32_t> carrier;
  std::optional<std::int16_t> slot;
  std::vector<Talker> talkers;  // in the order in which they spoke; one may speak again
  std::optional<RecordingFile> recording;
  EndOfCall end = EndOfCall::kUnknown;
};

}  // namespace corvane::tools
