// Call following as the benchmarks and fuzz targets drive it: one prepared line after the other.
#pragma once

#include <string>
#include <utility>

#include "tests/sim/core_parts.h"

namespace corvane::rig {

class Following : public sim::CoreParts {
 public:
  Following() {
    link.noting = false;
    scanner.ScanNetworkInfo();
  }

  // One poll step that finds `line` completed.
  void Poll(std::string line) {
    box.CompleteOnly(std::move(line));
    scanner.ScanNetworkInfo();
  }
};

}  // namespace corvane::rig
