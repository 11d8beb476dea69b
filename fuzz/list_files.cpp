// The list files as anybody may have edited them. The first byte chooses the file. What is read
// without an error is written in a form that reads as the same again.
#include "bench/following_rig.h"
#include "fuzz/fuzzing.h"
#include "store/labels.h"
#include "store/list_text.h"
#include "store/rec_only_list.h"
#include "store/saved_lists.h"

namespace corvane {
namespace {

using fuzzing::Require;

// As a save leaves them.
template <typename Table>
void StoreLabels(Table& table) {
  for (std::size_t index = 0; index < table.size(); ++index) {
    table.SetLabel(index, StoredLabel(table[index].Label).padded());
  }
}

void CheckGroups(std::string_view content) {
  GssiTable table;
  if (ParseGroupList(content, table) != kNoError) {
    Require(table.empty(), "no half-read groups");
    return;
  }
  for (const GssiRecord& record : table) {
    Require(table.Find(record.Mcc, record.Mnc, record.Gssi).has_value(), "every group is found");
  }
  StoreLabels(table);
  const std::string written = GroupListText(table);
  GssiTable again;
  Require(ParseGroupList(written, again) == kNoError, "what is written can be read");
  Require(again.size() == table.size(), "no group is lost");
  Require(GroupListText(again) == written, "a second writing changes nothing");
}

void CheckSubscribers(std::string_view content) {
  const sim::SimLoop loop;
  const sim::SimClock clock(loop);
  SsiTable table;
  if (ParseSubscriberList(content, clock, table) != kNoError) {
    Require(table.empty(), "no half-read subscribers");
    return;
  }
  for (const SsiRecord& record : table) {
    Require(table.Find(record.Mcc, record.Mnc, record.LastGssi, record.Ssi).has_value(),
            "every subscriber is found");
  }
  StoreLabels(table);
  const std::string written = SubscriberListText(table, clock);
  SsiTable again;
  Require(ParseSubscriberList(written, clock, again) == kNoError, "what is written can be read");
  Require(again.size() == table.size(), "no subscriber is lost");
  Require(SubscriberListText(again, clock) == written, "a second writing changes nothing");
}

void CheckLabels(std::string_view content, std::span<const std::int64_t> limits) {
  LabelLines labels(limits.size());
  static_cast<void>(ParseLabelFile(content, limits, labels));
  for (std::size_t index = 0; index < labels.size(); ++index) {
    Require(!labels[index].empty(), "no empty line is accepted");
    static_cast<void>(labels.Find(labels[index]));
  }
}

void CheckRecOnly(std::string_view content) {
  for (const std::string& item : ParseRecOnlyList(content)) {
    Require(IsGssiText(item), "every accepted line is a group");
  }
}

void Check(const std::string& input) {
  if (input.empty()) return;
  const std::string_view content = std::string_view(input).substr(1);
  switch (input[0]) {
    case 'g':
      return CheckGroups(content);
    case 's':
      return CheckSubscribers(content);
    case 'c':
      return CheckLabels(content, kCountryLimits);
    case 'n':
      return CheckLabels(content, kNetworkLimits);
    case 'l':
      return CheckLabels(content, kLocationAreaLimits);
    case 'r':
      return CheckRecOnly(content);
    default:
      return;
  }
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Check(corvane::fuzzing::Text(data, size));
  return 0;
}
