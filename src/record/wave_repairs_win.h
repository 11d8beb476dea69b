// The waveaudio device with what its driver conceals. On every system a recording may end by
// itself, unheard of, when its device is unplugged: whether anything is being recorded is asked
// after "record" and before "stop". The rest are faults of Wine's driver: it is unloaded at "close"
// although its thread still runs in it; "stop" comes back before that thread is done with the
// device, and puts noise behind the sound; "record" succeeds whether or not the device can be
// opened; "save" succeeds when the disk is full.
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
  // `wine`: the major version of Wine to allow for; 0 on Windows.
  explicit RepairedWaveDevice(std::string alias, int wine = WineVersion());
  [[nodiscard]] static int WineVersion();

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
  const int wine_;
  HMODULE driver_ = nullptr;
  bool open_ = false;
  std::set<DWORD> earlier_threads_;        // the driver's, of devices that were given up
  bool begun_ = false;                     // "record" was reported as done
  std::vector<HANDLE> recording_threads_;  // the driver's, from "record" to "stop"
};

}  // namespace corvane
