// The system's waveaudio device, as MCI carries out its commands. All commands of one object belong
// to one thread: the system knows an alias only there.
#pragma once

#include <string>

#include "record/mci.h"

namespace corvane {

class WaveDevice {
 public:
  // The device goes by `alias` among those of this program.
  explicit WaveDevice(std::string alias);
  // Closes the device if it is open.
  ~WaveDevice();
  WaveDevice(const WaveDevice&) = delete;
  WaveDevice& operator=(const WaveDevice&) = delete;

  // May hang for ever.
  Mci::Reply Send(const MciCommand& command, unsigned reply_length);

 private:
  const std::string alias_;
  bool open_ = false;
};

}  // namespace corvane
