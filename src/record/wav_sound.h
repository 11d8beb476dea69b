// Whether a recording holds any sound: a device that may not listen, because the user has switched
// microphones off, records zeros and reports nothing.
#pragma once

#include <string>

#include "base/files.h"

namespace corvane {

enum class Sound {
  kUnknown,  // no WAV file of 8 or 16 bits, nothing in it, or it cannot be read
  kNone,     // every sample, of the first kLongestJudged bytes, is that of silence or next to it
  kSome
};

inline constexpr std::size_t kLongestJudged = std::size_t{16} * 1024 * 1024;
// What a converter may add to nothing.
inline constexpr int kNoise = 1;

// Reads as far as the first sound.
[[nodiscard]] Sound SoundIn(Files& files, const std::string& path);

}  // namespace corvane
