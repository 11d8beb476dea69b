// Names from the lists of others go into the program's tables: nothing is deleted, and a name that
// is there stays unless it is to be replaced.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "store/tables.h"
#include "tools/lists/foreign_list.h"
#include "tools/replay_options.h"

namespace corvane::tools {

struct MergeCounts {
  std::size_t listed = 0;  // different ones in the lists of others
  std::size_t added = 0;   // of these, not known before
};

class ListMerge {
 public:
  // The tables of the program's folder; they outlive this object.
  ListMerge(GssiTable& groups, SsiTable& radios, const NetworkCode& network, bool replace_labels);

  // Of entries with the same number the first counts. "" or why the entry is skipped.
  // A number of a list with both is that of a radio when it is known as one, else of a group.
  [[nodiscard]] std::string Add(const ForeignEntry& entry, ListKind kind);
  // When all entries are in: radios whose list tells their groups get their names under other
  // groups too, where they have none.
  void Finish();

  [[nodiscard]] const MergeCounts& groups() const { return group_counts_; }
  [[nodiscard]] const MergeCounts& radios() const { return radio_counts_; }
  // Records that got a name or another one.
  [[nodiscard]] std::size_t named() const { return named_; }
  [[nodiscard]] std::size_t kept() const { return kept_; }
  [[nodiscard]] bool groups_changed() const { return groups_changed_; }
  [[nodiscard]] bool radios_changed() const { return radios_changed_; }

 private:
  void AddGroup(const ForeignEntry& entry);
  void AddRadio(const ForeignEntry& entry);
  [[nodiscard]] bool IsOfNetwork(std::int16_t mcc, std::int16_t mnc) const;
  // Whether the label takes the place of `old`; counts it.
  [[nodiscard]] bool Takes(const FixedLabel& old, const std::string& label);

  GssiTable& group_table_;
  SsiTable& radio_table_;
  NetworkCode network_;
  bool replace_labels_;
  std::unordered_map<std::int32_t, std::vector<std::size_t>> records_of_;  // by radio
  std::set<std::int32_t> known_radios_;
  std::map<std::pair<bool, std::pair<std::int32_t, std::int32_t>>, std::size_t> seen_;
  std::set<std::int32_t> listed_radios_;
  std::vector<ForeignEntry> with_group_;
  MergeCounts group_counts_;
  MergeCounts radio_counts_;
  std::size_t named_ = 0;
  std::size_t kept_ = 0;
  bool groups_changed_ = false;
  bool radios_changed_ = false;
};

}  // namespace corvane::tools
