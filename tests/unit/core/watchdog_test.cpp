#include "core/call_follower.h"

#include <gmock/gmock.h>

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using WatchdogTest = CoreTest;

TEST_F(WatchdogTest, NothingIsAskedWithoutACall) {
  FollowCall();
  Poll(Event("D_Release", 9001, 1207));
  link.trace.clear();
  follower.OnWatchdogTick();
  EXPECT_EQ(follower.call().CallTimeoutTicks, 16);
  EXPECT_THAT(link.trace, IsEmpty());
}

TEST_F(WatchdogTest, TheCountdownRunsWhileTheAudioIsMuted) {
  FollowCall();
  flags.mblnAudioMuted = true;
  link.trace.clear();
  follower.OnWatchdogTick();
  EXPECT_THAT(link.trace, ElementsAre("Get AudioIsMuted"));
  EXPECT_EQ(follower.call().CallTimeoutTicks, 15);
  for (int i = 0; i < 20; ++i) follower.OnWatchdogTick();
  EXPECT_EQ(follower.call().CallTimeoutTicks, 0);
  EXPECT_TRUE(follower.FollowingCall()) << "the scanner ends the call, not the tick";
}

TEST_F(WatchdogTest, AudioStartsTheCountdownAgain) {
  FollowCall();
  RunCountdownDownTo(3);
  follower.OnWatchdogTick();
  EXPECT_EQ(follower.call().CallTimeoutTicks, 16);
}

TEST_F(WatchdogTest, TheAnswerThatArrivesInTheTickCounts) {
  FollowCall();
  RunCountdownDownTo(3);
  flags.mblnAudioMuted = true;
  link.on_wait = [&] { flags.mblnAudioMuted = false; };
  follower.OnWatchdogTick();
  EXPECT_EQ(follower.call().CallTimeoutTicks, 16);
}

TEST_F(WatchdogTest, WhileACommandIsUnderWayTheLastReadingCounts) {
  FollowCall();
  link.under_way = true;
  link.trace.clear();
  flags.mblnAudioMuted = true;
  follower.OnWatchdogTick();
  EXPECT_THAT(link.trace, IsEmpty());
  EXPECT_EQ(follower.call().CallTimeoutTicks, 15);
  flags.mblnAudioMuted = false;
  follower.OnWatchdogTick();
  EXPECT_EQ(follower.call().CallTimeoutTicks, 16);
}

TEST_F(WatchdogTest, ALostSocketEndsTheTick) {
  FollowCall();
  RunCountdownDownTo(4);
  link.connected = false;
  follower.OnWatchdogTick();
  EXPECT_EQ(follower.call().CallTimeoutTicks, 3);
}

TEST_F(WatchdogTest, TheProgramsClosingInsideTheQuestionEndsTheTick) {
  FollowCall();
  RunCountdownDownTo(4);
  link.on_wait = [&] { flags.mblnShuttingDown = true; };
  follower.OnWatchdogTick();
  EXPECT_EQ(follower.call().CallTimeoutTicks, 3) << "the countdown is not loaded again";
}

TEST_F(WatchdogTest, ASilentCallTimesOutAfterItsTicks) {
  presets.CallTimeoutSeconds = 1;
  FollowCall();
  EXPECT_EQ(follower.call().CallTimeoutTicks, 3);
  flags.mblnAudioMuted = true;
  for (int i = 0; i < 2; ++i) {
    follower.OnWatchdogTick();
    PollNothing();
    EXPECT_TRUE(follower.FollowingCall());
  }
  follower.OnWatchdogTick();
  PollNothing();
  EXPECT_FALSE(follower.FollowingCall());
}

TEST_F(WatchdogTest, AReleaseByHandLocksTheGroupOutAndResets) {
  FollowCall();
  follower.ManualRelease();
  EXPECT_FALSE(follower.FollowingCall());
  ASSERT_EQ(follower.locks().TempGroupLockouts.size(), 1U);
  EXPECT_EQ(follower.locks().TempGroupLockouts[0].gssi, 9001);
  EXPECT_EQ(follower.locks().TempGroupLockouts[0].age, 0);
  EXPECT_THAT(CallLog(), Contains(" - Manual D-Release occured and UI reset"));
}

TEST_F(WatchdogTest, AReleaseByHandWithoutACallDoesNothing) {
  follower.ManualRelease();
  EXPECT_EQ(follower.locks().TempGroupLockouts.size(), 0U);
  EXPECT_THAT(CallLog(), IsEmpty());
}

TEST_F(WatchdogTest, TheOneRowIsReusedForAnotherGroup) {
  FollowCall();
  follower.ManualRelease();
  FollowCall(9002, 1300);
  follower.ManualRelease();
  ASSERT_EQ(follower.locks().TempGroupLockouts.size(), 1U);
  EXPECT_EQ(follower.locks().TempGroupLockouts[0].gssi, 9002);
}

TEST_F(WatchdogTest, ALockoutLastsSixteenTicks) {
  FollowCall();
  follower.ManualRelease();
  for (int i = 0; i < 15; ++i) follower.OnLockoutTick();
  Poll(Setup(9001, 1301, 5010, 2, 2610));
  EXPECT_FALSE(follower.FollowingCall());
  follower.OnLockoutTick();
  EXPECT_THAT(follower.locks().TempGroupLockouts, IsEmpty());
  Poll(Setup(9001, 1302, 5010, 2, 2610));
  EXPECT_TRUE(follower.FollowingCall());
}

TEST_F(WatchdogTest, AResetLeavesTheLockoutsAlone) {
  DropByHand(1);
  follower.ResetCallDisplay();
  EXPECT_TRUE(follower.locks().IsDropped(1));
}
}  // namespace
}  // namespace corvane
