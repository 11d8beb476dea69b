// corvane-tools share: from the command line to the exit code.
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "archive/day_reader.h"
#include "archive/instant.h"
#include "archive/recordings.h"
#include "archive/user_files.h"
#include "base/number_text.h"
#include "panel/presets.h"
#include "tools/command.h"
#include "tools/progress.h"
#include "tools/share/hooks.h"
#include "tools/share/live_day.h"
#include "tools/share/outbox.h"
#include "tools/share/share_options.h"
#include "tools/system.h"

namespace corvane::tools {

namespace {

namespace fs = std::filesystem;

constexpr const char* kShare = "share";
constexpr std::int64_t kSecondsPerDay = 86400;
// Names that the user gives meanwhile are taken over.
constexpr std::int64_t kListsAgeS = 60;

// What the program's folder adds to the facts of a call.
class Surroundings {
 public:
  explicit Surroundings(fs::path folder) : folder_(std::move(folder)) {}

  // What cannot be read is not there.
  void Load() {
    if (folder_.empty()) return;
    bool found = false;
    UserLists lists;
    if (LoadGroups(folder_.string(), lists.groups, found).empty() &&
        LoadSubscribers(folder_.string(), lists.subscribers, found).empty()) {
      lists_ = std::move(lists);
    }
    ReplayStart start;
    if (LoadSettings((folder_ / "corvane_simple.dat").string(), start).empty()) {
      presets_ = start.presets;
    }
    std::set<std::pair<std::int32_t, std::int32_t>> networks;
    for (const GssiRecord& group : lists_.groups) networks.insert({group.Mcc, group.Mnc});
    only_ = networks.size() == 1 ? std::optional(*networks.begin()) : std::nullopt;
  }

  [[nodiscard]] const UserLists& lists() const { return lists_; }

  void Complete(CallRecord& call) const {
    if (!call.mcc && !call.mnc && only_) {
      call.mcc = only_->first;
      call.mnc = only_->second;
    }
    if (!call.mcc || !call.mnc || !call.gssi) return;
    const std::string label = lists_.GroupLabel(*call.mcc, *call.mnc, *call.gssi);
    if (!label.empty()) call.label = label;
    for (Talker& talker : call.talkers) {
      const std::string name = lists_.SubscriberLabel(*call.mcc, *call.mnc, *call.gssi, talker.ssi);
      if (!name.empty()) talker.label = name;
    }
  }

  [[nodiscard]] std::optional<std::int64_t> FrequencyOf(const CallRecord& call) const {
    if (!call.carrier || !presets_) return std::nullopt;
    return CarrierFrequency(*presets_, *call.carrier);
  }

 private:
  fs::path folder_;
  UserLists lists_;
  std::optional<Presets> presets_;
  std::optional<std::pair<std::int32_t, std::int32_t>> only_;
};

class ShareRun {
 public:
  ShareRun(const ShareOptions& options, Console& console)
      : options_(options), console_(console), outbox_(options.outbox), hooks_(options.hook) {}

  ExitCode Run() {
    std::string wrong;
    if (options_.follow) {
      if (!fs::is_directory(options_.folder)) wrong = options_.folder + ": there is no such folder";
    } else {
      day_ = OpenDayFolder(options_.day);
      if (!day_) wrong = options_.day + ": there is no such folder";
    }
    if (wrong.empty()) wrong = outbox_.Open();
    if (wrong.empty()) wrong = options_.follow ? Follow() : ShareDay();
    if (wrong.empty() && hooks_.ever_failed()) wrong = "not every program of --exec succeeded";
    return wrong.empty() ? ExitCode::kDone : Fail(console_, kShare, wrong);
  }

 private:
  std::string ShareDay() {
    around_ = std::make_unique<Surroundings>(ProgramFolderOf(*day_));
    around_->Load();
    DayRequest request;
    request.days = {*day_};
    request.lists = &around_->lists();
    std::string wrong;
    std::size_t before = 0;
    std::size_t without = 0;
    DayResult result = ReadDays(request);
    Progress progress(console_, !console_.out_is_terminal, result.calls.size());
    std::size_t done = 0;
    for (CallRecord& call : result.calls) {
      progress.Show(++done);
      if (!call.recording) continue;
      SharedCall shared;
      if (!Describe(std::move(call), shared)) {
        ++without;
      } else if (outbox_.HasShared(shared.day, shared.name)) {
        ++before;
      } else if (wrong.empty()) {
        wrong = ShareOne(shared);
      }
    }
    hooks_.WaitForAll();
    progress.Clear();
    TellFailedHooks();
    console_.err.Write(Decimal(count_) + " calls shared, " + Decimal(before) + " before, " +
                       Decimal(without) + " recordings without sound, time or group\n");
    return wrong;
  }

  // False when nobody could tell what the recording is of.
  bool Describe(CallRecord call, SharedCall& shared) const {
    shared.day = day_->name;
    shared.file = call.recording->file;
    shared.name = shared.file.filename().string();
    shared.seconds = call.recording->seconds;
    const auto said = ParseRecordingName(shared.name);
    if (said && day_->date) {
      shared.begin = SecondsOf(*day_->date) + said->second_of_day;
    } else {
      shared.begin = call.start.value_or(0);
    }
    shared.call = std::move(call);
    return shared.seconds > 0 && shared.begin != 0 && shared.call.gssi.has_value();
  }

  std::string Follow() {
    around_ = std::make_unique<Surroundings>(options_.folder);
    const auto clock = SystemClock();
    std::map<std::int64_t, LiveDay> days;  // by their midnights
    std::int64_t loaded = 0;
    const auto known = [this](const std::string& day, const std::string& name) {
      return outbox_.HasShared(day, name);
    };
    for (;;) {
      const std::int64_t now = SecondsOf(clock->Now());
      const std::int64_t midnight = now - now % kSecondsPerDay;
      if (now - loaded >= kListsAgeS || now < loaded) {
        around_->Load();
        loaded = now;
      }
      const bool goes_on = outbox_.HasDay(FolderDate(TimeAt(midnight - kSecondsPerDay)));
      if (days.empty() && goes_on) Watch(days, midnight - kSecondsPerDay);
      Watch(days, midnight);
      while (days.size() > 2) days.erase(days.begin());
      std::vector<std::string> notices;
      for (auto& [day, live] : days) {
        for (const SharedCall& shared : live.Look(now, known, notices)) {
          const std::string wrong = ShareOne(shared);
          if (!wrong.empty()) return wrong;
        }
      }
      for (const std::string& notice : notices) console_.err.Write(notice + "\n");
      TellFailedHooks();
      if (!console_.out.Flush() || !console_.err.Flush()) return "the output was lost";
      WaitMs(kBetweenLooksMs);
    }
  }

  void Watch(std::map<std::int64_t, LiveDay>& days, std::int64_t midnight) const {
    const DateTime day = TimeAt(midnight);
    days.try_emplace(midnight, fs::path(options_.folder) / "Daily" / FolderDate(day), day);
  }

  std::string ShareOne(SharedCall shared) {
    around_->Complete(shared.call);
    SidecarFacts facts;
    facts.begin_utc = UtcOf(shared.begin);
    facts.frequency_hz = around_->FrequencyOf(shared.call);
    facts.system = options_.system;
    std::string wrong = outbox_.Share(shared, SidecarJson(shared, facts));
    if (!wrong.empty()) return wrong;
    ++count_;
    const std::string json = outbox_.SidecarOf(shared).string();
    hooks_.Start(outbox_.RecordingOf(shared).string(), json);
    console_.out.Write(json + "\n");
    return console_.out.Flush() ? "" : "the output could not be written";
  }

  void TellFailedHooks() {
    for (const std::string& line : hooks_.Failed()) console_.err.Write(line + "\n");
  }

  const ShareOptions& options_;
  Console& console_;
  Outbox outbox_;
  Hooks hooks_;
  std::optional<DayFolder> day_;
  std::unique_ptr<Surroundings> around_;
  std::size_t count_ = 0;
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
