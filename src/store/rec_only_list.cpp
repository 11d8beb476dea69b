// The record-only list between its file and its controls.
#include "store/rec_only_list.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/number_text.h"
#include "panel/logs.h"
#include "store/list_file.h"
#include "store/list_text.h"

namespace corvane {

namespace {
constexpr std::int32_t kHighestGssi = 16777215;
}  // namespace

RecOnlyList::RecOnlyList(Files& files, const WallClock& clock, Form1& form,
                         std::string program_folder)
    : files_(files),
      clock_(clock),
      form_(form),
      path_(std::move(program_folder) + "\\TETRA_rec_gssi.txt") {}

ErrorNumber RecOnlyList::Load() {
  SavedContent saved = ReadSaved(files_, form_, path_, EndsWithItsLastLine);
  if (!saved.there || saved.error != kFileOk) return saved.error;
  const std::string content = ListText(files_, form_, path_, std::move(saved.content));
  ListBox& list = form_.lstRecOnlyGSSI;
  for (std::string& line : ParseRecOnlyList(content)) list.Add(std::move(line));
  if (list.count() > 0) AddStatusLine(form_, "Loaded " + Decimal(list.count()) + " REC GSSIs");
  return kNoError;
}

void RecOnlyList::AddRecOnlyGssi() {
  const std::string typed = form_.txtRecOnlyGSSI.text;
  if (typed.empty()) return;
  ListBox& list = form_.lstRecOnlyGSSI;
  if (IsGssiText(typed)) {
    const auto& items = list.items();
    const auto found = std::find(items.begin(), items.end(), typed);
    if (found != items.end()) {
      list.Select(static_cast<int>(found - items.begin()));
    } else {
      list.Add(typed);
      list.SelectLast();
      SaveRecOnlyGssiList();
      list.back_colour = kWindowBackground;
    }
  }
  form_.txtRecOnlyGSSI.text = "";
}

void RecOnlyList::RemoveSelected() {
  ListBox& list = form_.lstRecOnlyGSSI;
  if (list.list_index() < 0) return;
  list.Remove(list.list_index());
  SaveRecOnlyGssiList();
}

void RecOnlyList::SaveRecOnlyGssiList() {
  std::string lines;
  for (const std::string& item : form_.lstRecOnlyGSSI.items()) lines += item + "\r\n";
  if (ReplaceContent(files_, path_, lines) == kFileOk) return;
  AddStatusLineInView(form_, "Error saving REC GSSI list. - " + NowText(clock_));
}

bool IsGssiText(std::string_view text) {
  std::int32_t gssi = 0;
  return ReadNumber(text, gssi) == kNoError && gssi >= 0 && gssi <= kHighestGssi;
}

std::vector<std::string> ParseRecOnlyList(std::string_view content) {
  std::vector<std::string> accepted;
  LineReader lines(content);
  for (std::string_view line; lines.Next(line);) {
    if (!IsEmptyOrComment(line) && IsGssiText(line)) accepted.emplace_back(line);
  }
  return accepted;
}

}  // namespace corvane
