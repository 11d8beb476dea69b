// The simulated recording device: what it writes down, its faults, the sound it saves.
#include "sim/sim_mci.h"

#include <gtest/gtest.h>

#include <string>

#include "sim/sim_files.h"
#include "sim/sim_loop.h"

namespace corvane::sim {
namespace {

class SimMciTest : public ::testing::Test {
 protected:
  // The device itself is spoken to: text by text, as the system takes it.
  unsigned Send(const std::string& text) { return Ask(text, 1024).error; }
  Mci::Reply Ask(const std::string& text, unsigned reply_length) {
    return mci_.Send(MciCommand::Raw(text), reply_length);
  }
  void Open() {
    ASSERT_EQ(Send("open new Type waveaudio Alias recsound"), 0U);
    for (const std::string setting : {"time format ms", "format tag pcm", "channels 1",
                                      "samplespersec 22050", "bitspersample 16", "alignment 2"}) {
      ASSERT_EQ(Send("set recsound " + setting), 0U) << setting;
    }
  }
  SimLoop loop_;
  SimFiles files_;
  SimMci mci_{loop_, files_};
};

TEST_F(SimMciTest, SavesAHeaderThatMatchesItsSound) {
  Open();
  EXPECT_EQ(Send("record recsound"), 0U);
  EXPECT_TRUE(mci_.recording());
  loop_.Sleep(100);
  EXPECT_EQ(Send("stop recsound"), 0U);
  EXPECT_EQ(Send("save recsound \"C:\\Corvane\\x.wav\""), 0U);
  const std::string wav = files_.Content("C:\\Corvane\\x.wav").value_or("");
  ASSERT_EQ(wav.size(), 44U + 2205 * 2);
  EXPECT_EQ(wav.substr(28, 4), std::string("\x11\x2B\0\0", 4));  // 11025, as faulty drivers do
  EXPECT_EQ(wav.substr(40, 4), std::string("\x3A\x11\0\0", 4));
  EXPECT_EQ(mci_.saved(), 1);
  EXPECT_EQ(mci_.order_faults(), 0);
}

TEST_F(SimMciTest, ALongRecordingIsSavedShort) {
  Open();
  Send("record recsound");
  loop_.AdvanceMs(3'600'000);
  Send("stop recsound");
  Send("save recsound \"C:\\Corvane\\x.wav\"");
  EXPECT_EQ(files_.Content("C:\\Corvane\\x.wav").value_or("").size(), 44U + 4410 * 2);
}

TEST_F(SimMciTest, CommandsOutOfOrderAreFaults) {
  Send("record recsound");
  Send("stop recsound");
  EXPECT_EQ(mci_.order_faults(), 2);
  Open();
  Send("open new Type waveaudio Alias recsound");
  Send("record recsound");
  Send("record recsound");
  Send("set recsound channels 2");
  Send("save recsound \"C:\\Corvane\\x.wav\"");
  EXPECT_EQ(mci_.order_faults(), 6);
  Send("close all");
  EXPECT_FALSE(mci_.open());
  EXPECT_EQ(mci_.order_faults(), 6);
}

TEST_F(SimMciTest, AnAlignmentThatDoesNotFitCannotBeRecorded) {
  Open();
  Send("set recsound channels 2");
  EXPECT_EQ(Send("record recsound"), kMciFormatUnsuitable);
}

TEST_F(SimMciTest, AGivenFailureHasNoEffectOnTheDevice) {
  Open();
  mci_.FailCommand("record", kMciFormatUnsuitable);
  EXPECT_EQ(Send("record recsound"), kMciFormatUnsuitable);
  EXPECT_FALSE(mci_.recording());
  mci_.FailCommand("record", 0);
  EXPECT_EQ(Send("record recsound"), 0U);
  EXPECT_EQ(mci_.commands().back(), (SimMci::Command{"record recsound", 0, 1024}));
}

TEST_F(SimMciTest, AHookSeesEachCommandBeforeItsEffect) {
  bool open = true;
  mci_.SetOnSend([&](const std::string& text) {
    EXPECT_EQ(text, "open new Type waveaudio Alias recsound");
    open = mci_.open();
  });
  mci_.Send(MciCommand::Open(), 0);
  EXPECT_FALSE(open);
  EXPECT_TRUE(mci_.open());
}

TEST_F(SimMciTest, ADiskThatIsFullFailsTheSave) {
  Open();
  Send("record recsound");
  loop_.Sleep(50);
  Send("stop recsound");
  files_.SetRoom(10);
  EXPECT_EQ(Send("save recsound \"C:\\Corvane\\x.wav\""), kMciFileNotSaved);
  EXPECT_EQ(mci_.saved(), 0);
}

TEST_F(SimMciTest, APathWithABlankNeedsItsQuotationMarks) {
  Open();
  EXPECT_EQ(Send("save recsound C:\\Corvane\\a b.wav"), kMciExtraCharacters);
  EXPECT_EQ(Send("save recsound \"C:\\Corvane\\a b.wav\""), 0U);
}

TEST_F(SimMciTest, StatusRepliesCanBeGivenAndAreCutAtTheBuffer) {
  Open();
  EXPECT_EQ(Ask("status recsound samplespersec", 255).text, "22050");
  EXPECT_EQ(Ask("status recsound samplespersec", 4).text, "220");
  mci_.SetStatus("channels", "2");
  EXPECT_EQ(Ask("status recsound channels", 255).text, "2");
}

TEST_F(SimMciTest, ThePositionGoesOnWhileItRecords) {
  Open();
  EXPECT_EQ(Ask("status recsound position", 255).text, "0");
  Send("record recsound");
  loop_.Sleep(50);
  EXPECT_EQ(Ask("status recsound position", 255).text, "50");
  Send("stop recsound");
  loop_.Sleep(50);
  EXPECT_EQ(Ask("status recsound position", 255).text, "50");
}

}  // namespace
}  // namespace corvane::sim
