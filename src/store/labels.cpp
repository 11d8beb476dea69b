// Lookup of labels by the leading fields of their lines, and the reading of label files.
#include "store/labels.h"

#include <utility>

#include "base/number_text.h"
#include "panel/logs.h"
#include "store/list_file.h"
#include "store/list_text.h"

namespace corvane {

namespace {

// Where the field at `index` (from 0) of the line begins; npos when there are fewer fields.
std::size_t FieldStart(std::string_view line, std::size_t index) {
  std::size_t start = 0;
  for (; index > 0; --index) {
    const std::size_t end = line.find(';', start);
    if (end == std::string_view::npos) return end;
    start = end + 1;
  }
  return start;
}

}  // namespace

void LabelLines::Reset() {
  lines_.Reset();
  first_.clear();
}

void LabelLines::Append(std::string line) {
  const std::size_t label = FieldStart(line, key_fields_);
  std::string key = label == std::string::npos ? line : line.substr(0, label - 1);
  const std::size_t index = lines_.Append(std::move(line));
  first_.try_emplace(std::move(key), index);
}

std::optional<std::string> LabelLines::Find(std::string_view key) const {
  const auto found = first_.find(std::string(key));
  if (found == first_.end()) return std::nullopt;
  const std::string_view line = lines_[found->second];
  const std::size_t start = FieldStart(line, key_fields_);
  if (start == std::string_view::npos) return "";
  return std::string(line.substr(start, line.find(';', start) - start));
}

LabelFiles::LabelFiles(Files& files, Prompts& prompts, Form1& form, NetworkNames& names,
                       std::string program_folder)
    : files_(files),
      prompts_(prompts),
      form_(form),
      names_(names),
      program_folder_(std::move(program_folder)) {}

ErrorNumber LabelFiles::RenameOldNetworkFile() {
  const std::string old_path = program_folder_ + "\\TETRA_network.txt";
  if (!files_.Exists(old_path)) return kNoError;
  const FileError error = files_.Rename(old_path, program_folder_ + "\\TETRA_mnc.txt");
  if (error != kFileOk) return error;
  prompts_.ShowBox(
      "This version changes file name for network label file.\r\n"
      "'TETRA_network.txt' renamed to 'TETRA_mnc.txt'",
      "Notice", BoxIcon::kCritical);
  return kNoError;
}

ErrorNumber LabelFiles::LoadNetworkLabels() {
  return Load("\\TETRA_mnc.txt", kNetworkLimits, " network labels", names_.NetworkLabels);
}

ErrorNumber LabelFiles::LoadLocationAreaLabels() {
  return Load("\\TETRA_la.txt", kLocationAreaLimits, " location area labels",
              names_.LocationAreaLabels);
}

ErrorNumber LabelFiles::LoadCountryLabels() {
  return Load("\\TETRA_mcc.txt", kCountryLimits, " country code labels", names_.CountryLabels);
}

ErrorNumber LabelFiles::Load(const char* name, std::span<const std::int64_t> limits,
                             const char* what, LabelLines& labels) {
  labels.loaded = false;
  const std::string path = program_folder_ + name;
  if (!files_.Exists(path)) return kNoError;
  std::string content;
  if (const FileError error = files_.ReadAll(path, content)) return error;
  content = ListText(files_, form_, path, std::move(content));
  if (const ErrorNumber error = ParseLabelFile(content, limits, labels)) return error;
  labels.loaded = true;
  if (labels.size() > 0) AddStatusLine(form_, "Loaded " + Decimal(labels.size()) + what);
  return kNoError;
}

ErrorNumber ParseLabelFile(std::string_view content, std::span<const std::int64_t> limits,
                           LabelLines& labels) {
  labels.Reset();
  LineReader lines(content);
  for (std::string_view line; lines.Next(line);) {
    if (IsEmptyOrComment(line)) continue;
    bool accepted = true;
    std::string_view rest = line;
    for (std::size_t i = 0; i < limits.size(); ++i) {
      const std::size_t end = rest.find(';');
      accepted = IsNumberBelow(rest.substr(0, end), limits[i]) && accepted;
      if (end != std::string_view::npos) {
        rest.remove_prefix(end + 1);
      } else if (i + 1 < limits.size()) {
        return kTooFewFields;
      }
    }
    if (accepted) labels.Append(std::string(line));
  }
  return kNoError;
}

}  // namespace corvane
