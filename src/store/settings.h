// The options of the program: the record that "\corvane_simple.dat" holds, its bytes, and its way
// between the file and the controls. Read once at start, written at saves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/files.h"
#include "base/prompts.h"
#include "base/wall_clock.h"
#include "panel/form1.h"
#include "panel/presets.h"
#include "panel/program_flags.h"
#include "store/start_error.h"

namespace corvane {

// A new record holds the values that a first start begins with.
struct SettingsRecord {
  std::int16_t Timeout = 5;         // seconds
  std::int32_t MainWindowTop = 0;   // twips
  std::int32_t MainWindowLeft = 0;  // twips
  std::int16_t BaseFrequencyIndex = 7;
  std::int16_t ParkCarrier = 2604;
  std::uint8_t SuppressSomePduMessages = 0;  // check boxes: 0, 1 or 2 (grey)
  std::uint8_t SuppressLockoutMessages = 0;
  std::uint8_t IgnorePriority = 0;
  std::uint8_t CreateCcVcLog = 0;
  std::uint8_t CreateEventLog = 0;
  std::uint8_t CreateCallActivityCsvFile = 0;
  std::int16_t CompactMode = 0;  // 0 or -1
  std::int16_t OffsetIndex = 3;
  std::int16_t RecordModeIndex = 0;
  std::uint8_t DeleteForcedCallEndFile = 0;
  std::uint8_t VcVolume = 47;
  std::int32_t CheckedColour = 10580318;
  std::int32_t UncheckedColour = 14934753;
  std::uint8_t PositionSdrSharps = 0;
  std::string PositionSdrSharpCC;  // at most kLongestPositionText bytes are stored

  bool operator==(const SettingsRecord&) const = default;
};

inline constexpr std::size_t kFixedSettingsSize = 39;
inline constexpr std::size_t kLongestPositionText = 65535;

// The record as it stands in the file, from byte 0.
[[nodiscard]] std::string EncodeSettings(const SettingsRecord& record);

// Reads what EncodeSettings writes; bytes behind the record are ignored. A field that is not wholly
// there keeps its value of `defaults`; a text that is cut off reads as "". Values are not judged.
[[nodiscard]] SettingsRecord DecodeSettings(std::string_view content,
                                            const SettingsRecord& defaults);

// Replaces a Timeout, ParkCarrier or VcVolume that the program cannot work with by that of a new
// record. No control refuses these, so nobody else notices them.
void ReplaceUnusableValues(SettingsRecord& record);

class SettingsFile {
 public:
  // `program_folder` without a "\" at its end.
  SettingsFile(Files& files, Prompts& prompts, const WallClock& clock, const ProgramFlags& flags,
               Form1& form, Presets& presets, StartErrors& errors, std::string program_folder);

  // Sets controls and presets from the file, or to the defaults when there is none. Also enables
  // the record-only controls if their mode is selected. No handler runs: the caller lets a restored
  // LOG mode, the compact layout and a window position off all screens take effect.
  // A file that cannot be used ends the program after its box. Lets events run.
  [[nodiscard]] Load ReadSettings();

  // Replaces the file in one step; bytes of an older, longer record stay behind the new one. A
  // failure leaves the old file and adds one status line. Nothing happens while the program is
  // still being loaded: the controls need not hold what the file says yet. Lets no events run.
  void SaveSettings();

 private:
  void ApplyDefaults();
  void ApplyColours(const SettingsRecord& record);
  [[nodiscard]] ErrorNumber ApplyCheckBoxes(const SettingsRecord& record);
  [[nodiscard]] ErrorNumber Apply(const SettingsRecord& record);
  [[nodiscard]] SettingsRecord Collect() const;
  [[nodiscard]] FileError Write();

  Files& files_;
  Prompts& prompts_;
  const WallClock& clock_;
  const ProgramFlags& flags_;
  Form1& form_;
  Presets& presets_;
  StartErrors& errors_;
  std::string path_;
};

}  // namespace corvane
