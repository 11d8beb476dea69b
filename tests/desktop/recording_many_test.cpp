// More than fifty recordings in one run: none lost, none mixed up, none under a wrong name, each
// with its own group's tone and as long as its call.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "base/number_text.h"
#include "desktop/recording_test.h"
#include "record/mci_win.h"

namespace corvane::desktop {
namespace {

// "Pruefstand Koeln (ss)" with its umlauts: blanks and characters of the code page.
constexpr const wchar_t* kFolderName = L"Pr\u00FCfstand K\u00F6ln (\u00DF)";
constexpr const char* kLabel =
    "L\xF6schzug S\xFC"
    "d 1";

constexpr int kGroupCount = 13;
constexpr int kSingles = 45;
constexpr int kFewestPairs = 3;
constexpr int kMostPairs = 40;
constexpr int kLongTicks = 3;
constexpr int kVeryLongTicks = 20;
constexpr int kDelaysMeasured = 7;
constexpr int kBlocksMeasured = 3;

int GroupOf(int number) {
  return 9001 + 4 * (number % kGroupCount);  // 100 Hz apart
}

// How much later than it is told to the system begins to record: by how much the recorded time is
// behind the time since "record", each time that a block of sound has been added.
double StartDelay_s(Mci& mci) {
  using Clock = std::chrono::steady_clock;
  const auto position_ms = [&mci] {
    return ParseShown<int>(mci.Send(MciCommand::Status("position"), 255).text).value_or(0);
  };
  for (const MciCommand& command :
       {MciCommand::CloseAll(), MciCommand::Open(), MciCommand::Set("time format ms"),
        MciCommand::Set("channels 1"), MciCommand::Set("samplespersec 22050"),
        MciCommand::Set("bitspersample 16"), MciCommand::Set("alignment 2")}) {
    mci.Send(command, 0);
  }
  EXPECT_EQ(mci.Send(MciCommand::Record(), 0).error, 0u);
  const Clock::time_point begin = Clock::now();
  double least_s = kLongestStartDelay_s;
  int before_ms = 0;
  for (int block = 0; block < kBlocksMeasured; ++block) {
    int now_ms = before_ms;
    const bool grown = WaitFor([&] { return (now_ms = position_ms()) > before_ms; },
                               static_cast<int>(kLongestStartDelay_s * 1000), 1);
    EXPECT_TRUE(grown) << "nothing is recorded";
    const std::chrono::duration<double> since = Clock::now() - begin;
    least_s = std::min(least_s, since.count() - now_ms / 1000.0);
    before_ms = now_ms;
  }
  mci.Send(MciCommand::Stop(), 0);
  mci.Send(MciCommand::CloseAll(), 0);
  return least_s;
}

class ManyRecordings : public RecordingTest {
 protected:
  ManyRecordings() : RecordingTest(kFolderName) {}

  // Names tell whole seconds: two that are begun now have the best chance to share one.
  void AwaitBeginOfASecond() {
    Await("the next second", [] {
      const auto since = std::chrono::system_clock::now().time_since_epoch();
      return since % std::chrono::seconds(1) < std::chrono::milliseconds(100);
    });
  }

  // The median of a few, after one that opens the device for the first time.
  double MeasureStartDelay_s() {
    MciWin mci;
    (void)StartDelay_s(mci);
    std::vector<double> delays_s;
    for (int i = 0; i < kDelaysMeasured; ++i) delays_s.push_back(StartDelay_s(mci));
    std::sort(delays_s.begin(), delays_s.end());
    const double usual_s = delays_s[delays_s.size() / 2];
    std::printf("start delay of the sound system: least %.3f s, median %.3f s, most %.3f s\n",
                delays_s.front(), usual_s, delays_s.back());
    return usual_s;
  }

  // Two calls of two groups; the second one waits on the air while the first one is followed.
  std::pair<RecordedCall, RecordedCall> RecordTwoAtOnce(int call_id) {
    RecordedCall first = BeginRecordedCall(call_id, GroupOf(call_id));
    RecordedCall second{call_id + 1, GroupOf(call_id + 1)};
    const std::string id = std::to_string(second.id);
    Do("release id=" + std::to_string(call_id));
    Do("call id=" + id + " group=" + std::to_string(second.group) +
       " party=5011 carrier=2611 slot=3 repeat=0.05");
    AwaitFollowing(second.id);
    first.stop_ms = GainSetAt(kParkedGain, first.start_ms);
    second.start_ms = GainSetAt(kVoiceGain, first.stop_ms);
    first.ended_ms = SdrNow_ms();
    Do("release id=" + id);
    AwaitStopped(second);
    return {first, second};
  }
};

// As long as its call, as far as it can be seen from outside how long that was; heard from its
// beginning to its end.
void ExpectAsLongAsItsCall(const RecordedCall& call, const RecordingTest::Recorded& recorded,
                           double delay_s) {
  const auto seconds = [](std::int64_t from_ms, std::int64_t to_ms) {
    return static_cast<double>(to_ms - from_ms) / 1000;
  };
  EXPECT_LE(recorded.seconds, seconds(call.start_ms, call.ended_ms) + kTolerance_s) << call.id;
  if (call.followed_ms < 0) return;
  const double lost_s = delay_s + kTolerance_s;
  EXPECT_GE(recorded.seconds, seconds(call.followed_ms, call.stop_ms) - lost_s) << call.id;
  EXPECT_GE(recorded.heard.wanted_span_s, seconds(call.followed_ms, call.released_ms) - lost_s)
      << call.id;
}

std::string TimeOf(const std::filesystem::path& file) {
  return file.filename().string().substr(0, 6);
}

TEST_F(ManyRecordings, HoldWhatWasHeardAndNothingElse) {
  Folder().Write("TETRA_GSSI.txt", "9001;262;42;" + std::string(kLabel) + ";0;True\r\n");
  const double delay_s = MeasureStartDelay_s();
  BeginRecording();
  std::vector<RecordedCall> calls;
  for (int number = 0; number < kSingles; ++number) {
    // Every fifth is as short as a call can be, every fifteenth lasts for seconds.
    int ticks = number % 5 == 4 ? 0 : kLongTicks + number % 3;
    if (number % 15 == 0) ticks = kVeryLongTicks;
    calls.push_back(RecordCall(100 + number, GroupOf(number), ticks, number % 2 == 1));
  }
  int in_one_second = 0;
  int pairs = 0;
  for (; pairs < kFewestPairs || (in_one_second == 0 && pairs < kMostPairs); ++pairs) {
    AwaitBeginOfASecond();
    const auto [first, second] = RecordTwoAtOnce(200 + 2 * pairs);
    calls.insert(calls.end(), {first, second});
    const auto name = [this](const RecordedCall& call) {
      const auto files = Recordings(EndingOf(call));
      return files.empty() ? std::string("none") : TimeOf(files.front());
    };
    in_one_second += name(first) == name(second) ? 1 : 0;
  }
  std::printf("pairs that began within one second: %d of %d\n", in_one_second, pairs);
  EXPECT_GT(in_one_second, 0);

  ASSERT_GE(calls.size(), 50u);
  std::vector<double> surplus_s;
  std::string time_before;
  for (std::size_t index = 0; index < calls.size(); ++index) {
    const Recorded recorded = ExpectGoodRecording(calls[index]);
    surplus_s.push_back(recorded.seconds - calls[index].Seconds());
    ExpectAsLongAsItsCall(calls[index], recorded, delay_s);
    const auto files = Recordings(EndingOf(calls[index]));
    ASSERT_EQ(files.size(), 1u);
    // In the order of the calls, unless midnight came between them.
    const std::string time = TimeOf(files.front());
    EXPECT_TRUE(time >= time_before || time < "000500") << files.front().filename();
    time_before = time;
  }
  std::sort(surplus_s.begin(), surplus_s.end());
  std::printf("recorded minus asked for: least %.3f s, median %.3f s, most %.3f s\n",
              surplus_s.front(), surplus_s[surplus_s.size() / 2], surplus_s.back());

  EXPECT_EQ(Recordings().size(), calls.size()) << "a recording is left over or lost";
  EXPECT_EQ(Unnamed(), 0);
  EXPECT_EQ(CountContaining(Corvane().StatusLog(), "rror"), 0);
  EXPECT_TRUE(Corvane().InCallLog("Group: 9001 [" + std::string(kLabel) + "]"));
}

}  // namespace
}  // namespace corvane::desktop
