// The bytes of the settings file: cut short, grown, spoilt.
#include "store/settings.h"

#include "fuzz/fuzzing.h"

namespace corvane {
namespace {

void Check(const std::string& content) {
  using fuzzing::Require;
  const SettingsRecord defaults;
  SettingsRecord record = DecodeSettings(content, defaults);
  Require(record.PositionSdrSharpCC.size() <= kLongestPositionText, "the text has its limit");
  if (content.empty()) Require(record == defaults, "an empty file gives the defaults");

  const std::string written = EncodeSettings(record);
  Require(written.size() == kFixedSettingsSize + record.PositionSdrSharpCC.size(),
          "the record has its size");
  Require(DecodeSettings(written, defaults) == record, "what is written reads as the same");

  ReplaceUnusableValues(record);
  Require(record.Timeout >= 1 && record.Timeout <= 30, "a usable timeout");
  Require(record.ParkCarrier >= 0 && record.ParkCarrier <= 3999, "a usable carrier");
  Require(record.VcVolume >= 25 && record.VcVolume <= 60, "a usable volume");
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Check(corvane::fuzzing::Text(data, size));
  return 0;
}
