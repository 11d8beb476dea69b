// Taking a command line apart.
#include "tools/arguments.h"

#include <algorithm>

namespace corvane::tools {

std::string ReadArguments(const Arguments& arguments, const ArgumentRules& rules) {
  const auto is_among = [](const std::vector<std::string_view>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
  };
  bool only_words = false;
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string& argument = arguments[index];
    if (only_words || argument == "-" || !argument.starts_with('-')) {
      std::string wrong = rules.take_word(argument);
      if (!wrong.empty()) return wrong;
    } else if (argument == "--") {
      only_words = true;
    } else if (is_among(rules.flags, argument)) {
      (void)rules.take_option(argument, "");
    } else {
      const std::size_t equals = argument.starts_with("--") ? argument.find('=') : argument.npos;
      const std::string name = argument.substr(0, equals);
      if (!is_among(rules.with_value, name)) return "there is no option " + name;
      if (equals == argument.npos && ++index == arguments.size()) return name + " needs a value";
      const std::string value =
          equals == argument.npos ? arguments[index] : argument.substr(equals + 1);
      if (!rules.take_option(name, value)) return name + " cannot be \"" + value + "\"";
    }
  }
  return "";
}

}  // namespace corvane::tools
