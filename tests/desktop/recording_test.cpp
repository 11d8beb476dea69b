// Calls, waiting for their ends, and a look into the files.
#include "desktop/recording_test.h"

#include <algorithm>
#include <cctype>

#include "standin/receiver.h"

namespace corvane::desktop {

namespace {

constexpr int kVoiceCarrier = 2610;
constexpr std::size_t kTimeDigits = 6;
// The groups of these cases have tones that lie 100 Hz apart.
constexpr double kSameGroup_hz = 45;

}  // namespace

void RecordingTest::BeginRecording(Settings settings) {
  settings.record_mode_index = 1;
  Begin(settings);
}

std::int64_t RecordingTest::GainSetAt(std::string_view gain, std::int64_t after_ms) {
  const std::string command = SetCommand("AudioGain", gain);
  for (const LogLine& line : Sdr().Log()) {
    if (line.ms >= after_ms && line.kind == "command" &&
        line.detail.find(command) != std::string::npos) {
      return line.ms;
    }
  }
  return -1;
}

void RecordingTest::AwaitSoundOver() {
  std::int64_t off_ms = -1;
  for (const LogLine& line : Sdr().Log()) {
    if (line.kind == "tone") off_ms = line.detail == "off" ? line.ms : -1;
  }
  if (off_ms < 0) return;
  const auto over_ms = off_ms + static_cast<std::int64_t>(kTolerance_s * 1000);
  Await("the end of the sound", [&] { return SdrNow_ms() >= over_ms; });
}

RecordedCall RecordingTest::BeginRecordedCall(int call_id, int group) {
  AwaitSoundOver();
  RecordedCall call{call_id, group};
  const std::string id = std::to_string(call_id);
  Do("call id=" + id + " group=" + std::to_string(group) +
     " party=5010 carrier=" + std::to_string(kVoiceCarrier) + " slot=2");
  std::int64_t announced_ms = 0;
  for (const LogLine& line : Sdr().Log()) {
    if (line.kind == "control" && line.detail.starts_with("call id=" + id + " ")) {
      announced_ms = line.ms;
    }
  }
  Await("call " + id + " to be heard", [&] {
    call.start_ms = GainSetAt(kVoiceGain, announced_ms);
    return call.start_ms >= 0;
  });
  return call;
}

std::int64_t RecordingTest::SdrNow_ms() {
  Do("note \"now\"");
  std::int64_t now_ms = 0;
  for (const LogLine& line : Sdr().Log()) {
    if (line.kind == "note") now_ms = line.ms;
  }
  return now_ms;
}

void RecordingTest::AwaitTicks(int ticks) {
  const auto questions = [this] {
    return CountContaining(Sdr().Details("command"), "AudioIsMuted");
  };
  const int before = questions();
  Await("the watchdog", [&] { return questions() >= before + ticks; });
}

void RecordingTest::AwaitStopped(RecordedCall& call) {
  Await("the control channel after call " + std::to_string(call.id), [&] {
    call.stop_ms = GainSetAt(kParkedGain, call.start_ms);
    return call.stop_ms >= 0 && Corvane().Caption(ControlId::lblCallID).empty();
  });
  call.ended_ms = SdrNow_ms();
}

RecordedCall RecordingTest::RecordCall(int call_id, int group, int ticks, bool disconnected) {
  RecordedCall call = BeginRecordedCall(call_id, group);
  if (ticks > 0) {
    AwaitFollowing(call_id);
    call.followed_ms = SdrNow_ms();
    AwaitTicks(ticks);
  }
  call.released_ms = SdrNow_ms();
  Do((disconnected ? "disconnect id=" : "release id=") + std::to_string(call_id));
  AwaitStopped(call);
  return call;
}

std::vector<std::filesystem::path> RecordingTest::Recordings(const std::string& ending) {
  std::vector<std::filesystem::path> found = Folder().Find(ending);
  std::erase_if(found, [](const std::filesystem::path& file) {
    return file.parent_path().filename() != "Record";
  });
  return found;
}

int RecordingTest::Unnamed() {
  int unnamed = 0;
  for (const std::filesystem::path& file : Recordings()) {
    // Not every system keeps the case of the name that it was given.
    std::string name = file.filename().string();
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    unnamed += name == "newtmp.wav" ? 1 : 0;
  }
  return unnamed;
}

Wav RecordingTest::ReadRecording(const std::string& ending) {
  Await("the recording " + ending, [&] { return !Recordings(ending).empty(); });
  const auto files = Recordings(ending);
  EXPECT_EQ(files.size(), 1u) << ending;
  const std::string bytes = ReadWholeFile(files.front());
  const auto wav = ReadWav(bytes);
  EXPECT_TRUE(wav) << files.front().filename() << " is no WAV file; bytes: " << bytes.size();
  if (!wav) return {};
  EXPECT_EQ(HeaderFault(*wav, bytes.size()), "") << files.front().filename();
  const std::string name = files.front().filename().string();
  EXPECT_EQ(name.size(), kTimeDigits + ending.size()) << name;
  EXPECT_TRUE(std::all_of(name.begin(), name.begin() + kTimeDigits, [](unsigned char digit) {
    return std::isdigit(digit) != 0;
  })) << name;
  return *wav;
}

std::string RecordingTest::EndingOf(const RecordedCall& call, const std::string& suffix) {
  return "_" + std::to_string(call.id) + "_" + std::to_string(call.group) + suffix + ".wav";
}

RecordingTest::Recorded RecordingTest::ExpectGoodRecording(const RecordedCall& call,
                                                           const std::string& suffix) {
  const std::string ending = EndingOf(call, suffix);
  const Wav wav = ReadRecording(ending);
  const Recorded recorded{wav.Seconds(),
                          SortTones(Listen(wav), standin::ToneHz(call.group), kSameGroup_hz)};
  const HeardTones& heard = recorded.heard;
  EXPECT_EQ(heard.other_s, 0) << ending << ": " << heard.first_other_hz << " Hz instead of "
                              << standin::ToneHz(call.group);
  std::printf("%-16s asked for %.3f s, recorded %.3f s: tone %.2f s, silence %.2f s\n",
              ending.c_str(), call.Seconds(), recorded.seconds, heard.wanted_s, heard.silent_s);
  return recorded;
}

void RecordingTest::ExpectHeard(const RecordedCall& call, const std::string& suffix) {
  EXPECT_GT(ExpectGoodRecording(call, suffix).heard.wanted_s, 0) << EndingOf(call, suffix);
}

}  // namespace corvane::desktop
