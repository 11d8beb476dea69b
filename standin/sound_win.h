// A tone through the sound device. A few short blocks go round; each that has been played is filled
// anew and given back.
#pragma once

#include <windows.h>
// mmsystem.h needs windows.h before it.
#include <mmsystem.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "standin/receiver.h"

namespace corvane::standin {

class Sound {
 public:
  Sound();
  ~Sound();
  Sound(const Sound&) = delete;
  Sound& operator=(const Sound&) = delete;

  // Sounds until the next call; nullopt: silence. False: there is no device that takes it.
  bool Play(const std::optional<Tone>& tone);

 private:
  static constexpr std::size_t kBlockSamples = 1103;  // 50 ms
  static constexpr std::size_t kBlocks = 4;

  struct Block {
    std::array<std::int16_t, kBlockSamples> samples{};
    WAVEHDR header{};
    bool queued = false;
  };

  static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM w_param, LPARAM l_param);
  bool Open();
  void OnPlayed(const WAVEHDR* header);
  void Queue(Block& block);

  HWND window_ = nullptr;
  HWAVEOUT device_ = nullptr;
  std::array<Block, kBlocks> blocks_;
  // What is sounding, and what it goes over to.
  double target_ = 0;
  double level_ = 0;
  double phase_ = 0;
  double step_ = 0;
};

}  // namespace corvane::standin
