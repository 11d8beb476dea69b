// A program folder of a test's own, with a copy of Corvane.exe in it, so that settings, label files
// and recordings are this test's alone. Removed with all that is in it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::desktop {

// Where Corvane.exe and SdrStandin.exe are: the folder that CORVANE_PROGRAMS names, else the test
// program's own.
[[nodiscard]] std::filesystem::path FinishedProgram(const std::string& name);

class ProgramFolder {
 public:
  // Not in the last minutes of a day, which it waits for: cases look for what is written on one.
  // With a name, the programs lie in a folder of that name inside the one of its own.
  explicit ProgramFolder(const std::filesystem::path& name = {});
  ~ProgramFolder();
  ProgramFolder(const ProgramFolder&) = delete;
  ProgramFolder& operator=(const ProgramFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  // Around it, without the name: for what cannot work with any name.
  [[nodiscard]] const std::filesystem::path& Outer() const { return own_; }
  // Writes a file, bytes as they are; folders on the way are made.
  void Write(const std::filesystem::path& name, std::string_view bytes) const;
  // The whole content; "" when there is no such file.
  [[nodiscard]] std::string Read(const std::filesystem::path& name) const;
  [[nodiscard]] bool Has(const std::filesystem::path& name) const;
  // Files below the folder whose name ends in `ending`, at any depth.
  [[nodiscard]] std::vector<std::filesystem::path> Find(std::string_view ending) const;

 private:
  std::filesystem::path own_;
  std::filesystem::path path_;
};

// The content of a file, "" when it cannot be read. Files that are being written can be read.
[[nodiscard]] std::string ReadWholeFile(const std::filesystem::path& file);

// The options a test begins with, as the settings file holds them.
struct Settings {
  std::int16_t timeout_s = 5;
  std::int32_t main_window_top = 11'400;  // twips, below the stand-in's window
  std::int32_t main_window_left = 4'500;
  std::int16_t base_frequency_index = 2;  // 300 MHz
  std::int16_t park_carrier = 2604;
  bool suppress_some_pdu_messages = false;
  bool suppress_lockout_messages = false;
  bool ignore_priority = false;
  bool create_cc_vc_log = false;
  bool create_event_log = false;
  bool log_mode = false;
  bool compact = false;
  std::int16_t offset_index = 3;  // +12.5 kHz
  std::int16_t record_mode_index = 0;
  std::uint8_t vc_volume = 47;
  std::int32_t checked_colour = 10580318;
  std::int32_t unchecked_colour = 14934753;
  bool position_sdr = false;
  std::string sdr_position;
};
[[nodiscard]] std::string SettingsFile(const Settings& settings);

}  // namespace corvane::desktop
