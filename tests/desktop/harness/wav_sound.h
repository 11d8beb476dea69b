// What is in a WAV file: its header field by field, and which tones are heard when. Portable; knows
// nothing of who recorded it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::desktop {

// The canonical header of 44 bytes and the samples behind it.
struct Wav {
  std::uint32_t riff_size = 0;
  std::uint32_t format_size = 0;
  std::uint16_t format_tag = 0;
  std::uint16_t channels = 0;
  std::uint32_t samples_per_second = 0;
  std::uint32_t bytes_per_second = 0;
  std::uint16_t block_align = 0;
  std::uint16_t bits_per_sample = 0;
  std::uint32_t data_size = 0;
  std::vector<std::int16_t> samples;

  [[nodiscard]] double Seconds() const;
};

// nullopt unless the bytes begin with a header of the canonical form. Samples as far as there are
// any; sizes are given as they stand, true or not.
[[nodiscard]] std::optional<Wav> ReadWav(std::string_view bytes);

// "" when the file is what a recording has to be, mono with 16 bits at 22050 per second, with every
// size and rate in its header true; else what is wrong with it.
[[nodiscard]] std::string HeaderFault(const Wav& wav, std::size_t file_size);

inline constexpr double kWindow_s = 0.08;

// One piece of the recording, kWindow_s long.
struct SoundWindow {
  double at_s = 0;
  bool loud = false;
  double hz = 0;  // the strongest tone between 350 and 2100 Hz
};
[[nodiscard]] std::vector<SoundWindow> Listen(const Wav& wav);

struct HeardTones {
  double silent_s = 0;
  double wanted_s = 0;
  double wanted_span_s = 0;  // from the beginning of its first window to the end of its last
  double other_s = 0;
  double first_other_hz = 0;
};
// Tones this near to each other are the same: groups' tones lie 25 Hz apart at the least.
inline constexpr double kSameTone_hz = 10;
// Sorts the windows by whether they hold the wanted tone, up to `same_hz` off. Another tone counts
// where two windows or more in a row hold it. A tone that is broken off and goes on, as a machine
// that is busy plays it, is measured up to 25 Hz off: to tell it from others they lie farther
// apart.
[[nodiscard]] HeardTones SortTones(const std::vector<SoundWindow>& windows, int wanted_hz,
                                   double same_hz = kSameTone_hz);

// A WAV file of one tone after another; 0 Hz is silence. For trying the above.
struct ToneSpan {
  int hz = 0;
  double seconds = 0;
};
[[nodiscard]] std::string MakeWav(const std::vector<ToneSpan>& spans);

}  // namespace corvane::desktop
