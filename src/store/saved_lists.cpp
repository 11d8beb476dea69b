// The lines of both lists; what reading and writing have in common is there once, as templates.
#include "store/saved_lists.h"

#include <array>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "panel/logs.h"
#include "store/list_file.h"
#include "store/list_text.h"
#include "store/seen_dates.h"

namespace corvane {

namespace {

constexpr std::size_t kUsualGroupLine = 48;
constexpr std::size_t kUsualSubscriberLine = 72;
constexpr std::size_t kSubscriberFields = 6;

// "True", "False" in any case, or a number of any size.
ErrorNumber ReadFollow(std::string_view text, bool& follow) {
  text = Trim(text);
  follow = SameWord(text, "true");
  if (follow || SameWord(text, "false")) return kNoError;
  if (!IsDecimal(text)) return kTypeMismatch;
  follow = text.find_first_not_of("-0") != std::string_view::npos;
  return kNoError;
}

ErrorNumber ReadGroup(std::string_view line, GssiRecord& record) {
  std::array<std::string_view, 6> fields;
  if (!SplitFields(line, fields)) return kTooFewFields;
  if (const ErrorNumber error = ReadNumber(fields[0], record.Gssi)) return error;
  if (const ErrorNumber error = ReadNumber(fields[1], record.Mcc)) return error;
  if (const ErrorNumber error = ReadNumber(fields[2], record.Mnc)) return error;
  record.Label = fields[3];
  if (const ErrorNumber error = ReadNumber(fields[4], record.Priority)) return error;
  return ReadFollow(fields[5], record.Follow);
}

ErrorNumber ReadSubscriber(std::string_view line, const SeenDates& dates, SsiRecord& record) {
  std::array<std::string_view, 6> fields;
  if (!SplitFields(line, fields)) return kTooFewFields;
  if (const ErrorNumber error = ReadNumber(fields[0], record.Ssi)) return error;
  if (const ErrorNumber error = ReadNumber(fields[1], record.LastGssi)) return error;
  if (const ErrorNumber error = ReadNumber(fields[2], record.Mcc)) return error;
  if (const ErrorNumber error = ReadNumber(fields[3], record.Mnc)) return error;
  record.Label = fields[4];
  const auto seen = dates.Read(fields[5]);
  if (!seen) return kTypeMismatch;
  record.LastSeen = *seen;
  return kNoError;
}

// The general date, unless that could not be read back out of its line.
std::string SeenText(const DateTime& time, const WallClock& clock) {
  constexpr DateTime kNever = {1899, 12, 30, 0, 0, 0};
  const DateTime& shown = IsValid(time) ? time : kNever;
  std::string text = clock.GeneralDate(shown);
  return text.find_first_of(";\r\n") == std::string::npos ? text : IsoDate(shown);
}

ListKey KeyOf(const GssiRecord& record) {
  return MakeListKey(record.Mcc, record.Mnc, record.Gssi);
}
ListKey KeyOf(const SsiRecord& record) {
  return MakeListKey(record.Mcc, record.Mnc, record.LastGssi);
}

std::vector<std::string_view> DateTexts(std::string_view content) {
  std::vector<std::string_view> texts;
  LineReader lines(content);
  std::array<std::string_view, kSubscriberFields> fields;
  for (std::string_view line; lines.Next(line);) {
    if (SplitFields(line, fields)) texts.push_back(fields.back());
  }
  return texts;
}

template <typename Record, typename Table, typename ReadLine>
ErrorNumber Parse(std::string_view content, Table& table, const ReadLine& read_line) {
  table.Reset();
  std::vector<Record> records;
  std::vector<ListKey> keys;
  LineReader lines(content);
  for (std::string_view line; lines.Next(line);) {
    if (line.empty()) continue;
    Record& record = records.emplace_back();
    if (const ErrorNumber error = read_line(line, record)) return error;
    keys.push_back(KeyOf(record));
  }
  table.Reserve(records.size());
  for (const std::uint32_t index : ListOrder(keys)) table.Append(records[index]);
  return kNoError;
}

// `what` stands in the status lines: "GSSIs" or "SSIs".
template <typename Table, typename ParseContent>
ErrorNumber LoadTable(Files& files, Form1& form, const std::string& path, const std::string& what,
                      Table& table, const ParseContent& parse) {
  table.Reset();
  SavedContent saved = ReadSaved(files, form, path, [&](std::string_view content) {
    return EndsWithItsLastLine(content) && parse(content) == kNoError;
  });
  if (!saved.there) {
    AddStatusLine(form, "No saved " + what + " to loaded");
    return kNoError;
  }
  if (saved.error != kFileOk) return saved.error;
  if (const ErrorNumber error = parse(ListText(files, form, path, std::move(saved.content)))) {
    return error;
  }
  AddStatusLine(form, "Loaded " + Decimal(table.size()) + " saved " + what);
  return kNoError;
}

template <typename Table, typename MakeText>
std::int32_t SaveTable(Files& files, const std::string& path, Table& table, const MakeText& text) {
  if (table.empty()) return 0;
  for (std::size_t i = 0; i < table.size(); ++i) {
    table.SetLabel(i, StoredLabel(table[i].Label).padded());
  }
  if (ReplaceContent(files, path, text()) != kFileOk) return -1;
  return static_cast<std::int32_t>(table.size()) - 1;
}

}  // namespace

GroupList::GroupList(Files& files, Form1& form, GssiTable& table, std::string program_folder)
    : files_(files),
      form_(form),
      table_(table),
      path_(std::move(program_folder) + "\\TETRA_GSSI.txt") {}

ErrorNumber GroupList::Load() {
  return LoadTable(files_, form_, path_, "GSSIs", table_,
                   [&](std::string_view content) { return ParseGroupList(content, table_); });
}

std::int32_t GroupList::SaveGssiList() {
  return SaveTable(files_, path_, table_, [&] { return GroupListText(table_); });
}

ErrorNumber ParseGroupList(std::string_view content, GssiTable& table) {
  return Parse<GssiRecord>(content, table, ReadGroup);
}

std::string GroupListText(const GssiTable& table) {
  std::string text;
  text.reserve(table.size() * kUsualGroupLine);
  for (const GssiRecord& record : table) {
    AppendNumber(text, record.Gssi, ';');
    AppendNumber(text, record.Mcc, ';');
    AppendNumber(text, record.Mnc, ';');
    AppendLabel(text, record.Label);
    text += ';';
    AppendNumber(text, record.Priority, ';');
    text += record.Follow ? "True\r\n" : "False\r\n";
  }
  return text;
}

SubscriberList::SubscriberList(Files& files, const WallClock& clock, Form1& form, SsiTable& table,
                               std::string program_folder)
    : files_(files),
      clock_(clock),
      form_(form),
      table_(table),
      path_(std::move(program_folder) + "\\TETRA_SSI.txt") {}

ErrorNumber SubscriberList::Load() {
  return LoadTable(files_, form_, path_, "SSIs", table_, [&](std::string_view content) {
    return ParseSubscriberList(content, clock_, table_, &why_not_);
  });
}

std::int32_t SubscriberList::SaveSsiList() {
  return SaveTable(files_, path_, table_, [&] { return SubscriberListText(table_, clock_); });
}

ErrorNumber ParseSubscriberList(std::string_view content, const WallClock& clock, SsiTable& table,
                                std::string* why_not) {
  const SeenDates dates(DateTexts(content), clock);
  return Parse<SsiRecord>(content, table, [&](std::string_view line, SsiRecord& record) {
    const ErrorNumber error = ReadSubscriber(line, dates, record);
    if (error != kNoError && why_not != nullptr) {
      std::array<std::string_view, kSubscriberFields> fields;
      const bool split = SplitFields(line, fields);
      *why_not = split && !dates.Read(fields.back()) ? dates.WhyNot(fields.back()) : "";
    }
    return error;
  });
}

std::string SubscriberListText(const SsiTable& table, const WallClock& clock) {
  std::string text;
  text.reserve(table.size() * kUsualSubscriberLine);
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
