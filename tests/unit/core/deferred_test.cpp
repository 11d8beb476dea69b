// What the user asks for inside a sequence of commands is carried out right after it.
#include <gmock/gmock.h>

#include <stdexcept>

#include "base/text.h"
#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

class DeferredTest : public CoreTest {
 protected:
  // In the first wait from now on.
  void InTheNextWait(const std::function<void()>& action) {
    link.on_wait = [this, action] {
      link.on_wait = nullptr;
      action();
    };
  }
  [[nodiscard]] int Count(const std::string& text) const {
    int count = 0;
    for (const std::string& line : form.lstCallLog.items())
      count += corvane::Contains(line, text) ? 1 : 0;
    return count;
  }
  [[nodiscard]] int Resets() const { return Count("Manual D-Release occured"); }
};

TEST_F(DeferredTest, OutsideASequenceParkingHappensAtOnce) {
  follower.Park();
  EXPECT_EQ(Resets(), 1);
}

TEST_F(DeferredTest, AskedForThreeTimesItHappensOnce) {
  Prime();
  InTheNextWait([&] {
    for (int i = 0; i < 3; ++i) follower.Park();
    EXPECT_EQ(Resets(), 0);
  });
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_EQ(Resets(), 1);
  EXPECT_FALSE(follower.FollowingCall());
}

TEST_F(DeferredTest, TheOutermostSequenceEndsFirst) {
  Prime();
  InTheNextWait([&] {
    InTheNextWait([&] { follower.Park(); });
    follower.ResetCallDisplay();
    EXPECT_EQ(Resets(), 1) << "the inner reset itself";
    EXPECT_TRUE(follower.InSequence());
  });
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_EQ(Resets(), 2);
}

TEST_F(DeferredTest, WhatIsAskedForInsideADeferredResetComesAfterIt) {
  Prime();
  int waits = 0;
  link.on_wait = [&] {
    if (++waits == 1 || waits == 3) follower.Park();
  };
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_EQ(Resets(), 2);
}

TEST_F(DeferredTest, AfterAnAbandonedSetup) {
  Prime();
  InTheNextWait([&] {
    follower.Park();
    link.connected = false;
  });
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  EXPECT_EQ(Resets(), 1);
}

TEST_F(DeferredTest, AfterAnEndingAndAfterAReset) {
  FollowCall();
  InTheNextWait([&] { follower.LogModeSwitched(true); });
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_EQ(Count("LOG mode active"), 1);
  InTheNextWait([&] { follower.LogModeSwitched(true); });
  follower.ResetCallDisplay();
  EXPECT_EQ(Count("LOG mode active"), 2);
}

TEST_F(DeferredTest, AfterASequenceThatThrowsWhichThenGoesOnThrowing) {
  Prime();
  InTheNextWait([&] {
    follower.Park();
    throw std::runtime_error("x");
  });
  EXPECT_THROW(Poll(Setup(9001, 1207, 5010, 2, 2610)), std::runtime_error);
  EXPECT_EQ(Resets(), 1);
  EXPECT_FALSE(follower.InSequence());
}

TEST_F(DeferredTest, NotOnceTheProgramShutsDown) {
  Prime();
  InTheNextWait([&] {
    follower.Park();
    flags.mblnShuttingDown = true;
  });
  Poll(Setup(9001, 1207, 5010, 2, 2610));
  flags.mblnShuttingDown = false;
  follower.ResetCallDisplay();
  EXPECT_EQ(Resets(), 1) << "what was deferred is dropped for good";
}

}  // namespace
}  // namespace corvane
