// A tone through the sound device.
#pragma once

#include <memory>
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
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace corvane::standin
