// Arms one failure, and looks at what is left after it.
#include "simulation/one_failure.h"

#include <algorithm>
#include <functional>

#include "base/date_time.h"
#include "base/number_text.h"
#include "simulation/player.h"

namespace corvane::sim {

namespace {

constexpr std::int64_t kRecoveryMs = 60'000;  // longer than the pause between resets by errors
// A reset takes this many of a script's calls at the most, which come every ten seconds.
constexpr int kMostCallsOfAReset = 3;

class Run {
 public:
  Run(const Script& script, const OneFailure& failure)
      : script_(script), failure_(failure), world_(script.options) {
    Arm();
  }

  FailureRun Go(const FailureRun* undisturbed);

 private:
  void Arm();
  // One more call; whether it is the one.
  bool Count() { return ++calls_ == failure_.call; }
  void Play();
  bool FollowsACall();
  void LookAtTheProgram();
  void LookAtTheEnd();
  void LookAtTheLosses(const FailureRun& undisturbed);
  void LookAtTheFiles();
  void Wrong(const std::string& what) {
    if (result_.violation.empty()) result_.violation = what;
  }
  [[nodiscard]] bool Failed() const { return failure_.call > 0 && calls_ >= failure_.call; }

  const Script& script_;
  const OneFailure failure_;
  World world_;
  std::int64_t calls_ = 0;
  int last_call_ = 16'000;
  int last_party_ = 5010;
  std::string failed_command_;
  FailureRun result_;
};

void Run::Arm() {
  SimWindowOps& windows = world_.desktop->windows();
  SimSocket& socket = world_.desktop->socket();
  switch (failure_.seam) {
    case Seam::kFiles:
      world_.files.ResetSteps();
      world_.files.FailAtStep(static_cast<int>(failure_.call), kPathAccess);
      return;
    case Seam::kConnect:
      return socket.SetOnConnect([this, &socket] {
        if (Count()) socket.RefuseNextConnect();
      });
    case Seam::kSend:
      return socket.SetOnSend([this, &socket] {
        if (!Count()) return;
        socket.RefuseNextSend();
        world_.Do("cut reset");
      });
    case Seam::kMessages:
      return windows.SetOnMessage([this, &windows](const SimWindowOps::Message&) {
        if (Count()) windows.FailNextSends(1);
      });
    case Seam::kWindows:
      return windows.SetMissing([this] { return Count(); });
    case Seam::kSound:
      return world_.mci.SetOnSend([this](const std::string& command) {
        if (!failed_command_.empty()) world_.mci.FailCommand(failed_command_, 0);
        failed_command_ = Count() ? command : "";
        if (!failed_command_.empty()) world_.mci.FailCommand(command, kMciHardware);
      });
    case Seam::kDates:
      return world_.clock.SetFormat(FixedGeneralDate, [this](std::string_view text) {
        return Count() ? std::nullopt : ParseFixedGeneralDate(text);
      });
  }
}

FailureRun Run::Go(const FailureRun* undisturbed) {
  if (world_.Load()) {
    world_.Start();
    Play();
    if (result_.violation.empty()) LookAtTheProgram();
    if (result_.violation.empty()) LookAtTheEnd();
  } else if (!Failed() && failure_.seam != Seam::kFiles) {
    Wrong("the program does not start");
  } else if (world_.prompts.boxes().size() != 1) {
    Wrong("a start that ends tells why in one box");
  }
  result_.calls = failure_.seam == Seam::kFiles ? world_.files.steps() : calls_;
  result_.boxes = static_cast<int>(world_.prompts.boxes().size());
  result_.followed = world_.CountCallLog("On carrier: ");
  for (const std::string& name : world_.files.List(World::kProgramFolder)) {
    if (name.ends_with(".wav") && !name.ends_with("newTmp.wav")) ++result_.recorded;
  }
  if (undisturbed != nullptr) LookAtTheLosses(*undisturbed);
  if (result_.violation.empty()) LookAtTheFiles();
  return result_;
}

void Run::Play() {
  const std::int64_t start = world_.loop.TickMs();
  for (const UserStep& step : script_.steps) {
    if (step.control == "Form1") break;  // closed below, after a last call
    world_.Run(std::max<std::int64_t>(0, start + step.ms - world_.loop.TickMs()));
    Carry(world_, step);
  }
  world_.Run(std::max<std::int64_t>(0, start + script_.run_ms - world_.loop.TickMs()));
  world_.Run(kRecoveryMs);
}

// A call of four seconds, on another number each time; whether it was followed.
bool Run::FollowsACall() {
  world_.Do("call id=" + Decimal(++last_call_) + " group=9990 party=" + Decimal(++last_party_) +
            " carrier=2610 slot=3 for=4");
  const bool followed = world_.RunUntil([this] { return world_.Following(); }, kFollowLimitMs);
  world_.Run(kWayBackMs);
  return followed;
}

void Run::LookAtTheProgram() {
  if (world_.Following()) return Wrong("a call is still followed");
  if (world_.view().call.RecordingActive()) return Wrong("still recording");
  if (!world_.app->flags().mblnSetupDone) return Wrong("not set up");
  if (!world_.Parked()) return Wrong("not on the control channel");
  const bool failed_before = Failed();
  bool followed = FollowsACall();
  // The failure was that call's.
  if (!followed && !failed_before && Failed()) {
    world_.Run(kRecoveryMs);
    followed = FollowsACall();
  }
  if (!followed) return Wrong("the next call is not followed");
  if (world_.Following() || !world_.Parked()) Wrong("the last call has no end");
}

void Run::LookAtTheEnd() {
  world_.user().CloseRequested();
  world_.Run(kWayBackMs);
  if (!world_.closed) Wrong("the window does not close");
  if (world_.prompts.boxes().size() > 1) Wrong("one failure shows more than one box");
}

void Run::LookAtTheLosses(const FailureRun& undisturbed) {
  const bool of_the_link = failure_.seam == Seam::kConnect || failure_.seam == Seam::kSend ||
                           failure_.seam == Seam::kMessages || failure_.seam == Seam::kWindows;
  const bool ended_early = !world_.closed;
  if (ended_early) return;
  const int most = of_the_link ? kMostCallsOfAReset : 0;
  if (undisturbed.followed - result_.followed > most) {
    Wrong("followed " + Decimal(result_.followed) + " calls instead of " +
          Decimal(undisturbed.followed));
  }
  const int recordings = of_the_link ? kMostCallsOfAReset : 1;
  if (undisturbed.recorded - result_.recorded > recordings) {
    Wrong("left " + Decimal(result_.recorded) + " recordings instead of " +
          Decimal(undisturbed.recorded));
  }
}

// Another program starts without a word on what this one left; what was given to it to read is
// still there, whatever could not be written.
void Run::LookAtTheFiles() {
  WorldOptions options;
  for (const std::string& name : world_.files.List(World::kProgramFolder)) {
    options.files.emplace_back("\\" + name, world_.FileText("\\" + name));
  }
  const App::View before = world_.view();
  World next(std::move(options));
  if (!next.Load()) Wrong("the next start ends with an error");
  for (const SimPrompts::Box& box : next.prompts.boxes()) {
    Wrong("the next start shows a box: " + box.text);
  }
  const App::View after = next.view();
  if (!world_.closed) {
    for (const auto& [name, content] : script_.options.files) {
      if (world_.FileText(name) != content) Wrong(name + " was changed by a start that ended");
    }
    return;
  }
  // A save that failed was told of, and has left the list as it was before.
  if (world_.prompts.boxes().empty()) {
    if (before.groups.size() != after.groups.size()) Wrong("groups were lost");
    if (before.subscribers.size() != after.subscribers.size()) Wrong("subscribers were lost");
  } else {
    for (const auto& [name, content] : script_.options.files) {
      if (!content.empty() && world_.FileText(name).empty()) Wrong(name + " is empty");
    }
  }
}

}  // namespace

const char* NameOf(Seam seam) {
  constexpr std::array kNames = {"files",   "connect", "send", "messages",
                                 "windows", "sound",   "dates"};
  return kNames[static_cast<std::size_t>(seam)];
}

FailureRun PlayWithOneFailure(const Script& script, const OneFailure& failure,
                              const FailureRun* undisturbed) {
  return Run(script, failure).Go(undisturbed);
}

}  // namespace corvane::sim
