// The holders are started one after the other, so that the last one is the one that is refused.
#include "desktop/harness/busy_source.h"

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
  for (int number = 0; number < kHolders; ++number) {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() /
        ("corvane-holder-" + std::to_string(OwnProcessId()) + "-" + std::to_string(number));
    holders_.push_back(
        Process::Start(OwnFolder() / "hold_recordings.exe", {file.string()}, OwnFolder()));
    if (holders_.back() == nullptr) return;
    const bool answered = WaitFor([&] { return ReadWholeFile(file).ends_with('\n'); });
    works_ = answered && ReadWholeFile(file).starts_with("refused");
    std::error_code error;
    std::filesystem::remove(file, error);
    if (!answered) return;
  }
}

}  // namespace corvane::desktop
