// The bytes of the settings record, little-endian and without gaps.
#include "store/settings_record.h"

#include <algorithm>
#include <type_traits>

#include "panel/presets.h"

namespace corvane {

namespace {

class Writer {
 public:
  template <typename Int>
  void operator()(const Int& value) {
    auto bits = static_cast<std::make_unsigned_t<Int>>(value);
    for (std::size_t i = 0; i < sizeof(Int); ++i) {
      bytes_.push_back(static_cast<char>(bits & 0xFFU));
      if constexpr (sizeof(Int) > 1) bits = static_cast<decltype(bits)>(bits >> 8U);
    }
  }
  void operator()(const std::string& text) {
    const std::size_t size = std::min(text.size(), kLongestPositionText);
    operator()(static_cast<std::uint16_t>(size));
    bytes_.append(text, 0, size);
  }
  [[nodiscard]] std::string Take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

class Reader {
 public:
  explicit Reader(std::string_view content) : rest_(content) {}

  template <typename Int>
  void operator()(Int& value) {
    if (rest_.size() < sizeof(Int)) {
      rest_ = {};
      return;
    }
    std::uint32_t bits = 0;
    for (std::size_t i = sizeof(Int); i > 0; --i) {
      bits = (bits << 8U) | static_cast<unsigned char>(rest_[i - 1]);
    }
    value = static_cast<Int>(bits);
    rest_.remove_prefix(sizeof(Int));
  }
  void operator()(std::string& text) {
    text.clear();
    std::uint16_t size = 0;
    operator()(size);
    if (size <= rest_.size()) text = rest_.substr(0, size);
  }

 private:
  std::string_view rest_;
};

// The order of the fields in the file, the one place for both directions.
template <typename Record, typename Field>
void ForEachField(Record& record, Field& field) {
  field(record.Timeout);
  field(record.MainWindowTop);
  field(record.MainWindowLeft);
  field(record.BaseFrequencyIndex);
  field(record.ParkCarrier);
  field(record.SuppressSomePduMessages);
  field(record.SuppressLockoutMessages);
  field(record.IgnorePriority);
  field(record.CreateCcVcLog);
  field(record.CreateEventLog);
  field(record.CreateCallActivityCsvFile);
  field(record.CompactMode);
  field(record.OffsetIndex);
  field(record.RecordModeIndex);
  field(record.DeleteForcedCallEndFile);
  field(record.VcVolume);
  field(record.CheckedColour);
  field(record.UncheckedColour);
  field(record.PositionSdrSharps);
  field(record.PositionSdrSharpCC);
}

}  // namespace

std::string EncodeSettings(const SettingsRecord& record) {
  Writer writer;
  ForEachField(record, writer);
  return writer.Take();
}

SettingsRecord DecodeSettings(std::string_view content, const SettingsRecord& defaults) {
  SettingsRecord record = defaults;
  Reader reader(content);
  ForEachField(record, reader);
  return record;
}

void ReplaceUnusableValues(SettingsRecord& record) {
  const SettingsRecord defaults;
  if (record.Timeout < 1 || record.Timeout > kLongestTimeoutSeconds) {
    record.Timeout = defaults.Timeout;
  }
  if (record.ParkCarrier < 0 || record.ParkCarrier > kHighestParkCarrier) {
    record.ParkCarrier = defaults.ParkCarrier;
  }
  if (record.VcVolume < kLowestVolume || record.VcVolume > kHighestVolume) {
    record.VcVolume = defaults.VcVolume;
  }
}

}  // namespace corvane
