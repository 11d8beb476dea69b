// corvane-tools share: from the command line to the exit code.
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "archive/day_folder.h"
#include "archive/day_reader.h"
#include "archive/instant.h"
#include "archive/path_text.h"
#include "archive/recordings.h"
#include "base/number_text.h"
#include "tools/command.h"
#include "tools/progress.h"
#include "tools/share/call_sharer.h"
#include "tools/share/follower.h"
#include "tools/share/share_options.h"
#include "tools/system.h"

namespace corvane::tools {

namespace {

namespace fs = std::filesystem;

constexpr const char* kShare = "share";

class ShareRun {
 public:
  ShareRun(const ShareOptions& options, Console& console)
      : options_(options), console_(console), sharer_(options, console) {}

  ExitCode Run() {
    std::string wrong;
    if (options_.follow) {
      if (!fs::is_directory(PathOfNarrow(options_.folder)))
        wrong = options_.folder + ": there is no such folder";
    } else {
      day_ = OpenDayFolder(PathOfNarrow(options_.day));
      if (!day_) wrong = options_.day + ": there is no such folder";
    }
    if (wrong.empty()) wrong = sharer_.Open();
    if (wrong.empty()) wrong = options_.follow ? Follow() : ShareDay();
    if (wrong.empty() && sharer_.any_hook_failed()) wrong = "not every program of --exec succeeded";
    return wrong.empty() ? ExitCode::kDone : Fail(console_, kShare, wrong);
  }

 private:
  std::string ShareDay() {
    sharer_.SetFolder(ProgramFolderOf(*day_));
    sharer_.around().Load();
    DayRequest request;
    request.days = {*day_};
    // A recording is filed under the day on which its call ended.
    const auto before_it = DayBefore();
    if (before_it) request.days.insert(request.days.begin(), *before_it);
    request.lists = &sharer_.around().lists();
    std::string wrong;
    std::size_t before = 0;
    std::size_t without = 0;
    DayResult result = ReadDays(request);
    Progress progress(console_, !console_.out_is_terminal, result.calls.size());
    std::size_t done = 0;
    for (CallRecord& call : result.calls) {
      progress.Show(++done);
      if (!call.recording || !IsOfDay(call.recording->file)) continue;
      SharedCall shared;
      if (!Describe(std::move(call), shared)) {
        ++without;
      } else if (sharer_.outbox().HasShared(shared.day, shared.name)) {
        ++before;
      } else if (wrong.empty()) {
        wrong = sharer_.Share(std::move(shared));
      }
    }
    sharer_.WaitForHooks();
    progress.Clear();
    sharer_.TellFailedHooks();
    console_.err.Write(Decimal(sharer_.count()) + " calls shared, " + Decimal(before) +
                       " before, " + Decimal(without) +
                       " recordings without sound, time or group\n");
    return wrong;
  }

  [[nodiscard]] std::optional<DayFolder> DayBefore() const {
    const std::vector<fs::path> earlier = EarlierDays(*day_);
    if (earlier.empty()) return std::nullopt;
    auto found = OpenDayFolder(earlier.front());
    const bool next = found && found->date && day_->date &&
                      SecondsOf(*found->date) + kSecondsPerDay == SecondsOf(*day_->date);
    return next ? found : std::nullopt;
  }

  [[nodiscard]] bool IsOfDay(const fs::path& recording) const {
    return recording.parent_path().parent_path() == day_->path;
  }

  // False when nobody could tell what the recording is of.
  bool Describe(CallRecord call, SharedCall& shared) const {
    shared.day = day_->name;
    shared.file = call.recording->file;
    shared.name = Utf8Name(shared.file.filename());
    shared.seconds = call.recording->seconds;
    const auto said = ParseRecordingName(shared.name);
    if (said && day_->date) {
      shared.begin = BeginOfRecording(*day_->date, said->second_of_day, shared.seconds);
    } else {
      shared.begin = call.start.value_or(0);
    }
    shared.call = std::move(call);
    return shared.seconds > 0 && shared.begin != 0 && shared.call.gssi.has_value();
  }

  std::string Follow() {
    const auto clock = SystemClock();
    Follower follower(PathOfNarrow(options_.folder), sharer_);
    for (;;) {
      std::string wrong = follower.Look(SecondsOf(clock->Now()));
      if (!wrong.empty()) return wrong;
      WaitMs(kBetweenLooksMs);
    }
  }

  const ShareOptions& options_;
  Console& console_;
  CallSharer sharer_;
  std::optional<DayFolder> day_;
};

ExitCode RunShare(const Arguments& arguments, Console& console) {
  ShareOptions options;
  const std::string wrong = ParseShareOptions(arguments, options);
  if (!wrong.empty()) {
    return Fail(console, kShare, wrong + "\ncorvane-tools share --help tells more");
  }
  return ShareRun(options, console).Run();
}

}  // namespace

const Command kShareCommand = {"share", "recorded calls where other programs pick them up",
                               kShareHelp, RunShare};

}  // namespace corvane::tools
