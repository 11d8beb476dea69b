#include "core/call_watcher.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;

class CallWatcherTest : public CoreTest, public CallWatcher {
 protected:
  CallWatcherTest() {
    follower.SetWatcher(this);
    Prime();
  }
  void SetupDecided(const SetupDecision& decision) override {
    const std::string cause = NameOf(decision.cause);
    told_.push_back(NameOf(decision.outcome) + (cause.empty() ? "" : " " + cause));
  }
  void FollowedCallEnded(std::int16_t call_id, CallEnd how) override {
    told_.push_back(std::to_string(call_id) + " " + NameOf(how));
  }
  void PollSetup(int gssi, int call_id) { Poll(Setup(gssi, call_id, 5010, 2, 2610)); }

  std::vector<std::string> told_;
};

TEST_F(CallWatcherTest, EachSetupLineIsToldOnceWithWhatBecameOfIt) {
  Poll(Setup(9001, 1, 5010, 2, 2610) + "PDU encrypted ");
  Poll("SSI:9001 D_Setup Basic_service:Point_to_multipoint ");
  Poll(Setup(9001, 2, 5010, 9, 2610));
  PollSetup(9001, 3);
  PollSetup(9002, 4);
  PollSetup(9002, 4);
  EXPECT_THAT(told_, ElementsAre("encrypted", "malformed", "bad_timeslot", "followed", "in_call"));
}

TEST_F(CallWatcherTest, EachFollowedCallEndsOnce) {
  PollSetup(9001, 1);
  Poll(Event("D_Release", 9001, 1));
  follower.ResetCallDisplay();
  PollSetup(9001, 2);
  Poll(Event("D_Disconnect", 9001, 2));
  PollSetup(9001, 3);
  follower.ManualRelease();
  PollSetup(9002, 4);
  follower.DropWithLink();
  follower.DropWithLink();
  PollSetup(9002, 5);
  flags.mblnAudioMuted = true;
  for (int i = 0; i < TimeoutTicks(presets.CallTimeoutSeconds); ++i) follower.OnWatchdogTick();
  Poll("");
  EXPECT_THAT(told_, ElementsAre("followed", "1 released", "followed", "2 disconnected", "followed",
                                 "3 reset", "followed", "4 link lost", "followed", "5 timed out"));
}

TEST_F(CallWatcherTest, ASetupThatIsGivenUpIsToldAsAbandonedWithItsCause) {
  link.on_wait = [&] { link.connected = false; };
  PollSetup(9001, 1);
  link.connected = true;
  link.on_wait = [&] { throw std::runtime_error("x"); };
  EXPECT_THROW(PollSetup(9001, 2), std::runtime_error);
  EXPECT_THAT(told_, ElementsAre("abandoned connection lost", "abandoned fault"));
}

TEST_F(CallWatcherTest, ACallThatIsDroppedRightAfterItsSetupIsToldInThatOrder) {
  link.on_wait = [&] {
    link.on_wait = nullptr;
    follower.Park();
  };
  PollSetup(9001, 1);
  EXPECT_THAT(told_, ElementsAre("followed", "1 reset"));
}

}  // namespace
}  // namespace corvane
