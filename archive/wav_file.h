// Recordings as sound: how long they are, how loud they are where, and where nobody speaks. A file
// that is still written, was cut off, or holds anything at all is read as far as it makes sense.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "archive/shared_file.h"

namespace corvane::tools {

struct WavFormat {
  std::uint16_t channels = 1;
  std::uint32_t rate = 0;
  std::uint16_t bits = 0;
  std::uint64_t data_at = 0;
  std::uint64_t data_bytes = 0;  // whole samples that are there
  bool cut = false;              // the header promises more

  [[nodiscard]] std::uint32_t frame_bytes() const { return channels * bits / 8U; }
  [[nodiscard]] double seconds() const {
    return static_cast<double>(data_bytes) / frame_bytes() / rate;
  }
};

// PCM of 8 or 16 bits alone; nullopt for anything else.
[[nodiscard]] std::optional<WavFormat> ReadWavFormat(SharedFile& file);

struct Waveform {
  static constexpr int kPeaks = 48;
  // A second of this or less counts as silence.
  static constexpr int kQuiet = 200;
  static constexpr int kPiecesPerSecond = 10;

  std::string peaks;                 // kPeaks digits of archive/wav_file.cpp's 64
  std::vector<std::uint32_t> quiet;  // from, to, from, to, ... in tenths of a second
  bool silent = false;               // no sound at all
};

// nullopt when there is no sound to be read.
[[nodiscard]] std::optional<Waveform> ReadWaveform(const std::filesystem::path& path);

}  // namespace corvane::tools
