// The media control interface with one recording device: it knows in which order commands make
// sense, and its saved files are valid WAV files.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/loop.h"
#include "record/mci.h"

namespace corvane::sim {

// The system's numbers for what can go wrong here.
inline constexpr unsigned kMciUnrecognizedCommand = 261;
inline constexpr unsigned kMciInvalidDeviceName = 263;
inline constexpr unsigned kMciBadInteger = 270;
inline constexpr unsigned kMciFileNotSaved = 286;
inline constexpr unsigned kMciDuplicateAlias = 289;
inline constexpr unsigned kMciBadConstant = 290;
inline constexpr unsigned kMciNonApplicable = 302;
inline constexpr unsigned kMciExtraCharacters = 305;
inline constexpr unsigned kMciHardware = 262;
inline constexpr unsigned kMciInputsInUse = 322;
inline constexpr unsigned kMciFormatUnsuitable = 328;

// What an open device was set to, and what it has recorded. Not within SimMci: clang cannot make
// one there.
struct SimMciDevice {
  std::string alias;
  int channels = 1;
  int bits = 8;
  int rate = 11025;
  int alignment = 1;
  std::optional<std::int64_t> recording_since;
  bool begun = false;  // "record" was reported as done, and no "stop" since
  std::int64_t recorded_ms = 0;
};

class SimMci : public Mci {
 public:
  // A saved file holds the sound of the time that was recorded, up to this.
  static constexpr std::int64_t kLongestSavedMs = 200;

  SimMci(Loop& loop, Files& files) : loop_(loop), files_(files) {}

  Reply Send(const MciCommand& command, unsigned reply_length) override;
  [[nodiscard]] std::optional<Reply> Begin(const MciCommand& command,
                                           unsigned reply_length) override;
  [[nodiscard]] std::optional<Reply> Answer() override;
  Reply Await() override;
  void Hurry() override { hurried_ = true; }
  [[nodiscard]] std::string ErrorText(unsigned error) override;

  // Commands that begin with `prefix` fail with `error` and have no effect; 0 ends that.
  void FailCommand(const std::string& prefix, unsigned error);
  // Commands that begin with `prefix` take the device `ms` of the loop's clock. What takes longer
  // than its limit fails, has no effect and costs the device: it must be opened anew.
  void SetSlow(const std::string& prefix, int ms) { slow_[prefix] = ms; }
  // Whether saved files hold silence, as with a microphone switch that is off, or a tone.
  void SetSilent(bool silent) { silent_ = silent; }
  // The device is unplugged: a recording ends unheard of, and none begins.
  void SetUnplugged(bool unplugged);
  // Is called with each command's text, before it has any effect.
  void SetOnSend(std::function<void(const std::string& text)> hook) { on_send_ = std::move(hook); }
  // What "status recsound `item`" answers instead of the truth.
  void SetStatus(const std::string& item, const std::string& reply) { status_[item] = reply; }
  // The average byte rate that saved files carry: wrong, as some drivers write it.
  void SetWrittenByteRate(std::optional<std::uint32_t> rate) { written_byte_rate_ = rate; }

  struct Command {
    std::string text;
    unsigned error = 0;
    unsigned reply_length = 0;
    bool operator==(const Command&) const = default;
  };
  // Everything sent so far, oldest first.
  [[nodiscard]] const std::vector<Command>& commands() const { return commands_; }
  void ForgetCommands() { commands_.clear(); }
  // Commands that were refused because they came in the wrong order or were misspelt.
  [[nodiscard]] int order_faults() const { return order_faults_; }
  [[nodiscard]] bool open() const { return device_.has_value(); }
  [[nodiscard]] bool recording() const { return device_ && device_->recording_since; }
  [[nodiscard]] int saved() const { return saved_; }

 private:
  struct UnderWay {
    MciCommand command;
    unsigned reply_length = 0;
    std::int64_t done_at_ms = 0;
    std::int64_t given_up_at_ms = 0;
  };
  Reply CarryOut(const MciCommand& command, unsigned reply_length);
  Reply GiveUp(const MciCommand& command, unsigned reply_length);
  [[nodiscard]] int DurationOf(const std::string& text) const;
  [[nodiscard]] int Limit(int limit_ms) const;
  unsigned Run(std::string_view command, std::string& reply);
  unsigned Open(std::string_view rest);
  unsigned Set(std::string_view rest);
  unsigned Save(std::string_view rest);
  unsigned Status(std::string_view rest, std::string& reply);
  unsigned OrderFault(unsigned error);
  void StopRecording();
  [[nodiscard]] bool TakeAlias(std::string_view& rest) const;
  [[nodiscard]] std::string WavFile() const;

  Loop& loop_;
  Files& files_;
  std::optional<SimMciDevice> device_;
  std::function<void(const std::string&)> on_send_;
  std::map<std::string, unsigned> failing_;
  std::map<std::string, std::string> status_;
  std::optional<std::uint32_t> written_byte_rate_ = 11025;
  std::vector<Command> commands_;
  std::map<std::string, int> slow_;
  std::optional<UnderWay> under_way_;
  bool given_up_ = false;  // the device that was open hangs
  bool recorded_before_ = false;
  bool hurried_ = false;
  bool silent_ = false;
  bool unplugged_ = false;
  int order_faults_ = 0;
  int saved_ = 0;
};

}  // namespace corvane::sim
