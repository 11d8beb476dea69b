// The program running for weeks on end: busy traffic, all logs, a recording of each call.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace corvane::sim {

struct LifeFigures {
  int hours = 0;               // since the link came up
  std::size_t heap_bytes = 0;  // in use by the whole simulation
  int setups = 0;              // of calls on the air, so far
  int followed = 0;
  int recordings = 0;
};

// Lets so many virtual hours pass, and tells the figures after each. What only a test keeps in
// memory (the trace, what was sent, the files of the day) is thrown away every hour, and the box
// with the lines is cleared, so that what grows is the program. "" or what is wrong.
[[nodiscard]] std::string LiveFor(int hours, const std::function<void(const LifeFigures&)>& tell);

}  // namespace corvane::sim
