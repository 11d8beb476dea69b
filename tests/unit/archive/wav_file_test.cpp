#include "archive/wav_file.h"

#include <gmock/gmock.h>

#include "unit/archive/folder_fixture.h"
#include "unit/archive/wav_bytes.h"

namespace corvane::tools {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WavFileTest : public FolderTest {
 protected:
  std::optional<WavFormat> Format(const std::string& bytes) {
    SharedFile file;
    EXPECT_TRUE(file.Open(Put("a.wav", bytes)));
    return ReadWavFormat(file);
  }
};

TEST_F(WavFileTest, LengthComesFromTheSoundThatIsThere) {
  const std::string whole = WavBytes(std::vector<int>(2000, 5000), 1000);
  const auto format = Format(whole);
  ASSERT_TRUE(format);
  EXPECT_EQ(format->seconds(), 2);
  EXPECT_FALSE(format->cut);
  const auto cut = Format(whole.substr(0, 44 + 1001));
  ASSERT_TRUE(cut);
  EXPECT_EQ(cut->data_bytes, 1000U) << "half a sample is none";
  EXPECT_EQ(cut->seconds(), 0.5);
  EXPECT_TRUE(cut->cut);
}

TEST_F(WavFileTest, ARecordingThatIsStillWrittenSaysNoLengthYet) {
  std::string bytes = WavBytes(std::vector<int>(500, 1), 1000);
  bytes.replace(40, 4, std::string(4, '\0'));
  const auto format = Format(bytes);
  ASSERT_TRUE(format);
  EXPECT_EQ(format->seconds(), 0.5);
}

TEST_F(WavFileTest, WhatIsNoRecording) {
  const std::string whole = WavBytes({1, 2, 3}, 1000);
  for (std::size_t size = 0; size < 44; ++size) EXPECT_FALSE(Format(whole.substr(0, size))) << size;
  std::string no_rate = whole;
  no_rate.replace(24, 4, std::string(4, '\0'));
  EXPECT_FALSE(Format(no_rate));
  std::string no_channels = whole;
  no_channels.replace(22, 2, std::string(2, '\0'));
  EXPECT_FALSE(Format(no_channels));
  std::string compressed = whole;
  compressed[20] = 6;
  EXPECT_FALSE(Format(compressed));
  EXPECT_FALSE(Format(std::string(100000, '\xFF')));
  EXPECT_FALSE(Format("RIFF\x10\0\0\0WAVE" + std::string(4096, '\0'))) << "chunks without end";
}

TEST_F(WavFileTest, PausesAreFoundAndSpeechIsNone) {
  std::vector<int> samples(1000, 9000);        // a second of speech,
  samples.insert(samples.end(), 3000, 20);     // three of nearly nothing,
  samples.insert(samples.end(), 1000, -9000);  // another of speech,
  samples.insert(samples.end(), 1000, 0);      // and a pause that is too short
  const auto waveform = ReadWaveform(Put("a.wav", WavBytes(samples, 1000)));
  ASSERT_TRUE(waveform);
  EXPECT_THAT(waveform->quiet, ElementsAre(13U, 37U));
  EXPECT_FALSE(waveform->silent);
  ASSERT_EQ(waveform->peaks.size(), static_cast<std::size_t>(Waveform::kPeaks));
  EXPECT_EQ(waveform->peaks.front(), waveform->peaks[36]);
  EXPECT_GT(waveform->peaks.front(), waveform->peaks[20]);
  EXPECT_EQ(waveform->peaks.back(), '0');
}

TEST_F(WavFileTest, NothingButSilence) {
  const auto waveform = ReadWaveform(Put("a.wav", WavBytes(std::vector<int>(3000, 1), 1000)));
  ASSERT_TRUE(waveform);
  EXPECT_TRUE(waveform->silent);
  EXPECT_THAT(waveform->peaks, Each('0'));
  EXPECT_FALSE(ReadWaveform(Put("b.wav", WavBytes({}, 1000))));
  EXPECT_FALSE(ReadWaveform(Path("nothing.wav")));
}

}  // namespace
}  // namespace corvane::tools
