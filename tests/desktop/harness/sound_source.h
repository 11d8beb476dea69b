// The machine's only sound source, taken away, silent or slow while programs run. The tool that the
// variable CORVANE_SOUND_SOURCE names does it; without one these cases fail.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace corvane::desktop {

class SoundSource {
 public:
  SoundSource();
  // Put right at the latest here.
  ~SoundSource();
  SoundSource(const SoundSource&) = delete;
  SoundSource& operator=(const SoundSource&) = delete;

  // False when that could not be done.
  [[nodiscard]] bool Take();
  [[nodiscard]] bool Bring();
  // It gives silence, as with a privacy switch.
  [[nodiscard]] bool Mute();
  [[nodiscard]] bool Unmute();
  // A tone of its own, whatever SDR# plays.
  [[nodiscard]] bool Play();
  [[nodiscard]] bool Hush();
  // Whoever asks it for anything waits.
  [[nodiscard]] bool Freeze();
  [[nodiscard]] bool Thaw();

 private:
  [[nodiscard]] bool Run(const std::string& what) const;
  // What is to be undone by `cure`.
  [[nodiscard]] bool Spoil(const std::string& what, const std::string& cure);
  [[nodiscard]] bool Cure(const std::string& cure);

  std::filesystem::path tool_;
  std::set<std::string> cures_;  // that are still to be made
};

}  // namespace corvane::desktop
