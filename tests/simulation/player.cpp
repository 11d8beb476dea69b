// Carries out the steps of a plan, heals what is wrong at its end, and closes the program.
#include "simulation/player.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>

#include "base/number_text.h"
#include "base/text.h"
#include "simulation/digest.h"
#include "simulation/random_editor.h"
#include "simulation/random_user.h"
#include "simulation/watch.h"

namespace corvane::sim {

namespace {

constexpr std::int64_t kBringUpLimitMs = 10'000;
constexpr std::int64_t kHealMs = 45'000;  // longer than the pause between resets by errors
// What a disturbance of the link takes to be over, and what one by the user does.
constexpr std::int64_t kLinkSettlesMs = 45'000;
constexpr std::int64_t kUserSettlesMs = 20'000;
constexpr std::int64_t kFilesSettleMs = 2000;

WorldOptions OptionsFor(unsigned seed, Keep keep) {
  WorldOptions options;
  options.traced = keep == Keep::kTrace;
  options.sdr.seed = seed;
  options.sdr.network_plain = seed % 3 == 0;
  options.sdr.network_on = seed % 2 == 0;
  options.sdr.labels_after_start = seed % 5 == 0;
  options.now = {2026, 12, 31, 23, 57, 0};  // the year ends during the run
  options.scenario = "base 800000000\n";
  options.files = {{"\\TETRA_GSSI.txt", "9003;262;42;Locked;0;False\r\n"}};
  return options;
}

class Player {
 public:
  Player(const Plan& plan, Keep keep)
      : plan_(plan),
        keep_(keep),
        world_(OptionsFor(plan.seed, keep)),
        watch_(world_),
        editor_(world_, [this](int low, int high) { return Pick(low, high); }) {
    if (keep == Keep::kTrace) {
      world_.desktop->windows().SetOnMessage(
          [this](const SimWindowOps::Message& message) { AddToDigest(message); });
    }
  }

  Played Go();

 private:
  int Pick(int low, int high) {
    const auto range = static_cast<std::uint64_t>(high - low + 1);
    return low + static_cast<int>((static_cast<std::uint64_t>(random_()) * range) >> 32);
  }
  bool BringUp();
  void CarryOut(const Step& step);
  void Sdr(const std::string& command);
  void UserActs(const std::string& action);
  void FilesFail(const std::vector<std::string>& words);
  void SoundFails(const std::vector<std::string>& words);
  void After(const std::string& ms, std::function<void()> heal);
  void AfterEvent();
  void Heal();
  void EndWell();
  void Note(const std::string& what);
  void AddToDigest(const SimWindowOps::Message& message);
  void EndDigest();
  [[nodiscard]] bool Failed() const { return !watch_.violation().empty(); }

  const Plan& plan_;
  const Keep keep_;
  Digest digest_;
  std::mt19937 random_;
  World world_;
  Watch watch_;
  RandomEditor editor_;
  std::deque<std::string> in_waits_;
  std::set<std::string> faults_;
  bool acting_in_a_wait_ = false;
  bool healed_ = false;
  Played played_;
};

bool Player::BringUp() {
  if (!world_.Load()) return false;
  world_.Start();
  return world_.RunUntil(
      [this] { return world_.app->flags().mblnSetupDone && world_.view().scanner.ScanPrimed; },
      kBringUpLimitMs);
}

Played Player::Go() {
  if (!BringUp()) watch_.Violated("the link did not come up");
  const standin::ReceiverState& receiver = world_.desktop->model().receiver().state();
  if (!receiver.demodulator_on || receiver.auto_on) watch_.Violated("SDR# is not set up");
  world_.loop.SetAfterEvent([this] { AfterEvent(); });
  const std::int64_t begin = world_.loop.TickMs();
  const std::int64_t end = begin + std::int64_t{plan_.minutes} * 60'000;
  for (const Step& step : plan_.steps) {
    world_.Run(std::max<std::int64_t>(begin + step.ms - world_.loop.TickMs(), 0));
    if (Failed()) break;
    CarryOut(step);
  }
  if (!Failed()) world_.Run(std::max<std::int64_t>(end - world_.loop.TickMs(), 0));
  if (!Failed()) Heal();
  if (!Failed()) EndWell();
  played_.violation = watch_.violation();
  played_.at_ms = world_.loop.TickMs() - begin;
  played_.followed = watch_.followed();
  played_.expected = watch_.expected();
  played_.edits = editor_.edits();
  if (keep_ == Keep::kTrace) EndDigest();
  played_.trace = std::move(world_.trace);
  return std::move(played_);
}

void Player::CarryOut(const Step& step) {
  Note(step.what);
  const std::vector<std::string> words = Split(step.what, ' ');
  const std::string& kind = words[0];
  if (kind == "sdr") {
    Sdr(step.what.substr(4));
  } else if (kind == "wait") {
    in_waits_.push_back(step.what.substr(5));
  } else if (kind == "user" || kind == "editor") {
    UserActs(step.what);
  } else if (kind == "files") {
    FilesFail(words);
  } else if (kind == "sound") {
    SoundFails(words);
  } else if (kind == "clock" && words.size() == 2) {
    watch_.Disturbed(kFilesSettleMs);
    world_.clock.MoveSeconds(std::stoi(words[1]));
  } else {
    throw std::invalid_argument(step.what);
  }
  ++played_.kinds[KindOf(step.what)];
}

void Player::Sdr(const std::string& command) {
  const bool on_the_air = command.starts_with("call ") || command.starts_with("line ");
  if (!on_the_air) {
    for (const Lasting& lasting : kLasting) {
      if (command == lasting.fault) faults_.insert(lasting.fault);
      if (command == lasting.cure) faults_.erase(lasting.fault);
    }
    watch_.SetFaulty(!faults_.empty());
    watch_.Disturbed(kLinkSettlesMs);
  }
  // Some do not apply at the moment, as reviving an SDR# that runs; that is no fault.
  static_cast<void>(world_.desktop->model().Do(command));
  if (command.starts_with("call ")) watch_.CallBegins(command);
}

void Player::UserActs(const std::string& action) {
  watch_.Disturbed(kUserSettlesMs);
  const std::size_t blank = action.find(' ');
  random_.seed(static_cast<unsigned>(
      ParseDecimal<int>(std::string_view(action).substr(blank + 1)).value_or(1)));
  if (action.starts_with("editor")) {
    editor_.Use();
  } else {
    UseTheMainWindow(world_, [this](int low, int high) { return Pick(low, high); });
  }
}

void Player::After(const std::string& ms, std::function<void()> heal) {
  world_.loop.PostAfter(ParseDecimal<int>(ms).value_or(1), EventSource::kUser,
                        [this, heal = std::move(heal)] {
                          if (!healed_) heal();
                        });
}

void Player::FilesFail(const std::vector<std::string>& words) {
  SimFiles& files = world_.files;
  const std::string& what = words.at(1);
  const std::string& ms = words.back();
  watch_.Disturbed(ParseDecimal<int>(ms).value_or(0) + kFilesSettleMs);
  if (what == "fail") {
    const std::string part = words.at(2);
    files.FailPath(part, ParseDecimal<int>(words.at(3)).value_or(75));
    After(ms, [&files, part] { files.FailPath(part, kFileOk); });
  } else if (what == "full") {
    files.SetRoom(0);
    After(ms, [&files] { files.SetRoom(std::nullopt); });
  } else if (what == "scan") {
    const auto now_ms = [this] { return world_.loop.TickMs(); };
    files.SetScanner(now_ms, ParseDecimal<int>(words.at(2)).value_or(100), false);
    After(ms, [&files, now_ms] { files.SetScanner(now_ms, 0, false); });
  } else {
    throw std::invalid_argument("files " + what);
  }
}

void Player::SoundFails(const std::vector<std::string>& words) {
  SimMci& mci = world_.mci;
  const std::string& what = words.at(1);
  const std::string& ms = words.back();
  watch_.Disturbed(ParseDecimal<int>(ms).value_or(0) + kLinkSettlesMs);
  if (what == "fail") {
    const std::string command = words.at(2);
    mci.FailCommand(command, ParseDecimal<unsigned>(words.at(3)).value_or(262));
    After(ms, [&mci, command] { mci.FailCommand(command, 0); });
  } else if (what == "slow") {
    const std::string command = words.at(2);
    mci.SetSlow(command, ParseDecimal<int>(words.at(3)).value_or(100));
    After(ms, [&mci, command] { mci.SetSlow(command, 0); });
  } else if (what == "unplug") {
    mci.SetUnplugged(true);
    After(ms, [&mci] { mci.SetUnplugged(false); });
  } else {
    throw std::invalid_argument("sound " + what);
  }
}

// An event that ends deeper than the outermost one runs inside somebody's wait, and so does what
// the user does right after it.
void Player::AfterEvent() {
  if (const std::string wrong = editor_.Check(); !wrong.empty()) watch_.Violated(wrong);
  watch_.Look();
  if (healed_ || acting_in_a_wait_ || in_waits_.empty() || world_.loop.depth() == 0) return;
  acting_in_a_wait_ = true;
  world_.loop.Post(EventSource::kUser, [this, action = in_waits_.front()] {
    if (world_.loop.depth() > 1) ++played_.in_waits;
    Note("inside a wait: " + action);
    UserActs(action);
    acting_in_a_wait_ = false;
  });
  in_waits_.pop_front();
}

void Player::Heal() {
  watch_.Disturbed(kHealMs);
  world_.Run(100);  // what the user has begun
  healed_ = true;
  watch_.SetFaulty(false);
  world_.files.Restart();
  for (const char* command : {"open", "record", "stop", "save"}) {
    world_.mci.FailCommand(command, 0);
    world_.mci.SetSlow(command, 0);
  }
  world_.mci.SetUnplugged(false);
  standin::Model& model = world_.desktop->model();
  static_cast<void>(model.Do("revive"));
  for (const char* command :
       {"refuse off", "reply normal", "greeting normal", "handling 0", "source ok", "cover none",
        "panel tetra expand", "check demodulator on", "check auto off", "network 262 42 101"}) {
    world_.Do(command);
  }
  Form1& form = world_.form();
  if (form.chkCreateCallActivityCvsFile.checked()) {
    world_.user().Click(form.chkCreateCallActivityCvsFile);
  }
  if (form.lblGroupHold.fore_colour.get() == kHoldOrange) {
    world_.user().MouseUp(form.lblGroupHold, kLeftButton, -1);
  }
  Note("healed");
  world_.Run(kHealMs);
  if (world_.Following()) watch_.Violated("healed, but a call is still followed");
  if (world_.view().call.RecordingActive()) watch_.Violated("healed, but still recording");
  if (!world_.app->flags().mblnSetupDone) watch_.Violated("healed, but not set up");
  if (!world_.Parked()) watch_.Violated("healed, but not on the control channel");
}

void Player::EndWell() {
  watch_.Disturbed(kHealMs);
  const std::string last = "call id=16000 group=9990 party=5010 carrier=2610 slot=3 for=4";
  world_.Do(last);
  watch_.CallBegins(last);
  if (!world_.RunUntil([this] { return world_.Following(); }, kFollowLimitMs)) {
    watch_.Violated("healed, but the next call is not followed");
  }
  world_.Run(kWayBackMs);
  if (world_.Following() || !world_.Parked()) watch_.Violated("the last call has no end");
  if (!world_.prompts.boxes().empty()) {
    watch_.Violated("a box in the middle of a run: " + world_.prompts.boxes().front().text);
  }
  world_.user().CloseRequested();
  world_.Run(kWayBackMs);
  if (!world_.closed) watch_.Violated("the window does not close");
  watch_.LookAtFiles();
}

void Player::Note(const std::string& what) {
  if (keep_ == Keep::kTrace) world_.trace.push_back("          * " + what);
}

void Player::AddToDigest(const SimWindowOps::Message& message) {
  digest_.Add(world_.loop.TickMs());
  digest_.Add(static_cast<std::int64_t>(message.window));
  digest_.Add(static_cast<std::int64_t>(message.sent));
  digest_.Add(message.index);
  digest_.Add(message.text);
}

void Player::EndDigest() {
  for (const std::string& line : world_.trace) digest_.Add(line);
  for (const std::string& line : world_.form().lstCallLog.items()) digest_.Add(line);
  for (const std::string& line : world_.form().lstStatusLog.items()) digest_.Add(line);
  for (const std::string& name : world_.files.List(World::kProgramFolder)) {
    digest_.Add(name);
    digest_.Add(world_.FileText("\\" + name));
  }
  digest_.Add(played_.violation);
  for (const std::int64_t number : {world_.loop.dispatched(), std::int64_t{world_.files.steps()},
                                    std::int64_t{world_.files.questions()}, played_.at_ms,
                                    std::int64_t{played_.followed}, std::int64_t{played_.expected},
                                    std::int64_t{played_.in_waits}, std::int64_t{played_.edits}}) {
    digest_.Add(number);
  }
  played_.digest = digest_.value();
}

}  // namespace

Played Play(const Plan& plan, Keep keep) {
  return Player(plan, keep).Go();
}

}  // namespace corvane::sim
