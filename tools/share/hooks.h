// The user's program that is started for each shared call. Names of groups and radios never reach
// its command line: its arguments are paths.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/system.h"

namespace corvane::tools {

// The words of a command line: blanks part them, except within quotation marks. nullopt when a mark
// is not closed or there is no word.
[[nodiscard]] std::optional<std::vector<std::string>> SplitCommand(std::string_view command);

// `words` with the paths in the place of the words WAV and JSON; behind the others when neither is
// there.
[[nodiscard]] std::vector<std::string> HookWords(const std::vector<std::string>& words,
                                                 const std::string& wav, const std::string& json);

class Hooks {
 public:
  // So many run at a time; further calls wait for one to end.
  static constexpr std::size_t kMostAtOnce = 8;

  // Without words nothing is ever started.
  explicit Hooks(std::vector<std::string> words) : words_(std::move(words)) {}

  void Start(const std::string& wav, const std::string& json);
  // Notes those that have ended. A line for each that failed since the last call.
  [[nodiscard]] std::vector<std::string> Failed();
  void WaitForAll();
  [[nodiscard]] bool ever_failed() const { return ever_failed_; }

 private:
  void Look();
  void Fail(const std::string& line);

  struct Running {
    std::unique_ptr<StartedProgram> program;
    std::string json;
  };
  std::vector<std::string> words_;
  std::vector<Running> running_;
  std::vector<std::string> failed_;
  bool ever_failed_ = false;
};

}  // namespace corvane::tools
