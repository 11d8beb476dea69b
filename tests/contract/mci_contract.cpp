// Mci: the recorder's command sequence, and that wrong orders are errors with a text.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

#include "base/number_text.h"
#include "contract/factories.h"

namespace corvane::contract {
namespace {

constexpr unsigned kReplyLength = 1024;

class MciContract : public ::testing::Test {
 protected:
  void TearDown() override { mci_.Send(MciCommand::CloseAll(), 0); }

  void Do(const MciCommand& command) {
    const Mci::Reply reply = mci_.Send(command, kReplyLength);
    EXPECT_EQ(reply.error, 0U) << command.Text() << ": " << mci_.ErrorText(reply.error);
  }
  void Fails(const MciCommand& command) {
    const Mci::Reply reply = mci_.Send(command, kReplyLength);
    EXPECT_NE(reply.error, 0U) << command.Text();
    EXPECT_NE(mci_.ErrorText(reply.error), "") << command.Text();
  }
  std::string Status(const std::string& item) {
    return mci_.Send(MciCommand::Status(item), 255).text;
  }
  void Open() {
    Do(MciCommand::Open());
    Do(MciCommand::Set("time format ms"));
    Do(MciCommand::Set("format tag pcm"));
    Do(MciCommand::Set("channels 1"));
    Do(MciCommand::Set("samplespersec 22050"));
    Do(MciCommand::Set("bitspersample 16"));
    Do(MciCommand::Set("alignment 2"));
  }
  // A device may be late with its first piece of sound.
  void AwaitSound() {
    for (int waited = 0; waited < kPatienceMs; waited += 10) {
      if (ParseShown<int>(Status("position")).value_or(0) > 0) return;
      world_->Pass(10);
    }
    ADD_FAILURE() << "nothing is recorded";
  }
  void RecordTo(const std::string& path, int ms) {
    Open();
    Do(MciCommand::Record());
    world_->Pass(ms);
    AwaitSound();
    Do(MciCommand::Stop());
    Do(MciCommand::Save(path));
    EXPECT_EQ(Status("channels"), "1");
    EXPECT_EQ(Status("bitspersample"), "16");
    EXPECT_EQ(Status("samplespersec"), "22050");
    Do(MciCommand::Close());
    mci_.Send(MciCommand::CloseAll(), 0);
  }
  static std::uint32_t Little(const std::string& bytes, std::size_t at, std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t i = size; i > 0; --i) {
      value = (value << 8) | static_cast<unsigned char>(bytes[at + i - 1]);
    }
    return value;
  }
  void ExpectWav(const std::string& path) {
    std::string wav;
    ASSERT_EQ(world_->files().ReadAll(path, wav), kFileOk);
    ASSERT_GT(wav.size(), 44U);
    EXPECT_EQ(wav.substr(0, 4), "RIFF");
    EXPECT_EQ(wav.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(Little(wav, 20, 2), 1U);      // PCM
    EXPECT_EQ(Little(wav, 22, 2), 1U);      // channels
    EXPECT_EQ(Little(wav, 24, 4), 22050U);  // samples per second
    EXPECT_EQ(Little(wav, 32, 2), 2U);      // alignment
    EXPECT_EQ(Little(wav, 34, 2), 16U);     // bits per sample
    const std::size_t data = wav.find("data");
    ASSERT_NE(data, std::string::npos);
    EXPECT_GT(Little(wav, data + 4, 4), 0U);
    EXPECT_LE(data + 8 + Little(wav, data + 4, 4), wav.size());
  }

  std::unique_ptr<MciUnderTest> world_ = MakeMci();
  Mci& mci_ = world_->mci();
};

TEST_F(MciContract, RecordsAWavFile) {
  const std::string path = world_->folder() + "\\newTmp.wav";
  RecordTo(path, 4000);
  ExpectWav(path);
}

TEST_F(MciContract, RecordsAgainAndAgainOverTheSameFile) {
  const std::string path = world_->folder() + "\\newTmp.wav";
  for (int i = 0; i < 4; ++i) {
    RecordTo(path, 2500);
    ExpectWav(path);
    world_->Pass(500);
  }
}

// No pause between the end of one and the beginning of the next.
TEST_F(MciContract, RecordsManyShortOnesInARow) {
  const std::string path = world_->folder() + "\\newTmp.wav";
  for (int i = 0; i < 30; ++i) {
    SCOPED_TRACE(i);
    RecordTo(path, 50 + 20 * (i % 10));
    ExpectWav(path);
  }
}

TEST_F(MciContract, WhatIsBegunIsAnsweredAtOnceOrLater) {
  for (int i = 0; i < 2; ++i) {
    Open();
    auto reply = mci_.Begin(MciCommand::Record(), kReplyLength);
    for (int waited = 0; !reply && waited < kPatienceMs; waited += 10) {
      world_->Pass(10);
      reply = mci_.Answer();
    }
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->error, 0U) << mci_.ErrorText(reply->error);
    AwaitSound();
    Do(MciCommand::Stop());
    Do(MciCommand::Close());
  }
}

TEST_F(MciContract, CommandsForADeviceThatIsNotOpenFail) {
  mci_.Send(MciCommand::CloseAll(), 0);
  Fails(MciCommand::Set("channels 1"));
  Fails(MciCommand::Record());
  Fails(MciCommand::Stop());
  Fails(MciCommand::Save(world_->folder() + "\\x.wav"));
  Fails(MciCommand::Status("channels"));
  Fails(MciCommand::Close());
}

TEST_F(MciContract, AnAliasInUseIsRefusedUntilAllIsClosed) {
  Open();
  Fails(MciCommand::Open());
  mci_.Send(MciCommand::CloseAll(), 0);
  Do(MciCommand::Open());
}

TEST_F(MciContract, NonsenseIsRefused) {
  Fails(MciCommand::Raw("dance recsound"));
  Fails(MciCommand::Raw("open new Type nosuchdevice Alias recsound"));
  Open();
  Fails(MciCommand::Set("channels many"));
}

TEST_F(MciContract, SavingIntoAFolderThatIsNotThereFails) {
  Open();
  Do(MciCommand::Record());
  world_->Pass(1500);
  Do(MciCommand::Stop());
  Fails(MciCommand::Save(world_->folder() + "\\no folder\\x.wav"));
}

TEST_F(MciContract, WithoutAReplyLengthThereIsNoReply) {
  Open();
  EXPECT_EQ(mci_.Send(MciCommand::Status("channels"), 0).text, "");
}

}  // namespace
}  // namespace corvane::contract
