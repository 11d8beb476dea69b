// The seam to the system's media control interface, and the commands of the one device that is
// used through it.
#pragma once

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
  struct Reply {
    unsigned error = 0;  // 0 is success
    std::string text;
  };
  virtual ~Mci() = default;

  // Sends one command. `reply_length` is the size of the reply buffer in characters; with 0 no
  // reply is asked for.
  virtual Reply Send(const MciCommand& command, unsigned reply_length) = 0;

  // The system's text for an error number, at most 1,024 characters.
  [[nodiscard]] virtual std::string ErrorText(unsigned error) = 0;
};

}  // namespace corvane
