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
  // What the device does, as MCI_MODE_...; 0 when it does not say. As a number, because the text is
  // in the system's language.
  [[nodiscard]] unsigned Mode() const;

 private:
  const std::string alias_;
  bool open_ = false;
};

}  // namespace corvane
