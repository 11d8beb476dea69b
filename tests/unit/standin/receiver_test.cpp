// What is heard with which settings.
#include "standin/receiver.h"

#include <gtest/gtest.h>

namespace corvane::standin {
namespace {

class ReceiverTest : public ::testing::Test {
 protected:
  ReceiverTest() {
    Tune(2610);
    receiver_.Change([](ReceiverState& state) {
      state.playing = true;
      state.demodulator_on = true;
      state.detector = "WFM";
      state.slot = 2;
      state.audio_gain = 40;
    });
    Call call;
    call.id = 7;
    call.group = 9001;
    call.carrier = 2610;
    call.slot = 2;
    (void)air_.Start(call);
  }
  void Tune(int carrier) {
    receiver_.Change([&](ReceiverState& state) { state.frequency_hz = air_.FrequencyOf(carrier); });
  }

  std::int64_t now_ms_ = 0;
  Air air_;
  Receiver receiver_{air_, [this] { return now_ms_; }, [] {}};
};

TEST_F(ReceiverTest, HearsTheCallOfTheTunedCarrierAndSelectedTimeslot) {
  ASSERT_NE(receiver_.HeardCall(), nullptr);
  EXPECT_FALSE(receiver_.AudioIsMuted());
  EXPECT_EQ(receiver_.CurrentTone(), (Tone{9001, ToneHz(9001), 40}));
  receiver_.Change([](ReceiverState& state) { state.slot = 3; });
  EXPECT_TRUE(receiver_.AudioIsMuted());
  EXPECT_EQ(receiver_.CurrentTone(), std::nullopt);
}

TEST_F(ReceiverTest, HearsNothingUnlessEverythingIsSetRight) {
  const std::function<void(ReceiverState&)> faults[] = {
      [](ReceiverState& state) { state.playing = false; },
      [](ReceiverState& state) { state.demodulator_on = false; },
      [](ReceiverState& state) { state.detector = "NFM"; },
      [](ReceiverState& state) { state.source_works = false; },
      [](ReceiverState& state) { state.frequency_hz += 12500; },
  };
  for (const auto& fault : faults) {
    const ReceiverState good = receiver_.state();
    receiver_.Change(fault);
    EXPECT_EQ(receiver_.LockedCarrier(), std::nullopt);
    EXPECT_TRUE(receiver_.AudioIsMuted());
    receiver_.Change([&](ReceiverState& state) { state = good; });
    EXPECT_EQ(receiver_.LockedCarrier(), 2610);
  }
}

TEST_F(ReceiverTest, IsSilentAtTheParkedGainButNotMuted) {
  receiver_.Change([](ReceiverState& state) { state.audio_gain = kMinAudioGain; });
  EXPECT_FALSE(receiver_.AudioIsMuted());
  EXPECT_EQ(receiver_.CurrentTone(), std::nullopt);
}

TEST_F(ReceiverTest, IsMutedWhileNobodySpeaksAndInEncryptedCalls) {
  (void)air_.Pause(7);
  EXPECT_TRUE(receiver_.AudioIsMuted());
  (void)air_.Release(7, "x", false);
  Call call;
  call.id = 8;
  call.carrier = 2610;
  call.slot = 2;
  call.encrypted = true;
  (void)air_.Start(call);
  EXPECT_TRUE(receiver_.AudioIsMuted());
}

TEST_F(ReceiverTest, CanBeMutedByHand) {
  receiver_.Change([](ReceiverState& state) { state.muted_by_hand = true; });
  EXPECT_TRUE(receiver_.AudioIsMuted());
  EXPECT_EQ(receiver_.CurrentTone(), std::nullopt);
}

TEST_F(ReceiverTest, HearsSetupsOnTheControlChannelOnly) {
  const Pdu setup{true, std::nullopt, "setup"};
  const Pdu release{false, 2610, "release"};
  EXPECT_FALSE(receiver_.Hears(setup));
  EXPECT_TRUE(receiver_.Hears(release));
  Tune(2604);
  EXPECT_TRUE(receiver_.Hears(setup));
  EXPECT_FALSE(receiver_.Hears(release));
}

TEST_F(ReceiverTest, NeedsTheLockTimeAfterRetuning) {
  receiver_.SetLockTimeMs(200);
  now_ms_ = 1000;
  Tune(2604);
  EXPECT_EQ(receiver_.LockedCarrier(), std::nullopt);
  EXPECT_EQ(receiver_.LockDueMs(), 1200);
  now_ms_ = 1199;
  EXPECT_EQ(receiver_.LockedCarrier(), std::nullopt);
  now_ms_ = 1200;
  EXPECT_EQ(receiver_.LockedCarrier(), 2604);
  EXPECT_EQ(receiver_.LockDueMs(), std::nullopt);
  receiver_.Change([](ReceiverState& state) { state.audio_gain = 30; });
  EXPECT_EQ(receiver_.LockedCarrier(), 2604);
}

TEST_F(ReceiverTest, MovesTheCentreAlongWithAFrequencyOutOfReach) {
  EXPECT_EQ(receiver_.state().center_frequency_hz, air_.FrequencyOf(2610));
  Tune(2611);
  EXPECT_EQ(receiver_.state().center_frequency_hz, air_.FrequencyOf(2610));
  Tune(2700);
  EXPECT_EQ(receiver_.state().center_frequency_hz, air_.FrequencyOf(2700));
}

TEST(ToneTest, FollowsTheFormula) {
  EXPECT_EQ(ToneHz(0), 400);
  EXPECT_EQ(ToneHz(9001), 400 + 25 * (9001 % 64));
  EXPECT_EQ(ToneHz(63), 1975);
  EXPECT_EQ(ToneHz(-2147483647 - 1), 400);
}

}  // namespace
}  // namespace corvane::standin
