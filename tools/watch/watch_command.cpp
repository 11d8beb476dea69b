// corvane-tools watch: from the command line to the exit code.
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "archive/instant.h"
#include "archive/path_text.h"
#include "base/number_text.h"
#include "tools/arguments.h"
#include "tools/command.h"
#include "tools/share/hooks.h"
#include "tools/system.h"
#include "tools/watch/notifier.h"
#include "tools/watch/watcher.h"

namespace corvane::tools {

namespace {

namespace fs = std::filesystem;

constexpr const char* kWatch = "watch";
constexpr std::int64_t kLongestDeafS = 86400;

constexpr const char* kHelp =
    R"(usage: corvane-tools watch [OPTION]...

Looks after a running Corvane until it is stopped, and tells on the standard output when something
is noticed: nothing is received any more, the disk runs low. Writes into none of Corvane's files.

  --folder DIR     Corvane's folder; default: the current one
  --deaf SECONDS   tell when nothing was received for so long while parked; default 60, 0: never
  --room MB        tell when less is free on the disk of the folder; default 1000, 0: never
  --stamps FILE    add each new line of TETRA_cc.log to FILE, with the time in front
  --copies DIR     keep a copy of TETRA_GSSI.txt and TETRA_SSI.txt there, one for each day
  --exec COMMAND   start this program for each notice; the word NOTICE in COMMAND becomes its text,
                   which stands at the end without that word
  --notify         show each notice beside the clock as well; Windows alone
  --help           this page

exit status: 2 wrong usage, a folder that is not there, a file that cannot be written.
)";

struct WatchOptions {
  std::string folder = ".";
  std::string stamps;
  std::vector<std::string> hook;
  bool notify = false;
  WatchLimits limits;
};

bool TakeOption(std::string_view name, const std::string& value, WatchOptions& options) {
  if (name == "--notify") return options.notify = true;
  if (name == "--deaf") {
    const auto seconds = ParseDecimal<std::int64_t>(value);
    options.limits.deaf_s = seconds.value_or(0);
    return seconds && *seconds >= 0 && *seconds <= kLongestDeafS;
  }
  if (name == "--room") {
    const auto megabytes = ParseDecimal<std::uint32_t>(value);
    options.limits.room_mb = megabytes.value_or(0);
    return megabytes.has_value();
  }
  if (name == "--exec") {
    const auto words = SplitCommand(value);
    if (words) options.hook = *words;
    return words.has_value();
  }
  std::string& text = name == "--folder"   ? options.folder
                      : name == "--stamps" ? options.stamps
                                           : options.limits.copies;
  text = value;
  return !value.empty();
}

class WatchRun {
 public:
  WatchRun(const WatchOptions& options, Console& console) : options_(options), console_(console) {}

  ExitCode Run() {
    std::error_code error;
    if (!fs::is_directory(PathOfNarrow(options_.folder), error)) {
      return Fail(console_, kWatch, options_.folder + ": there is no such folder");
    }
    if (!options_.stamps.empty() && IsInFolder(PathOfNarrow(options_.stamps))) {
      return Fail(console_, kWatch, options_.stamps + " is in Corvane's folder");
    }
    if (options_.notify) notifier_ = SystemNotifier();
    if (options_.notify && notifier_ == nullptr) {
      return Fail(console_, kWatch, "this system has no notices beside the clock: take --exec");
    }
    Watcher watcher(PathOfNarrow(options_.folder), options_.limits);
    const auto clock = SystemClock();
    const auto files = SystemFiles();
    for (;;) {
      const DateTime now = clock->Now();
      const fs::space_info space = fs::space(PathOfNarrow(options_.folder), error);
      const auto room = error ? std::nullopt : std::optional<std::uint64_t>(space.available);
      const Watcher::Seen seen = watcher.Look(SecondsOf(now), room);
      std::string stamped;
      for (const std::string& line : seen.lines) stamped += IsoDate(now) + " " + line + "\r\n";
      if (!options_.stamps.empty() && !stamped.empty() &&
          files->Append(options_.stamps, stamped) != kFileOk) {
        return Fail(console_, kWatch, options_.stamps + " could not be written");
      }
      for (const std::string& notice : seen.notices) {
        console_.out.Write(IsoDate(now) + " " + notice + "\n");
        StartHook(notice);
        if (notifier_ != nullptr && !notifier_->Show(notice)) {
          console_.err.Write("the system refused to show this notice\n");
        }
      }
      std::erase_if(hooks_, [](const auto& hook) { return hook->Code().has_value(); });
      if (!console_.out.Flush()) return Fail(console_, kWatch, "the output could not be written");
      if (notifier_ != nullptr) notifier_->Attend();
      WaitMs(kBetweenLooksMs);
    }
  }

 private:
  // Nothing is ever added to a file of the program.
  [[nodiscard]] bool IsInFolder(const fs::path& file) const {
    std::error_code error;
    fs::path folder = fs::weakly_canonical(fs::absolute(file, error), error).parent_path();
    while (!fs::equivalent(folder, PathOfNarrow(options_.folder), error)) {
      if (folder == folder.parent_path()) return false;
      folder = folder.parent_path();
    }
    return true;
  }

  void StartHook(const std::string& notice) {
    if (options_.hook.empty()) return;
    std::vector<std::string> words = options_.hook;
    bool placed = false;
    for (std::size_t i = 1; i < words.size(); ++i) {
      if (words[i] != "NOTICE") continue;
      words[i] = notice;
      placed = true;
    }
    if (!placed) words.push_back(notice);
    auto hook = StartedProgram::Start(words);
    if (hook == nullptr) {
      console_.err.Write(words.front() + " could not be started\n");
    } else {
      hooks_.push_back(std::move(hook));
    }
  }

  const WatchOptions& options_;
  Console& console_;
  std::vector<std::unique_ptr<StartedProgram>> hooks_;
  std::unique_ptr<Notifier> notifier_;
};

ExitCode RunWatch(const Arguments& arguments, Console& console) {
  WatchOptions options;
  ArgumentRules rules;
  rules.with_value = {"--folder", "--deaf", "--room", "--stamps", "--copies", "--exec"};
  rules.flags = {"--notify"};
  rules.take_word = [](const std::string& word) { return "what is " + word + "?"; };
  rules.take_option = [&](std::string_view name, const std::string& value) {
    return TakeOption(name, value, options);
  };
  const std::string wrong = ReadArguments(arguments, rules);
  if (!wrong.empty()) {
    return Fail(console, kWatch, wrong + "\ncorvane-tools watch --help tells more");
  }
  return WatchRun(options, console).Run();
}

}  // namespace

const Command kWatchCommand = {"watch", "tells when a running Corvane hears nothing any more",
                               kHelp, RunWatch};

}  // namespace corvane::tools
