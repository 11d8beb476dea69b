// corvane-tools replay: from the command line to the exit code.
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "archive/event_feed.h"
#include "archive/log_lines.h"
#include "archive/path_text.h"
#include "archive/replay.h"
#include "archive/timed_lines.h"
#include "archive/user_files.h"
#include "base/number_text.h"
#include "tools/command.h"
#include "tools/expectation.h"
#include "tools/progress.h"
#include "tools/replay_options.h"
#include "tools/replay_report.h"

namespace corvane::tools {

namespace {

constexpr const char* kReplay = "replay";

// The network that the log is from; "" or what is wrong.
std::string ChooseNetwork(const ReplayOptions& options, const GssiTable& groups,
                          NetworkCode& network) {
  if (options.network) {
    network = *options.network;
    return "";
  }
  std::set<NetworkCode> known;
  for (const GssiRecord& group : groups) known.insert({group.Mcc, group.Mnc});
  if (known.size() == 1) network = *known.begin();
  if (known.size() < 2) return "";
  std::string names;
  std::size_t told = 0;
  for (const NetworkCode& code : known) {
    if (++told > 8) {
      names += " ...";
      break;
    }
    names += " " + Decimal(code.mcc) + "/" + Decimal(code.mnc);
  }
  return "the list has groups of several networks, choose one with --network:" + names;
}

bool IsSameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return !a.empty() && !b.empty() && std::filesystem::is_regular_file(PathOfNarrow(a), error) &&
         std::filesystem::equivalent(PathOfNarrow(a), PathOfNarrow(b), error);
}

class ReplayRun {
 public:
  ReplayRun(const ReplayOptions& options, Console& console)
      : options_(options), console_(console) {}

  ExitCode Run() {
    std::string wrong = Prepare();
    if (wrong.empty()) wrong = OpenInputs();
    if (wrong.empty()) wrong = OpenOutput();
    return wrong.empty() ? Go() : Fail(console_, kReplay, wrong);
  }

 private:
  std::string Prepare() {
    if (!options_.settings.empty()) {
      const std::string wrong = LoadSettings(options_.settings, start_);
      if (!wrong.empty()) return wrong;
    }
    if (!options_.lists.empty()) {
      bool found = false;
      const std::string wrong = LoadGroups(options_.lists, groups_, found);
      if (!wrong.empty()) return wrong;
      if (!found) note_ = options_.lists + " has no TETRA_GSSI.txt: every group is new";
    }
    NetworkCode network;
    const std::string wrong = ChooseNetwork(options_, groups_, network);
    start_.groups = &groups_;
    start_.mcc = network.mcc;
    start_.mnc = network.mnc;
    if (options_.timeout_s) start_.presets.CallTimeoutSeconds = *options_.timeout_s;
    start_.log_mode = start_.log_mode || options_.log_mode;
    start_.held = options_.held;
    return wrong;
  }

  std::string OpenInputs() {
    if (!lines_.Open(PathOfNarrow(options_.input))) return options_.input + " cannot be read";
    if (options_.events.empty()) return "";
    if (!events_.Open(PathOfNarrow(options_.events))) return options_.events + " cannot be read";
    timed_.SetEvents(events_);
    return "";
  }

  std::string OpenOutput() {
    out_ = &console_.out;
    if (!options_.output.empty()) {
      for (const std::string& used :
           {options_.input, options_.events, options_.settings, options_.expect}) {
        if (IsSameFile(used, options_.output)) return options_.output + " would be overwritten";
      }
      file_ = std::make_unique<FileOutput>(options_.output);
      if (!file_->is_open()) return options_.output + " cannot be written";
      out_ = file_.get();
    }
    if (options_.expect.empty()) return "";
    expectation_.emplace(*out_);
    if (!expectation_->Open(options_.expect)) return options_.expect + " cannot be read";
    out_ = &*expectation_;
    return "";
  }

  ExitCode Go() {
    ReplayReport report(options_, *out_);
    Replay replay(start_, report);
    timed_.SetDecision([&](std::string_view line) { return replay.OutcomeWhenFree(line); });
    const bool in_the_way = options_.output.empty() && console_.out_is_terminal;
    Progress progress(console_, !options_.quiet && !in_the_way, lines_.bytes_in_all());
    LogStep step;
    while (out_->ok() && timed_.Next(step)) {
      replay.Take(step);
      progress.Show(lines_.bytes_read());
    }
    progress.Clear();
    const bool written = out_->Flush() && (file_ == nullptr || file_->Close());
    if (!written) return Fail(console_, kReplay, "the results could not be written");
    if (lines_.failed())
      return Fail(console_, kReplay, options_.input + " could not be read to its end");
    if (events_.failed()) {
      return Fail(console_, kReplay, options_.events + " could not be read to its end");
    }
    if (!options_.quiet) WriteSummary(report, replay.following());
    return Compare();
  }

  void WriteSummary(const ReplayReport& report, bool following) {
    std::string text = options_.input + ": " + Decimal(lines_.number()) + " lines, " +
                       Decimal(timed_.repeats()) + " of them again\n";
    if (!note_.empty()) text += note_ + "\n";
    if (lines_.cut() > 0) {
      text += Decimal(lines_.cut()) + " lines are too long, only their beginning was read\n";
    }
    text += report.Summary(following);
    if (!options_.events.empty()) {
      text += "\nentries of the event log without a line: " + Decimal(timed_.unmatched()) +
              "\nsetups that the event log shows otherwise: " + Decimal(report.contradictions()) +
              "\n";
    }
    console_.err.Write(text);
  }

  ExitCode Compare() {
    if (!expectation_) return ExitCode::kDone;
    const std::string difference = expectation_->Difference();
    if (expectation_->failed()) return Fail(console_, kReplay, options_.expect + " cannot be read");
    if (difference.empty()) return ExitCode::kDone;
    console_.err.Write(options_.expect + ": " + difference);
    return ExitCode::kDiffers;
  }

  const ReplayOptions& options_;
  Console& console_;
  ReplayStart start_;
  GssiTable groups_;
  std::string note_;
  LogLines lines_;
  EventFeed events_;
  TimedLines timed_{lines_, options_.pace_ms};
  std::unique_ptr<FileOutput> file_;
  std::optional<Expectation> expectation_;
  Output* out_ = nullptr;
};

ExitCode RunReplay(const Arguments& arguments, Console& console) {
  ReplayOptions options;
  const std::string wrong = ParseReplayOptions(arguments, options);
  if (!wrong.empty()) {
    return Fail(console, kReplay, wrong + "\ncorvane-tools replay --help tells more");
  }
  return ReplayRun(options, console).Run();
}

}  // namespace

const Command kReplayCommand = {"replay", "what Corvane does with the calls of a log, and why",
                                kReplayHelp, RunReplay};

}  // namespace corvane::tools
