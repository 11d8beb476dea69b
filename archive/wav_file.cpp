// Walking through the chunks, and through the sound in tenths of a second.
#include "archive/wav_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "record/wav_sound.h"

namespace corvane::tools {

namespace {

constexpr std::string_view kDigits =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz-_";
constexpr int kFullScale = 32768;
// Nobody records with more; what claims to is no recording.
constexpr std::uint32_t kHighestRate = 384000;
constexpr std::uint16_t kMostChannels = 8;
// A pause is worth skipping from this many tenths of a second on; so much of it is left.
constexpr std::uint32_t kShortestQuiet = 15;
constexpr std::uint32_t kLeftQuiet = 3;

std::uint32_t Number(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < size; ++i) {
    number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
  }
  return number;
}

std::string ReadBytes(SharedFile& file, std::uint64_t at, std::size_t size) {
  std::string bytes(size, '\0');
  if (!file.Seek(at)) return {};
  bytes.resize(file.Read(bytes.data(), bytes.size()));
  return bytes;
}

bool TakeFormat(std::string_view chunk, WavFormat& format) {
  constexpr std::uint32_t kPcm = 1;
  if (chunk.size() < 16 || Number(chunk, 0, 2) != kPcm) return false;
  format.channels = static_cast<std::uint16_t>(Number(chunk, 2, 2));
  format.rate = Number(chunk, 4, 4);
  format.bits = static_cast<std::uint16_t>(Number(chunk, 14, 2));
  return format.channels >= 1 && format.channels <= kMostChannels &&
         format.rate >= Waveform::kPiecesPerSecond && format.rate <= kHighestRate &&
         (format.bits == 8 || format.bits == 16);
}

// The loudest sample of each tenth of a second.
class Loudness {
 public:
  explicit Loudness(const WavFormat& format)
      : wide_(format.bits == 16),
        samples_per_piece_(std::size_t{format.rate / Waveform::kPiecesPerSecond} *
                           format.channels) {}

  void Take(const char* bytes, std::size_t size) {
    const std::size_t step = wide_ ? 2 : 1;
    for (std::size_t at = 0; at + step <= size;) {
      const std::size_t samples = std::min((size - at) / step, samples_per_piece_ - in_piece_);
      loudest_ = std::max(loudest_,
                          wide_ ? Loudest16(bytes + at, samples) : Loudest8(bytes + at, samples));
      at += samples * step;
      in_piece_ += samples;
      if (in_piece_ == samples_per_piece_) EndPiece();
    }
  }
  void End() {
    if (in_piece_ > 0) EndPiece();
  }
  [[nodiscard]] const std::vector<int>& pieces() const { return pieces_; }

 private:
  static int Loudest16(const char* bytes, std::size_t samples) {
    int highest = 0;
    int lowest = 0;
    for (std::size_t i = 0; i < samples; ++i) {
      const unsigned low = static_cast<unsigned char>(bytes[2 * i]);
      const unsigned high = static_cast<unsigned char>(bytes[2 * i + 1]);
      const int sample = static_cast<std::int16_t>(static_cast<std::uint16_t>(low | high << 8U));
      highest = std::max(highest, sample);
      lowest = std::min(lowest, sample);
    }
    return std::max(highest, -lowest);
  }
  static int Loudest8(const char* bytes, std::size_t samples) {
    int loudest = 0;
    for (std::size_t i = 0; i < samples; ++i) {
      loudest = std::max(loudest, std::abs(static_cast<unsigned char>(bytes[i]) - 0x80));
    }
    return loudest <= kNoise ? loudest : loudest * 256;
  }
  void EndPiece() {
    pieces_.push_back(loudest_);
    loudest_ = 0;
    in_piece_ = 0;
  }

  bool wide_;
  std::size_t samples_per_piece_;
  std::size_t in_piece_ = 0;
  int loudest_ = 0;
  std::vector<int> pieces_;
};

std::vector<std::uint32_t> QuietPieces(const std::vector<int>& pieces) {
  std::vector<std::uint32_t> quiet;
  const auto size = static_cast<std::uint32_t>(pieces.size());
  for (std::uint32_t from = 0; from < size;) {
    std::uint32_t to = from;
    while (to < size && pieces[to] <= Waveform::kQuiet) ++to;
    if (to - from >= kShortestQuiet) {
      quiet.push_back(from + kLeftQuiet);
      quiet.push_back(to - kLeftQuiet);
    }
    from = to + 1;
  }
  return quiet;
}

// Loudness as it is heard: each digit is three quarters of a decibel more than the one before.
char PeakDigit(int loudest) {
  constexpr double kRangeDb = 48;
  if (loudest <= kNoise) return kDigits.front();
  const double db = 20 * std::log10(static_cast<double>(loudest) / kFullScale);
  const double part = std::clamp(1 + db / kRangeDb, 0.0, 1.0);
  return kDigits[static_cast<std::size_t>(std::lround(part * 63))];
}

std::string Peaks(const std::vector<int>& pieces) {
  std::string peaks;
  for (std::size_t i = 0; i < Waveform::kPeaks; ++i) {
    const std::size_t from = i * pieces.size() / Waveform::kPeaks;
    const std::size_t to = std::max(from + 1, (i + 1) * pieces.size() / Waveform::kPeaks);
    int loudest = 0;
    for (std::size_t at = from; at < to; ++at) loudest = std::max(loudest, pieces[at]);
    peaks += PeakDigit(loudest);
  }
  return peaks;
}

}  // namespace

std::optional<WavFormat> ReadWavFormat(SharedFile& file) {
  constexpr std::size_t kMostChunks = 64;
  constexpr std::size_t kChunkHeader = 8;
  const std::uint64_t size = file.Size();
  const std::string head = ReadBytes(file, 0, 12);
  if (head.size() < 12 || !head.starts_with("RIFF") || head.compare(8, 4, "WAVE") != 0) {
    return std::nullopt;
  }
  WavFormat format;
  std::uint64_t at = head.size();
  for (std::size_t chunk = 0; chunk < kMostChunks; ++chunk) {
    const std::string name = ReadBytes(file, at, kChunkHeader);
    if (name.size() < kChunkHeader) return std::nullopt;
    const std::uint64_t bytes = Number(name, 4, 4);
    at += kChunkHeader;
    if (name.starts_with("fmt ") && !TakeFormat(ReadBytes(file, at, 16), format)) {
      return std::nullopt;
    }
    if (name.starts_with("data")) {
      if (format.rate == 0) return std::nullopt;
      const std::uint64_t there = size > at ? size - at : 0;
      // A recording that is still written says 0 until it is done.
      format.data_bytes = bytes == 0 ? there : std::min(bytes, there);
      format.data_bytes -= format.data_bytes % format.frame_bytes();
      format.cut = bytes > there || (bytes == 0 && there > 0);
      format.data_at = at;
      return format;
    }
    at += bytes + bytes % 2;
  }
  return std::nullopt;
}

std::optional<Waveform> ReadWaveform(const std::filesystem::path& path) {
  constexpr std::size_t kPiece = 1U << 18U;
  SharedFile file;
  if (!file.Open(path)) return std::nullopt;
  const auto format = ReadWavFormat(file);
  if (!format || format->data_bytes == 0 || !file.Seek(format->data_at)) return std::nullopt;
  Loudness loudness(*format);
  std::string piece(kPiece, '\0');
  for (std::uint64_t left = format->data_bytes; left > 0;) {
    // Readings may come short in the middle of a sample.
    std::size_t filled = 0;
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, left));
    while (filled < wanted) {
      const std::size_t got = file.Read(piece.data() + filled, wanted - filled);
      if (got == 0) break;
      filled += got;
    }
    loudness.Take(piece.data(), filled);
    if (filled < wanted) break;
    left -= filled;
  }
  loudness.End();
  if (loudness.pieces().empty()) return std::nullopt;
  Waveform waveform;
  const int loudest = *std::max_element(loudness.pieces().begin(), loudness.pieces().end());
  waveform.silent = loudest <= kNoise;
  waveform.peaks = Peaks(loudness.pieces());
  waveform.quiet = QuietPieces(loudness.pieces());
  return waveform;
}

}  // namespace corvane::tools
