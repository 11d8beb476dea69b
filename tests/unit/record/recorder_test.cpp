// The recorder against a device that does what a test says, with files kept in memory; and against
// the simulated device and real files.
#include "record/recorder.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/sim_files.h"
#include "sim/sim_loop.h"
#include "sim/sim_mci.h"

namespace corvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class NullSink : public ControlSink {
 public:
  void Changed(const Control&, Field) override {}
  void ListChanged(ListBox&, ListChange, std::size_t) override {}
  void FocusWanted(const Control&) override {}
};

class MapFiles : public Files {
 public:
  [[nodiscard]] bool Exists(const std::string& path) override { return content.contains(path); }
  [[nodiscard]] bool IsDirectory(const std::string&) override { return false; }
  [[nodiscard]] FileError MakeDirectory(const std::string&) override { return kPathAccess; }
  [[nodiscard]] FileError Delete(const std::string& path) override {
    if (delete_error != kFileOk) return delete_error;
    return content.erase(path) == 1 ? kFileOk : kFileNotFound;
  }
  [[nodiscard]] FileError Rename(const std::string& from, const std::string& to) override {
    if (!content.contains(from)) return kFileNotFound;
    if (content.contains(to)) return kFileExists;
    content[to] = std::exchange(content[from], {});
    content.erase(from);
    return kFileOk;
  }
  [[nodiscard]] FileError MoveOver(const std::string&, const std::string&) override {
    return kPathAccess;
  }
  [[nodiscard]] FileError ReadAll(const std::string&, std::string&) override { return kPathAccess; }
  [[nodiscard]] FileError WriteAll(const std::string&, std::string_view) override {
    return kPathAccess;
  }
  [[nodiscard]] FileError Append(const std::string&, std::string_view) override {
    return kPathAccess;
  }
  [[nodiscard]] FileError Patch(const std::string& path, std::uint32_t offset,
                                std::string_view bytes) override {
    if (patch_error != kFileOk) return patch_error;
    std::string& file = content[path];
    if (file.size() < offset + bytes.size()) file.resize(offset + bytes.size());
    file.replace(offset, bytes.size(), bytes);
    return kFileOk;
  }

  std::map<std::string, std::string> content;
  FileError patch_error = kFileOk;
  FileError delete_error = kFileOk;
};

// Fails what `errors` names, answers what `replies` names, and lets a successful "save" write a
// file of 0xEE bytes.
class ScriptedMci : public Mci {
 public:
  explicit ScriptedMci(MapFiles& files) : files_(files) {}

  Reply Send(const std::string& command, unsigned reply_length) override {
    commands.push_back(command);
    lengths[command] = reply_length;
    if (on_send) on_send(command);
    if (const auto error = errors.find(command); error != errors.end()) return {error->second, ""};
    const std::string save = "save recsound \"";
    if (command.starts_with(save)) {
      files_.content[command.substr(save.size(), command.size() - save.size() - 1)] =
          std::string(50, '\xEE');
    }
    const auto reply = replies.find(command);
    return {0, reply == replies.end() ? std::string() : reply->second};
  }
  [[nodiscard]] std::string ErrorText(unsigned error) override {
    return "Failure " + std::to_string(error);
  }

  std::vector<std::string> commands;
  std::map<std::string, unsigned> lengths;
  std::map<std::string, unsigned> errors;
  std::map<std::string, std::string> replies = {
      {"status recsound channels", "1"},
      {"status recsound bitspersample", "16"},
      {"status recsound samplespersec", "22050"},
      {"status recsound bytespersec", "1"},
  };
  std::function<void(const std::string&)> on_send;

 private:
  MapFiles& files_;
};

class RecorderTest : public ::testing::Test {
 protected:
  void Start(const std::string& name = "143005_1234_5010") {
    EXPECT_EQ(recorder.StartRecording(name, "1", "16", "22050"), 0);
    recorder.RecordingActive = true;
  }
  void Stop() {
    recorder.StopRecording();
    recorder.RecordingActive = false;
  }
  // Header bytes 29 to 32, counted from 1.
  static std::string ByteRateField(const std::string& file) { return file.substr(28, 4); }
  [[nodiscard]] const std::vector<std::string>& StatusLog() const {
    return form.lstStatusLog.items();
  }

  const std::string kRecords = "C:\\My Corvane\\Daily\\20261115\\Record\\";
  const std::string kTemporary = kRecords + "newTmp.wav";
  const std::string kFinal = kRecords + "143005_1234_5010.wav";

  NullSink sink;
  Form1 form{sink};
  MapFiles files;
  ScriptedMci mci{files};
  std::string folder = "C:\\My Corvane\\Daily\\20261115";
  Recorder recorder{mci, files, form, [this] { return folder; }};
};

TEST_F(RecorderTest, StartSendsTheCommandsInOrder) {
  Start();
  EXPECT_THAT(
      mci.commands,
      ElementsAre("close all", "open new Type waveaudio Alias recsound",
                  "set recsound time format ms", "set recsound format tag pcm",
                  "set recsound channels 1", "set recsound samplespersec 22050",
                  "set recsound bitspersample 16", "set recsound alignment 2", "record recsound"));
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_EQ(recorder.RecordingBytesPerSecond, 44100);
}

TEST_F(RecorderTest, NameIsStoredBeforeTheFirstCommand) {
  std::string name_at_first_command;
  mci.on_send = [&](const std::string& command) {
    if (command == "close all") name_at_first_command = recorder.RecordingName;
  };
  Start("1_2_3");
  EXPECT_EQ(name_at_first_command, "1_2_3");
}

TEST_F(RecorderTest, StartLeavesTheActiveFlagToItsCaller) {
  recorder.StartRecording("n", "1", "16", "22050");
  EXPECT_FALSE(recorder.RecordingActive);
  recorder.RecordingActive = true;
  recorder.StopRecording();
  EXPECT_TRUE(recorder.RecordingActive);
}

struct AlignmentCase {
  const char* channels;
  const char* bits;
  const char* rate;
  const char* alignment;
  std::int32_t bytes_per_second;
};

class RecorderAlignment : public RecorderTest,
                          public ::testing::WithParamInterface<AlignmentCase> {};

TEST_P(RecorderAlignment, AlignmentAndByteRateComeFromTheArguments) {
  const AlignmentCase& given = GetParam();
  recorder.StartRecording("n", given.channels, given.bits, given.rate);
  EXPECT_THAT(mci.commands, Contains(std::string("set recsound alignment ") + given.alignment));
  EXPECT_EQ(recorder.RecordingBytesPerSecond, given.bytes_per_second);
}

INSTANTIATE_TEST_SUITE_P(
    Formats, RecorderAlignment,
    ::testing::Values(AlignmentCase{"1", "16", "22050", "2", 44100},
                      AlignmentCase{"2", "16", "44100", "4", 176400},
                      AlignmentCase{"1", "8", "8000", "1", 8000},
                      // Halves go to the even neighbour.
                      AlignmentCase{"1", "12", "1", "2", 2}, AlignmentCase{"1", "20", "1", "2", 2},
                      // What is no number, or too large, counts as 0.
                      AlignmentCase{"x", "16", "22050", "0", 0},
                      AlignmentCase{"1", "", "22050", "0", 0},
                      AlignmentCase{"2147483647", "2147483647", "2147483647", "0", 0}));

struct FailureCase {
  const char* command;
  const char* line;
};

class RecorderStartFailure : public RecorderTest,
                             public ::testing::WithParamInterface<FailureCase> {};

TEST_P(RecorderStartFailure, FailedStepAddsOneLineAndTheSequenceGoesOn) {
  mci.errors[GetParam().command] = 263;
  Start();
  EXPECT_THAT(StatusLog(), ElementsAre(GetParam().line));
  EXPECT_EQ(mci.commands.size(), 9u);
  EXPECT_EQ(mci.commands.back(), "record recsound");
}

INSTANTIATE_TEST_SUITE_P(
    EveryStep, RecorderStartFailure,
    ::testing::Values(
        FailureCase{"open new Type waveaudio Alias recsound", "Failure 263 Error"},
        FailureCase{"set recsound time format ms", "Failure 263 Error (time format)"},
        FailureCase{"set recsound format tag pcm", "Failure 263 Error (format tag)"},
        FailureCase{"set recsound channels 1", "Failure 263 Error (channels)"},
        FailureCase{"set recsound samplespersec 22050", "Failure 263 Error (samples/sec)"},
        FailureCase{"set recsound bitspersample 16", "Failure 263 Error (bits/sample)"},
        FailureCase{"set recsound alignment 2", "Failure 263 Error (block align)"},
        FailureCase{"record recsound", "Failure 263 Error (record)"}));

TEST_F(RecorderTest, TwoFailuresGiveTwoLines) {
  mci.errors = {{"open new Type waveaudio Alias recsound", 1}, {"record recsound", 2}};
  Start();
  EXPECT_THAT(StatusLog(), ElementsAre("Failure 1 Error", "Failure 2 Error (record)"));
}

TEST_F(RecorderTest, CloseAllMayFailUnnoticed) {
  mci.errors["close all"] = 5;
  Start();
  Stop();
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_TRUE(files.content.contains(kFinal));
}

TEST_F(RecorderTest, StopSendsTheCommandsInOrder) {
  Start();
  mci.commands.clear();
  Stop();
  EXPECT_THAT(mci.commands,
              ElementsAre("stop recsound", "save recsound \"" + kTemporary + "\"",
                          "status recsound channels", "status recsound bitspersample",
                          "status recsound samplespersec", "status recsound bytespersec",
                          "close recsound", "close all"));
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(RecorderTest, FailedStopSaveAndCloseAreReportedEach) {
  Start();
  mci.errors = {
      {"stop recsound", 1}, {"save recsound \"" + kTemporary + "\"", 2}, {"close recsound", 3}};
  Stop();
  EXPECT_THAT(StatusLog(), ElementsAre("Failure 1 Error (stop)", "Failure 2 Error (save)",
                                       "Failure 3 Error (close)"));
  EXPECT_EQ(mci.commands.back(), "close all");
}

TEST_F(RecorderTest, ReplyBuffersHaveTheirSizes) {
  Start();
  Stop();
  for (const auto& [command, length] : mci.lengths) {
    const unsigned expected = command == "close all"           ? 0u
                              : command.starts_with("status ") ? 255u
                                                               : 1024u;
    EXPECT_EQ(length, expected) << command;
  }
  EXPECT_EQ(mci.lengths.size(), 16u);
}

TEST_F(RecorderTest, FinishedRecordingHasItsNameAndItsByteRate) {
  Start();
  Stop();
  ASSERT_EQ(files.content.size(), 1u);
  ASSERT_TRUE(files.content.contains(kFinal));
  const std::string& file = files.content[kFinal];
  EXPECT_EQ(ByteRateField(file), std::string("\x44\xAC\x00\xEE", 4));
}

TEST_F(RecorderTest, OnlyThreeBytesOfTheSavedFileChange) {
  Start();
  Stop();
  std::string expected(50, '\xEE');
  expected[28] = '\x44';
  expected[29] = '\xAC';
  expected[30] = '\x00';
  EXPECT_EQ(files.content[kFinal], expected);
}

TEST_F(RecorderTest, StereoDoublesTheByteRate) {
  for (const char* reply : {"2", "", "stereo", " 1", "0"}) {
    SCOPED_TRACE(reply);
    files.content.clear();
    mci.replies["status recsound channels"] = reply;
    Start();
    Stop();
    EXPECT_EQ(recorder.RecordingBytesPerSecond, 88200);
    EXPECT_EQ(ByteRateField(files.content[kFinal]), std::string("\x88\x58\x01\xEE", 4));
  }
}

TEST_F(RecorderTest, ChannelsReplyThatBeginsWithOneIsMono) {
  mci.replies["status recsound channels"] = "1 (mono)";
  Start();
  Stop();
  EXPECT_EQ(recorder.RecordingBytesPerSecond, 44100);
}

TEST_F(RecorderTest, RepliesThatAreNoNumbersCountAsZero) {
  mci.replies["status recsound samplespersec"] = "fast";
  Start();
  Stop();
  EXPECT_EQ(ByteRateField(files.content[kFinal]), std::string("\x00\x00\x00\xEE", 4));
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(RecorderTest, ByteRateOfMoreThanSixDigitsIsTakenFromItsFirstDigits) {
  mci.replies["status recsound bitspersample"] = "8";
  mci.replies["status recsound samplespersec"] = std::to_string(0x1234567);
  Start();
  Stop();
  // "1234567": the last pair, the third and fourth digit, the first pair.
  EXPECT_EQ(ByteRateField(files.content[kFinal]), std::string("\x67\x34\x12\xEE", 4));
}

TEST_F(RecorderTest, ForcedEndWithTheDeleteBoxTickedLeavesNoFile) {
  form.chkDeleteForcedCallEndFile.value = 1;
  Start();
  recorder.ForcedEndSuffix = "_call_forced_end";
  Stop();
  EXPECT_THAT(files.content, IsEmpty());
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(RecorderTest, ForcedEndWithTheDeleteBoxUntickedIsMarkedInTheName) {
  Start();
  recorder.ForcedEndSuffix = "_call_forced_end";
  Stop();
  EXPECT_TRUE(files.content.contains(kRecords + "143005_1234_5010_call_forced_end.wav"));
  EXPECT_EQ(files.content.size(), 1u);
}

TEST_F(RecorderTest, DeleteBoxDoesNotConcernANormalEnd) {
  form.chkDeleteForcedCallEndFile.value = 1;
  Start();
  Stop();
  EXPECT_TRUE(files.content.contains(kFinal));
}

TEST_F(RecorderTest, SuffixStaysUntilSomebodyClearsIt) {
  Start();
  recorder.ForcedEndSuffix = "_call_forced_end";
  Stop();
  EXPECT_EQ(recorder.ForcedEndSuffix, "_call_forced_end");
  Start("2_2_2");
  EXPECT_EQ(recorder.ForcedEndSuffix, "_call_forced_end");
  recorder.ForcedEndSuffix = "";
  Stop();
  EXPECT_TRUE(files.content.contains(kRecords + "2_2_2.wav"));
}

TEST_F(RecorderTest, FailedSaveIsFinalisedAllTheSame) {
  mci.errors["save recsound \"" + kTemporary + "\""] = 286;
  Start();
  Stop();
  EXPECT_THAT(StatusLog(), ElementsAre("Failure 286 Error (save)"));
  ASSERT_TRUE(files.content.contains(kFinal));
  EXPECT_EQ(files.content[kFinal], std::string(28, '\0') + std::string("\x44\xAC\x00", 3));
}

TEST_F(RecorderTest, NameThatIsTakenLeavesTheTemporaryFileAndOneLine) {
  Start();
  Stop();
  const std::string first = files.content[kFinal];
  Start();
  Stop();
  EXPECT_THAT(StatusLog(), ElementsAre("Error saving recording [58]"));
  EXPECT_EQ(files.content[kFinal], first);
  EXPECT_TRUE(files.content.contains(kTemporary));
}

TEST_F(RecorderTest, LeftoverTemporaryFileIsOverwrittenByTheNextRecording) {
  files.content[kTemporary] = "left over";
  Start();
  Stop();
  EXPECT_FALSE(files.content.contains(kTemporary));
  EXPECT_EQ(files.content[kFinal].size(), 50u);
}

TEST_F(RecorderTest, HeaderThatCannotBeWrittenLeavesTheTemporaryFileAndOneLine) {
  files.patch_error = kPathNotFound;
  Start();
  Stop();
  EXPECT_THAT(StatusLog(), ElementsAre("Error saving recording [76]"));
  EXPECT_FALSE(files.content.contains(kFinal));
  EXPECT_TRUE(files.content.contains(kTemporary));
}

TEST_F(RecorderTest, FileThatCannotBeDeletedGivesOneLine) {
  files.delete_error = kPermissionDenied;
  form.chkDeleteForcedCallEndFile.value = 1;
  Start();
  recorder.ForcedEndSuffix = "_call_forced_end";
  Stop();
  EXPECT_THAT(StatusLog(), ElementsAre("Error deleting recording [70]"));
}

TEST_F(RecorderTest, WithoutADeviceEveryFailedCommandIsReportedAndTheStopStillFinalises) {
  mci.on_send = [&](const std::string& command) {
    if (command != "close all") mci.errors[command] = 263;
  };
  Start();
  Stop();
  EXPECT_EQ(StatusLog().size(), 11u);
  EXPECT_TRUE(files.content.contains(kFinal));
}

TEST_F(RecorderTest, FolderIsTakenOncePerStop) {
  Start();
  mci.on_send = [&](const std::string& command) {
    if (command.starts_with("save")) folder = "C:\\My Corvane\\Daily\\20261116";
  };
  Stop();
  EXPECT_TRUE(files.content.contains(kFinal));
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(RecorderTest, RecordingEndsInTheFolderOfTheDayInWhichItStops) {
  Start();
  folder = "C:\\My Corvane\\Daily\\20261116";
  Stop();
  EXPECT_TRUE(files.content.contains(folder + "\\Record\\143005_1234_5010.wav"));
}

class RecorderOnFilesTest : public ::testing::Test {
 protected:
  RecorderOnFilesTest() { files.PutDirectory(kRecords); }

  void Record(const std::string& name, const std::string& suffix = {}) {
    recorder.StartRecording(name, "1", "16", "22050");
    loop.Sleep(1500);
    recorder.ForcedEndSuffix = suffix;
    recorder.StopRecording();
  }
  [[nodiscard]] std::string Field(const std::string& file, std::size_t at, std::size_t size) {
    return files.Content(kRecords + "\\" + file).value_or("").substr(at, size);
  }
  [[nodiscard]] const std::vector<std::string>& StatusLog() const {
    return form.lstStatusLog.items();
  }

  const std::string kRecords = "C:\\Corvane\\Daily\\20261115\\Record";

  NullSink sink;
  Form1 form{sink};
  sim::SimLoop loop;
  sim::SimFiles files;
  sim::SimMci mci{loop, files};
  Recorder recorder{mci, files, form, [] { return "C:\\Corvane\\Daily\\20261115"; }};
};

TEST_F(RecorderOnFilesTest, CommandsComeInAnOrderThatTheDeviceAccepts) {
  Record("a");
  Record("b");
  EXPECT_EQ(mci.order_faults(), 0);
  EXPECT_EQ(mci.saved(), 2);
  EXPECT_FALSE(mci.open());
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_THAT(files.List(kRecords), ElementsAre("a.wav", "b.wav"));
}

TEST_F(RecorderOnFilesTest, WrongByteRateOfTheDeviceIsRepaired) {
  mci.SetWrittenByteRate(11025);
  Record("a");
  EXPECT_EQ(Field("a.wav", 0, 4), "RIFF");
  EXPECT_EQ(Field("a.wav", 22, 2), std::string("\x01\x00", 2));          // channels
  EXPECT_EQ(Field("a.wav", 24, 4), std::string("\x22\x56\x00\x00", 4));  // 22050 a second
  EXPECT_EQ(Field("a.wav", 28, 4), std::string("\x44\xAC\x00\x00", 4));  // 44100 bytes a second
  EXPECT_EQ(Field("a.wav", 32, 4), std::string("\x02\x00\x10\x00", 4));  // alignment, bits
}

TEST_F(RecorderOnFilesTest, ForcedEndIsNamedOrDeleted) {
  Record("a", "_call_forced_end");
  EXPECT_THAT(files.List(kRecords), ElementsAre("a_call_forced_end.wav"));
  form.chkDeleteForcedCallEndFile.value = 1;
  Record("b", "_call_forced_end");
  EXPECT_THAT(files.List(kRecords), ElementsAre("a_call_forced_end.wav"));
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(RecorderOnFilesTest, FailedSaveIsFinalisedAsAFileOfThreeBytesBehindTheGap) {
  mci.FailCommand("save", sim::kMciFileNotSaved);
  Record("a");
  EXPECT_THAT(StatusLog(), ElementsAre(mci.ErrorText(sim::kMciFileNotSaved) + " Error (save)"));
  EXPECT_EQ(files.Content(kRecords + "\\a.wav"),
            std::string(28, '\0') + std::string("\x44\xAC\x00", 3));
}

TEST_F(RecorderOnFilesTest, SameNameTwiceKeepsTheFirstAndLeavesTheSecondUnnamed) {
  Record("a");
  Record("a");
  EXPECT_THAT(StatusLog(), ElementsAre("Error saving recording [58]"));
  EXPECT_THAT(files.List(kRecords), ElementsAre("a.wav", "newTmp.wav"));
  Record("b");
  EXPECT_THAT(files.List(kRecords), ElementsAre("a.wav", "b.wav"));
}

TEST_F(RecorderOnFilesTest, DeviceLeftOpenByAFailedRunIsClosedFirst) {
  mci.FailCommand("close recsound", sim::kMciInvalidDeviceName);
  Record("a");
  EXPECT_EQ(StatusLog().size(), 1u);
  mci.FailCommand("close recsound", 0);
  Record("b");
  EXPECT_EQ(StatusLog().size(), 1u);
  EXPECT_THAT(files.List(kRecords), ElementsAre("a.wav", "b.wav"));
}

TEST_F(RecorderOnFilesTest, EveryFileOperationMayFailAndTheNextRecordingWorks) {
  for (int step = 1;; ++step) {
    SCOPED_TRACE(step);
    files.ResetSteps();
    files.FailAtStep(step, kDiskFull);
    Record("failing" + std::to_string(step));
    const bool reached = files.steps() >= step;
    EXPECT_EQ(!StatusLog().empty(), reached);
    files.FailAtStep(0, kFileOk);
    form.lstStatusLog.Clear();
    Record("next" + std::to_string(step));
    EXPECT_THAT(StatusLog(), IsEmpty());
    EXPECT_TRUE(files.Content(kRecords + "\\next" + std::to_string(step) + ".wav").has_value());
    if (!reached) {
      EXPECT_GT(step, 3);
      break;
    }
  }
}

}  // namespace
}  // namespace corvane
