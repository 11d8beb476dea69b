// Seconds on a calendar without time zones, for reckoning with the times of logs.
#pragma once

#include <cstdint>

#include "base/date_time.h"

namespace corvane::tools {

inline constexpr std::int64_t kSecondsPerDay = 86'400;

// Seconds since 1 January 1970. `time` is valid.
[[nodiscard]] std::int64_t SecondsOf(const DateTime& time);
[[nodiscard]] DateTime TimeAt(std::int64_t seconds);

}  // namespace corvane::tools
