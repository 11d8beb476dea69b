// Names and headers of recordings.
#include "archive/recordings.h"

#include <algorithm>
#include <string>
#include <system_error>

#include "archive/day_folder.h"
#include "archive/instant.h"
#include "archive/shared_file.h"
#include "archive/wav_file.h"
#include "base/number_text.h"
#include "base/text.h"

namespace corvane::tools {

namespace {

constexpr std::string_view kForced = "_call_forced_end";

bool IsWav(std::string_view name) {
  return name.size() >= 4 && SameWord(name.substr(name.size() - 4), ".wav");
}

// Digits at the front, which are taken off.
std::string_view TakeDigits(std::string_view& text) {
  const std::size_t size = std::min(text.find_first_not_of("0123456789"), text.size());
  const std::string_view digits = text.substr(0, size);
  text.remove_prefix(size);
  return digits;
}

std::optional<std::int32_t> SecondOfDay(std::string_view digits) {
  if (digits.size() != 6) return std::nullopt;
  const auto hour = ParseDecimal<int>(digits.substr(0, 2));
  const auto minute = ParseDecimal<int>(digits.substr(2, 2));
  const auto second = ParseDecimal<int>(digits.substr(4, 2));
  if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) {
    return std::nullopt;
  }
  return *hour * 3600 + *minute * 60 + *second;
}

}  // namespace

std::int64_t BeginOfRecording(const DateTime& midnight, std::int64_t second_of_day,
                              double seconds) {
  // A recording may be longer than its call by so much.
  constexpr double kSlackS = 2;
  const bool day_before =
      static_cast<double>(second_of_day) + seconds > static_cast<double>(kSecondsPerDay) + kSlackS;
  return SecondsOf(midnight) + second_of_day - (day_before ? kSecondsPerDay : 0);
}

bool IsUnderWay(std::string_view name) {
  return SameWord(name, "newTmp.wav");
}

std::optional<RecordingName> ParseRecordingName(std::string_view name) {
  if (!IsWav(name)) return std::nullopt;
  name.remove_suffix(4);
  const std::size_t whole = name.size();
  RecordingName result;
  const auto second = SecondOfDay(TakeDigits(name));
  if (!second || !name.starts_with('_')) return std::nullopt;
  name.remove_prefix(1);
  const auto call_id = ParseDecimal<std::int16_t>(TakeDigits(name));
  if (!call_id || !name.starts_with('_')) return std::nullopt;
  name.remove_prefix(1);
  const auto gssi = ParseDecimal<std::int32_t>(TakeDigits(name));
  if (!gssi) return std::nullopt;
  result.second_of_day = *second;
  result.call_id = *call_id;
  result.gssi = *gssi;
  result.forced = name.starts_with(kForced);
  if (result.forced) name.remove_prefix(kForced.size());
  result.renamed = !name.empty();
  result.size = whole - name.size();
  return result;
}

std::vector<FoundRecording> FindRecordings(const std::filesystem::path& day_folder,
                                           bool& under_way) {
  std::vector<FoundRecording> found;
  under_way = false;
  std::error_code error;
  std::filesystem::path folder;
  for (auto entry = std::filesystem::directory_iterator(day_folder, error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    if (SameWord(Utf8Name(entry->path().filename()), "Record")) folder = entry->path();
  }
  if (folder.empty()) return found;
  for (auto entry = std::filesystem::directory_iterator(folder, error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::string name = Utf8Name(entry->path().filename());
    if (IsUnderWay(name)) {
      under_way = true;
      continue;
    }
    std::error_code ignored;
    if (!IsWav(name) || entry->is_directory(ignored)) continue;
    FoundRecording& recording = found.emplace_back();
    recording.file = entry->path();
    recording.name = ParseRecordingName(name);
  }
  std::sort(found.begin(), found.end(), [](const FoundRecording& a, const FoundRecording& b) {
    return a.file.filename() < b.file.filename();
  });
  for (FoundRecording& recording : found) {
    SharedFile file;
    if (!file.Open(recording.file)) continue;
    recording.bytes = file.Size();
    const auto format = ReadWavFormat(file);
    if (format) recording.seconds = format->seconds();
  }
  return found;
}

std::string RelativePath(const std::filesystem::path& file, const std::filesystem::path& folder) {
  return Utf8Name(file.lexically_relative(folder));
}

}  // namespace corvane::tools
