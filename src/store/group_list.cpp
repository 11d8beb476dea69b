// The group list's lines.
#include "store/group_list.h"

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

constexpr std::size_t kUsualLineSize = 48;

[[nodiscard]] bool SameWord(std::string_view text, std::string_view lower_case) {
  if (text.size() != lower_case.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if ((c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) != lower_case[i]) {
      return false;
    }
  }
  return true;
}

// "True", "False" in any case, or a number of any size.
ErrorNumber ReadFollow(std::string_view text, bool& follow) {
  text = Trim(text);
  if (SameWord(text, "true") || SameWord(text, "false")) {
    follow = text.size() == 4;
    return kNoError;
  }
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

}  // namespace

GroupList::GroupList(Files& files, Form1& form, GssiTable& table, std::string program_folder)
    : files_(files),
      form_(form),
      table_(table),
      path_(std::move(program_folder) + "\\TETRA_GSSI.txt") {}

ErrorNumber GroupList::Load() {
  table_.Reset();
  if (!FileExists(files_, path_)) {
    AddStatusLine(form_, "No saved GSSIs to loaded");
    return kNoError;
  }
  std::string content;
  if (const FileError error = files_.ReadAll(path_, content)) return error;
  if (const ErrorNumber error = ParseGroupList(content, table_)) return error;
  AddStatusLine(form_, "Loaded " + Decimal(table_.size()) + " saved GSSIs");
  return kNoError;
}

std::int32_t GroupList::SaveGssiList() {
  if (table_.empty()) return 0;
  for (std::size_t i = 0; i < table_.size(); ++i) {
    table_.SetLabel(i, StoredLabel(table_[i].Label).padded());
  }
  if (ReplaceContent(files_, path_, GroupListText(table_)) != kFileOk) return -1;
  return static_cast<std::int32_t>(table_.size()) - 1;
}

ErrorNumber ParseGroupList(std::string_view content, GssiTable& table) {
  table.Reset();
  std::vector<GssiRecord> records;
  std::vector<ListKey> keys;
  LineReader lines(content);
  std::string_view line;
  while (lines.Next(line)) {
    if (line.empty()) continue;
    GssiRecord& record = records.emplace_back();
    if (const ErrorNumber error = ReadGroup(line, record)) return error;
    keys.push_back(MakeListKey(record.Mcc, record.Mnc, record.Gssi));
  }
  table.Reserve(records.size());
  for (const std::uint32_t index : ListOrder(keys)) table.Append(records[index]);
  return kNoError;
}

std::string GroupListText(const GssiTable& table) {
  std::string text;
  text.reserve(table.size() * kUsualLineSize);
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

}  // namespace corvane
