// What goes wrong with recording: the status log says so, calls are followed on, and the next
// recording is good.
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>

#include "desktop/harness/busy_source.h"
#include "desktop/harness/small_disk.h"
#include "desktop/harness/sound_driver.h"
#include "desktop/harness/sound_source.h"
#include "desktop/recording_test.h"

namespace corvane::desktop {
namespace {

constexpr int kTakenSeconds = 120;

class RecordingFaults : public RecordingTest {
 protected:
  explicit RecordingFaults(const std::filesystem::path& standin_folder = {})
      : RecordingTest({}, standin_folder) {}

  [[nodiscard]] std::filesystem::path RecordFolder() {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Folder().Path())) {
      if (entry.path().filename() == "Record") return entry.path();
    }
    ADD_FAILURE() << "there is no Record folder";
    return {};
  }
  // Of recordings alone: a machine under load may cost the link an answer.
  [[nodiscard]] int Errors() {
    const auto log = Corvane().StatusLog();
    return CountContaining(log, " Error") + CountContaining(log, "Error saving");
  }
  void ExpectNextIsGood(int call_id) {
    const int errors = Errors();
    ExpectHeard(RecordCall(call_id, 9013, 3));
    EXPECT_EQ(Unnamed(), 0);
    EXPECT_EQ(Errors(), errors);
  }
  // Both are followed, each is reported once, and no sound is kept.
  void ExpectTwoCallsUnrecorded(int first_id) {
    const int before = CountContaining(Corvane().StatusLog(), " Error (record)");
    const int errors = Errors();
    for (int number = 0; number < 2; ++number) {
      const RecordedCall call = RecordCall(first_id + number, 9005 + 4 * number, 2);
      AwaitInCallLog("Call ID: " + std::to_string(call.id) + " - VC D-Released");
      Await("the file", [&] { return Recordings(EndingOf(call)).size() == 1; });
      EXPECT_LE(std::filesystem::file_size(Recordings(EndingOf(call)).front()), 44u);
    }
    EXPECT_EQ(CountContaining(Corvane().StatusLog(), " Error (record)"), before + 2);
    EXPECT_EQ(Errors(), errors + 2);
    EXPECT_EQ(Unnamed(), 0);
  }
};

// Takes the names that recordings of this call would get in the next two minutes.
int TakeNames(const std::filesystem::path& folder, const std::string& ending) {
  const auto now = std::chrono::system_clock::now();
  int taken = 0;
  for (int second = -1; second < kTakenSeconds; ++second) {
    const std::time_t time =
        std::chrono::system_clock::to_time_t(now + std::chrono::seconds(second));
    const std::tm local = *std::localtime(&time);
    std::array<char, 8> digits{};
    std::strftime(digits.data(), digits.size(), "%H%M%S", &local);
    std::ofstream(folder / (digits.data() + ending), std::ios::binary) << "taken";
    ++taken;
  }
  return taken;
}

TEST_F(RecordingFaults, ANameThatIsTakenIsLeftAlone) {
  BeginRecording();
  const int taken = TakeNames(RecordFolder(), "_31_9001.wav");
  (void)RecordCall(31, 9001, 2);
  AwaitInStatusLog("Error saving recording [58]");
  const auto files = Recordings("_31_9001.wav");
  EXPECT_EQ(files.size(), static_cast<std::size_t>(taken));
  for (const auto& file : files) EXPECT_EQ(ReadWholeFile(file), "taken") << file.filename();
  EXPECT_EQ(Unnamed(), 1);
  ExpectNextIsGood(32);
}

TEST_F(RecordingFaults, AFolderThatIsDeletedInMidCallIsMadeAgain) {
  BeginRecording();
  RecordedCall call = BeginRecordedCall(33, 9001);
  AwaitTicks(2);
  const std::filesystem::path folder = RecordFolder();
  std::filesystem::remove_all(folder);
  AwaitTicks(1);
  Do("release id=33");
  AwaitStopped(call);
  ExpectHeard(call);
  ExpectNextIsGood(34);
}

TEST_F(RecordingFaults, AFolderThatCannotBeMadeIsReported) {
  BeginRecording();
  RecordedCall call = BeginRecordedCall(35, 9001);
  AwaitTicks(2);
  const std::filesystem::path folder = RecordFolder();
  // A file takes its place; the program may make the folder anew in between.
  int moved = 0;
  Await("a file in the folder's place", [&] {
    std::error_code error;
    const std::string away = "Moved " + std::to_string(++moved);
    std::filesystem::rename(folder, folder.parent_path() / away, error);
    std::ofstream(folder, std::ios::binary) << "in the way";
    return std::filesystem::is_regular_file(folder);
  });
  AwaitInStatusLog("Error creating folder");
  Do("release id=35");
  AwaitStopped(call);
  AwaitInStatusLog(" Error (save)");
  AwaitInStatusLog("Error saving recording [");
  EXPECT_TRUE(Recordings("_35_9001.wav").empty());
  const RecordedCall lost = RecordCall(36, 9005, 1);
  EXPECT_TRUE(Recordings(EndingOf(lost)).empty());

  std::filesystem::remove(folder);
  Await("the folder", [&] { return std::filesystem::is_directory(folder); });
  ExpectNextIsGood(37);
}

TEST_F(RecordingFaults, WithoutASoundDeviceCallsAreFollowedOn) {
  {
    const NoSoundDriver silence;
    ASSERT_TRUE(silence.Works()) << "the sound driver cannot be taken away here";
    BeginRecording();
    (void)RecordCall(38, 9001, 2);
    const auto log = Corvane().StatusLog();
    EXPECT_EQ(CountContaining(log, " Error (record)"), 1);
    (void)RecordCall(39, 9005, 2);
    EXPECT_TRUE(Corvane().InCallLog("Call ID: 39 - VC D-Released"));
    EXPECT_EQ(CountContaining(Corvane().StatusLog(), " Error (record)"), 2);
    for (const auto& file : Recordings()) {
      EXPECT_LE(std::filesystem::file_size(file), 44u) << file.filename();
    }
    Close(Corvane().Window());
    ASSERT_EQ(Corvane().TheProcess().WaitForExit(kGenerousLimit_ms), 0u);
    Sdr().Kill();
  }
  BeginRecording();
  ExpectNextIsGood(40);
}

TEST_F(RecordingFaults, ADeviceThatOthersKeepBusyIsReportedAndCallsAreFollowedOn) {
  BeginRecording();
  ExpectHeard(RecordCall(61, 9001, 2));
  {
    BusySource others;
    ASSERT_TRUE(others.Works()) << "the sound source takes any number of recordings here";
    ExpectTwoCallsUnrecorded(62);
    ASSERT_TRUE(others.Release());
  }
  ExpectNextIsGood(64);
}

TEST_F(RecordingFaults, ADeviceThatCannotBeOpenedIsReportedAndCallsAreFollowedOn) {
  SoundSource source;
  BeginRecording();
  ASSERT_TRUE(source.Take()) << "the sound source cannot be taken away here";
  ExpectTwoCallsUnrecorded(41);
  ASSERT_TRUE(source.Bring());
  ExpectNextIsGood(43);
}

TEST_F(RecordingFaults, ADeviceThatIsTakenAwayInMidRecordingHoldsNothingUp) {
  SoundSource source;
  BeginRecording();
  RecordedCall call = BeginRecordedCall(44, 9001);
  AwaitTicks(3);
  ASSERT_TRUE(source.Take()) << "the sound source cannot be taken away here";
  Do("release id=44");
  AwaitStopped(call);
  AwaitInStatusLog(" Error (stop)");
  EXPECT_EQ(CountContaining(Corvane().StatusLog(), " Error (stop)"), 1);
  ExpectTwoCallsUnrecorded(45);
  ASSERT_TRUE(source.Bring());
  // The stand-in's tone went with its device; Corvane runs on.
  Sdr().Kill();
  StartSdr();
  AwaitScanning();
  ExpectNextIsGood(47);
  Close(Corvane().Window());
  EXPECT_EQ(Corvane().TheProcess().WaitForExit(kGenerousLimit_ms), 0u);
}

struct FolderElsewhere {
  ProgramFolder elsewhere;
};

// The disk comes before the program folder that lies on it, and after the stand-in's, whose log is
// to have room at all times.
class RecordingFullDisk : private FolderElsewhere, private SmallDisk, public RecordingFaults {
 protected:
  RecordingFullDisk() : RecordingFaults(elsewhere.Path()) {}

  using SmallDisk::Fill;
  using SmallDisk::Free;
};

TEST_F(RecordingFullDisk, IsReportedCallsAreFollowedOnAndTheNextRecordingIsGood) {
  BeginRecording();
  ExpectHeard(RecordCall(48, 9001, 2));
  Fill();
  for (const int call_id : {49, 50}) {
    (void)RecordCall(call_id, 9005, 2);
    Await("the reports", [&] {
      return CountContaining(Corvane().StatusLog(), "Error saving recording [") == call_id - 48;
    });
    EXPECT_EQ(CountContaining(Corvane().StatusLog(), " Error (save)"), call_id - 48);
  }
  EXPECT_EQ(Recordings("_9005.wav").size(), 0u);
  Free();
  ExpectNextIsGood(51);
}

TEST_F(RecordingFullDisk, BecomesFullInMidRecordingWhichIsReported) {
  BeginRecording();
  RecordedCall call = BeginRecordedCall(52, 9001);
  AwaitTicks(3);
  Fill();
  AwaitTicks(5);
  Do("release id=52");
  AwaitStopped(call);
  AwaitInStatusLog(" Error (save)");
  EXPECT_EQ(CountContaining(Corvane().StatusLog(), " Error (save)"), 1);
  EXPECT_EQ(Recordings(EndingOf(call)).size(), 1u) << "what there was room for is kept";
  EXPECT_EQ(Unnamed(), 0);
  Free();
  ExpectNextIsGood(53);
}

}  // namespace
}  // namespace corvane::desktop
