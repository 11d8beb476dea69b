// Reading recordings one after the other.
#include "tools/report/report_sound.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "archive/path_text.h"
#include "archive/shared_file.h"
#include "base/number_text.h"
#include "tools/output.h"
#include "tools/progress.h"

namespace corvane::tools {

namespace {

constexpr std::uint64_t kLongestWav = 0xFFFFFFFFU - 64;

std::string Bytes(std::uint64_t number, std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
  return bytes;
}

std::string Header(const WavFormat& format, std::uint64_t data) {
  const std::uint64_t frame = format.frame_bytes();
  return "RIFF" + Bytes(36 + data, 4) + "WAVEfmt " + Bytes(16, 4) + Bytes(1, 2) +
         Bytes(format.channels, 2) + Bytes(format.rate, 4) + Bytes(format.rate * frame, 4) +
         Bytes(frame, 2) + Bytes(format.bits, 2) + "data" + Bytes(data, 4);
}

bool SameForm(const WavFormat& a, const WavFormat& b) {
  return a.channels == b.channels && a.rate == b.rate && a.bits == b.bits;
}

struct Part {
  std::filesystem::path file;
  WavFormat format;
};

// False when it ended too early: another program has shortened it.
bool Copy(const Part& part, FileOutput& out) {
  SharedFile file;
  if (!file.Open(part.file) || !file.Seek(part.format.data_at)) return false;
  std::string piece(1U << 18U, '\0');
  for (std::uint64_t left = part.format.data_bytes; left > 0;) {
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(piece.size(), left));
    const std::size_t got = file.Read(piece.data(), wanted);
    if (got == 0) return false;
    out.Write({piece.data(), got});
    left -= got;
  }
  return true;
}

}  // namespace

std::uint64_t SoundWork::Bytes() const {
  std::uint64_t bytes = 0;
  for (const CallRecord& call : calls_) bytes += call.recording ? call.recording->bytes : 0;
  return bytes;
}

std::vector<std::optional<Waveform>> SoundWork::Look() const {
  std::vector<std::optional<Waveform>> waveforms;
  if (!options_.waveforms) return waveforms;
  waveforms.resize(calls_.size());
  Progress progress(console_, !options_.quiet, Bytes());
  std::uint64_t done = 0;
  for (std::size_t at = 0; at < calls_.size(); ++at) {
    if (!calls_[at].recording) continue;
    waveforms[at] = ReadWaveform(calls_[at].recording->file);
    done += calls_[at].recording->bytes;
    progress.Show(done);
  }
  progress.Clear();
  return waveforms;
}

std::string SoundWork::Merge(std::vector<std::string>& notices) const {
  if (options_.merge.empty()) return "";
  std::vector<Part> parts;
  std::uint64_t data = 0;
  std::size_t left_out = 0;
  for (const CallRecord& call : calls_) {
    if (!call.recording) continue;
    std::error_code error;
    if (std::filesystem::equivalent(call.recording->file, PathOfNarrow(options_.merge), error)) {
      return options_.merge + " would be overwritten";
    }
    SharedFile file;
    const auto format = file.Open(call.recording->file) ? ReadWavFormat(file) : std::nullopt;
    const bool fits = format && format->data_bytes > 0 &&
                      (parts.empty() || SameForm(*format, parts.front().format)) &&
                      data + format->data_bytes <= kLongestWav;
    if (!fits) {
      ++left_out;
      continue;
    }
    data += format->data_bytes;
    parts.push_back({call.recording->file, *format});
  }
  if (parts.empty()) return "there is no recording to be joined";
  FileOutput out(options_.merge);
  if (!out.is_open()) return options_.merge + " cannot be written";
  out.Write(Header(parts.front().format, data));
  Progress progress(console_, !options_.quiet, data);
  std::uint64_t done = 0;
  for (const Part& part : parts) {
    if (!Copy(part, out)) return NarrowName(part.file) + " was changed meanwhile";
    done += part.format.data_bytes;
    progress.Show(done);
  }
  progress.Clear();
  if (!out.Close()) return options_.merge + " could not be written";
  if (left_out > 0) {
    notices.push_back(Decimal(left_out) +
                      " recordings are of another form, empty or beyond 4 GB, "
                      "and not in " +
                      options_.merge);
  }
  return "";
}

}  // namespace corvane::tools
