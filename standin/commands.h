// The commands of scenario lines and of run time. Reading one checks its words and gives what it
// does, to be done at its time. docs/standin.md describes them all.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "standin/word_reader.h"

namespace corvane::standin {

class Model;

// Does it: "" or why it was not done.
using Command = std::function<std::string(Model&)>;

// "" or what is wrong with the words.
[[nodiscard]] std::string ReadCommand(const std::vector<Word>& words, Command& command);

// Most of what one command repeats: lines, calls, faults.
inline constexpr std::int64_t kMaxCount = 100'000;

// For the files that hold the commands: a command's word, and what reads those behind it.
struct Verb {
  std::string_view word;
  Command (*read)(WordReader&);
};
[[nodiscard]] std::span<const Verb> AirVerbs();

// A command that can always be carried out.
template <typename Act>
[[nodiscard]] Command Always(Act act) {
  return [act](Model& model) {
    act(model);
    return std::string();
  };
}

}  // namespace corvane::standin
