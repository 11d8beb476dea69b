// What the G/SSI editor's lists and drop-down lists say, made from the tables.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ports.h"
#include "panel/controls.h"
#include "store/labels.h"
#include "store/tables.h"

namespace corvane {

// The lines of the two lists.
[[nodiscard]] std::string GroupLine(const GssiRecord& record);
[[nodiscard]] std::string SubscriberLine(const SsiRecord& record);
// The number in front of such a line; nullopt when the line does not begin with one.
[[nodiscard]] std::optional<std::int32_t> NumberOfLine(std::string_view line);

// The known countries, or the known networks of country `mcc`, with that in reach, in ascending
// order; each with its label where the label file is loaded and has one. Item data: the code.
[[nodiscard]] std::vector<ComboBox::Entry> CountryEntries(const GssiTable& groups,
                                                          const SsiTable& subscribers,
                                                          const NetworkIdentity& in_reach,
                                                          const NetworkNames& names);
[[nodiscard]] std::vector<ComboBox::Entry> NetworkEntries(std::int32_t mcc, const GssiTable& groups,
                                                          const SsiTable& subscribers,
                                                          const NetworkIdentity& in_reach,
                                                          const NetworkNames& names);

}  // namespace corvane
