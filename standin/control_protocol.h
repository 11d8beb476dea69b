// How another program gives SdrStandin.exe a command while it runs: WM_COPYDATA to its main window,
// the block holding a command as it stands in a scenario line behind its time ("call id=7 ...",
// "hang 500"), without a terminating zero. The answer is 1 when it was carried out and 0 when it
// was refused; the reason then stands in the log file.
#pragma once

#include <cstdint>

namespace corvane::standin {

inline constexpr std::uint32_t kCommandData = 0x53445231;  // dwData

}  // namespace corvane::standin
