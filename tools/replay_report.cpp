// One line per setup, in three forms.
#include "tools/replay_report.h"

#include <algorithm>
#include <charconv>
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

template <typename Number>
void AppendNumber(std::string& text, Number number) {
  std::array<char, 24> digits{};
  const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  text.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

template <typename Number>
void AppendOr(std::string& text, const std::optional<Number>& number, const char* nothing) {
  if (number) {
    AppendNumber(text, *number);
  } else {
    text += nothing;
  }
}

template <typename Number>
std::string Or(const std::optional<Number>& number, const char* nothing) {
  return number ? Decimal(*number) : nothing;
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

// In UTF-8, its parts joined by "; ".
std::string Detail(const SetupRecord& record, bool with_time) {
  std::string text = record.detail;
  const auto add = [&text](const std::string& part) {
    if (!text.empty()) text += "; ";
    text += part;
  };
  if (!record.label.empty() && record.outcome != SetupOutcome::kMalformed) {
    add("[" + Utf8(record.label) + "]");
  }
  if (record.contradicts_events) add("the event log shows otherwise");
  if (with_time && record.time_from == LogStep::TimeFrom::kNeighbours) add("time interpolated");
  return text;
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
  const bool room = groups_.size() < kMostGroups || groups_.contains(*record.gssi);
  GroupTotal& total = room ? groups_[*record.gssi] : other_groups_;
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

// Records come by the hundred thousand: each is put together in the same memory.
void ReplayReport::WriteText(const SetupRecord& record) {
  constexpr std::size_t kCallId = 6;
  constexpr std::size_t kSsi = 9;
  constexpr std::size_t kCarrier = 5;
  line_ = PaddedLeft(Decimal(record.number), kNumberWidth) + "  " +
          Shown(record.ms, record.time_from) + Padded(NameOf(record.outcome), kOutcomeWidth);
  line_ += "Call ID " + Padded(Or(record.call_id, "-"), kCallId);
  line_ += "group " + Padded(Or(record.gssi, "-"), kSsi);
  line_ += "SSI " + Padded(Or(record.party, "-"), kSsi);
  line_ += "carrier " + Padded(Or(record.carrier, "-"), kCarrier);
  line_ += "slot " + Or(record.slot, "-");
  const std::string detail = Detail(record, false);
  if (!detail.empty()) line_ += "  " + detail;
  line_ += '\n';
  out_.Write(line_);
}

void ReplayReport::WriteJson(const SetupRecord& record) {
  const std::string time = Iso(record.ms, record.time_from);
  line_ = "{\"line\":";
  AppendNumber(line_, record.number);
  line_ += ",\"time\":";
  line_ += time.empty() ? "null" : JsonString(time);
  line_ += ",\"outcome\":\"";
  line_ += NameOf(record.outcome);
  line_ += "\",\"call_id\":";
  AppendOr(line_, record.call_id, "null");
  line_ += ",\"gssi\":";
  AppendOr(line_, record.gssi, "null");
  line_ += ",\"party\":";
  AppendOr(line_, record.party, "null");
  line_ += ",\"carrier\":";
  AppendOr(line_, record.carrier, "null");
  line_ += ",\"slot\":";
  AppendOr(line_, record.slot, "null");
  line_ += ",\"detail\":";
  line_ += JsonString(Detail(record, true));
  line_ += "}\n";
  out_.Write(line_);
}

void ReplayReport::WriteCsv(const SetupRecord& record) {
  line_.clear();
  AppendNumber(line_, record.number);
  line_ += ',';
  line_ += Iso(record.ms, record.time_from);
  line_ += ',';
  line_ += NameOf(record.outcome);
  line_ += ',';
  AppendOr(line_, record.call_id, "");
  line_ += ',';
  AppendOr(line_, record.gssi, "");
  line_ += ',';
  AppendOr(line_, record.party, "");
  line_ += ',';
  AppendOr(line_, record.carrier, "");
  line_ += ',';
  AppendOr(line_, record.slot, "");
  line_ += ',';
  line_ += CsvField(Detail(record, true));
  line_ += '\n';
  out_.Write(line_);
}

void ReplayReport::End(const EndRecord& record) {
  ++ends_[record.how];
  if (options_.format != Format::kText || !call_shown_) return;
  out_.Write(PaddedLeft(Decimal(record.number), kNumberWidth) + "  " +
             Shown(record.ms, record.time_from) + Padded("  back", kOutcomeWidth) + "Call ID " +
             Padded(Decimal(record.call_id), 6) + NameOf(record.how) + "; carrier " +
             Decimal(record.park_carrier) + ", " + Decimal(record.park_hz) + " Hz\n");
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
