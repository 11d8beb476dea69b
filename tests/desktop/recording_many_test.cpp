// More than fifty recordings in one run: none lost, none mixed up, none under a wrong name, each
// with its own group's tone and as long as its call.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "desktop/recording_test.h"

namespace corvane::desktop {
namespace {

// "Pruefstand Koeln (ss)" with its umlauts: blanks and characters of the code page.
constexpr const wchar_t* kFolderName = L"Pr\u00FCfstand K\u00F6ln (\u00DF)";
constexpr const char* kLabel =
    "L\xF6schzug S\xFC"
    "d 1";

constexpr int kGroups = 13;
constexpr int kSingles = 45;
constexpr int kFewestPairs = 3;
constexpr int kMostPairs = 12;
constexpr int kLongTicks = 3;

int GroupOf(int number) {
  return 9001 + 4 * (number % kGroups);  // 100 Hz apart
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
    Do("release id=" + id);
    AwaitStopped(second);
    return {first, second};
  }
};

std::string TimeOf(const std::filesystem::path& file) {
  return file.filename().string().substr(0, 6);
}

TEST_F(ManyRecordings, HoldWhatWasHeardAndNothingElse) {
  Folder().Write("TETRA_GSSI.txt", "9001;262;42;" + std::string(kLabel) + ";0;True\r\n");
  BeginRecording();
  std::vector<RecordedCall> calls;
  std::vector<bool> is_long;
  for (int number = 0; number < kSingles; ++number) {
    // Every fifth is as short as a call can be.
    const int ticks = number % 5 == 4 ? 0 : kLongTicks + number % 3;
    calls.push_back(RecordCall(100 + number, GroupOf(number), ticks, number % 2 == 1));
    is_long.push_back(ticks > 0);
  }
  int in_one_second = 0;
  int pairs = 0;
  for (; pairs < kFewestPairs || (in_one_second == 0 && pairs < kMostPairs); ++pairs) {
    AwaitBeginOfASecond();
    const auto [first, second] = RecordTwoAtOnce(200 + 2 * pairs);
    calls.insert(calls.end(), {first, second});
    is_long.insert(is_long.end(), {false, false});
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
    if (is_long[index]) {
      // A loaded machine may leave gaps in the tone.
      EXPECT_GE(recorded.heard.wanted_s, calls[index].Seconds() / 2) << calls[index].id;
    }
    const auto files = Recordings(EndingOf(calls[index]));
    ASSERT_EQ(files.size(), 1u);
    // In the order of the calls, unless midnight came between them.
    const std::string time = TimeOf(files.front());
    EXPECT_TRUE(time >= time_before || time < "000500") << files.front().filename();
    time_before = time;
  }
  std::vector<double> sorted = surplus_s;
  std::sort(sorted.begin(), sorted.end());
  const double usual_s = sorted[sorted.size() / 2];
  std::printf("recorded minus asked for: least %.3f s, median %.3f s, most %.3f s\n",
              sorted.front(), usual_s, sorted.back());
  EXPECT_GE(usual_s, -kLongestStartDelay_s);
  for (std::size_t index = 0; index < calls.size(); ++index) {
    EXPECT_NEAR(surplus_s[index], usual_s, kTolerance_s) << "call " << calls[index].id;
  }

  EXPECT_EQ(Recordings().size(), calls.size()) << "a recording is left over or lost";
  EXPECT_EQ(Unnamed(), 0);
  EXPECT_EQ(CountContaining(Corvane().StatusLog(), "rror"), 0);
  EXPECT_TRUE(Corvane().InCallLog("Group: 9001 [" + std::string(kLabel) + "]"));
}

}  // namespace
}  // namespace corvane::desktop
