// The holders are started one after the other, so that the last one is the one that is refused.
#include "desktop/harness/busy_source.h"

#include <algorithm>
#include <filesystem>
#include <string>

#include "desktop/harness/program_folder.h"
#include "desktop/harness/wait.h"

namespace corvane::desktop {

namespace {

// A source takes 256 recordings, one program holds 60 of them.
constexpr int kHolders = 5;

}  // namespace

BusySource::BusySource() {
  std::string answer = "all";
  for (int number = 0; number < kHolders && answer == "all"; ++number) answer = StartHolder();
  works_ = answer == "refused";
}

bool BusySource::Release() {
  holders_.clear();
  return WaitFor([this] {
    const std::string answer = StartHolder();
    holders_.clear();
    return answer == "all";
  });
}

std::string BusySource::StartHolder() {
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() /
      ("corvane-holder-" + std::to_string(OwnProcessId()) + "-" + std::to_string(++started_));
  holders_.push_back(
      Process::Start(OwnFolder() / "hold_recordings.exe", {file.string()}, OwnFolder()));
  if (holders_.back() == nullptr) return {};
  const bool answered = WaitFor([&] { return ReadWholeFile(file).ends_with('\n'); });
  std::string answer = answered ? ReadWholeFile(file) : std::string();
  answer.resize(std::min(answer.size(), answer.find_first_of("\r\n")));
  std::error_code error;
  std::filesystem::remove(file, error);
  return answer;
}

}  // namespace corvane::desktop
