// The command sequences of the recorder and the repair of the file header.
#include "record/recorder.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "panel/logs.h"

namespace corvane {

namespace {

constexpr unsigned kReplyLength = 1024;
constexpr unsigned kStatusReplyLength = 255;
constexpr unsigned kNoReply = 0;

// Where the low three bytes of the average byte rate stand in a canonical WAV header.
constexpr std::uint32_t kByteRateOffset = 28;

// A device answers with any text it likes; what is no number counts as 0.
std::int32_t Number(std::string_view text) {
  return ParseShown<std::int32_t>(text).value_or(0);
}

// Rounds halves to the even neighbour; what does not fit `Int` counts as 0.
template <typename Int>
Int Rounded(double value) {
  const double rounded = std::nearbyint(value);
  if (rounded < static_cast<double>(std::numeric_limits<Int>::min()) ||
      rounded > static_cast<double>(std::numeric_limits<Int>::max())) {
    return 0;
  }
  return static_cast<Int>(rounded);
}

std::int32_t BytesPerSecond(std::int32_t channels, std::int32_t bits, std::int32_t rate) {
  return Rounded<std::int32_t>(static_cast<double>(channels) * bits / 8 * rate);
}

// At least six digits, so that there are three pairs to take.
std::string UpperHex(std::uint32_t value) {
  std::array<char, 9> text{};
  std::snprintf(text.data(), text.size(), "%06X", static_cast<unsigned>(value));
  return text.data();
}

char ByteFromHex(std::string_view pair) {
  unsigned value = 0;
  std::from_chars(pair.data(), pair.data() + pair.size(), value, 16);
  return static_cast<char>(static_cast<unsigned char>(value));
}

}  // namespace

Recorder::Recorder(Mci& mci, Files& files, Form1& form, std::function<std::string()> log_folder)
    : mci_(mci), files_(files), form_(form), log_folder_(std::move(log_folder)) {}

std::int32_t Recorder::StartRecording(const std::string& name, const std::string& channels,
                                      const std::string& bits_per_sample,
                                      const std::string& samples_per_second) {
  RecordingName = name;
  mci_.Send("close all", kNoReply);
  Step("open new Type waveaudio Alias recsound", " Error");
  Step("set recsound time format ms", " Error (time format)");
  Step("set recsound format tag pcm", " Error (format tag)");
  Step("set recsound channels " + channels, " Error (channels)");
  Step("set recsound samplespersec " + samples_per_second, " Error (samples/sec)");
  Step("set recsound bitspersample " + bits_per_sample, " Error (bits/sample)");
  const std::int32_t bits = Number(bits_per_sample);
  const auto alignment = Rounded<std::int16_t>(bits / 8.0 * Number(channels));
  Step("set recsound alignment " + Decimal(alignment), " Error (block align)");
  RecordingBytesPerSecond = BytesPerSecond(Number(channels), bits, Number(samples_per_second));
  Step("record recsound", " Error (record)");
  return 0;
}

void Recorder::StopRecording() {
  // Taken once: midnight may pass while the device saves.
  const std::string folder = log_folder_() + "\\Record\\";
  const std::string temporary = folder + "newTmp.wav";
  Step("stop recsound", " Error (stop)");
  Step("save recsound \"" + temporary + "\"", " Error (save)");
  QueryRecordingFormat();
  Step("close recsound", " Error (close)");
  mci_.Send("close all", kNoReply);
  if (!ForcedEndSuffix.empty() && form_.chkDeleteForcedCallEndFile.checked()) {
    const FileError error = files_.Delete(temporary);
    if (error != kFileOk) {
      AddStatusLine(form_, "Error deleting recording [" + Decimal(error) + "]");
    }
    return;
  }
  FinaliseRecording(folder);
}

void Recorder::Step(const std::string& command, const char* suffix) {
  const Mci::Reply reply = mci_.Send(command, kReplyLength);
  if (reply.error != 0) AddStatusLine(form_, mci_.ErrorText(reply.error) + suffix);
}

void Recorder::QueryRecordingFormat() {
  const Mci::Reply channels = mci_.Send("status recsound channels", kStatusReplyLength);
  const Mci::Reply bits = mci_.Send("status recsound bitspersample", kStatusReplyLength);
  const Mci::Reply rate = mci_.Send("status recsound samplespersec", kStatusReplyLength);
  // Some devices give a wrong byte rate; the header gets the computed one.
  mci_.Send("status recsound bytespersec", kStatusReplyLength);
  RecordingBytesPerSecond =
      BytesPerSecond(channels.text.starts_with('1') ? 1 : 2, Number(bits.text), Number(rate.text));
}

void Recorder::FinaliseRecording(const std::string& folder) {
  const std::string hex = UpperHex(static_cast<std::uint32_t>(RecordingBytesPerSecond));
  const std::string_view digits = hex;
  const std::string bytes = {ByteFromHex(digits.substr(digits.size() - 2)),
                             ByteFromHex(digits.substr(2, 2)), ByteFromHex(digits.substr(0, 2))};
  const std::string temporary = folder + "newTmp.wav";
  FileError error = files_.Patch(temporary, kByteRateOffset, bytes);
  if (error == kFileOk) {
    error = files_.Rename(temporary, folder + RecordingName + ForcedEndSuffix + ".wav");
  }
  if (error != kFileOk) AddStatusLine(form_, "Error saving recording [" + Decimal(error) + "]");
}

}  // namespace corvane
