// What is learnt of the network while calls are followed: groups and subscribers, each within the
// network that is decoded at the moment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/wall_clock.h"
#include "core/call.h"
#include "core/ports.h"
#include "store/tables.h"

namespace corvane {

class Bookkeeping {
 public:
  Bookkeeping(const NetworkIdentity& network, GssiTable& groups, SsiTable& subscribers,
              const WallClock& clock, Call& call)
      : network_(network), groups_(groups), subscribers_(subscribers), clock_(clock), call_(call) {}

  // The index of the group's record. A group met for the first time gets one: no label, priority 0,
  // to be followed.
  std::size_t FindGroupIndex(std::int32_t gssi);

  // Adds a record labelled "Individual" when the group has none; never needed right after
  // FindGroupIndex.
  void CheckGroup(std::int32_t gssi);

  // The trimmed label of a subscriber heard on a group, "" when it has none or is not known. A
  // known subscriber's last-seen time is shown in lblSsiLastSeen; an unknown one leaves it alone.
  std::string LookupSsiLabel(std::int32_t ssi, std::int32_t gssi);

  // Files every talker of the call that is ending as seen now, under its group.
  void StoreCallSubscribers();

 private:
  // A record of the group in the network of the moment, to be followed.
  std::size_t AddGroup(std::int32_t gssi, std::string_view label);

  const NetworkIdentity& network_;
  GssiTable& groups_;
  SsiTable& subscribers_;
  const WallClock& clock_;
  Call& call_;
};

}  // namespace corvane
