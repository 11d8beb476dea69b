// The settings record and its bytes. Nothing here touches a file or a control.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

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

}  // namespace corvane
