// The subscriber list's lines.
#include "store/subscriber_list.h"

#include <array>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "panel/logs.h"
#include "store/label_text.h"
#include "store/list_lines.h"
#include "store/list_sort.h"

namespace corvane {

namespace {

constexpr std::size_t kUsualLineSize = 72;

ErrorNumber ReadSubscriber(std::string_view line, const WallClock& clock, SsiRecord& record) {
  std::array<std::string_view, 6> fields;
  if (!SplitFields(line, fields)) return kTooFewFields;
  if (const ErrorNumber error = ReadNumber(fields[0], record.Ssi)) return error;
  if (const ErrorNumber error = ReadNumber(fields[1], record.LastGssi)) return error;
  if (const ErrorNumber error = ReadNumber(fields[2], record.Mcc)) return error;
  if (const ErrorNumber error = ReadNumber(fields[3], record.Mnc)) return error;
  record.Label = fields[4];
  const auto seen = clock.ParseGeneralDate(fields[5]);
  if (!seen) return kTypeMismatch;
  record.LastSeen = *seen;
  return kNoError;
}

std::string IsoDate(const DateTime& time) {
  return ZeroPadded(time.year, 4) + "-" + ZeroPadded(time.month, 2) + "-" +
         ZeroPadded(time.day, 2) + " " + ClockText(time);
}

// The general date, unless that could not be read back out of its line.
std::string SeenText(const DateTime& time, const WallClock& clock) {
  constexpr DateTime kNever = {1899, 12, 30, 0, 0, 0};
  const DateTime& shown = IsValid(time) ? time : kNever;
  std::string text = clock.GeneralDate(shown);
  return text.find_first_of(";\r\n") == std::string::npos ? text : IsoDate(shown);
}

}  // namespace

SubscriberList::SubscriberList(Files& files, const WallClock& clock, Form1& form, SsiTable& table,
                               std::string program_folder)
    : files_(files),
      clock_(clock),
      form_(form),
      table_(table),
      path_(std::move(program_folder) + "\\TETRA_SSI.txt") {}

ErrorNumber SubscriberList::Load() {
  table_.Reset();
  if (!FileExists(files_, path_)) {
    AddStatusLine(form_, "No saved SSIs to loaded");
    return kNoError;
  }
  std::string content;
  if (const FileError error = files_.ReadAll(path_, content)) return error;
  if (const ErrorNumber error = ParseSubscriberList(content, clock_, table_)) return error;
  AddStatusLine(form_, "Loaded " + Decimal(table_.size()) + " saved SSIs");
  return kNoError;
}

std::int32_t SubscriberList::SaveSsiList() {
  if (table_.empty()) return 0;
  for (std::size_t i = 0; i < table_.size(); ++i) {
    table_.SetLabel(i, StoredLabel(table_[i].Label).padded());
  }
  if (ReplaceContent(files_, path_, SubscriberListText(table_, clock_)) != kFileOk) return -1;
  return static_cast<std::int32_t>(table_.size()) - 1;
}

ErrorNumber ParseSubscriberList(std::string_view content, const WallClock& clock, SsiTable& table) {
  table.Reset();
  std::vector<SsiRecord> records;
  std::vector<ListKey> keys;
  LineReader lines(content);
  std::string_view line;
  while (lines.Next(line)) {
    if (line.empty()) continue;
    SsiRecord& record = records.emplace_back();
    if (const ErrorNumber error = ReadSubscriber(line, clock, record)) return error;
    keys.push_back(MakeListKey(record.Mcc, record.Mnc, record.LastGssi));
  }
  table.Reserve(records.size());
  for (const std::uint32_t index : ListOrder(keys)) table.Append(records[index]);
  return kNoError;
}

std::string SubscriberListText(const SsiTable& table, const WallClock& clock) {
  std::string text;
  text.reserve(table.size() * kUsualLineSize);
  for (const SsiRecord& record : table) {
    AppendNumber(text, record.Ssi, ';');
    AppendNumber(text, record.LastGssi, ';');
    AppendNumber(text, record.Mcc, ';');
    AppendNumber(text, record.Mnc, ';');
    AppendLabel(text, record.Label);
    text += ';';
    text += SeenText(record.LastSeen, clock);
    text += "\r\n";
  }
  return text;
}

}  // namespace corvane
