// Takes the sound driver away from programs that start while this exists, where the system lets its
// user choose one in the registry (Wine). The choice is put back at the end.
#pragma once

#include <string>

namespace corvane::desktop {

class NoSoundDriver {
 public:
  NoSoundDriver();
  ~NoSoundDriver();
  NoSoundDriver(const NoSoundDriver&) = delete;
  NoSoundDriver& operator=(const NoSoundDriver&) = delete;

  [[nodiscard]] bool Works() const { return works_; }

 private:
  bool works_ = false;
  bool had_value_ = false;
  std::string value_;
};

}  // namespace corvane::desktop
