// The user's lists and settings, read by the program's own readers and never written.
#pragma once

#include <cstdint>
#include <string>

#include "archive/replay.h"
#include "store/start_error.h"
#include "store/tables.h"

namespace corvane::tools {

// Why a file cannot be used, in words.
[[nodiscard]] std::string MeaningOf(ErrorNumber error);

// Each gives "" or what is wrong.

// Fills `table` from the list of groups in `folder`; `found` says whether there is one.
[[nodiscard]] std::string LoadGroups(const std::string& folder, GssiTable& table, bool& found);

// Fills `table` from the list of subscribers in `folder`. When they were last heard is not read, so
// the regional settings under which the list was written do not matter.
[[nodiscard]] std::string LoadSubscribers(const std::string& folder, SsiTable& table, bool& found);

// Takes over what decides about calls from the settings file `path`.
[[nodiscard]] std::string LoadSettings(const std::string& path, ReplayStart& start);

// The names that the user has given.
struct UserLists {
  GssiTable groups;
  SsiTable subscribers;

  // The label of a group, or of a subscriber in a group, in UTF-8; "" for none.
  [[nodiscard]] std::string GroupLabel(std::int32_t mcc, std::int32_t mnc, std::int32_t gssi) const;
  [[nodiscard]] std::string SubscriberLabel(std::int32_t mcc, std::int32_t mnc, std::int32_t gssi,
                                            std::int32_t ssi) const;
};

}  // namespace corvane::tools
