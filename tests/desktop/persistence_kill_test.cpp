// The real program, killed again and again in the middle of its saves. Whenever it dies, every file
// loads afterwards - in the test's own process and at the next start of the program, which is the
// next round - and none is older than the last save that was completed.
//
// CORVANE_KILLS is how many kills each part makes, CORVANE_SEED what the chance begins with.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <random>
#include <stdexcept>
#include <thread>

#include "base/number_text.h"
#include "desktop/persistence_fixture.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

constexpr int kKillsOfAPart = 125;
constexpr int kEnoughForEveryKind = 50;  // fewer can all be of one kind by chance
constexpr std::size_t kProgramsAtOnce = 3;
constexpr int kLongestSaving_us = 60'000;   // of a program that saves one file after the other
constexpr int kLongestClosing_us = 40'000;  // of one that saves all at its end
constexpr int kListedRecords = 300;
constexpr std::size_t kLongestRecOnlyList = 150;
constexpr unsigned kKilled = 0xDEAD;

int NumberFrom(const char* variable, int otherwise) {
  const char* text = std::getenv(variable);
  return text == nullptr ? otherwise : ParseDecimal<int>(text).value();
}

// The one place where time itself is waited for: any moment will do, that is the point.
void AwaitMoment(int delay_us) {
  const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(delay_us);
  (void)WaitFor([moment] { return std::chrono::steady_clock::now() >= moment; }, kGenerousLimit_ms,
                1);
}

struct Tally {
  int starts = 0;
  int saving = 0;        // kills while a list or the settings were being saved
  int closing = 0;       // kills while all was being saved at the end
  int beside = 0;        // no save was under way, or the program ended by itself: not counted
  int half_written = 0;  // kills that left a file behind which had not got its name yet
  [[nodiscard]] int kills() const { return saving + closing; }
};

// One folder, and what its program is known to have saved.
class Victim {
 public:
  void Run(int kills, unsigned seed);
  [[nodiscard]] const Tally& tally() const { return tally_; }
  [[nodiscard]] const std::string& fault() const { return fault_; }

 private:
  void Round();
  void PrepareFiles();
  void StartAndCompare();
  void KillWhileSaving();
  void KillWhileClosing();
  void CheckFiles();
  bool SaveOnce();
  int Chance(int highest) { return std::uniform_int_distribution<>(0, highest)(random_); }
  void Require(bool holds, const std::string& what) const {
    if (!holds) throw std::runtime_error("start " + std::to_string(tally_.starts) + ": " + what);
  }

  ProgramCopy copy_;
  std::mt19937 random_;
  Tally tally_;
  std::string fault_;
  std::string stamp_;                // the label of every record of this round
  std::vector<std::string> listed_;  // the record-only list as last completely saved
  std::string adding_;               // what is being added to it; "" when nothing is
  int timeout_ = 5;                  // as last completely saved
  int setting_ = 5;                  // as being saved
  int next_gssi_ = 1;
};

void Victim::Run(int kills, unsigned seed) {
  random_.seed(seed);
  try {
    Settings settings;
    settings.record_mode_index = 2;  // the record-only list can be changed
    copy_.Folder().Write("corvane_simple.dat", SettingsFile(settings));
    copy_.Folder().Write("TETRA_rec_gssi.txt", "");
    while (tally_.kills() < kills) Round();
    PrepareFiles();
    StartAndCompare();  // after the last kill, too
    copy_.Kill();
  } catch (const std::exception& error) {
    fault_ = error.what();
  }
}

void Victim::Round() {
  PrepareFiles();
  StartAndCompare();
  if (Chance(3) == 0) {
    KillWhileClosing();
  } else {
    KillWhileSaving();
  }
  CheckFiles();
}

// Lists in the wrong order, so that saving them changes every line's place.
void Victim::PrepareFiles() {
  stamp_ = "round " + std::to_string(tally_.starts);
  std::string groups;
  std::string subscribers;
  for (int i = kListedRecords; i > 0; --i) {
    const std::string number = std::to_string(i);
    groups += number + ";262;1;" + stamp_ + ";0;True\r\n";
    subscribers += number + ";" + number + ";262;1;" + stamp_ + ";2026-11-15 14:23:05\r\n";
  }
  copy_.Folder().Write("TETRA_GSSI.txt", groups);
  copy_.Folder().Write("TETRA_SSI.txt", subscribers);
  if (listed_.size() > kLongestRecOnlyList) {
    listed_.clear();
    copy_.Folder().Write("TETRA_rec_gssi.txt", "");
  }
}

void Victim::StartAndCompare() {
  ++tally_.starts;
  copy_.Launch();
  const bool shown =
      WaitFor([this] { return copy_.Window() != 0 || copy_.Box() != 0 || !copy_.Running(); });
  Require(shown && copy_.Running(), "the program did not start");
  Require(copy_.Box() == 0, "a box: " + DescribeMessageBox(copy_.Box()));
  Require(ItemsOf(copy_.Control(lstRecOnlyGSSI)) == listed_, "another record-only list is shown");
  Require(TextOf(copy_.Control(txtTimeout)) == std::to_string(timeout_), "another time-out");
}

// False: the program is gone, and it is not known how far it got.
bool Victim::SaveOnce() {
  if (Chance(1) == 0) {
    adding_ = std::to_string(next_gssi_++);
    if (!EnterAtOnce(copy_.Control(txtRecOnlyGSSI), adding_)) return false;
    listed_.push_back(std::exchange(adding_, ""));
  } else {
    setting_ = timeout_ % 30 + 1;
    if (!LeaveAtOnce(copy_.Control(txtTimeout), std::to_string(setting_))) return false;
    timeout_ = setting_;
  }
  return true;
}

void Victim::KillWhileSaving() {
  std::atomic<bool> killed = false;
  const int delay_us = Chance(kLongestSaving_us);
  std::thread killer([&] {
    AwaitMoment(delay_us);
    copy_.TheProcess().Kill();
    killed = true;
  });
  while (!killed && SaveOnce()) {
  }
  killer.join();
  ++(adding_.empty() && setting_ == timeout_ ? tally_.beside : tally_.saving);
}

void Victim::KillWhileClosing() {
  Close(copy_.Window());
  AwaitMoment(Chance(kLongestClosing_us));
  copy_.TheProcess().Kill();
  ++(copy_.TheProcess().ExitCode() == kKilled ? tally_.closing : tally_.beside);
}

void Victim::CheckFiles() {
  const FolderContent content = ContentOf(copy_.Folder());
  const bool half = std::any_of(content.begin(), content.end(),
                                [](const auto& file) { return file.first.ends_with(".new"); });
  if (half) ++tally_.half_written;

  const ReadFiles read = ReadAsAStartDoes(copy_.Folder().Path());
  Require(read.boxes.empty(), "does not load: " + (read.boxes.empty() ? "" : read.boxes[0]));
  Require(read.groups.size() == kListedRecords, "groups were lost");
  Require(read.subscribers.size() == kListedRecords, "subscribers were lost");
  for (const GssiRecord& group : read.groups) {
    Require(group.Label.trimmed() == stamp_, "an older group list");
  }
  for (const SsiRecord& subscriber : read.subscribers) {
    Require(subscriber.Label.trimmed() == stamp_, "an older subscriber list");
  }
  if (!adding_.empty() && read.rec_only.size() == listed_.size() + 1) listed_.push_back(adding_);
  adding_.clear();
  Require(read.rec_only == listed_, "not the saved record-only list");
  if (read.settings.Timeout == setting_) timeout_ = setting_;
  setting_ = timeout_;
  Require(read.settings.Timeout == timeout_, "not the saved settings");
  Require(read.settings.ParkCarrier == Settings().park_carrier, "settings were lost");
}

class KillTest : public ::testing::TestWithParam<int> {};

TEST_P(KillTest, NothingSavedIsLostWheneverTheProgramIsKilled) {
  const int kills = NumberFrom("CORVANE_KILLS", kKillsOfAPart);
  const auto seed = static_cast<unsigned>(
      NumberFrom("CORVANE_SEED", static_cast<int>(std::random_device()() % 1'000'000)));
  std::cout << "seed " << seed << std::endl;
  const auto begin = std::chrono::steady_clock::now();

  std::vector<std::unique_ptr<Victim>> victims;
  std::vector<std::thread> workers;
  for (std::size_t i = 0; i < kProgramsAtOnce; ++i) victims.push_back(std::make_unique<Victim>());
  const int share = (kills + static_cast<int>(kProgramsAtOnce) - 1) / kProgramsAtOnce;
  for (std::size_t i = 0; i < victims.size(); ++i) {
    workers.emplace_back([&victims, i, share, own_seed = seed + static_cast<unsigned>(i)] {
      victims[i]->Run(share, own_seed);
    });
  }
  for (std::thread& worker : workers) worker.join();

  Tally sum;
  for (const auto& victim : victims) {
    EXPECT_EQ(victim->fault(), "");
    sum.starts += victim->tally().starts;
    sum.saving += victim->tally().saving;
    sum.closing += victim->tally().closing;
    sum.beside += victim->tally().beside;
    sum.half_written += victim->tally().half_written;
  }
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  std::cout << sum.kills() << " kills during saves (" << sum.saving << " of one file, "
            << sum.closing << " of all at the end), " << sum.half_written
            << " left an unfinished file behind, " << sum.beside << " beside a save, " << sum.starts
            << " starts, " << took.count() << " s" << std::endl;
  EXPECT_GE(sum.kills(), kills);
  if (kills < kEnoughForEveryKind) return;
  EXPECT_GT(sum.closing, 0);
  EXPECT_GT(sum.half_written, 0) << "no kill hit the middle of a save";
}

// Each part is a case of its own, and so is limited in time by itself.
INSTANTIATE_TEST_SUITE_P(Parts, KillTest, ::testing::Range(1, 9));

}  // namespace
}  // namespace corvane::desktop
