// The source of sound is taken away while the real device records: nothing waits for it for ever,
// and what is recorded next is good.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "base/number_text.h"
#include "contract/factories.h"
#include "desktop/harness/sound_source.h"
#include "desktop/harness/wait.h"
#include "record/mci_win.h"

namespace corvane::contract {
namespace {

constexpr unsigned kReplyLength = 1024;
// All other commands are answered at once, by a machine that has nothing else to do.
constexpr int kMargin_ms = 10'000;
constexpr int kGood_ms = 1100;

class MciLostSource : public ::testing::Test {
 protected:
  [[nodiscard]] unsigned Send(const MciCommand& command) {
    return mci_.Send(command, kReplyLength).error;
  }
  void Begin() {
    mci_.Send(MciCommand::CloseAll(), 0);
    for (const MciCommand& command :
         {MciCommand::Open(), MciCommand::Set("time format ms"), MciCommand::Set("format tag pcm"),
          MciCommand::Set("channels 1"), MciCommand::Set("samplespersec 22050"),
          MciCommand::Set("bitspersample 16"), MciCommand::Set("alignment 2"),
          MciCommand::Record()}) {
      const unsigned error = Send(command);
      EXPECT_EQ(error, 0U) << command.Text() << ": " << mci_.ErrorText(error);
    }
  }
  [[nodiscard]] int Recorded_ms() {
    return ParseShown<int>(mci_.Send(MciCommand::Status("position"), kReplyLength).text)
        .value_or(0);
  }
  // -> what "save" answered.
  unsigned End() {
    const unsigned saved = Send(MciCommand::Save(path_));
    (void)Send(MciCommand::Close());
    mci_.Send(MciCommand::CloseAll(), 0);
    return saved;
  }

  std::unique_ptr<MciUnderTest> world_ = MakeMci();
  Mci& mci_ = world_->mci();
  const std::string path_ = world_->folder() + "\\newTmp.wav";
};

TEST_F(MciLostSource, IsGivenUpWithinTheLimitAndTheNextRecordingIsGood) {
  for (int round = 1; round <= 2; ++round) {
    SCOPED_TRACE(round);
    Begin();
    world_->Pass(1000);
    desktop::SoundSource source;
    ASSERT_TRUE(source.Take()) << "the sound source cannot be taken away here";
    world_->Pass(1000);
    const auto begin = std::chrono::steady_clock::now();
    const unsigned stopped = Send(MciCommand::Stop());
    EXPECT_NE(stopped, 0U);
    EXPECT_NE(mci_.ErrorText(stopped), "");
    EXPECT_NE(End(), 0U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin,
              std::chrono::milliseconds(Mci::kLongestCommand_ms + kMargin_ms));
    std::string wav;
    EXPECT_NE(world_->files().ReadAll(path_, wav), kFileOk) << "a file is left";

    ASSERT_TRUE(source.Bring());
    Begin();
    EXPECT_TRUE(desktop::WaitFor([this] { return Recorded_ms() >= kGood_ms; }, kPatienceMs));
    EXPECT_EQ(Send(MciCommand::Stop()), 0U);
    EXPECT_EQ(End(), 0U);
    ASSERT_EQ(world_->files().ReadAll(path_, wav), kFileOk);
    EXPECT_GT(wav.size(), 44U + 44100U);
    EXPECT_EQ(world_->files().Delete(path_), kFileOk);
  }
}

}  // namespace
}  // namespace corvane::contract
