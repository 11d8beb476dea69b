// The machine's only sound source, taken away while programs run. The tool that the variable
// CORVANE_SOUND_SOURCE names does it; without one these cases fail.
#pragma once

#include <filesystem>
#include <string>

namespace corvane::desktop {

class SoundSource {
 public:
  SoundSource();
  // Brought back at the latest here.
  ~SoundSource();
  SoundSource(const SoundSource&) = delete;
  SoundSource& operator=(const SoundSource&) = delete;

  // False when that could not be done.
  [[nodiscard]] bool Take();
  [[nodiscard]] bool Bring();

 private:
  [[nodiscard]] bool Run(const std::string& what) const;

  std::filesystem::path tool_;
  bool taken_ = false;
};

}  // namespace corvane::desktop
