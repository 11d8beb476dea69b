// Whatever goes wrong with SDR#, its windows, the connection, files and sound, one thing after the
// other at random: the next call that is set up is followed soon after all is well again, and the
// status log has one line of what a user notices, and one that it is over where there is one; of a
// closed port it has one for each attempt to connect.
//
// CORVANE_FAULT_SECONDS is for how long, CORVANE_SEED what the chance begins with, and
// CORVANE_RECOVERY_MS how soon; without it a loaded machine has time. CORVANE_FAULTS leaves only
// those whose name contains one of its parts, which commas separate.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <random>

#include "base/text.h"
#include "desktop/call_test.h"
#include "desktop/harness/held_file.h"
#include "desktop/harness/sound_source.h"

namespace corvane::desktop {
namespace {

using Clock = std::chrono::steady_clock;
using Lines = std::vector<std::string>;

constexpr int kUsualSeconds = 180;
constexpr int kOneAnAttempt = 100;  // to connect, for as long as the port is closed
constexpr int kUsualSeed = 20261122;
constexpr std::string_view kSilent = "SDR# does not answer - ";
constexpr std::string_view kAgain = "SDR# answers again - ";
constexpr std::string_view kGone = "SDR# is NOT running with the two required plug-ins";
constexpr std::string_view kOnlySilence = "recorded only silence - ";
constexpr std::string_view kRefused = "Is 'Net Remote' enabled in SDR#?";

int FromEnvironment(const char* name, int otherwise) {
  const char* text = std::getenv(name);
  return text != nullptr && std::atoi(text) > 0 ? std::atoi(text) : otherwise;
}

int MsSince(Clock::time_point begin) {
  return static_cast<int>(
      std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count());
}

class RandomFaultsTest : public CallTest {
 protected:
  struct Fault {
    std::string name;
    std::function<void()> go_wrong;
    std::function<void()> get_well;
    // Lines of the status log with this text that it leaves, and with the second that it is over.
    std::string_view line;
    int least = 0;
    int most = 0;
    std::string_view over;
    bool between_calls = false;  // begins while none is followed
  };
  struct Tally {
    int times = 0;
    int longest_ms = 0;
    int lines = 0;
    int reports = 0;
  };

  int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  // How long something stays wrong is chance: no state is waited for.
  void StaysSo(int ms) {
    (void)WaitFor([] { return false; }, ms);
  }
  [[nodiscard]] std::function<void()> Says(const std::string& command) {
    return [this, command] { Do(command); };
  }

  [[nodiscard]] std::vector<Fault> Faults() {
    const auto nothing = [] {};
    // By Corvane itself. What is on the air while the window is closed is written nowhere.
    const auto opened = [this] {
      Await("Network Info", [this] { return Visible(Sdr().InfoWindow()); });
    };
    const int hang_ms = Pick(1500, 6000);
    return {
        {"SDR# hangs for 1.5 to 6 s", Says("hang " + std::to_string(hang_ms)),
         [this, hang_ms] { StaysSo(hang_ms); }, kSilent, 1, 1, kAgain},
        {"SDR# is killed and soon started again in another way",
         [this] { Sdr().Kill(); },
         [this] { StartSdr(AnyOptions()); },
         kGone,
         0,
         1,
         {}},
        {"SDR# is killed and started again once it is missed",
         [this] {
           const Lines before = Corvane().StatusLog();
           Sdr().Kill();
           Await("its being missed",
                 [&, this] { return CountContaining(NewLines(before), kGone) > 0; });
         },
         [this] { StartSdr(AnyOptions()); },
         kGone,
         1,
         1,
         {}},
        {"another program hangs above SDR#",
         Says("stranger hang 6000"),
         Says("stranger none"),
         {},
         0,
         0,
         {}},
        {"another window lies over \"Demodulator\"",
         Says("cover demodulator unchecked"),
         Says("cover none"),
         {},
         0,
         0,
         {}},
        {"Network Info is closed", Says("window network-info close"), opened, {}, 0, 0, {}},
        {"Network Info is hidden", Says("window network-info hide"), opened, {}, 0, 0, {}},
        {"Network Info is minimised", Says("window network-info minimise"), nothing, {}, 0, 0, {}},
        {"Network Info is made narrow", Says("width 300"), Says("width 700"), {}, 0, 0, {}},
        {"SDR# is minimised",
         Says("window main minimise"),
         Says("window main restore"),
         {},
         0,
         0,
         {}},
        {"the connection ends", Says("cut"), nothing, kRefused, 0, 1, {}},
        {"the connection is reset", Says("cut reset"), nothing, kRefused, 0, 1, {}},
        {"the port is closed",
         [this] {
           Do("refuse on");
           Do("cut");
           StaysSo(1500);  // long enough for an attempt to connect
         },
         Says("refuse off"),
         kRefused,
         1,
         kOneAnAttempt,
         {}},
        {"replies are garbled", Says("reply garble count=3"), nothing, {}, 0, 0, {}},
        {"replies do not come", Says("reply drop count=3"), nothing, {}, 0, 0, {}},
        {"replies come 400 ms late",
         Says("reply delay 400 count=all"),
         Says("reply normal"),
         {},
         0,
         0,
         {}},
        {"commands take 80 ms", Says("handling 80"), Says("handling 0"), {}, 0, 0, {}},
        {"the sound device is taken away",
         [this] { EXPECT_TRUE(sound_.Take()) << "it cannot be taken away here"; },
         [this] { EXPECT_TRUE(sound_.Bring()); },
         " Error (stop)",
         0,
         1,
         {}},
        {"the sound device gives silence for a call",
         [this] {
           EXPECT_TRUE(sound_.Play()) << "nothing can be played here";
           HearCall();
           EXPECT_TRUE(sound_.Mute());
           HearCall();
         },
         [this] { EXPECT_TRUE(sound_.Unmute() && sound_.Hush()); },
         kOnlySilence,
         1,
         1,
         {},
         true},
        // SDR# plays through the same server, and may wait for it as well.
        {"the sound server does not answer for up to 2.5 s",
         [this] { EXPECT_TRUE(sound_.Freeze()) << "it cannot be stopped here"; },
         [this] { EXPECT_TRUE(sound_.Thaw()); }, kSilent, 0, 1, kAgain},
        {"the cc log is held by another program",
         [this] {
           Await("the cc log", [this] { return !Folder().Find("TETRA_cc.log").empty(); });
           held_.emplace(Folder().Find("TETRA_cc.log").front(), HeldFile::Sharing::kReadOnly);
         },
         [this] { held_.reset(); },
         {},
         0,
         0,
         {}},
    };
  }

  // A call that is recorded for a second.
  void HearCall() {
    SetUpUntilFollowed(++call_, 9003, 2612, 4);
    StaysSo(1000);
    Do("release id=" + std::to_string(call_));
    AwaitParked();
  }

  [[nodiscard]] std::vector<std::string> AnyOptions() {
    std::vector<std::string> options;
    for (const char* option : {"--network-plain", "--info-owned", "--info-toggles", "--info-wraps",
                               "--info-open", "--playing", "--demodulator-on", "--auto-off"}) {
      if (Pick(0, 2) == 0) options.emplace_back(option);
    }
    if (Pick(0, 2) == 0) options.insert(options.end(), {"--network-on", "--port", "3383"});
    return options;
  }

  // What came into the status log since: all of it when the log was cleared in between.
  [[nodiscard]] Lines NewLines(const Lines& before) {
    const Lines now = Corvane().StatusLog();
    const auto differing = std::ranges::mismatch(before, now);
    return differing.in1 == before.end() ? Lines(differing.in2, now.end()) : now;
  }

  void Suffer(const Fault& fault) {
    SCOPED_TRACE(fault.name);
    const Lines before = Corvane().StatusLog();
    const bool in_call = !fault.between_calls && Pick(0, 1) == 0;
    if (in_call) {
      SetUpUntilFollowed(++call_, 9001, 2611, 3);
    }
    fault.go_wrong();
    StaysSo(Pick(100, 2500));
    fault.get_well();
    const Clock::time_point well = Clock::now();
    if (in_call && Sdr().Running()) (void)Sdr().Do("release id=" + std::to_string(call_));
    SetUpUntilFollowed(++call_, 9002, 2610, 2);
    const int took_ms = MsSince(well);
    EXPECT_LE(took_ms, recovery_limit_ms_);
    Do("release id=" + std::to_string(call_));
    AwaitParked();

    Tally& tally = tallies_[fault.name];
    Lines fresh = NewLines(before);
    // A log that was cleared may begin with the very lines that it had.
    if (CountContaining(fresh, fault.line) < fault.least) fresh = Corvane().StatusLog();
    const int lines = fault.line.empty() ? 0 : CountContaining(fresh, fault.line);
    EXPECT_GE(lines, fault.least);
    EXPECT_LE(lines, fault.most);
    EXPECT_EQ(fault.over.empty() ? lines : CountContaining(fresh, fault.over), lines);
    EXPECT_EQ(fault.line == kSilent ? 0 : CountContaining(fresh, kSilent), 0);
    EXPECT_EQ(CountContaining(fresh, "Internal error"), 0);
    EXPECT_EQ(CountContaining(fresh, "Error saving"), 0);
    // A command that was not answered in time may be read together with the next, which is a fault
    // of syntax to SDR#: it is reported like any other.
    const int reports = CountContaining(fresh, "Unknown ERROR[RAW]");
    EXPECT_LE(reports, 1);
    ++tally.times;
    tally.longest_ms = std::max(tally.longest_ms, took_ms);
    tally.lines += lines;
    tally.reports += reports;
  }

  void PrintTable() const {
    std::puts(
        "| what goes wrong | times | followed again after, at most | lines | error reports |");
    std::puts("|---|---|---|---|---|");
    for (const auto& [name, tally] : tallies_) {
      std::printf("| %s | %d | %.1f s | %d | %d |\n", name.c_str(), tally.times,
                  tally.longest_ms / 1000.0, tally.lines, tally.reports);
    }
  }

  std::map<std::string, Tally> tallies_;
  int recovery_limit_ms_ = FromEnvironment("CORVANE_RECOVERY_MS", kGenerousLimit_ms);
  std::mt19937 random_{static_cast<unsigned>(FromEnvironment("CORVANE_SEED", kUsualSeed))};

 private:
  std::optional<HeldFile> held_;
  SoundSource sound_;
  int call_ = 100;
};

TEST_F(RandomFaultsTest, NothingKeepsItFromTheNextCall) {
  Settings settings;
  settings.record_mode_index = 1;  // every call
  settings.create_cc_vc_log = true;
  settings.timeout_s = 3;  // a call ends by it when its release was written nowhere
  Begin(settings);
  const auto end =
      Clock::now() + std::chrono::seconds(FromEnvironment("CORVANE_FAULT_SECONDS", kUsualSeconds));
  const char* chosen = std::getenv("CORVANE_FAULTS");
  const std::vector<std::string> only = Split(chosen == nullptr ? "" : chosen, ',');
  while (Clock::now() < end && !HasFailure()) {
    std::vector<Fault> faults = Faults();
    std::erase_if(faults, [&](const Fault& fault) {
      return std::ranges::none_of(only,
                                  [&](const auto& part) { return Contains(fault.name, part); });
    });
    ASSERT_FALSE(faults.empty());
    Suffer(faults[static_cast<std::size_t>(Pick(0, static_cast<int>(faults.size()) - 1))]);
  }
  PrintTable();
  EXPECT_FALSE(tallies_.empty());
}

}  // namespace
}  // namespace corvane::desktop
