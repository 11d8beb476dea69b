#include "record/wav_sound.h"

#include <gtest/gtest.h>

#include <string>

#include "sim/sim_files.h"

namespace corvane {
namespace {

const std::string kPath = "C:\\Corvane\\x.wav";

class WavSoundTest : public ::testing::Test {
 protected:
  Sound Judge(const std::string& samples, int bits = 16, const std::string& chunks = "") {
    std::string head = "RIFF" + std::string(4, 'x') + "WAVEfmt " + std::string(20, '\0');
    head[34 - 2] = 2;
    head += static_cast<char>(bits) + std::string(1, '\0');
    head.resize(36);
    head[34] = static_cast<char>(bits);
    files_.Put(kPath, head + chunks + "data" + std::string(4, 'x') + samples);
    return SoundIn(files_, kPath);
  }
  sim::SimFiles files_;
};

TEST_F(WavSoundTest, ZerosAndTheNoiseOfAConverterAreSilence) {
  EXPECT_EQ(Judge(std::string(1000, '\0')), Sound::kNone);
  EXPECT_EQ(Judge(std::string("\1\0\xFF\xFF\0\0", 6)), Sound::kNone);
  EXPECT_EQ(Judge(std::string(1000, '\x80'), 8), Sound::kNone);
  EXPECT_EQ(Judge("\x80\x81\x7F", 8), Sound::kNone);
}

TEST_F(WavSoundTest, OneSampleOfSoundIsEnoughWhereverItStands) {
  EXPECT_EQ(Judge(std::string("\0\0\2\0", 4)), Sound::kSome);
  EXPECT_EQ(Judge(std::string("\0\0\xFE\xFF", 4)), Sound::kSome);
  EXPECT_EQ(Judge(std::string("\0\0\0\1", 4)), Sound::kSome);
  EXPECT_EQ(Judge("\x80\x82", 8), Sound::kSome);
  for (const std::size_t at : {65535U, 65536U, 199'998U}) {
    std::string samples(200'000, '\0');
    samples[at] = '\x40';
    EXPECT_EQ(Judge(samples), Sound::kSome) << at;
  }
}

TEST_F(WavSoundTest, ALongSilenceIsReadToItsLimit) {
  std::string samples(kLongestJudged + 100'000, '\0');
  samples[kLongestJudged - 1] = '\x40';
  EXPECT_EQ(Judge(samples), Sound::kSome);
  samples[kLongestJudged - 1] = '\0';
  samples[kLongestJudged + 70'000] = '\x40';
  EXPECT_EQ(Judge(samples), Sound::kNone);
}

TEST_F(WavSoundTest, OtherChunksBeforeTheSamplesDoNotMatter) {
  EXPECT_EQ(Judge(std::string(100, '\0'), 16, std::string("\0\0", 2)), Sound::kNone);
  EXPECT_EQ(Judge(std::string("\0\0\0\1", 4), 16, std::string("fact\4\0\0\0AbCd", 12)),
            Sound::kSome);
}

TEST_F(WavSoundTest, WhatIsNoRecordingIsNotJudged) {
  EXPECT_EQ(SoundIn(files_, kPath), Sound::kUnknown);
  EXPECT_EQ(Judge(""), Sound::kUnknown) << "nothing was recorded";
  EXPECT_EQ(Judge(std::string(100, '\0'), 24), Sound::kUnknown);
  files_.Put(kPath, std::string(31, '\0'));
  EXPECT_EQ(SoundIn(files_, kPath), Sound::kUnknown);
  files_.Put(kPath, std::string(1000, '\0'));
  EXPECT_EQ(SoundIn(files_, kPath), Sound::kUnknown);
}

TEST_F(WavSoundTest, SoundBelowTheMiddleOfABitIsHeardInEightBitsToo) {
  EXPECT_EQ(Judge("\x80\x7E", 8), Sound::kSome);
}

TEST_F(WavSoundTest, AHeaderWithoutSamplesIsNotJudged) {
  EXPECT_EQ(Judge(std::string(100, '\0')), Sound::kNone);
  std::string bytes = files_.Content(kPath).value();
  bytes.replace(bytes.find("data"), 4, "last");
  files_.Put(kPath, bytes);
  EXPECT_EQ(SoundIn(files_, kPath), Sound::kUnknown);
}

}  // namespace
}  // namespace corvane
