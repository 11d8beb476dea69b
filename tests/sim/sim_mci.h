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
  std::int64_t recorded_ms = 0;
};

class SimMci : public Mci {
 public:
  // A saved file holds the sound of the time that was recorded, up to this.
  static constexpr std::int64_t kLongestSavedMs = 200;

  SimMci(const Loop& loop, Files& files) : loop_(loop), files_(files) {}

  Reply Send(const MciCommand& command, unsigned reply_length) override;
  [[nodiscard]] std::string ErrorText(unsigned error) override;

  // Commands that begin with `prefix` fail with `error` and have no effect; 0 ends that.
  void FailCommand(const std::string& prefix, unsigned error);
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
  unsigned Run(std::string_view command, std::string& reply);
  unsigned Open(std::string_view rest);
  unsigned Set(std::string_view rest);
  unsigned Save(std::string_view rest);
  unsigned Status(std::string_view rest, std::string& reply);
  unsigned OrderFault(unsigned error);
  void StopRecording();
  [[nodiscard]] bool TakeAlias(std::string_view& rest) const;
  [[nodiscard]] std::string WavFile() const;

  const Loop& loop_;
  Files& files_;
  std::optional<SimMciDevice> device_;
  std::function<void(const std::string&)> on_send_;
  std::map<std::string, unsigned> failing_;
  std::map<std::string, std::string> status_;
  std::optional<std::uint32_t> written_byte_rate_ = 11025;
  std::vector<Command> commands_;
  int order_faults_ = 0;
  int saved_ = 0;
};

}  // namespace corvane::sim
