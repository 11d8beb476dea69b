// One line per setup, in three forms.
#include "tools/replay_report.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "archive/instant.h"
#include "archive/utf8.h"
#include "base/number_text.h"

namespace corvane::tools {

namespace {

std::string Padded(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

std::string PaddedLeft(const std::string& text, std::size_t width) {
  return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

constexpr std::size_t kNumberWidth = 8;
constexpr std::size_t kOutcomeWidth = 16;
constexpr std::size_t kCallIdWidth = 6;

// Blanks behind what begins at `from`, up to `width` bytes.
void PadFrom(std::string& text, std::size_t from, std::size_t width) {
  if (text.size() < from + width) text.resize(from + width, ' ');
}

void AddPadded(std::string& text, std::string_view part, std::size_t width) {
  const std::size_t from = text.size();
  text += part;
  PadFrom(text, from, width);
}

template <typename Number>
void AddOr(std::string& text, const std::optional<Number>& number, const char* nothing,
           std::size_t width = 0) {
  const std::size_t from = text.size();
  if (number) {
    AppendDecimal(text, *number);
  } else {
    text += nothing;
  }
  PadFrom(text, from, width);
}

// Most texts are their own UTF-8, and JSON has them as they are.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; });
}

// "2026-11-15T14:23:05", or "" when it is not known.
std::string Iso(std::int64_t ms, LogStep::TimeFrom from) {
  if (from == LogStep::TimeFrom::kPace) return "";
  std::string text = IsoDate(TimeAt(ms / 1000));
  text[text.find(' ')] = 'T';
  return text;
}

// The time as people read it; "~" marks one that was interpolated.
std::string Shown(std::int64_t ms, LogStep::TimeFrom from) {
  constexpr std::size_t kWidth = 22;
  if (from == LogStep::TimeFrom::kPace) return "";
  const char* mark = from == LogStep::TimeFrom::kNeighbours ? "~" : " ";
  return Padded(mark + IsoDate(TimeAt(ms / 1000)), kWidth);
}

}  // namespace

ReplayReport::ReplayReport(const ReplayOptions& options, Output& out)
    : options_(options), out_(out) {
  if (options_.format == Format::kCsv) {
    out_.Write("line,time,outcome,call_id,gssi,party,carrier,slot,detail\n");
  }
}

bool ReplayReport::IsShown(const SetupRecord& record) const {
  if (!options_.reasons.empty() && !options_.reasons.contains(record.outcome)) return false;
  return options_.groups.empty() || (record.gssi && options_.groups.contains(*record.gssi));
}

void ReplayReport::Count(const SetupRecord& record) {
  ++setups_;
  ++outcomes_[static_cast<std::size_t>(record.outcome)];
  if (record.contradicts_events) ++contradictions_;
  if (!record.gssi) return;
  auto found = groups_.find(*record.gssi);
  const bool room = found != groups_.end() || groups_.size() < kMostGroups;
  if (room && found == groups_.end()) found = groups_.try_emplace(*record.gssi).first;
  GroupTotal& total = room ? found->second : other_groups_;
  ++total.setups;
  if (record.outcome == SetupOutcome::kFollowed) ++total.followed;
  if (record.outcome == SetupOutcome::kCounted) ++total.counted;
  if (room && total.label.empty()) total.label = record.label;
}

void ReplayReport::Setup(const SetupRecord& record) {
  Count(record);
  const bool shown = IsShown(record);
  if (record.outcome == SetupOutcome::kFollowed) call_shown_ = shown;
  if (!shown) return;
  ++shown_;
  switch (options_.format) {
    case Format::kText:
      return WriteText(record);
    case Format::kJson:
      return WriteJson(record);
    case Format::kCsv:
      return WriteCsv(record);
  }
}

// Into detail_, in UTF-8, its parts joined by "; ".
void ReplayReport::PutDetail(const SetupRecord& record, bool with_time) {
  detail_ = record.detail;
  const auto begin_part = [this]() -> std::string& {
    return detail_.empty() ? detail_ : detail_.append("; ");
  };
  if (!record.label.empty() && record.outcome != SetupOutcome::kMalformed) {
    begin_part() += '[';
    detail_ += IsPlain(record.label) ? record.label : Utf8(record.label);
    detail_ += ']';
  }
  if (record.contradicts_events) begin_part() += "the event log shows otherwise";
  if (with_time && record.time_from == LogStep::TimeFrom::kNeighbours) {
    begin_part() += "time interpolated";
  }
}

// Begins line_ as people read it.
void ReplayReport::PutPlace(std::uint64_t number, std::int64_t ms, LogStep::TimeFrom from) {
  line_.clear();
  AppendDecimal(line_, number);
  if (line_.size() < kNumberWidth) line_.insert(0, kNumberWidth - line_.size(), ' ');
  line_ += "  ";
  if (from != LogStep::TimeFrom::kPace) line_ += Shown(ms, from);
}

void ReplayReport::WriteText(const SetupRecord& record) {
  constexpr std::size_t kSsi = 9;
  constexpr std::size_t kCarrier = 5;
  PutPlace(record.number, record.ms, record.time_from);
  AddPadded(line_, NameOf(record.outcome), kOutcomeWidth);
  line_ += "Call ID ";
  AddOr(line_, record.call_id, "-", kCallIdWidth);
  line_ += "group ";
  AddOr(line_, record.gssi, "-", kSsi);
  line_ += "SSI ";
  AddOr(line_, record.party, "-", kSsi);
  line_ += "carrier ";
  AddOr(line_, record.carrier, "-", kCarrier);
  line_ += "slot ";
  AddOr(line_, record.slot, "-");
  PutDetail(record, false);
  if (!detail_.empty()) line_.append("  ").append(detail_);
  line_ += '\n';
  out_.Write(line_);
}

void ReplayReport::WriteJson(const SetupRecord& record) {
  const std::string time = Iso(record.ms, record.time_from);
  line_ = "{\"line\":";
  AppendDecimal(line_, record.number);
  line_ += ",\"time\":";
  line_ += time.empty() ? "null" : JsonString(time);
  line_ += ",\"outcome\":\"";
  line_ += NameOf(record.outcome);
  line_ += "\",\"call_id\":";
  AddOr(line_, record.call_id, "null");
  line_ += ",\"gssi\":";
  AddOr(line_, record.gssi, "null");
  line_ += ",\"party\":";
  AddOr(line_, record.party, "null");
  line_ += ",\"carrier\":";
  AddOr(line_, record.carrier, "null");
  line_ += ",\"slot\":";
  AddOr(line_, record.slot, "null");
  line_ += ",\"detail\":";
  PutDetail(record, true);
  if (IsPlain(detail_)) {
    line_.append("\"").append(detail_).append("\"");
  } else {
    line_ += JsonString(detail_);
  }
  line_ += "}\n";
  out_.Write(line_);
}

void ReplayReport::WriteCsv(const SetupRecord& record) {
  line_.clear();
  AppendDecimal(line_, record.number);
  line_ += ',';
  line_ += Iso(record.ms, record.time_from);
  line_ += ',';
  line_ += NameOf(record.outcome);
  line_ += ',';
  AddOr(line_, record.call_id, "");
  line_ += ',';
  AddOr(line_, record.gssi, "");
  line_ += ',';
  AddOr(line_, record.party, "");
  line_ += ',';
  AddOr(line_, record.carrier, "");
  line_ += ',';
  AddOr(line_, record.slot, "");
  line_ += ',';
  PutDetail(record, true);
  line_ += CsvField(detail_);
  line_ += '\n';
  out_.Write(line_);
}

void ReplayReport::End(const EndRecord& record) {
  ++ends_[record.how];
  if (options_.format != Format::kText || !call_shown_) return;
  PutPlace(record.number, record.ms, record.time_from);
  AddPadded(line_, "  back", kOutcomeWidth);
  line_ += "Call ID ";
  AddPadded(line_, Decimal(record.call_id), kCallIdWidth);
  line_.append(NameOf(record.how)).append("; carrier ");
  AppendDecimal(line_, record.park_carrier);
  line_ += ", ";
  AppendDecimal(line_, record.park_hz);
  line_ += " Hz\n";
  out_.Write(line_);
}

std::string ReplayReport::GroupLines() const {
  std::vector<std::pair<std::int32_t, const GroupTotal*>> listed;
  for (const auto& [gssi, total] : groups_) listed.emplace_back(gssi, &total);
  std::stable_sort(listed.begin(), listed.end(), [](const auto& a, const auto& b) {
    return a.second->setups > b.second->setups;
  });
  constexpr std::size_t kColumn = 10;
  std::string text = "\n     group    setups  followed   counted\n";
  GroupTotal rest = other_groups_;
  for (std::size_t index = 0; index < listed.size(); ++index) {
    const auto& [gssi, total] = listed[index];
    if (index >= kListedGroups) {
      rest.setups += total->setups;
      rest.followed += total->followed;
      rest.counted += total->counted;
      continue;
    }
    text += PaddedLeft(Decimal(gssi), kColumn) + PaddedLeft(Decimal(total->setups), kColumn) +
            PaddedLeft(Decimal(total->followed), kColumn) +
            PaddedLeft(Decimal(total->counted), kColumn);
    if (!total->label.empty()) text += "  " + Utf8(total->label);
    text += "\n";
  }
  if (rest.setups == 0) return text;
  return text + "    others" + PaddedLeft(Decimal(rest.setups), kColumn) +
         PaddedLeft(Decimal(rest.followed), kColumn) + PaddedLeft(Decimal(rest.counted), kColumn) +
         "\n";
}

std::string ReplayReport::Summary(bool following) const {
  constexpr std::size_t kName = 18;
  std::string text = Decimal(setups_) + " setups";
  if (shown_ != setups_) text += ", " + Decimal(shown_) + " of them shown";
  text += "\n";
  for (int index = 0; index < kSetupOutcomes; ++index) {
    text += "  " + Padded(NameOf(static_cast<SetupOutcome>(index)), kName) +
            Decimal(outcomes_[static_cast<std::size_t>(index)]) + "\n";
  }
  std::string ends;
  for (const auto& [how, count] : ends_) {
    ends += std::string(ends.empty() ? "" : ", ") + NameOf(how) + " " + Decimal(count);
  }
  if (following) ends += std::string(ends.empty() ? "" : ", ") + "not ended 1";
  if (!ends.empty()) text += "ends of followed calls: " + ends + "\n";
  return groups_.empty() ? text : text + GroupLines();
}

}  // namespace corvane::tools
