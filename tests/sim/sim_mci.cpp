// The simulated recording device.
#include "sim/sim_mci.h"

#include <algorithm>
#include <utility>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane::sim {

namespace {

// Takes the first word of `text` and the blanks behind it.
std::string TakeWord(std::string_view& text) {
  const std::size_t end = std::min(text.find(' '), text.size());
  std::string word(text.substr(0, end));
  text = Trim(text.substr(end));
  return word;
}

void AddLittle(std::string& bytes, std::uint32_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
}

const std::map<unsigned, std::string>& ErrorTexts() {
  static const std::map<unsigned, std::string> texts = {
      {kMciUnrecognizedCommand, "The driver cannot recognize the specified command."},
      {kMciInvalidDeviceName, "The specified device is not open or is not recognized by MCI."},
      {kMciBadInteger, "An integer is required for this command."},
      {kMciFileNotSaved, "The file was not saved."},
      {kMciDuplicateAlias, "The specified alias is already being used in this application."},
      {kMciBadConstant, "The specified value is out of range."},
      {kMciNonApplicable, "The specified command cannot be carried out now."},
      {kMciExtraCharacters, "There are extra characters after the command."},
      {kMciHardware, "There is a problem with the media device."},
      {kMciInputsInUse, "All wave devices that can record are in use."},
      {kMciFormatUnsuitable, "No device can record files in the current format."},
  };
  return texts;
}

}  // namespace

int SimMci::DurationOf(const std::string& text) const {
  const auto slow =
      std::ranges::find_if(slow_, [&](const auto& entry) { return text.starts_with(entry.first); });
  return slow != slow_.end() ? slow->second : 0;
}

int SimMci::Limit(int limit_ms) const {
  return hurried_ ? std::min(limit_ms, kLongestInHurry_ms) : limit_ms;
}

Mci::Reply SimMci::Send(const MciCommand& command, unsigned reply_length) {
  if (under_way_) {
    ++order_faults_;
    static_cast<void>(Await());
  }
  if (on_send_) on_send_(command.Text());
  const bool saves = command.verb == MciCommand::Verb::kSave;
  const int limit_ms = Limit(saves ? kLongestSave_ms : kLongestCommand_ms);
  // What is not open is refused at once.
  const bool works = device_ || command.verb == MciCommand::Verb::kOpen;
  const int duration_ms = works ? DurationOf(command.Text()) : 0;
  loop_.Sleep(std::min(duration_ms, limit_ms));
  return duration_ms > limit_ms ? GiveUp(command, reply_length) : CarryOut(command, reply_length);
}

std::optional<Mci::Reply> SimMci::Begin(const MciCommand& command, unsigned reply_length) {
  if (on_send_) on_send_(command.Text());
  const bool first = !std::exchange(recorded_before_, true);
  const int duration_ms = DurationOf(command.Text());
  if (duration_ms <= kMoment_ms) {
    loop_.Sleep(duration_ms);
    return CarryOut(command, reply_length);
  }
  const int limit_ms = Limit(first ? kLongestFirstRecord_ms : kLongestCommand_ms);
  const std::int64_t now_ms = loop_.TickMs();
  under_way_ = {command, reply_length, now_ms + duration_ms, now_ms + limit_ms};
  loop_.Sleep(kMoment_ms);
  return std::nullopt;
}

std::optional<Mci::Reply> SimMci::Answer() {
  if (!under_way_) {
    ++order_faults_;
    return Reply{kMciHardware, {}};
  }
  const std::int64_t now_ms = loop_.TickMs();
  if (now_ms < std::min(under_way_->done_at_ms, under_way_->given_up_at_ms)) return std::nullopt;
  const UnderWay over = *std::exchange(under_way_, std::nullopt);
  return over.done_at_ms <= over.given_up_at_ms ? CarryOut(over.command, over.reply_length)
                                                : GiveUp(over.command, over.reply_length);
}

Mci::Reply SimMci::Await() {
  if (auto reply = Answer()) return *reply;
  const std::int64_t now_ms = loop_.TickMs();
  under_way_->given_up_at_ms =
      std::min(under_way_->given_up_at_ms, now_ms + Limit(kLongestCommand_ms));
  loop_.Sleep(
      static_cast<int>(std::min(under_way_->done_at_ms, under_way_->given_up_at_ms) - now_ms));
  return *Answer();
}

Mci::Reply SimMci::CarryOut(const MciCommand& command, unsigned reply_length) {
  const std::string text = command.Text();
  Reply reply;
  const auto failing = std::ranges::find_if(
      failing_, [&](const auto& entry) { return text.starts_with(entry.first); });
  reply.error = failing != failing_.end() ? failing->second : Run(text, reply.text);
  commands_.push_back({text, reply.error, reply_length});
  // The buffer holds the end of the text as well.
  reply.text.resize(
      std::min<std::size_t>(reply.text.size(), reply_length == 0 ? 0 : reply_length - 1));
  return reply;
}

Mci::Reply SimMci::GiveUp(const MciCommand& command, unsigned reply_length) {
  device_.reset();
  given_up_ = true;
  commands_.push_back({command.Text(), kMciHardware, reply_length});
  return {kMciHardware, {}};
}

void SimMci::SetUnplugged(bool unplugged) {
  unplugged_ = unplugged;
  if (unplugged && device_) StopRecording();
}

std::string SimMci::ErrorText(unsigned error) {
  const auto text = ErrorTexts().find(error);
  return text != ErrorTexts().end() ? text->second : "MCI error " + Decimal(error);
}

void SimMci::FailCommand(const std::string& prefix, unsigned error) {
  if (error == 0) {
    failing_.erase(prefix);
  } else {
    failing_[prefix] = error;
  }
}

unsigned SimMci::OrderFault(unsigned error) {
  // Who gave a device up may send the rest of its commands.
  if (!given_up_) ++order_faults_;
  return error;
}

unsigned SimMci::Run(std::string_view command, std::string& reply) {
  const std::string verb = Lowered(TakeWord(command));
  if (verb == "close" && Lowered(command) == "all") {
    device_.reset();
    given_up_ = false;
    return 0;
  }
  if (verb == "open") return Open(command);
  if (verb != "set" && verb != "record" && verb != "stop" && verb != "save" && verb != "status" &&
      verb != "close") {
    return OrderFault(kMciUnrecognizedCommand);
  }
  if (!TakeAlias(command)) return OrderFault(kMciInvalidDeviceName);
  if (verb == "set") return Set(command);
  if (verb == "save") return Save(command);
  if (verb == "status") return Status(command, reply);
  if (!command.empty()) return OrderFault(kMciExtraCharacters);
  if (verb == "record") {
    if (device_->recording_since) return OrderFault(kMciNonApplicable);
    if (device_->alignment != device_->channels * device_->bits / 8) return kMciFormatUnsuitable;
    if (unplugged_) return kMciInputsInUse;
    device_->recording_since = loop_.TickMs();
    device_->begun = true;
  } else {
    const bool ended_before = verb == "stop" && device_->begun && !device_->recording_since;
    StopRecording();
    device_->begun = false;
    if (verb == "close") device_.reset();
    if (ended_before) return kMciInputsInUse;
  }
  return 0;
}

bool SimMci::TakeAlias(std::string_view& rest) const {
  const std::string alias = TakeWord(rest);
  return device_ && Lowered(alias) == device_->alias;
}

unsigned SimMci::Open(std::string_view rest) {
  if (Lowered(TakeWord(rest)) != "new" || Lowered(TakeWord(rest)) != "type" ||
      Lowered(TakeWord(rest)) != "waveaudio" || Lowered(TakeWord(rest)) != "alias" ||
      rest.empty()) {
    return OrderFault(kMciUnrecognizedCommand);
  }
  if (device_) return OrderFault(kMciDuplicateAlias);
  device_.emplace();
  device_->alias = Lowered(rest);
  return 0;
}

unsigned SimMci::Set(std::string_view rest) {
  if (device_->recording_since) return OrderFault(kMciNonApplicable);
  const std::string text = Lowered(rest);
  if (text == "time format ms" || text == "format tag pcm") return 0;
  const std::string item = TakeWord(rest);
  int SimMciDevice::*field = nullptr;
  if (item == "channels") field = &SimMciDevice::channels;
  if (item == "samplespersec") field = &SimMciDevice::rate;
  if (item == "bitspersample") field = &SimMciDevice::bits;
  if (item == "alignment") field = &SimMciDevice::alignment;
  if (field == nullptr) return OrderFault(kMciBadConstant);
  const std::optional<int> value = ParseDecimal<int>(rest);
  if (!value || *value <= 0) return OrderFault(kMciBadInteger);
  (*device_).*field = *value;
  return 0;
}

void SimMci::StopRecording() {
  if (!device_->recording_since) return;
  device_->recorded_ms += loop_.TickMs() - *device_->recording_since;
  device_->recording_since.reset();
}

unsigned SimMci::Save(std::string_view rest) {
  if (device_->recording_since) return OrderFault(kMciNonApplicable);
  std::string path(rest);
  if (path.size() >= 2 && path.front() == '"' && path.back() == '"') {
    path = path.substr(1, path.size() - 2);
  } else if (path.empty() || Contains(path, " ")) {
    return OrderFault(kMciExtraCharacters);
  }
  if (files_.WriteAll(path, WavFile()) != kFileOk) return kMciFileNotSaved;
  ++saved_;
  return 0;
}

unsigned SimMci::Status(std::string_view rest, std::string& reply) {
  const std::string item = Lowered(rest);
  const std::int64_t running_ms =
      device_->recording_since ? loop_.TickMs() - *device_->recording_since : 0;
  const std::map<std::string, std::string> truth = {
      {"position", Decimal(device_->recorded_ms + running_ms)},
      {"channels", Decimal(device_->channels)},
      {"bitspersample", Decimal(device_->bits)},
      {"samplespersec", Decimal(device_->rate)},
      {"bytespersec", Decimal(device_->rate * device_->alignment)},
      {"alignment", Decimal(device_->alignment)},
      {"mode", device_->recording_since ? "recording" : "stopped"}};
  const auto found = truth.find(item);
  if (found == truth.end()) return OrderFault(kMciBadConstant);
  const auto given = status_.find(item);
  reply = given != status_.end() ? given->second : found->second;
  return 0;
}

std::string SimMci::WavFile() const {
  const std::int64_t ms = std::clamp<std::int64_t>(device_->recorded_ms, 0, kLongestSavedMs);
  const std::uint32_t frame = static_cast<std::uint32_t>(device_->alignment);
  const std::uint32_t rate = static_cast<std::uint32_t>(device_->rate);
  const std::uint32_t data_size = static_cast<std::uint32_t>(ms) * rate / 1000 * frame;
  std::string wav = "RIFF";
  AddLittle(wav, 36 + data_size, 4);
  wav += "WAVEfmt ";
  AddLittle(wav, 16, 4);
  AddLittle(wav, 1, 2);  // PCM
  AddLittle(wav, static_cast<std::uint32_t>(device_->channels), 2);
  AddLittle(wav, rate, 4);
  AddLittle(wav, written_byte_rate_.value_or(rate * frame), 4);
  AddLittle(wav, frame, 2);
  AddLittle(wav, static_cast<std::uint32_t>(device_->bits), 2);
  wav += "data";
  AddLittle(wav, data_size, 4);
  const char silence = device_->bits == 8 ? '\x80' : '\0';
  if (silent_) {
    wav.append(data_size, silence);
  } else {
    // Loud and soft by turns.
    for (std::uint32_t i = 0; i < data_size; ++i)
      wav += static_cast<char>(static_cast<unsigned char>(silence) + i / 64 % 2 * 16);
  }
  return wav;
}

}  // namespace corvane::sim
