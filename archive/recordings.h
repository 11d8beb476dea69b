// The recordings of a day folder, by their names and headers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "base/date_time.h"

namespace corvane::tools {

// What the name of a recording says: "142305_1207_9001_call_forced_end.wav".
struct RecordingName {
  std::int32_t second_of_day = 0;
  std::int16_t call_id = 0;
  std::int32_t gssi = 0;
  bool forced = false;
  bool renamed = false;  // more text follows, which the user has put there
  std::size_t size = 0;  // of what the program has written, without ".wav"
};

// nullopt when it does not begin as the program names recordings.
[[nodiscard]] std::optional<RecordingName> ParseRecordingName(std::string_view name);

// When the sound began, as of archive/instant.h: a recording is filed under the day on which it
// ended. `second_of_day` is what its name says.
[[nodiscard]] std::int64_t BeginOfRecording(const DateTime& midnight, std::int64_t second_of_day,
                                            double seconds);

// What the recorder writes to until a recording has its name.
[[nodiscard]] bool IsUnderWay(std::string_view name);

struct FoundRecording {
  std::filesystem::path file;
  std::optional<RecordingName> name;
  std::uint64_t bytes = 0;
  double seconds = 0;  // 0: no sound, or no WAV file
};

// The WAV files of the folder "Record" in `day_folder`, ordered by name, without the one that is
// under way; that `under_way` says whether there is one. Reads their headers.
[[nodiscard]] std::vector<FoundRecording> FindRecordings(const std::filesystem::path& day_folder,
                                                         bool& under_way);

// The part of a path behind `folder`, in UTF-8 with "/" between the parts.
[[nodiscard]] std::string RelativePath(const std::filesystem::path& file,
                                       const std::filesystem::path& folder);

}  // namespace corvane::tools
