#include "core/watchdog.h"

#include <gmock/gmock.h>

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using WatchdogTest = CoreTest;

TEST_F(WatchdogTest, NothingIsAskedWithoutACall) {
  context.call.CallTimeoutTicks = 5;
  watchdog.OnCallTick();
  EXPECT_EQ(context.call.CallTimeoutTicks, 5);
  EXPECT_THAT(trace, IsEmpty());
}

TEST_F(WatchdogTest, TheCountdownRunsWhileTheAudioIsMuted) {
  FollowCall();
  flags.mblnAudioMuted = true;
  trace.clear();
  watchdog.OnCallTick();
  EXPECT_THAT(trace, ElementsAre("Get AudioIsMuted"));
  EXPECT_EQ(context.call.CallTimeoutTicks, 15);
  for (int i = 0; i < 20; ++i) watchdog.OnCallTick();
  EXPECT_EQ(context.call.CallTimeoutTicks, 0);
  EXPECT_TRUE(flags.FollowingCall) << "the scanner ends the call, not the tick";
}

TEST_F(WatchdogTest, AudioStartsTheCountdownAgain) {
  FollowCall();
  context.call.CallTimeoutTicks = 3;
  watchdog.OnCallTick();
  EXPECT_EQ(context.call.CallTimeoutTicks, 16);
}

TEST_F(WatchdogTest, TheAnswerThatArrivesInTheTickCounts) {
  FollowCall();
  flags.mblnAudioMuted = true;
  context.call.CallTimeoutTicks = 3;
  loop.on_wait = [&] { flags.mblnAudioMuted = false; };
  watchdog.OnCallTick();
  EXPECT_EQ(context.call.CallTimeoutTicks, 16);
}

TEST_F(WatchdogTest, WhileACommandIsUnderWayTheLastReadingCounts) {
  FollowCall();
  link.under_way = true;
  trace.clear();
  flags.mblnAudioMuted = true;
  watchdog.OnCallTick();
  EXPECT_THAT(trace, IsEmpty());
  EXPECT_EQ(context.call.CallTimeoutTicks, 15);
  flags.mblnAudioMuted = false;
  watchdog.OnCallTick();
  EXPECT_EQ(context.call.CallTimeoutTicks, 16);
}

TEST_F(WatchdogTest, ALostSocketEndsTheWaitAndTheTick) {
  FollowCall();
  context.call.CallTimeoutTicks = 4;
  flags.mblnReceiving = true;
  link.connected = false;
  watchdog.OnCallTick();
  EXPECT_EQ(context.call.CallTimeoutTicks, 3);
}

TEST_F(WatchdogTest, ASilentCallTimesOutAfterItsTicks) {
  presets.CallTimeoutSeconds = 1;
  FollowCall();
  EXPECT_EQ(context.call.CallTimeoutTicks, 3);
  flags.mblnAudioMuted = true;
  for (int i = 0; i < 2; ++i) {
    watchdog.OnCallTick();
    PollNothing();
    EXPECT_TRUE(flags.FollowingCall);
  }
  watchdog.OnCallTick();
  PollNothing();
  EXPECT_FALSE(flags.FollowingCall);
}

TEST_F(WatchdogTest, AReleaseByHandLocksTheGroupOutAndResets) {
  FollowCall();
  watchdog.ManualRelease();
  EXPECT_FALSE(flags.FollowingCall);
  ASSERT_EQ(context.TempGroupLockouts.size(), 1U);
  EXPECT_EQ(context.TempGroupLockouts[0].group, "9001");
  EXPECT_EQ(context.TempGroupLockouts[0].seconds, "0");
  EXPECT_THAT(CallLog(), Contains(" - Manual D-Release occured and UI reset"));
}

TEST_F(WatchdogTest, AReleaseByHandWithoutACallDoesNothing) {
  watchdog.ManualRelease();
  EXPECT_EQ(context.TempGroupLockouts[0].group, "");
  EXPECT_THAT(CallLog(), IsEmpty());
}

TEST_F(WatchdogTest, TheOneRowIsReusedForAnotherGroup) {
  FollowCall();
  watchdog.ManualRelease();
  FollowCall(9002, 1300);
  watchdog.ManualRelease();
  ASSERT_EQ(context.TempGroupLockouts.size(), 1U);
  EXPECT_EQ(context.TempGroupLockouts[0].group, "9002");
}

TEST_F(WatchdogTest, ATableOfMoreRowsGrows) {
  context.TempGroupLockouts = {{"1", "5"}, {"2", "5"}};
  FollowCall();
  watchdog.ManualRelease();
  ASSERT_EQ(context.TempGroupLockouts.size(), 3U);
  EXPECT_EQ(context.TempGroupLockouts[2].group, "9001");
  EXPECT_EQ(context.TempGroupLockouts[2].seconds, "0");
}

TEST_F(WatchdogTest, AKnownGroupOnlyStartsItsSecondsAgain) {
  FollowCall();
  context.TempGroupLockouts = {{"1", "5"}, {"9001", "10"}};
  watchdog.ManualRelease();
  ASSERT_EQ(context.TempGroupLockouts.size(), 2U);
  EXPECT_EQ(context.TempGroupLockouts[1].seconds, "0");
  EXPECT_EQ(context.TempGroupLockouts[0].seconds, "5");
}

TEST_F(WatchdogTest, ALockoutLastsSixteenTicks) {
  FollowCall();
  watchdog.ManualRelease();
  for (int i = 0; i < 15; ++i) watchdog.OnLockoutTick();
  Poll(Setup(9001, 1301, 5010, 2, 2610));
  EXPECT_FALSE(flags.FollowingCall);
  watchdog.OnLockoutTick();
  ASSERT_EQ(context.TempGroupLockouts.size(), 1U);
  EXPECT_EQ(context.TempGroupLockouts[0].group, "");
  EXPECT_EQ(context.TempGroupLockouts[0].seconds, "0");
  Poll(Setup(9001, 1302, 5010, 2, 2610));
  EXPECT_TRUE(flags.FollowingCall);
}

TEST_F(WatchdogTest, ReleasedAgainAfterTenTicksItLastsSixteenMore) {
  FollowCall();
  watchdog.ManualRelease();
  for (int i = 0; i < 10; ++i) watchdog.OnLockoutTick();
  flags.FollowingCall = true;
  form.lblGroupNumber.caption = " 9001";
  watchdog.ManualRelease();
  for (int i = 0; i < 15; ++i) watchdog.OnLockoutTick();
  EXPECT_EQ(context.TempGroupLockouts[0].group, "9001");
  watchdog.OnLockoutTick();
  EXPECT_EQ(context.TempGroupLockouts[0].group, "");
}

TEST_F(WatchdogTest, TheRowBehindARemovedOneIsAgedToo) {
  context.TempGroupLockouts = {{"1", "15"}, {"2", "3"}, {"3", "15"}, {"4", "7"}};
  watchdog.OnLockoutTick();
  ASSERT_EQ(context.TempGroupLockouts.size(), 2U);
  EXPECT_EQ(context.TempGroupLockouts[0].group, "2");
  EXPECT_EQ(context.TempGroupLockouts[0].seconds, "4");
  EXPECT_EQ(context.TempGroupLockouts[1].group, "4");
  EXPECT_EQ(context.TempGroupLockouts[1].seconds, "8");
}

TEST_F(WatchdogTest, AnEmptyTableDoesNotAge) {
  watchdog.OnLockoutTick();
  EXPECT_EQ(context.TempGroupLockouts[0].seconds, "0");
}

TEST_F(WatchdogTest, AResetLeavesTheLockoutsAlone) {
  context.TempGroupLockouts = {{"1", "5"}};
  call_end.ResetCallDisplay();
  EXPECT_EQ(context.TempGroupLockouts[0].group, "1");
}

}  // namespace
}  // namespace corvane
