// The seam to the system's media control interface, and the commands of the one device that is
// used through it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {

// One command string, made here once. What a device needs to know of a command it learns from the
// verb and the path, never from the text.
struct MciCommand {
  enum class Verb { kOther, kCloseAll, kOpen, kSet, kRecord, kStop, kSave, kStatus, kClose };
  static constexpr std::string_view kAlias = "recsound";

  // Any text, sent as it stands.
  static MciCommand Raw(std::string text) { return {Verb::kOther, std::move(text), {}, {}}; }
  static MciCommand CloseAll() { return {Verb::kCloseAll, "close all", {}, {}}; }
  static MciCommand Open() { return {Verb::kOpen, "open new Type waveaudio Alias ", {}, {}}; }
  static MciCommand Set(const std::string& what) { return {Verb::kSet, "set ", " " + what, {}}; }
  static MciCommand Record() { return {Verb::kRecord, "record ", {}, {}}; }
  static MciCommand Stop() { return {Verb::kStop, "stop ", {}, {}}; }
  static MciCommand Save(const std::string& path) {
    return {Verb::kSave, "save ", " \"" + path + "\"", path};
  }
  static MciCommand Status(const std::string& what) {
    return {Verb::kStatus, "status ", " " + what, {}};
  }
  static MciCommand Close() { return {Verb::kClose, "close ", {}, {}}; }

  // The command as the system takes it, for the device of that alias.
  [[nodiscard]] std::string Text(std::string_view alias = kAlias) const {
    if (verb == Verb::kOther || verb == Verb::kCloseAll) return before;
    return before + std::string(alias) + behind;
  }

  Verb verb;
  std::string before;  // the text up to the alias
  std::string behind;  // the text behind it
  std::string path;    // of kSave
};

class Mci {
 public:
  // The longest that a command is waited for; then it counts as failed, and its device is given up.
  // "save" may have to copy hours of sound. The first "record" of a run may have to wake a device
  // that is reached by radio or was plugged in a moment ago.
  static constexpr int kLongestSave_ms = 60'000;
  static constexpr int kLongestCommand_ms = 3'000;
  static constexpr int kLongestFirstRecord_ms = 10'000;
  static constexpr int kLongestInHurry_ms = 1'000;
  // How long Begin waits.
  static constexpr int kMoment_ms = 50;

  struct Reply {
    unsigned error = 0;  // 0 is success
    std::string text;
  };
  virtual ~Mci() = default;

  // Sends one command. `reply_length` is the size of the reply buffer in characters; with 0 no
  // reply is asked for.
  virtual Reply Send(const MciCommand& command, unsigned reply_length) = 0;

  // Sends a "record" and waits no longer than a moment: nullopt when it is still under way. Nothing
  // may be sent then until Answer or Await has given its reply.
  [[nodiscard]] virtual std::optional<Reply> Begin(const MciCommand& command,
                                                   unsigned reply_length) = 0;
  // The reply to what is under way; nullopt when there is none yet.
  [[nodiscard]] virtual std::optional<Reply> Answer() = 0;
  // The same, waited for as long as Send waits for a command.
  virtual Reply Await() = 0;

  // The system is about to end the program: nothing is waited for longer than kLongestInHurry_ms
  // from now on.
  virtual void Hurry() = 0;

  // The system's text for an error number, at most 1,024 characters.
  [[nodiscard]] virtual std::string ErrorText(unsigned error) = 0;
};

}  // namespace corvane
