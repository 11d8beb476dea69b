// The command sequences of the recorder and the repair of the file header.
#include "record/recorder.h"

#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "panel/logs.h"
#include "record/wav_sound.h"

namespace corvane {

namespace {

constexpr unsigned kReplyLength = 1024;
constexpr unsigned kStatusReplyLength = 255;
constexpr unsigned kNoReply = 0;
constexpr const char* kRecordSuffix = " Error (record)";

// Where the low three bytes of the average byte rate stand in a canonical WAV header.
constexpr std::uint32_t kByteRateOffset = 28;

// A device answers with any text it likes; what is no number counts as 0.
std::int32_t Number(std::string_view text) {
  return ParseShown<std::int32_t>(text).value_or(0);
}

// Rounds halves to the even neighbour; what does not fit counts as 0.
std::int32_t BytesPerSecond(std::int32_t channels, std::int32_t bits, std::int32_t rate) {
  const double rounded = std::nearbyint(static_cast<double>(channels) * bits / 8 * rate);
  if (rounded < std::numeric_limits<std::int32_t>::min() ||
      rounded > std::numeric_limits<std::int32_t>::max()) {
    return 0;
  }
  return static_cast<std::int32_t>(rounded);
}

// The bytes of the header, lowest first, of a rate that is written as at least six hexadecimal
// digits: the last two of them, the third and fourth, the first two.
std::string HeaderBytes(std::uint32_t rate) {
  unsigned digits = 6;
  while (digits < 8 && rate >> (4 * digits) != 0) ++digits;
  const auto pair_from = [rate, digits](unsigned first) {
    return static_cast<char>(static_cast<unsigned char>(rate >> (4 * (digits - first - 2))));
  };
  return {pair_from(digits - 2), pair_from(2), pair_from(0)};
}

}  // namespace

Recorder::Recorder(Mci& mci, Files& files, Form1& form, std::function<std::string()> log_folder)
    : mci_(mci), files_(files), form_(form), log_folder_(std::move(log_folder)) {}

void Recorder::StartRecording(const std::string& name) {
  RecordingName = name;
  mci_.Send(MciCommand::CloseAll(), kNoReply);
  Step(MciCommand::Open(), " Error");
  Step(MciCommand::Set("time format ms"), " Error (time format)");
  Step(MciCommand::Set("format tag pcm"), " Error (format tag)");
  Step(MciCommand::Set("channels 1"), " Error (channels)");
  Step(MciCommand::Set("samplespersec 22050"), " Error (samples/sec)");
  Step(MciCommand::Set("bitspersample 16"), " Error (bits/sample)");
  Step(MciCommand::Set("alignment 2"), " Error (block align)");
  BeginToRecord();
}

void Recorder::BeginToRecord() {
  const std::optional<Mci::Reply> reply = mci_.Begin(MciCommand::Record(), kReplyLength);
  beginning_ = !reply;
  if (reply) Report(*reply, kRecordSuffix);
}

void Recorder::Attend() {
  if (!beginning_) return;
  const std::optional<Mci::Reply> reply = mci_.Answer();
  beginning_ = !reply;
  if (reply) Report(*reply, kRecordSuffix);
}

void Recorder::StopRecording() {
  // Taken once: midnight may pass while the device saves.
  const std::string folder = log_folder_() + "\\Record\\";
  const std::string temporary = folder + "newTmp.wav";
  if (std::exchange(beginning_, false)) Report(mci_.Await(), kRecordSuffix);
  Step(MciCommand::Stop(), " Error (stop)");
  Step(MciCommand::Save(temporary), " Error (save)");
  const std::int32_t bytes_per_second = QueryRecordingFormat();
  Step(MciCommand::Close(), " Error (close)");
  mci_.Send(MciCommand::CloseAll(), kNoReply);
  if (ForcedEndSuffix.empty() || !form_.chkDeleteForcedCallEndFile.checked()) {
    FinaliseRecording(folder, bytes_per_second);
  } else if (const FileError error = files_.Delete(temporary)) {
    AddStatusLine(form_, "Error deleting recording [" + Decimal(error) + "]");
  }
}

void Recorder::Step(const MciCommand& command, const char* suffix) {
  Report(mci_.Send(command, kReplyLength), suffix);
}

void Recorder::Report(const Mci::Reply& reply, const char* suffix) {
  if (reply.error != 0) AddStatusLine(form_, mci_.ErrorText(reply.error) + suffix);
}

std::int32_t Recorder::QueryRecordingFormat() {
  const auto ask = [this](const char* what) {
    return mci_.Send(MciCommand::Status(what), kStatusReplyLength).text;
  };
  const std::string channels = ask("channels");
  const std::string bits = ask("bitspersample");
  const std::string rate = ask("samplespersec");
  // Some devices give a wrong byte rate; the header gets the computed one.
  static_cast<void>(ask("bytespersec"));
  return BytesPerSecond(channels.starts_with('1') ? 1 : 2, Number(bits), Number(rate));
}

void Recorder::FinaliseRecording(const std::string& folder, std::int32_t bytes_per_second) {
  const std::string temporary = folder + "newTmp.wav";
  const std::string bytes = HeaderBytes(static_cast<std::uint32_t>(bytes_per_second));
  FileError error = files_.Patch(temporary, kByteRateOffset, bytes);
  const std::string path = folder + RecordingName + ForcedEndSuffix + ".wav";
  if (error == kFileOk) error = files_.Rename(temporary, path);
  if (error != kFileOk) {
    AddStatusLine(form_, "Error saving recording [" + Decimal(error) + "]");
  } else {
    NoteSilence(path);
  }
}

void Recorder::NoteSilence(const std::string& path) {
  const Sound sound = SoundIn(files_, path);
  if (sound == Sound::kUnknown) return;
  const bool silent = sound == Sound::kNone;
  if (silent && !silent_) {
    AddStatusLine(form_, "recorded only silence - " + path.substr(path.rfind('\\') + 1));
  }
  silent_ = silent;
}

}  // namespace corvane
