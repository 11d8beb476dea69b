// Merging.
#include "tools/lists/merge.h"

#include "base/number_text.h"

namespace corvane::tools {

ListMerge::ListMerge(GssiTable& groups, SsiTable& radios, const NetworkCode& network,
                     bool replace_labels)
    : group_table_(groups),
      radio_table_(radios),
      network_(network),
      replace_labels_(replace_labels) {
  for (std::size_t i = 0; i < radios.size(); ++i) {
    if (IsOfNetwork(radios[i].Mcc, radios[i].Mnc)) {
      records_of_[radios[i].Ssi].push_back(i);
      known_radios_.insert(radios[i].Ssi);
    }
  }
}

bool ListMerge::IsOfNetwork(std::int16_t mcc, std::int16_t mnc) const {
  return mcc == network_.mcc && mnc == network_.mnc;
}

bool ListMerge::Takes(const FixedLabel& old, const std::string& label) {
  const std::string present = old.trimmed();
  if (present == label) return false;
  if (!present.empty() && !replace_labels_) {
    ++kept_;
    return false;
  }
  ++named_;
  return true;
}

std::string ListMerge::Add(const ForeignEntry& entry, ListKind kind) {
  const bool radio = kind == ListKind::kRadios ||
                     (kind == ListKind::kBoth && known_radios_.contains(entry.number) &&
                      !group_table_.Find(network_.mcc, network_.mnc, entry.number));
  const auto [first, is_first] =
      seen_.try_emplace({radio, {entry.number, entry.group}}, entry.line);
  if (!is_first) {
    return std::string(radio ? "radio " : "group ") + Decimal(entry.number) +
           " was named before, in line " + Decimal(first->second);
  }
  if (radio) {
    AddRadio(entry);
  } else {
    AddGroup(entry);
  }
  return "";
}

void ListMerge::AddGroup(const ForeignEntry& entry) {
  ++group_counts_.listed;
  const auto found = group_table_.Find(network_.mcc, network_.mnc, entry.number);
  if (found) {
    if (!Takes(group_table_[*found].Label, entry.label)) return;
    group_table_.SetLabel(*found, entry.label);
  } else {
    ++group_counts_.added;
    ++named_;
    GssiRecord record;
    record.Gssi = entry.number;
    record.Mcc = static_cast<std::int16_t>(network_.mcc);
    record.Mnc = static_cast<std::int16_t>(network_.mnc);
    record.Label = FixedLabel(entry.label);
    record.Follow = true;
    group_table_.Append(record);
  }
  groups_changed_ = true;
}

void ListMerge::AddRadio(const ForeignEntry& entry) {
  if (listed_radios_.insert(entry.number).second) {
    ++radio_counts_.listed;
    if (!known_radios_.contains(entry.number)) ++radio_counts_.added;
  }
  std::vector<std::size_t>& records = records_of_[entry.number];
  bool there = false;
  for (const std::size_t index : records) {
    const SsiRecord& record = radio_table_[index];
    if (entry.group != 0 && record.LastGssi != entry.group) continue;
    there = true;
    if (!Takes(record.Label, entry.label)) continue;
    radio_table_.SetLabel(index, entry.label);
    radios_changed_ = true;
  }
  if (entry.group != 0) with_group_.push_back(entry);
  if (there) return;
  SsiRecord record;
  record.Ssi = entry.number;
  record.LastGssi = entry.group;
  record.Mcc = static_cast<std::int16_t>(network_.mcc);
  record.Mnc = static_cast<std::int16_t>(network_.mnc);
  record.Label = FixedLabel(entry.label);
  records.push_back(radio_table_.Append(record));
  ++named_;
  radios_changed_ = true;
}

void ListMerge::Finish() {
  for (const ForeignEntry& entry : with_group_) {
    for (const std::size_t index : records_of_[entry.number]) {
      if (!radio_table_[index].Label.trimmed().empty()) continue;
      radio_table_.SetLabel(index, entry.label);
      ++named_;
      radios_changed_ = true;
    }
  }
}

}  // namespace corvane::tools
