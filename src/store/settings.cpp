// The bytes of the record, then its way between the file and the controls.
#include "store/settings.h"

#include <algorithm>
#include <array>
#include <span>
#include <type_traits>
#include <utility>

#include "base/number_text.h"
#include "panel/logs.h"
#include "store/list_file.h"

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

namespace {

constexpr int kHighestCheckValue = 2;

[[nodiscard]] ErrorNumber Check(CheckBox& box, std::uint8_t value) {
  if (value > kHighestCheckValue) return kInvalidPropertyValue;
  box.value = value;
  return kNoError;
}

[[nodiscard]] ErrorNumber SelectOption(std::span<OptionButton> options, int index) {
  if (index < 0 || std::cmp_greater_equal(index, options.size())) return kInvalidPropertyValue;
  for (OptionButton& option : options) {
    option.value = &option == &options[static_cast<std::size_t>(index)];
  }
  return kNoError;
}

// The first selected button; 0 when none is.
[[nodiscard]] std::int16_t IndexOf(std::span<const OptionButton> options) {
  return static_cast<std::int16_t>(std::max(0, SelectedOption(options)));
}

// The text at the end is there as far as its length says.
bool HoldsWholeRecord(std::string_view content) {
  if (content.size() < kFixedSettingsSize) return false;
  Reader length(content.substr(kFixedSettingsSize - sizeof(std::uint16_t)));
  std::uint16_t size = 0;
  length(size);
  return content.size() - kFixedSettingsSize >= size;
}

[[nodiscard]] std::uint8_t ByteOf(const CheckBox& box) {
  return static_cast<std::uint8_t>(box.value.get());
}

}  // namespace

SettingsFile::SettingsFile(Files& files, Prompts& prompts, const WallClock& clock,
                           const ProgramFlags& flags, Form1& form, Presets& presets,
                           StartErrors& errors, std::string program_folder)
    : files_(files),
      prompts_(prompts),
      clock_(clock),
      flags_(flags),
      form_(form),
      presets_(presets),
      errors_(errors),
      path_(std::move(program_folder) + kSettingsFileName) {}

Load SettingsFile::ReadSettings() {
  const auto [there, error, content] = ReadSaved(files_, form_, path_, HoldsWholeRecord);
  if (!there) {
    ApplyDefaults();
    return Load::kOk;
  }
  if (error != kFileOk) return errors_.Handle(error);
  if (content.empty()) {
    prompts_.ShowBox("Settings file appears corrupt, has been deleted. Please restart.", "Corvane",
                     BoxIcon::kNone);
    const FileError deletion = files_.Delete(path_);
    if (deletion != kFileOk) return errors_.Handle(deletion);
    prompts_.EndProgram();
    return Load::kEnded;
  }
  SettingsRecord defaults;
  defaults.MainWindowTop = form_.bounds.get().top;
  defaults.MainWindowLeft = form_.bounds.get().left;
  SettingsRecord record = DecodeSettings(content, defaults);
  ReplaceUnusableValues(record);
  return errors_.Handle(Apply(record));
}

void SettingsFile::ApplyDefaults() {
  const SettingsRecord defaults;
  presets_.CallTimeoutSeconds = defaults.Timeout;
  form_.txtTimeout.text = Decimal(defaults.Timeout);
  form_.cboBaseFrequency.list_index = defaults.BaseFrequencyIndex;
  presets_.BaseFrequency = (defaults.BaseFrequencyIndex + 1) * kBandStepHz;
  presets_.ParkCarrier = defaults.ParkCarrier;
  form_.txtParkCarrier.text = Decimal(defaults.ParkCarrier);
  presets_.FrequencyOffset = kCarrierOffsets[static_cast<std::size_t>(defaults.OffsetIndex)];
  presets_.VcAudioGain = defaults.VcVolume;
  form_.txtVcVolume.text = Decimal(defaults.VcVolume);
  ApplyColours(defaults);
  EnableRecOnlyControls(form_);
}

void SettingsFile::ApplyColours(const SettingsRecord& record) {
  presets_.CheckedColour = record.CheckedColour;
  form_.lblCheckedValue.caption = Decimal(record.CheckedColour);
  presets_.UnCheckedColour = record.UncheckedColour;
  form_.lblUnCheckedValue.caption = Decimal(record.UncheckedColour);
}

ErrorNumber SettingsFile::ApplyCheckBoxes(const SettingsRecord& record) {
  const std::array<std::pair<CheckBox*, std::uint8_t>, 6> boxes = {{
      {&form_.chkSuppressSomePduMessages, record.SuppressSomePduMessages},
      {&form_.chkSuppressLockoutMessages, record.SuppressLockoutMessages},
      {&form_.chkIgnorePriority, record.IgnorePriority},
      {&form_.chkCreateCcVcLog, record.CreateCcVcLog},
      {&form_.chkCreateEventLog, record.CreateEventLog},
      {&form_.chkCreateCallActivityCvsFile, record.CreateCallActivityCsvFile},
  }};
  for (const auto& [box, value] : boxes) {
    if (const ErrorNumber error = Check(*box, value)) return error;
  }
  return kNoError;
}

ErrorNumber SettingsFile::Apply(const SettingsRecord& record) {
  presets_.CallTimeoutSeconds = record.Timeout;
  form_.txtTimeout.text = Decimal(record.Timeout);
  form_.MoveTo(record.MainWindowLeft, record.MainWindowTop);
  const int band = record.BaseFrequencyIndex;
  if (band < 0 || std::cmp_greater_equal(band, form_.cboBaseFrequency.entries.get().size())) {
    return kInvalidPropertyValue;
  }
  form_.cboBaseFrequency.list_index = band;
  presets_.BaseFrequency = (band + 1) * kBandStepHz;
  presets_.ParkCarrier = record.ParkCarrier;
  form_.txtParkCarrier.text = Decimal(record.ParkCarrier);
  if (const ErrorNumber error = ApplyCheckBoxes(record)) return error;
  form_.mnuCompactMode.checked = record.CompactMode != 0;
  if (const ErrorNumber error = SelectOption(form_.optOffsets, record.OffsetIndex)) return error;
  presets_.FrequencyOffset = kCarrierOffsets[static_cast<std::size_t>(IndexOf(form_.optOffsets))];
  if (const ErrorNumber error = SelectOption(form_.optRecordMode, record.RecordModeIndex)) {
    return error;
  }
  form_.chkDeleteForcedCallEndFile.value = 0;  // this option always starts off
  presets_.VcAudioGain = record.VcVolume;
  form_.txtVcVolume.text = Decimal(presets_.VcAudioGain);
  ApplyColours(record);
  if (const ErrorNumber error = Check(form_.chkPositionSDRsharps, record.PositionSdrSharps)) {
    return error;
  }
  form_.lblPositionSdrSharpCC.caption = record.PositionSdrSharpCC;
  EnableRecOnlyControls(form_);
  return kNoError;
}

SettingsRecord SettingsFile::Collect() const {
  SettingsRecord record;
  record.Timeout = presets_.CallTimeoutSeconds;
  record.MainWindowTop = form_.bounds.get().top;
  record.MainWindowLeft = form_.bounds.get().left;
  record.BaseFrequencyIndex = static_cast<std::int16_t>(form_.cboBaseFrequency.list_index.get());
  record.ParkCarrier = presets_.ParkCarrier;
  record.SuppressSomePduMessages = ByteOf(form_.chkSuppressSomePduMessages);
  record.SuppressLockoutMessages = ByteOf(form_.chkSuppressLockoutMessages);
  record.IgnorePriority = ByteOf(form_.chkIgnorePriority);
  record.CreateCcVcLog = ByteOf(form_.chkCreateCcVcLog);
  record.CreateEventLog = ByteOf(form_.chkCreateEventLog);
  record.CreateCallActivityCsvFile = ByteOf(form_.chkCreateCallActivityCvsFile);
  record.CompactMode = form_.mnuCompactMode.checked ? -1 : 0;
  record.OffsetIndex = IndexOf(form_.optOffsets);
  record.RecordModeIndex = IndexOf(form_.optRecordMode);
  record.DeleteForcedCallEndFile = ByteOf(form_.chkDeleteForcedCallEndFile);
  record.VcVolume = static_cast<std::uint8_t>(presets_.VcAudioGain);
  record.CheckedColour = presets_.CheckedColour;
  record.UncheckedColour = presets_.UnCheckedColour;
  record.PositionSdrSharps = ByteOf(form_.chkPositionSDRsharps);
  record.PositionSdrSharpCC = form_.lblPositionSdrSharpCC.caption;
  return record;
}

FileError SettingsFile::Write() {
  std::string content;
  if (files_.Exists(path_)) {
    const FileError error = files_.ReadAll(path_, content);
    if (error != kFileOk) return error;
  }
  const std::string bytes = EncodeSettings(Collect());
  content.replace(0, std::min(bytes.size(), content.size()), bytes);
  return ReplaceContent(files_, path_, content);
}

void SettingsFile::SaveSettings() {
  if (!flags_.mblnFormLoaded) return;
  const FileError error = Write();
  if (error == kFileOk) return;
  AddStatusLineInView(form_, "Error saving settings [" + Decimal(error) + "] - " + NowText(clock_));
}

}  // namespace corvane
