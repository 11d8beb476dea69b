// Reading lists and settings.
#include "tools/share/surroundings.h"

#include <set>
#include <string>

#include "archive/path_text.h"
#include "archive/replay.h"

namespace corvane::tools {

void Surroundings::Load() {
  if (folder_.empty()) return;
  bool found = false;
  UserLists lists;
  if (LoadGroups(NarrowName(folder_), lists.groups, found).empty() &&
      LoadSubscribers(NarrowName(folder_), lists.subscribers, found).empty()) {
    lists_ = std::move(lists);
  }
  ReplayStart start;
  if (LoadSettings(NarrowName(folder_ / "corvane_simple.dat"), start).empty()) {
    presets_ = start.presets;
  }
  std::set<std::pair<std::int32_t, std::int32_t>> networks;
  for (const GssiRecord& group : lists_.groups) networks.insert({group.Mcc, group.Mnc});
  only_ = networks.size() == 1 ? std::optional(*networks.begin()) : std::nullopt;
}

void Surroundings::Complete(CallRecord& call) const {
  if (!call.mcc && !call.mnc && only_) {
    call.mcc = only_->first;
    call.mnc = only_->second;
  }
  if (!call.mcc || !call.mnc || !call.gssi) return;
  const std::string label = lists_.GroupLabel(*call.mcc, *call.mnc, *call.gssi);
  if (!label.empty()) call.label = label;
  for (Talker& talker : call.talkers) {
    const std::string name = lists_.SubscriberLabel(*call.mcc, *call.mnc, *call.gssi, talker.ssi);
    if (!name.empty()) talker.label = name;
  }
}

std::optional<std::int64_t> Surroundings::FrequencyOf(const CallRecord& call) const {
  if (!call.carrier || !presets_) return std::nullopt;
  return CarrierFrequency(*presets_, *call.carrier);
}

}  // namespace corvane::tools
