// Weeks on the virtual clock.
#include "simulation/long_life.h"

#include <malloc.h>

#include "core/call_watcher.h"
#include "scenarios/world.h"

namespace corvane::sim {

namespace {

constexpr std::int64_t kHourMs = 3'600'000;
constexpr std::int64_t kUpWithinMs = 10'000;
// A call every ten seconds and a line every second, as a regional network has on a busy day.
constexpr const char* kTraffic =
    "traffic calls-per-hour=360 groups=9001-9012 parties=5010-5060 carriers=2610,2611,2612 "
    "length=3-15 individual=5 encrypted=5 queued=5 not-granted=5 missed=3 disconnected=3";
constexpr const char* kNoise = "noise per-hour=3600";

std::size_t HeapInUse() {
  const struct mallinfo2 heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

class Life : private CallWatcher {
 public:
  Life() : world_(Options()) {}

  std::string Begin() {
    Form1& form = world_.form();
    if (!world_.Load()) return "the program does not start";
    for (CheckBox* log : {&form.chkCreateEventLog, &form.chkCreateCcVcLog}) {
      if (!log->checked()) world_.user().Click(*log);
    }
    world_.user().Click(form.optRecordMode[1]);
    world_.Start();
    const auto ready = [this] {
      return world_.app->flags().mblnSetupDone && world_.view().scanner.ScanPrimed;
    };
    if (!world_.RunUntil(ready, kUpWithinMs)) return "the link did not come up";
    world_.Do(kTraffic);
    world_.Do(kNoise);
    world_.app->SetCallWatcher(this);
    return "";
  }

  void PassAnHour() {
    world_.Run(kHourMs);
    ++figures_.hours;
    ThrowAway();
  }

  [[nodiscard]] LifeFigures Figures() {
    figures_.recordings = world_.mci.saved();
    figures_.heap_bytes = HeapInUse();
    return figures_;
  }

  // "" when all is well.
  [[nodiscard]] std::string Wrong() {
    if (!world_.prompts.boxes().empty()) return "a box: " + world_.prompts.boxes().front().text;
    if (!world_.app->flags().mblnSetupDone) return "the link is not set up any more";
    if (world_.loop.spins_broken() != 0) return "something waits without letting time pass";
    return "";
  }

 private:
  static WorldOptions Options() {
    WorldOptions options;
    options.now = {2026, 12, 10, 6, 0, 0};  // a month and the year end on the way
    options.scenario = "base 800000000\n";  // where the presets are at first
    return options;
  }

  void SetupDecided(const SetupDecision& decision) override {
    ++figures_.setups;
    if (decision.outcome == SetupOutcome::kFollowed) ++figures_.followed;
  }
  void FollowedCallEnded(std::int16_t, CallEnd) override {}

  void ThrowAway() {
    world_.trace.clear();
    world_.trace.shrink_to_fit();
    world_.desktop->socket().ForgetSent();
    world_.mci.ForgetCommands();
    world_.desktop->model().log().Clear();
    world_.Do("clear-box");
    for (const std::string& name : world_.files.List(World::kProgramFolder)) {
      if (name.find('\\') == std::string::npos) continue;  // a list or the settings
      world_.files.Remove(std::string(World::kProgramFolder) + "\\" + name);
    }
  }

  World world_;
  LifeFigures figures_;
};

}  // namespace

std::string LiveFor(int hours, const std::function<void(const LifeFigures&)>& tell) {
  Life life;
  std::string wrong = life.Begin();
  while (wrong.empty() && hours-- > 0) {
    life.PassAnHour();
    wrong = life.Wrong();
    tell(life.Figures());
  }
  return wrong;
}

}  // namespace corvane::sim
