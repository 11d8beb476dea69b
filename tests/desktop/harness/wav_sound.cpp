// Goertzel's algorithm over a grid of frequencies, one short window after the other.
#include "desktop/harness/wav_sound.h"

#include <cmath>
#include <numbers>
#include <span>

namespace corvane::desktop {

namespace {

constexpr std::size_t kHeaderSize = 44;
constexpr std::uint32_t kRate = 22050;
constexpr std::uint32_t kByteRate = 44100;
constexpr std::uint16_t kPcm = 1;

// Well below the quietest tone that the stand-in plays at a voice gain, well above silence.
constexpr double kLoudLevel = 500;
constexpr int kLowest_hz = 350;
constexpr int kHighest_hz = 2100;
constexpr int kStep_hz = 5;

std::uint32_t Number(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t index = size; index-- > 0;) {
    value = value << 8 | static_cast<unsigned char>(bytes[at + index]);
  }
  return value;
}

void AddNumber(std::string& bytes, std::uint32_t value, int size) {
  for (int index = 0; index < size; ++index) {
    bytes.push_back(static_cast<char>(value >> (8 * index) & 0xFF));
  }
}

double Level(std::span<const std::int16_t> samples) {
  double sum = 0;
  for (const std::int16_t sample : samples) sum += 1.0 * sample * sample;
  return samples.empty() ? 0 : std::sqrt(sum / static_cast<double>(samples.size()));
}

// A soft window keeps a strong tone out of its neighbours' places.
std::vector<double> Weighted(std::span<const std::int16_t> samples) {
  const auto count = static_cast<double>(samples.size());
  std::vector<double> weighted;
  weighted.reserve(samples.size());
  for (const std::int16_t sample : samples) {
    const auto index = static_cast<double>(weighted.size());
    weighted.push_back(sample * (0.5 - 0.5 * std::cos(2 * std::numbers::pi * index / count)));
  }
  return weighted;
}

double Power(const std::vector<double>& weighted, double hz, double rate) {
  const double turn = 2 * std::cos(2 * std::numbers::pi * hz / rate);
  double before = 0;
  double last = 0;
  for (const double sample : weighted) {
    const double next = sample + turn * last - before;
    before = last;
    last = next;
  }
  return last * last + before * before - turn * last * before;
}

double StrongestTone(std::span<const std::int16_t> samples, double rate) {
  const std::vector<double> weighted = Weighted(samples);
  double best = 0;
  double best_hz = 0;
  for (int hz = kLowest_hz; hz <= kHighest_hz; hz += kStep_hz) {
    const double power = Power(weighted, hz, rate);
    if (power > best) {
      best = power;
      best_hz = hz;
    }
  }
  return best_hz;
}

// The window's tone is in the one before or behind it too. Where a tone begins, ends or is broken,
// a single window tells of tones that were never there.
bool GoesOn(const std::vector<SoundWindow>& windows, std::size_t index) {
  const auto same = [&](const SoundWindow& other) {
    return other.loud && std::abs(other.hz - windows[index].hz) <= kSameTone_hz;
  };
  return (index > 0 && same(windows[index - 1])) ||
         (index + 1 < windows.size() && same(windows[index + 1]));
}

}  // namespace

double Wav::Seconds() const {
  return samples_per_second == 0 ? 0 : static_cast<double>(samples.size()) / samples_per_second;
}

std::optional<Wav> ReadWav(std::string_view bytes) {
  if (bytes.size() < kHeaderSize || bytes.substr(0, 4) != "RIFF" ||
      bytes.substr(8, 8) != "WAVEfmt " || bytes.substr(36, 4) != "data") {
    return std::nullopt;
  }
  Wav wav;
  wav.riff_size = Number(bytes, 4, 4);
  wav.format_size = Number(bytes, 16, 4);
  wav.format_tag = static_cast<std::uint16_t>(Number(bytes, 20, 2));
  wav.channels = static_cast<std::uint16_t>(Number(bytes, 22, 2));
  wav.samples_per_second = Number(bytes, 24, 4);
  wav.bytes_per_second = Number(bytes, 28, 4);
  wav.block_align = static_cast<std::uint16_t>(Number(bytes, 32, 2));
  wav.bits_per_sample = static_cast<std::uint16_t>(Number(bytes, 34, 2));
  wav.data_size = Number(bytes, 40, 4);
  for (std::size_t at = kHeaderSize; at + 1 < bytes.size(); at += 2) {
    wav.samples.push_back(static_cast<std::int16_t>(Number(bytes, at, 2)));
  }
  return wav;
}

std::string HeaderFault(const Wav& wav, std::size_t file_size) {
  const auto is = [](const char* what, std::uint32_t value, std::size_t wanted) {
    return value == wanted ? std::string()
                           : std::string(what) + " is " + std::to_string(value) + ", not " +
                                 std::to_string(wanted) + "; ";
  };
  return is("the RIFF size", wav.riff_size, file_size - 8) +
         is("the size of the format", wav.format_size, 16) +
         is("the format tag", wav.format_tag, kPcm) + is("channels", wav.channels, 1) +
         is("samples per second", wav.samples_per_second, kRate) +
         is("bytes per second", wav.bytes_per_second, kByteRate) +
         is("the block's size", wav.block_align, 2) + is("bits", wav.bits_per_sample, 16) +
         is("the size of the data", wav.data_size, file_size - kHeaderSize);
}

std::vector<SoundWindow> Listen(const Wav& wav) {
  std::vector<SoundWindow> windows;
  const double rate = wav.samples_per_second;
  const auto size = static_cast<std::size_t>(rate * kWindow_s);
  const std::span<const std::int16_t> all(wav.samples);
  for (std::size_t at = 0; size > 0 && at + size <= all.size(); at += size) {
    const auto part = all.subspan(at, size);
    SoundWindow window;
    window.at_s = static_cast<double>(at) / rate;
    window.loud = Level(part) > kLoudLevel;
    if (window.loud) window.hz = StrongestTone(part, rate);
    windows.push_back(window);
  }
  return windows;
}

HeardTones SortTones(const std::vector<SoundWindow>& windows, int wanted_hz, double same_hz) {
  HeardTones heard;
  double begin_s = -1;
  for (std::size_t index = 0; index < windows.size(); ++index) {
    const SoundWindow& window = windows[index];
    if (!window.loud) {
      heard.silent_s += kWindow_s;
    } else if (std::abs(window.hz - wanted_hz) <= same_hz) {
      heard.wanted_s += kWindow_s;
      if (begin_s < 0) begin_s = window.at_s;
      heard.wanted_span_s = window.at_s + kWindow_s - begin_s;
    } else if (GoesOn(windows, index)) {
      heard.other_s += kWindow_s;
      if (heard.first_other_hz == 0) heard.first_other_hz = window.hz;
    }
  }
  return heard;
}

std::string MakeWav(const std::vector<ToneSpan>& spans) {
  std::string data;
  double phase = 0;
  for (const ToneSpan& span : spans) {
    const auto count = static_cast<int>(span.seconds * kRate);
    for (int index = 0; index < count; ++index) {
      const double value = span.hz == 0 ? 0 : 15000 * std::sin(phase);
      phase += 2 * std::numbers::pi * span.hz / kRate;
      AddNumber(data, static_cast<std::uint32_t>(std::lround(value)) & 0xFFFF, 2);
    }
  }
  std::string bytes = "RIFF";
  AddNumber(bytes, static_cast<std::uint32_t>(kHeaderSize - 8 + data.size()), 4);
  bytes += "WAVEfmt ";
  AddNumber(bytes, 16, 4);
  AddNumber(bytes, kPcm, 2);
  AddNumber(bytes, 1, 2);
  AddNumber(bytes, kRate, 4);
  AddNumber(bytes, kByteRate, 4);
  AddNumber(bytes, 2, 2);
  AddNumber(bytes, 16, 2);
  bytes += "data";
  AddNumber(bytes, static_cast<std::uint32_t>(data.size()), 4);
  return bytes + data;
}

}  // namespace corvane::desktop
