// The file of counted calls, and the copy of one with bad lines.
#include "store/call_activity.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "panel/logs.h"
#include "store/list_file.h"
#include "store/list_text.h"

namespace corvane {

namespace {

constexpr std::size_t kKeySize = 8;
constexpr std::string_view kHeader = "GSSI;Call Activity";

struct BadLine {
  ErrorNumber error = kNoError;
  std::size_t number = 0;  // from 1
};

ErrorNumber CountLine(std::string_view line, CallCounts& counts) {
  std::array<std::string_view, 2> fields;
  if (!SplitFields(line, fields)) return kTooFewFields;
  std::int32_t gssi = 0;
  std::int32_t calls = 0;
  if (const ErrorNumber error = ReadNumber(fields[0], gssi)) return error;
  if (const ErrorNumber error = ReadNumber(fields[1], calls)) return error;
  counts.Count(gssi, calls);
  return kNoError;
}

// Adds what the good lines say; gives the first bad one.
BadLine CountLines(std::string_view content, CallCounts& counts) {
  BadLine first;
  LineReader lines(content);
  std::size_t number = 0;
  for (std::string_view line; lines.Next(line);) {
    ++number;
    if (line.empty() || line == kHeader) continue;
    const ErrorNumber error = CountLine(line, counts);
    if (error != kNoError && first.error == kNoError) first = {error, number};
  }
  return first;
}

bool HoldsWholeLines(std::string_view content) {
  return content.starts_with(kHeader) && EndsWithItsLastLine(content);
}

}  // namespace

CallActivity::CallActivity(Files& files, const WallClock& clock, const DayFolders& folders,
                           Form1& form)
    : files_(files), clock_(clock), folders_(folders), form_(form) {}

void CallActivity::CapturePath() {
  const std::string& folder = folders_.DayFolder();
  if (!path_.empty() || folder.empty()) return;
  // The folder's own date, not the clock's: midnight may lie between the two.
  const std::string date = folder.substr(folder.rfind('\\') + 1);
  const std::size_t year_size = date.size() - 4;
  DayTag = date.substr(year_size + 2) + "-" + date.substr(year_size, 2) + "-" +
           date.substr(0, year_size);
  path_ = folder + "\\Call_Activity_" + DayTag + ".csv";
}

void CallActivity::ReportError(const std::string& what, ErrorNumber error) {
  AddStatusLineInView(form_, what + " [" + Decimal(error) + "] - " + NowText(clock_));
}

void CallActivity::LoadCallActivity() {
  if (CallActivityLoaded) return;
  CapturePath();
  if (path_.empty()) return;
  // What a run before this one left is there at the first look or never.
  const IsWhole is_whole = std::exchange(looked_for_, true) ? IsWhole() : IsWhole(HoldsWholeLines);
  const auto [there, error, content] = ReadSaved(files_, form_, path_, is_whole);
  if (!there) return;
  if (error != kFileOk) {
    if (error != reported_) ReportError("Error reading " + FileName(), error);
    reported_ = error;
    return;
  }
  const BadLine bad = CountLines(content, CallActivityTable);
  if (bad.error != kNoError) {
    ReportError("Error in line " + Decimal(bad.number) + " of " + FileName(), bad.error);
    const FileError copied = KeepBadFile(content);
    if (copied != kFileOk) ReportError("Error writing " + FileName() + ".bad", copied);
    copy_due_ = copied != kFileOk;
  }
  reported_ = kFileOk;
  CallActivityLoaded = true;
  AddStatusLineInView(
      form_, "Loaded call activity for " + Decimal(CallActivityTable.size()) + " saved GSSIs");
}

FileError CallActivity::KeepBadFile(const std::string& content) {
  const std::string copy = path_ + ".bad";
  return files_.Exists(copy) ? kFileOk : ReplaceContent(files_, copy, content);
}

bool CallActivity::MayReplaceFile() {
  if (!files_.Exists(path_)) return true;
  if (!CallActivityLoaded) return false;
  if (!copy_due_) return true;
  std::string content;
  copy_due_ = files_.ReadAll(path_, content) != kFileOk || KeepBadFile(content) != kFileOk;
  return !copy_due_;
}

std::string CallActivity::FileName() const {
  return path_.substr(path_.rfind('\\') + 1);
}

std::int32_t CallActivity::SaveCallActivity() {
  if (CallActivityTable.empty()) return 0;
  LoadCallActivity();
  if (path_.empty() || !MayReplaceFile()) return -1;
  const std::string text = CallActivityText(CallActivityTable);
  if (ReplaceContent(files_, path_, text) != kFileOk) return -1;
  CallActivityLoaded = true;
  return static_cast<std::int32_t>(CallActivityTable.size()) - 1;
}

std::string CallActivityText(const CallCounts& counts) {
  std::vector<std::string> lines;
  lines.reserve(counts.size());
  for (const CallActivityRecord& record : counts) {
    const std::string key = ZeroPadded(record.Gssi, kKeySize).substr(0, kKeySize);
    lines.push_back(key + Decimal(record.Gssi) + ";" + Decimal(record.Calls) + "\r\n");
  }
  SortKeyedLines(lines, 1, kKeySize);
  std::string text(kHeader);
  text += "\r\n";
  for (const std::string& line : lines) text.append(line, kKeySize);
  return text;
}

}  // namespace corvane
