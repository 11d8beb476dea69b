// The options of share, and its page of help.
#include "tools/share/share_options.h"

#include "base/number_text.h"
#include "tools/arguments.h"
#include "tools/share/hooks.h"

namespace corvane::tools {

const char* const kShareHelp =
    R"(usage: corvane-tools share DAY [OPTION]...
       corvane-tools share --follow [OPTION]...

Puts recorded calls where other programs pick them up: in an outbox, beside each recording a JSON
file as trunk-recorder writes it. DAY is a day folder, for example Daily\20261115. Each call is
shared once, also by later runs. Nothing in Corvane's folders is changed or held open.

  --follow         share calls as they end, until the program is stopped
  --folder DIR     with --follow: Corvane's folder; default: the current one
  --outbox DIR     where the files go; default: the folder Outbox in the current one
  --exec COMMAND   start this program for each call; the words WAV and JSON in COMMAND become the
                   paths of the two files, which stand at its end without these words
  --system NUMBER  the number of the system in the JSON files; default: made of country and network
  --help           this page

Each shared call is a line on the standard output, the path of its JSON file.

exit status: 0 done, 2 failed: wrong usage, a folder that is not there, a file that cannot be
written, a program of --exec that failed.
)";

namespace {

bool TakeOption(std::string_view name, const std::string& value, ShareOptions& options) {
  if (name == "--follow") return options.follow = true;
  if (name == "--system") {
    options.system = ParseDecimal<std::int64_t>(value);
    return options.system && *options.system >= 0;
  }
  if (name == "--exec") {
    const auto words = SplitCommand(value);
    if (words) options.hook = *words;
    return words.has_value();
  }
  (name == "--folder" ? options.folder : options.outbox) = value;
  return !value.empty();
}

}  // namespace

std::string ParseShareOptions(const Arguments& arguments, ShareOptions& options) {
  ArgumentRules rules;
  rules.with_value = {"--folder", "--outbox", "--exec", "--system"};
  rules.flags = {"--follow"};
  rules.take_word = [&](const std::string& word) -> std::string {
    if (word.empty()) return "the name of the day folder is empty";
    if (!options.day.empty()) return "there is more than one day: " + word;
    options.day = word;
    return "";
  };
  rules.take_option = [&](std::string_view name, const std::string& value) {
    return TakeOption(name, value, options);
  };
  std::string wrong = ReadArguments(arguments, rules);
  if (!wrong.empty()) return wrong;
  if (options.day.empty() && !options.follow) return "which day? Or --follow";
  if (!options.day.empty() && options.follow) return "a day or --follow, not both";
  return "";
}

}  // namespace corvane::tools
