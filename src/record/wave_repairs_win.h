// The waveaudio device with what Wine's driver for it conceals; Windows needs none of it. The
// faults: the driver is unloaded at "close" although its thread still runs in it; "stop" comes back
// before that thread is done with the device, and puts noise behind the sound; "record" succeeds
// whether or not the device can be opened, and a recording may end by itself, unheard of; "save"
// succeeds when the disk is full.
#pragma once

#include <windows.h>

#include <set>
#include <string>
#include <vector>

#include "record/mci.h"
#include "record/wave_device_win.h"

namespace corvane {

class RepairedWaveDevice {
 public:
  explicit RepairedWaveDevice(std::string alias);
  // Stops and closes the device if it is open.
  ~RepairedWaveDevice();
  RepairedWaveDevice(const RepairedWaveDevice&) = delete;
  RepairedWaveDevice& operator=(const RepairedWaveDevice&) = delete;

  // As WaveDevice::Send, but a "record" that records nothing, a "stop" of a recording that had
  // ended before and a "save" that left a file cut off give an error.
  Mci::Reply Send(const MciCommand& command, unsigned reply_length);

 private:
  [[nodiscard]] Mci::Reply Record(const MciCommand& command, unsigned reply_length);
  [[nodiscard]] Mci::Reply Stop(const MciCommand& command, unsigned reply_length);
  [[nodiscard]] Mci::Reply Save(const MciCommand& command, unsigned reply_length);
  void KeepDriver();
  [[nodiscard]] bool IsStopped();
  [[nodiscard]] std::set<DWORD> DriverThreads() const;
  void ForgetRecordingThreads();

  WaveDevice device_;
  const int wine_;  // its major version; 0: this is Windows
  HMODULE driver_ = nullptr;
  bool open_ = false;
  std::set<DWORD> earlier_threads_;        // the driver's, of devices that were given up
  bool begun_ = false;                     // "record" was reported as done
  std::vector<HANDLE> recording_threads_;  // the driver's, from "record" to "stop"
};

}  // namespace corvane
