// Other programs that record from the sound source until it takes no further one. That there is
// such a limit, and that hold_recordings reaches it, is so with PulseAudio under Wine.
#pragma once

#include <memory>
#include <vector>

#include "desktop/harness/process.h"

namespace corvane::desktop {

class BusySource {
 public:
  // They hold it while this exists.
  BusySource();

  // The last of them was refused.
  [[nodiscard]] bool Works() const { return works_; }

 private:
  bool works_ = false;
  std::vector<std::unique_ptr<Process>> holders_;
};

}  // namespace corvane::desktop
