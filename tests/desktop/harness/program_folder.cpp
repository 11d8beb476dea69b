// Folders of their own for the cases, and the settings file byte by byte.
#include "desktop/harness/program_folder.h"

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "desktop/harness/process.h"
#include "desktop/harness/wait.h"

namespace corvane::desktop {

namespace {

void AddBytes(std::string& bytes, std::uint32_t value, int count) {
  for (int index = 0; index < count; ++index) {
    bytes.push_back(static_cast<char>(value >> (8 * index) & 0xFF));
  }
}
void AddShort(std::string& bytes, int value) {
  AddBytes(bytes, static_cast<std::uint32_t>(value), 2);
}
void AddLong(std::string& bytes, std::int32_t value) {
  AddBytes(bytes, static_cast<std::uint32_t>(value), 4);
}

int SecondsToMidnight() {
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);
  return 24 * 3600 - (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec);
}

// Files, folders and counts are those of a day. A case that would run into the next begins with it.
void AwaitOneDay() {
  constexpr int kLongestCase_s = 180;
  const bool one_day =
      WaitFor([] { return SecondsToMidnight() > kLongestCase_s; }, (kLongestCase_s + 10) * 1000);
  if (!one_day) throw std::runtime_error("the day does not end");
}

}  // namespace

std::filesystem::path FinishedProgram(const std::string& name) {
  const char* named = std::getenv("CORVANE_PROGRAMS");
  const std::filesystem::path folder =
      named != nullptr ? std::filesystem::path(named) : OwnFolder();
  std::filesystem::path program = folder / name;
  if (!std::filesystem::exists(program)) {
    throw std::runtime_error(program.string() + " is not there");
  }
  return program;
}

ProgramFolder::ProgramFolder(const std::filesystem::path& name) {
  static int made = 0;
  AwaitOneDay();
  // A test that was killed leaves its folder to whoever gets its number again.
  do {
    own_ = std::filesystem::temp_directory_path() /
           ("corvane-" + std::to_string(OwnProcessId()) + "-" + std::to_string(++made));
  } while (!std::filesystem::create_directory(own_));
  path_ = name.empty() ? own_ : own_ / name;
  std::filesystem::create_directories(path_);
  std::filesystem::copy_file(FinishedProgram("Corvane.exe"), path_ / "Corvane.exe",
                             std::filesystem::copy_options::overwrite_existing);
}

ProgramFolder::~ProgramFolder() {
  // A program that was just killed may keep its own file open for a moment.
  const bool removed = WaitFor(
      [this] {
        std::error_code error;
        std::filesystem::remove_all(own_, error);
        return !std::filesystem::exists(own_, error);
      },
      5'000);
  (void)removed;
}

void ProgramFolder::Write(const std::filesystem::path& name, std::string_view bytes) const {
  std::filesystem::create_directories((path_ / name).parent_path());
  std::ofstream file(path_ / name, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error("cannot write " + name.string());
}

std::string ProgramFolder::Read(const std::filesystem::path& name) const {
  return ReadWholeFile(path_ / name);
}

bool ProgramFolder::Has(const std::filesystem::path& name) const {
  return std::filesystem::exists(path_ / name);
}

std::vector<std::filesystem::path> ProgramFolder::Find(std::string_view ending) const {
  std::vector<std::filesystem::path> found;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path_)) {
    if (entry.is_regular_file() && entry.path().filename().string().ends_with(ending)) {
      found.push_back(entry.path());
    }
  }
  return found;
}

std::string ReadWholeFile(const std::filesystem::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

std::string SettingsFile(const Settings& settings) {
  std::string bytes;
  AddShort(bytes, settings.timeout_s);
  AddLong(bytes, settings.main_window_top);
  AddLong(bytes, settings.main_window_left);
  AddShort(bytes, settings.base_frequency_index);
  AddShort(bytes, settings.park_carrier);
  for (const bool ticked : {settings.suppress_some_pdu_messages, settings.suppress_lockout_messages,
                            settings.ignore_priority, settings.create_cc_vc_log,
                            settings.create_event_log, settings.log_mode}) {
    AddBytes(bytes, ticked ? 1 : 0, 1);
  }
  AddShort(bytes, settings.compact ? -1 : 0);
  AddShort(bytes, settings.offset_index);
  AddShort(bytes, settings.record_mode_index);
  AddBytes(bytes, 0, 1);
  AddBytes(bytes, settings.vc_volume, 1);
  AddLong(bytes, settings.checked_colour);
  AddLong(bytes, settings.unchecked_colour);
  AddBytes(bytes, settings.position_sdr ? 1 : 0, 1);
  AddShort(bytes, static_cast<int>(settings.sdr_position.size()));
  return bytes + settings.sdr_position;
}

}  // namespace corvane::desktop
