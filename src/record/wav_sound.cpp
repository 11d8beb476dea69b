// Looking for the first sample that is no silence.
#include "record/wav_sound.h"

#include <cstdint>
#include <string_view>

namespace corvane {

namespace {

// The format stands at its fixed place; other chunks may come between it and the samples.
constexpr std::size_t kShortestHeader = 44;
constexpr std::size_t kLongestHeader = 256;
constexpr std::size_t kBitsOffset = 34;
constexpr std::size_t kFormatEnd = 36;
constexpr std::size_t kPieceSize = std::size_t{64} * 1024;

int ByteAt(std::string_view bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}

bool IsSilent(std::string_view samples, bool wide) {
  if (!wide) {
    for (std::size_t i = 0; i < samples.size(); ++i) {
      const int sample = ByteAt(samples, i) - 0x80;
      if (sample > kNoise || sample < -kNoise) return false;
    }
    return true;
  }
  for (std::size_t i = 0; i + 1 < samples.size(); i += 2) {
    const auto sample = static_cast<std::int16_t>(ByteAt(samples, i) | ByteAt(samples, i + 1) << 8);
    if (sample > kNoise || sample < -kNoise) return false;
  }
  return true;
}

}  // namespace

Sound SoundIn(Files& files, const std::string& path) {
  std::string piece;
  if (files.ReadPart(path, 0, kLongestHeader, piece) != kFileOk || piece.size() < kShortestHeader ||
      !piece.starts_with("RIFF")) {
    return Sound::kUnknown;
  }
  const std::size_t data = piece.find("data", kFormatEnd);
  const int bits = ByteAt(piece, kBitsOffset);
  if (data == std::string::npos || (bits != 8 && bits != 16)) return Sound::kUnknown;
  const std::size_t samples = data + 8;
  std::size_t judged = 0;
  while (judged < kLongestJudged) {
    if (files.ReadPart(path, samples + judged, kPieceSize, piece) != kFileOk) {
      return Sound::kUnknown;
    }
    if (piece.empty()) break;
    if (!IsSilent(piece, bits == 16)) return Sound::kSome;
    judged += piece.size();
  }
  return judged > 0 ? Sound::kNone : Sound::kUnknown;
}

}  // namespace corvane
