// The user's lists and settings, read by the program's own readers and never written.
#pragma once

#include <string>

#include "store/tables.h"
#include "tools/replay.h"

namespace corvane::tools {

// Each gives "" or what is wrong.

// Fills `table` from the list of groups in `folder`; `found` says whether there is one.
[[nodiscard]] std::string LoadGroups(const std::string& folder, GssiTable& table, bool& found);

// Takes over what decides about calls from the settings file `path`.
[[nodiscard]] std::string LoadSettings(const std::string& path, ReplayStart& start);

}  // namespace corvane::tools
