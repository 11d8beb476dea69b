// Other programs that record from the sound source until it takes no further one. That there is
// such a limit, and that hold_recordings reaches it, is so with PulseAudio under Wine.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "desktop/harness/process.h"

namespace corvane::desktop {

class BusySource {
 public:
  // They hold it while this exists.
  BusySource();

  // The last of them was refused.
  [[nodiscard]] bool Works() const { return works_; }
  // Ends them. The sound system learns of that later than their end: true once it has taken as many
  // recordings of a new program as one can hold.
  [[nodiscard]] bool Release();

 private:
  // How the last attempt of the holder that is started went; "" when it did not say.
  std::string StartHolder();

  bool works_ = false;
  int started_ = 0;
  std::vector<std::unique_ptr<Process>> holders_;
};

}  // namespace corvane::desktop
