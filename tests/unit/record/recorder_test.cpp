// The recorder on the simulated device, which knows in which order commands make sense, and on
// simulated files.
#include "record/recorder.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/no_sink.h"
#include "sim/sim_files.h"
#include "sim/sim_loop.h"
#include "sim/sim_mci.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Every byte of the header's rate field is to be seen changed or unchanged.
constexpr std::uint32_t kWrittenRate = 0xEEEEEEEE;

class RecorderTest : public ::testing::Test {
 protected:
  RecorderTest() {
    files.PutDirectory(folder + "\\Record");
    mci.SetWrittenByteRate(kWrittenRate);
  }
  void Start(const std::string& name = "143005_1234_5010") { recorder.StartRecording(name); }
  void Stop() {
    loop.Sleep(1500);
    recorder.StopRecording();
  }
  void Record(const std::string& name = "143005_1234_5010") {
    Start(name);
    Stop();
  }
  // Header bytes 29 to 32, counted from 1.
  [[nodiscard]] std::string ByteRateField(const std::string& path) const {
    return files.Content(path).value_or("").substr(28, 4);
  }
  [[nodiscard]] const std::vector<std::string>& StatusLog() const {
    return form.lstStatusLog.items();
  }
  [[nodiscard]] std::vector<std::string> Commands() const {
    std::vector<std::string> texts;
    for (const sim::SimMci::Command& command : mci.commands()) texts.push_back(command.text);
    return texts;
  }
  [[nodiscard]] std::vector<std::string> Recordings() const { return files.List(folder); }

  sim::NoSink sink;
  Form1 form{sink};
  sim::SimLoop loop;
  sim::SimFiles files;
  sim::SimMci mci{loop, files};
  std::string folder = "C:\\My Corvane\\Daily\\20261115";
  const std::string kTemporary = folder + "\\Record\\newTmp.wav";
  const std::string kFinal = folder + "\\Record\\143005_1234_5010.wav";
  Recorder recorder{mci, files, form, [this] { return folder; }};
};

TEST_F(RecorderTest, StartSendsTheCommandsInOrder) {
  Start();
  EXPECT_THAT(Commands(), ElementsAre("close all", "open new Type waveaudio Alias recsound",
                                      "set recsound time format ms", "set recsound format tag pcm",
                                      "set recsound channels 1", "set recsound samplespersec 22050",
                                      "set recsound bitspersample 16", "set recsound alignment 2",
                                      "record recsound"));
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_TRUE(mci.recording());
}

TEST_F(RecorderTest, StopSendsTheCommandsInOrder) {
  Start();
  mci.ForgetCommands();
  Stop();
  EXPECT_THAT(Commands(),
              ElementsAre("stop recsound", "save recsound \"" + kTemporary + "\"",
                          "status recsound channels", "status recsound bitspersample",
                          "status recsound samplespersec", "status recsound bytespersec",
                          "close recsound", "close all"));
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_EQ(mci.order_faults(), 0);
  EXPECT_FALSE(mci.open());
}

TEST_F(RecorderTest, NameIsStoredBeforeTheFirstCommand) {
  std::string name_at_first_command;
  mci.SetOnSend([&](const std::string& command) {
    if (command == "close all") name_at_first_command = recorder.RecordingName;
  });
  Start("1_2_3");
  EXPECT_EQ(name_at_first_command, "1_2_3");
}

// By the first words of a command, what stands behind the error's text in the status log.
const std::map<std::string_view, std::string>& Suffixes() {
  static const std::map<std::string_view, std::string> suffixes = {
      {"open", " Error"},
      {"set recsound time format", " Error (time format)"},
      {"set recsound format tag", " Error (format tag)"},
      {"set recsound channels", " Error (channels)"},
      {"set recsound samplespersec", " Error (samples/sec)"},
      {"set recsound bitspersample", " Error (bits/sample)"},
      {"set recsound alignment", " Error (block align)"},
      {"record", " Error (record)"},
      {"stop", " Error (stop)"},
      {"save", " Error (save)"},
      {"close recsound", " Error (close)"}};
  return suffixes;
}

// One line for each command that failed, in their order. A device refuses more than the test told
// it to: what is not open cannot be set.
class RecorderFailure : public RecorderTest, public ::testing::WithParamInterface<const char*> {
 protected:
  [[nodiscard]] std::vector<std::string> ExpectedLines() {
    std::vector<std::string> lines;
    for (const sim::SimMci::Command& command : mci.commands()) {
      const auto entry = std::ranges::find_if(
          Suffixes(), [&](const auto& suffix) { return command.text.starts_with(suffix.first); });
      if (command.error == 0 || entry == Suffixes().end()) continue;
      lines.push_back(mci.ErrorText(command.error) + entry->second);
    }
    return lines;
  }
};

TEST_P(RecorderFailure, EachFailedCommandAddsOneLineAndTheSequenceGoesOn) {
  constexpr unsigned kNumber = 999;
  mci.FailCommand(GetParam(), kNumber);
  Record();
  EXPECT_EQ(Commands().size(), 17U);
  EXPECT_EQ(Commands().back(), "close all");
  EXPECT_THAT(StatusLog(),
              ::testing::Contains("MCI error 999" + Suffixes().at(GetParam())).Times(1));
  EXPECT_EQ(StatusLog(), ExpectedLines());
  EXPECT_EQ(Recordings().size(), 1U) << "it gets its name all the same";
}

INSTANTIATE_TEST_SUITE_P(EveryStep, RecorderFailure,
                         ::testing::Values("open", "set recsound time format",
                                           "set recsound format tag", "set recsound channels",
                                           "set recsound samplespersec",
                                           "set recsound bitspersample", "set recsound alignment",
                                           "record", "stop", "save", "close recsound"));

TEST_F(RecorderTest, AFailureWithoutConsequencesIsOneLine) {
  mci.FailCommand("set recsound time format", 263);
  Record();
  EXPECT_THAT(StatusLog(), ElementsAre(mci.ErrorText(263) + " Error (time format)"));
}

TEST_F(RecorderTest, TwoFailuresGiveTwoLines) {
  mci.FailCommand("set recsound time format", 901);
  mci.FailCommand("close recsound", 902);
  Record();
  EXPECT_THAT(StatusLog(),
              ElementsAre("MCI error 901 Error (time format)", "MCI error 902 Error (close)"));
}

TEST_F(RecorderTest, CloseAllAndQuestionsMayFailUnnoticed) {
  mci.FailCommand("close all", 5);
  mci.FailCommand("status", 6);
  Record();
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_THAT(Recordings(), ElementsAre("Record\\143005_1234_5010.wav"));
}

TEST_F(RecorderTest, ReplyBuffersHaveTheirSizes) {
  Record();
  for (const sim::SimMci::Command& command : mci.commands()) {
    const unsigned expected = command.text == "close all"           ? 0U
                              : command.text.starts_with("status ") ? 255U
                                                                    : 1024U;
    EXPECT_EQ(command.reply_length, expected) << command.text;
  }
}

TEST_F(RecorderTest, FinishedRecordingHasItsNameAndItsByteRate) {
  Record();
  EXPECT_THAT(Recordings(), ElementsAre("Record\\143005_1234_5010.wav"));
  EXPECT_EQ(ByteRateField(kFinal), std::string("\x44\xAC\x00\xEE", 4));
}

TEST_F(RecorderTest, OnlyThreeBytesOfTheSavedFileChange) {
  std::string saved;
  mci.SetOnSend([&](const std::string& command) {
    if (command.starts_with("status") && saved.empty()) saved = files.Content(kTemporary).value();
  });
  Record();
  saved.replace(28, 3, std::string("\x44\xAC\x00", 3));
  EXPECT_EQ(files.Content(kFinal), saved);
}

TEST_F(RecorderTest, StereoDoublesTheByteRate) {
  for (const char* reply : {"2", "", "stereo", " 1", "0"}) {
    SCOPED_TRACE(reply);
    files.Remove(kFinal);
    mci.SetStatus("channels", reply);
    Record();
    EXPECT_EQ(ByteRateField(kFinal), std::string("\x88\x58\x01\xEE", 4));
  }
}

TEST_F(RecorderTest, ChannelsReplyThatBeginsWithOneIsMono) {
  mci.SetStatus("channels", "1 (mono)");
  Record();
  EXPECT_EQ(ByteRateField(kFinal), std::string("\x44\xAC\x00\xEE", 4));
}

TEST_F(RecorderTest, RepliesThatAreNoNumbersCountAsZero) {
  mci.SetStatus("samplespersec", "fast");
  Record();
  EXPECT_EQ(ByteRateField(kFinal), std::string("\x00\x00\x00\xEE", 4));
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(RecorderTest, HalvesOfAByteRateGoToTheEvenNeighbour) {
  mci.SetStatus("bitspersample", "4");
  for (const auto& [rate, byte] : std::map<std::string, char>{{"5", 2}, {"7", 4}, {"3", 2}}) {
    SCOPED_TRACE(rate);
    files.Remove(kFinal);
    mci.SetStatus("samplespersec", rate);
    Record();
    EXPECT_EQ(ByteRateField(kFinal)[0], byte);
  }
}

TEST_F(RecorderTest, AByteRateThatDoesNotFitCountsAsZero) {
  mci.SetStatus("bitspersample", "2147483647");
  for (const char* rate : {"2147483647", "-2147483647"}) {
    mci.SetStatus("samplespersec", rate);
    Record();
    EXPECT_EQ(ByteRateField(kFinal), std::string("\x00\x00\x00\xEE", 4)) << rate;
  }
}

TEST_F(RecorderTest, ByteRateOfMoreThanSixDigitsIsTakenFromItsFirstDigits) {
  mci.SetStatus("bitspersample", "8");
  const std::map<std::int32_t, std::string> fields = {
      // The last pair of digits, the third and fourth, the first pair.
      {0x1234567, std::string("\x67\x34\x12\xEE", 4)},
      {0x12345678, std::string("\x78\x34\x12\xEE", 4)},
      {-2, std::string("\xFE\xFF\xFF\xEE", 4)},
      {0xFFFFFF, std::string("\xFF\xFF\xFF\xEE", 4)},
      {0x000123, std::string("\x23\x01\x00\xEE", 4)}};
  for (const auto& [rate, field] : fields) {
    SCOPED_TRACE(rate);
    files.Remove(kFinal);
    mci.SetStatus("samplespersec", std::to_string(rate));
    Record();
    EXPECT_EQ(ByteRateField(kFinal), field);
  }
}

TEST_F(RecorderTest, ForcedEndWithTheDeleteBoxTickedLeavesNoFile) {
  form.chkDeleteForcedCallEndFile.value = 1;
  Start();
  recorder.ForcedEndSuffix = "_call_forced_end";
  Stop();
  EXPECT_THAT(Recordings(), IsEmpty());
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(RecorderTest, ForcedEndWithTheDeleteBoxUntickedIsMarkedInTheName) {
  Start();
  recorder.ForcedEndSuffix = "_call_forced_end";
  Stop();
  EXPECT_THAT(Recordings(), ElementsAre("Record\\143005_1234_5010_call_forced_end.wav"));
}

TEST_F(RecorderTest, DeleteBoxDoesNotConcernANormalEnd) {
  form.chkDeleteForcedCallEndFile.value = 1;
  Record();
  EXPECT_THAT(Recordings(), ElementsAre("Record\\143005_1234_5010.wav"));
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
  EXPECT_TRUE(files.Content(folder + "\\Record\\2_2_2.wav").has_value());
}

TEST_F(RecorderTest, FailedSaveIsFinalisedAsAFileOfThreeBytesBehindTheGap) {
  mci.FailCommand("save", sim::kMciFileNotSaved);
  Record();
  EXPECT_THAT(StatusLog(), ElementsAre(mci.ErrorText(sim::kMciFileNotSaved) + " Error (save)"));
  EXPECT_EQ(files.Content(kFinal), std::string(28, '\0') + std::string("\x44\xAC\x00", 3));
}

TEST_F(RecorderTest, NameThatIsTakenKeepsTheFirstAndLeavesTheSecondUnnamed) {
  Record();
  const auto first = files.Content(kFinal);
  Start();
  loop.Sleep(20);
  recorder.StopRecording();
  EXPECT_THAT(StatusLog(), ElementsAre("Error saving recording [58]"));
  EXPECT_EQ(files.Content(kFinal), first);
  EXPECT_THAT(Recordings(), ElementsAre("Record\\143005_1234_5010.wav", "Record\\newTmp.wav"));
}

TEST_F(RecorderTest, LeftoverTemporaryFileIsOverwrittenByTheNextRecording) {
  files.Put(kTemporary, "left over");
  Record();
  EXPECT_THAT(Recordings(), ElementsAre("Record\\143005_1234_5010.wav"));
  EXPECT_TRUE(files.Content(kFinal).value().starts_with("RIFF"));
}

TEST_F(RecorderTest, HeaderThatCannotBeWrittenLeavesTheTemporaryFileAndOneLine) {
  Start();
  mci.SetOnSend([&](const std::string& command) {
    if (command == "close recsound") files.FailPath("newTmp.wav", kPathNotFound);
  });
  Stop();
  EXPECT_THAT(StatusLog(), ElementsAre("Error saving recording [76]"));
  EXPECT_THAT(Recordings(), ElementsAre("Record\\newTmp.wav"));
}

TEST_F(RecorderTest, FileThatCannotBeDeletedGivesOneLine) {
  form.chkDeleteForcedCallEndFile.value = 1;
  Start();
  recorder.ForcedEndSuffix = "_call_forced_end";
  mci.SetOnSend([&](const std::string& command) {
    if (command == "close recsound") files.SetLocked(kTemporary, true);
  });
  Stop();
  EXPECT_THAT(StatusLog(), ElementsAre("Error deleting recording [70]"));
}

TEST_F(RecorderTest, WithoutADeviceEveryFailedCommandIsReportedAndTheStopStillFinalises) {
  mci.FailCommand("open", sim::kMciFormatUnsuitable);
  Record();
  EXPECT_EQ(StatusLog().size(), 11U);
  EXPECT_THAT(Recordings(), ElementsAre("Record\\143005_1234_5010.wav"));
}

TEST_F(RecorderTest, FolderIsTakenOncePerStop) {
  Start();
  mci.SetOnSend([&](const std::string& command) {
    if (command.starts_with("save")) folder = "C:\\My Corvane\\Daily\\20261116";
  });
  Stop();
  EXPECT_TRUE(files.Content(kFinal).has_value());
  EXPECT_THAT(StatusLog(), IsEmpty());
}

TEST_F(RecorderTest, RecordingEndsInTheFolderOfTheDayInWhichItStops) {
  Start();
  folder = "C:\\My Corvane\\Daily\\20261116";
  files.PutDirectory(folder + "\\Record");
  Stop();
  EXPECT_TRUE(files.Content(folder + "\\Record\\143005_1234_5010.wav").has_value());
}

TEST_F(RecorderTest, WrongByteRateOfTheDeviceIsRepaired) {
  mci.SetWrittenByteRate(11025);
  Record();
  const std::string wav = files.Content(kFinal).value_or("");
  EXPECT_EQ(wav.substr(0, 4), "RIFF");
  EXPECT_EQ(wav.substr(22, 2), std::string("\x01\x00", 2));          // channels
  EXPECT_EQ(wav.substr(24, 4), std::string("\x22\x56\x00\x00", 4));  // 22050 a second
  EXPECT_EQ(wav.substr(28, 4), std::string("\x44\xAC\x00\x00", 4));  // 44100 bytes a second
  EXPECT_EQ(wav.substr(32, 4), std::string("\x02\x00\x10\x00", 4));  // alignment, bits
}

TEST_F(RecorderTest, DeviceLeftOpenByAFailedRunIsClosedFirst) {
  mci.FailCommand("close recsound", sim::kMciInvalidDeviceName);
  mci.FailCommand("close all", sim::kMciInvalidDeviceName);
  Record("a");
  EXPECT_EQ(StatusLog().size(), 1U);
  EXPECT_TRUE(mci.open());
  mci.FailCommand("close recsound", 0);
  mci.FailCommand("close all", 0);
  Record("b");
  EXPECT_EQ(StatusLog().size(), 1U);
  EXPECT_THAT(Recordings(), ElementsAre("Record\\a.wav", "Record\\b.wav"));
}

TEST_F(RecorderTest, EveryFileOperationMayFailAndTheNextRecordingWorks) {
  for (int step = 1;; ++step) {
    SCOPED_TRACE(step);
    files.ResetSteps();
    files.FailAtStep(step, kDiskFull);
    Record("failing" + std::to_string(step));
    const bool reached = files.steps() >= step;
    // Save, patch, rename. What follows looks for silence in a recording that has its name.
    constexpr int kStepsToItsName = 6;
    EXPECT_EQ(!StatusLog().empty(), reached && step <= kStepsToItsName);
    files.FailAtStep(0, kFileOk);
    form.lstStatusLog.Clear();
    Record("next" + std::to_string(step));
    EXPECT_THAT(StatusLog(), IsEmpty());
    EXPECT_TRUE(
        files.Content(folder + "\\Record\\next" + std::to_string(step) + ".wav").has_value());
    if (!reached) {
      EXPECT_GT(step, 3);
      break;
    }
  }
}

TEST_F(RecorderTest, ADeviceThatIsSlowToBeginKeepsNobodyWaiting) {
  mci.SetSlow("record", 6000);
  const std::int64_t begin_ms = loop.TickMs();
  Start();
  EXPECT_LE(loop.TickMs() - begin_ms, Mci::kMoment_ms);
  EXPECT_FALSE(mci.recording());
  for (int waited_ms = 0; waited_ms < 6000; waited_ms += 300) {
    recorder.Attend();
    loop.Sleep(300);
  }
  recorder.Attend();
  EXPECT_TRUE(mci.recording());
  Stop();
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_THAT(Recordings(), ElementsAre("Record\\143005_1234_5010.wav"));
  EXPECT_EQ(mci.order_faults(), 0);
}

TEST_F(RecorderTest, TheFirstRecordMayTakeTenSecondsAndLaterOnesThree) {
  const auto begins_within = [this](int ms) {
    mci.SetSlow("record", ms);
    Start(std::to_string(ms));
    for (int waited_ms = 0; waited_ms < 12'000; waited_ms += 100) {
      recorder.Attend();
      loop.Sleep(100);
    }
    const bool begun = mci.recording();
    recorder.StopRecording();
    return begun;
  };
  EXPECT_TRUE(begins_within(9'900));
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_TRUE(begins_within(2'900));
  EXPECT_FALSE(begins_within(3'100));
  EXPECT_THAT(StatusLog(), ::testing::Contains(::testing::HasSubstr(" Error (record)")).Times(1));
  EXPECT_TRUE(begins_within(2'800)) << "what comes after a device that was given up";

  sim::SimMci fresh(loop, files);
  Recorder first(fresh, files, form, [this] { return folder; });
  fresh.SetSlow("record", 10'100);
  first.StartRecording("first");
  loop.Sleep(10'000);
  first.Attend();
  EXPECT_FALSE(fresh.open()) << "given up";
}

TEST_F(RecorderTest, AFailureToBeginIsReportedAsSoonAsItIsKnown) {
  mci.SetSlow("record", 1000);
  mci.FailCommand("record", 999);
  Start();
  recorder.Attend();
  EXPECT_THAT(StatusLog(), IsEmpty());
  loop.Sleep(1000);
  recorder.Attend();
  recorder.Attend();
  EXPECT_THAT(StatusLog(), ElementsAre("MCI error 999 Error (record)"));
}

TEST_F(RecorderTest, ACallThatEndsBeforeTheDeviceHasBegunWaitsForItNoLongerThanForAnyCommand) {
  mci.SetSlow("record", 9000);
  Start();
  const std::int64_t begin_ms = loop.TickMs();
  recorder.StopRecording();
  EXPECT_LE(loop.TickMs() - begin_ms, Mci::kLongestCommand_ms);
  ASSERT_FALSE(StatusLog().empty());
  EXPECT_THAT(StatusLog().front(), ::testing::EndsWith(" Error (record)"));
  EXPECT_EQ(mci.order_faults(), 0) << "nothing is sent while a command is under way";
  mci.SetSlow("record", 0);
  Record("143006_1_2");
  EXPECT_THAT(Recordings(), ::testing::Contains("Record\\143006_1_2.wav"));
}

TEST_F(RecorderTest, InAHurryEachCommandGetsASecond) {
  Start();
  recorder.Hurry();
  mci.SetSlow("stop", 100'000);
  mci.SetSlow("save", 100'000);
  const std::int64_t begin_ms = loop.TickMs();
  recorder.StopRecording();
  EXPECT_LE(loop.TickMs() - begin_ms, Mci::kLongestInHurry_ms);
}

TEST_F(RecorderTest, ADeviceThatIsUnpluggedEndsItsRecordingWithALine) {
  Start();
  loop.Sleep(500);
  mci.SetUnplugged(true);
  Stop();
  EXPECT_THAT(StatusLog(), ElementsAre(::testing::EndsWith(" Error (stop)")));
  Start("143006_1_2");
  EXPECT_THAT(StatusLog(), ::testing::Contains(::testing::EndsWith(" Error (record)")).Times(1));
}

TEST_F(RecorderTest, SilenceIsReportedOncePerRunOfSilentRecordings) {
  Record("1_1_1");
  EXPECT_THAT(StatusLog(), IsEmpty());
  mci.SetSilent(true);
  Record("2_1_1");
  Record("3_1_1");
  EXPECT_THAT(StatusLog(), ElementsAre("recorded only silence - 2_1_1.wav"));
  mci.SetSilent(false);
  Record("4_1_1");
  mci.SetSilent(true);
  recorder.ForcedEndSuffix = "_call_forced_end";
  Record("5_1_1");
  EXPECT_THAT(StatusLog(), ElementsAre("recorded only silence - 2_1_1.wav",
                                       "recorded only silence - 5_1_1_call_forced_end.wav"));
  EXPECT_EQ(Recordings().size(), 5U) << "the files stay";
}

TEST_F(RecorderTest, ARecordingThatFailedIsNoSilence) {
  mci.SetSilent(true);
  mci.FailCommand("save", 286);
  Record("1_1_1");
  EXPECT_THAT(StatusLog(), ::testing::Not(::testing::Contains(::testing::HasSubstr("silence"))));
  mci.FailCommand("save", 0);
  Record("2_1_1");
  EXPECT_THAT(StatusLog(), ::testing::Contains("recorded only silence - 2_1_1.wav"));
}

}  // namespace
}  // namespace corvane
