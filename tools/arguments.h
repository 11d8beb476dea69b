// The words and options of a command line, as all commands take them: "--name value",
// "--name=value", "-n value"; behind "--" there are words alone.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/command.h"

namespace corvane::tools {

struct ArgumentRules {
  std::vector<std::string_view> with_value;
  std::vector<std::string_view> flags;
  // What is wrong with a word that is no option; "" when nothing is.
  std::function<std::string(const std::string& word)> take_word;
  // False when the option cannot have this value, which is "" for a flag.
  std::function<bool(std::string_view name, const std::string& value)> take_option;
};

// What is wrong with `arguments`; "" when nothing is. "-" is a word.
[[nodiscard]] std::string ReadArguments(const Arguments& arguments, const ArgumentRules& rules);

}  // namespace corvane::tools
