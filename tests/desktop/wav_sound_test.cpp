// The judge of the recordings judges files made by arithmetic.
#include "desktop/harness/wav_sound.h"

#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

std::string With(std::string bytes, std::size_t at, char value) {
  bytes[at] = value;
  return bytes;
}

TEST(WavSound, FindsATrueHeaderWithoutFault) {
  const std::string bytes = MakeWav({{425, 1.0}});
  const auto wav = ReadWav(bytes);
  ASSERT_TRUE(wav);
  EXPECT_EQ(HeaderFault(*wav, bytes.size()), "");
  EXPECT_NEAR(wav->Seconds(), 1.0, 0.001);
}

TEST(WavSound, NamesEachFalseFieldOfAHeader) {
  const std::string good = MakeWav({{425, 0.2}});
  for (const std::size_t at : {4U, 16U, 20U, 22U, 24U, 28U, 29U, 30U, 31U, 32U, 34U, 40U}) {
    const std::string bytes = With(good, at, '\x07');
    const auto wav = ReadWav(bytes);
    ASSERT_TRUE(wav) << at;
    EXPECT_NE(HeaderFault(*wav, bytes.size()), "") << at;
  }
  EXPECT_NE(HeaderFault(*ReadWav(good), good.size() + 2), "");
}

TEST(WavSound, TakesOnlyWavFiles) {
  EXPECT_FALSE(ReadWav(""));
  EXPECT_FALSE(ReadWav(MakeWav({}).substr(0, 43)));
  EXPECT_TRUE(ReadWav(MakeWav({})));
  for (const std::size_t at : {0U, 8U, 12U, 36U}) {
    EXPECT_FALSE(ReadWav(With(MakeWav({{425, 0.1}}), at, 'x'))) << at;
  }
}

TEST(WavSound, HearsEveryGroupsToneAsItself) {
  for (int hz = 400; hz <= 1975; hz += 25) {
    const auto wav = ReadWav(MakeWav({{hz, 0.3}}));
    const HeardTones heard = SortTones(Listen(*wav), hz);
    EXPECT_GT(heard.wanted_s, 0.2) << hz;
    EXPECT_EQ(heard.other_s, 0) << hz;
  }
}

TEST(WavSound, HearsTheNeighbouringToneAsAnother) {
  const auto wav = ReadWav(MakeWav({{425, 0.5}, {450, 0.5}, {0, 0.5}}));
  const HeardTones heard = SortTones(Listen(*wav), 425);
  EXPECT_NEAR(heard.wanted_s, 0.5, 0.1);
  EXPECT_NEAR(heard.other_s, 0.5, 0.1);
  EXPECT_NEAR(heard.silent_s, 0.5, 0.1);
  EXPECT_NEAR(heard.first_other_hz, 450, 10);
}

TEST(WavSound, HearsABrokenToneAsItselfAndTellsItFromThoseFarEnoughAway) {
  std::vector<ToneSpan> broken;
  for (int piece = 0; piece < 20; ++piece) {
    broken.insert(broken.end(), {{925, 0.031 + 0.002 * (piece % 5)}, {0, 0.007}});
  }
  const auto wav = ReadWav(MakeWav(broken));
  const HeardTones heard = SortTones(Listen(*wav), 925, 45);
  EXPECT_EQ(heard.other_s, 0) << heard.first_other_hz;
  EXPECT_GT(heard.wanted_s, 0.6);
  EXPECT_NEAR(SortTones(Listen(*wav), 1025, 45).other_s, heard.wanted_s, 0.2);
}

TEST(WavSound, TellsFromWhenToWhenTheToneIsHeard) {
  const auto wav = ReadWav(MakeWav({{0, 0.4}, {425, 0.4}, {0, 0.4}, {425, 0.4}, {0, 0.4}}));
  EXPECT_NEAR(SortTones(Listen(*wav), 425).wanted_span_s, 1.2, 0.1);
  EXPECT_EQ(SortTones(Listen(*wav), 700).wanted_span_s, 0);
}

TEST(WavSound, HearsShortRestsOfAnotherTone) {
  const auto wav = ReadWav(MakeWav({{700, 0.25}, {0, 0.2}, {425, 1.0}, {900, 0.25}}));
  EXPECT_GT(SortTones(Listen(*wav), 425).other_s, 0.3);
}

}  // namespace
}  // namespace corvane::desktop
