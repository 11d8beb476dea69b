// MCI commands as the system carries them out, with what its waveaudio device conceals. All
// commands of one object belong to one thread: the system knows an alias only there.
#pragma once

#include <set>
#include <string>

#include "record/mci.h"

namespace corvane {

class WaveDevice {
 public:
  WaveDevice() = default;
  // Closes what is open.
  ~WaveDevice();
  WaveDevice(const WaveDevice&) = delete;
  WaveDevice& operator=(const WaveDevice&) = delete;

  // May hang for ever.
  Mci::Reply Send(const std::string& command, unsigned reply_length);

 private:
  void KeepDriver();
  [[nodiscard]] std::set<unsigned long> DriverThreads() const;
  void AwaitRecordingThread() const;

  void* driver_ = nullptr;
  std::string open_alias_;
  std::set<unsigned long> earlier_threads_;  // of the driver, when the recording began
  bool begun_ = false;                       // "record" was reported as done
};

}  // namespace corvane
