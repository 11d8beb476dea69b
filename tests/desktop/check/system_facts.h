// What a reader of the report must know of the machine, a line each.
#pragma once

#include <string>
#include <vector>

namespace corvane::desktop {

// Version and build of the system, code page, forms of dates, screens with their scaling, steps of
// the clock, recording devices, whether this program has administrator rights.
[[nodiscard]] std::vector<std::string> SystemFacts();

}  // namespace corvane::desktop
