// What the recording cases share: calls that are recorded by the real program from the real sound
// system, and what becomes of the files.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/call_test.h"
#include "desktop/harness/wav_sound.h"

namespace corvane::desktop {

// One recorded call as the stand-in saw it, in milliseconds of its log.
struct RecordedCall {
  int id = 0;
  int group = 0;
  std::int64_t start_ms = 0;  // its voice gain was set: the recording starts right after it
  std::int64_t stop_ms = 0;   // the parked gain was set: the recording stops right after it
  // What was seen from outside: Corvane showed the call, so the recording was under way (-1: that
  // was not looked for); the network was about to end it; Corvane showed it no more, so the
  // recording was over.
  std::int64_t followed_ms = -1;
  std::int64_t released_ms = 0;
  std::int64_t ended_ms = 0;

  [[nodiscard]] double Seconds() const { return static_cast<double>(stop_ms - start_ms) / 1000; }
};

// A recording starts this much later than it is asked for at the most: sound systems take their
// time. What each run measured is printed.
inline constexpr double kLongestStartDelay_s = 2.0;
// How far the sound system may be off, beside the start delay.
inline constexpr double kTolerance_s = 0.5;

class RecordingTest : public CallTest {
 public:
  struct Recorded {
    double seconds = 0;
    HeardTones heard;
  };

 protected:
  explicit RecordingTest(const std::filesystem::path& folder_name = {},
                         const std::filesystem::path& standin_folder = {})
      : CallTest(folder_name, standin_folder) {}

  // Begins with recording all calls.
  void BeginRecording(Settings settings = {});

  // What SDR# has played is no longer on its way through the sound system, which plays it out
  // whatever is tuned next.
  void AwaitSoundOver();
  // Announces a call when the one before it is no longer heard, and waits until its voice gain is
  // set. The call goes on.
  RecordedCall BeginRecordedCall(int call_id, int group);
  // The time of the stand-in's log.
  [[nodiscard]] std::int64_t SdrNow_ms();
  // So many ticks of the watchdog, 300 ms each.
  void AwaitTicks(int ticks);
  // Waits until Corvane has parked after the call, and notes when.
  void AwaitStopped(RecordedCall& call);
  // A whole call with so many ticks of voice.
  RecordedCall RecordCall(int call_id, int group, int ticks, bool disconnected = false);

  // Files in the Record folders whose name ends in `ending`.
  [[nodiscard]] std::vector<std::filesystem::path> Recordings(const std::string& ending = ".wav");
  // Files that did not get their final name; 0 or 1.
  [[nodiscard]] int Unnamed();
  // The one recording whose name ends in `ending`, read once it has its name.
  Wav ReadRecording(const std::string& ending);
  // "_207_9001.wav"
  [[nodiscard]] static std::string EndingOf(const RecordedCall& call,
                                            const std::string& suffix = {});
  // The recording's header is true, its name begins with a time, and no tone but its group's is in
  // it.
  Recorded ExpectGoodRecording(const RecordedCall& call, const std::string& suffix = {});
  // The same, and the call was heard in it.
  void ExpectHeard(const RecordedCall& call, const std::string& suffix = {});
  // When the gain was set for the first time after `after_ms`; -1: it was not.
  [[nodiscard]] std::int64_t GainSetAt(std::string_view gain, std::int64_t after_ms);
};

}  // namespace corvane::desktop
