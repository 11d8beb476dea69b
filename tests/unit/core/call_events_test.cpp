#include "core/call_follower.h"

#include <gmock/gmock.h>

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using CallEventsTest = CoreTest;

TEST_F(CallEventsTest, AReleaseEndsTheCall) {
  FollowCall();
  Poll(Event("D_Release", 9001, 1207));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_EQ(form.lstCallLog.Item(form.lstCallLog.count() - 2),
            kNow + " - Call ID: 1207 - VC D-Released");
}

TEST_F(CallEventsTest, ADisconnectEndsTheCall) {
  FollowCall();
  Poll(Event("D_Disconnect", 9001, 1207));
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_EQ(form.lstCallLog.Item(form.lstCallLog.count() - 2),
            kNow + " - Call ID: 1207 - VC D-Disconnect");
}

TEST_F(CallEventsTest, OtherCallsEventsAreIgnored) {
  FollowCall();
  Poll(Event("D_Release", 9001, 1208));
  Poll(Event("D_Disconnect", 9001, 1208));
  Poll("SSI:9001 D_Release ");
  Poll("SSI:9001 D_Release Call ID:1207");
  EXPECT_TRUE(follower.FollowingCall());
}

TEST_F(CallEventsTest, AGrantShowsListsAndLogsTheNewTalker) {
  AddSubscriber(5011, 9001, "Boat & Co");
  FollowCall();
  RunCountdownDownTo(1);
  form.chkSuppressSomePduMessages.value = 1;
  Poll(Granted(9001, 1207, 5011));
  EXPECT_EQ(form.lblCurrentSSI.caption.get(), " 5011");
  EXPECT_EQ(form.lblSSI_label.caption.get(), "Boat && Co");
  EXPECT_EQ(form.lblSsiLastSeen.caption.get(), "02/01/2025 03:04:05");
  EXPECT_EQ(LastCallLine(), kNow + " - Call ID: 1207 - VC D-TX-Granted SSI: 5011 [Boat & Co]");
  EXPECT_THAT(form.lstCurrentSSI_Users.items(), ElementsAre("5010", "5011"));
  EXPECT_EQ(follower.call().CallTimeoutTicks, 16);
}

TEST_F(CallEventsTest, ARepeatedGrantIsNotLoggedAgainButKeepsTheCallAlive) {
  FollowCall();
  form.chkSuppressSomePduMessages.value = 1;
  Poll(Granted(9001, 1207, 5011));
  const int lines = form.lstCallLog.count();
  RunCountdownDownTo(1);
  Poll("SSI:9001 D_TX_Granted Call ID:1207 other Party_SSI:5011");
  EXPECT_EQ(form.lstCallLog.count(), lines);
  EXPECT_EQ(follower.call().CallTimeoutTicks, 16);
}

TEST_F(CallEventsTest, ATalkerWhoseNumberBeginsTheLastOneIsTakenForARepeat) {
  FollowCall();
  form.chkSuppressSomePduMessages.value = 1;
  Poll(Granted(9001, 1207, 50101));
  Poll(Granted(9001, 1207, 5010));
  EXPECT_EQ(form.lblCurrentSSI.caption.get(), " 50101");
}

TEST_F(CallEventsTest, AGrantWithoutAUsablePartyOnlyKeepsTheCallAlive) {
  FollowCall();
  form.chkSuppressSomePduMessages.value = 1;
  const int lines = form.lstCallLog.count();
  for (const char* line :
       {"D_TX_Granted Call ID:1207 Party_SSI:none", "D_TX_Granted Call ID:1207 nobody "}) {
    RunCountdownDownTo(1);
    Poll(line);
    EXPECT_EQ(follower.call().CallTimeoutTicks, 16);
  }
  EXPECT_EQ(form.lstCallLog.count(), lines);
  EXPECT_EQ(form.lblCurrentSSI.caption.get(), " 5010");
}

TEST_F(CallEventsTest, TextBehindTheGrantedPartyDoesNotHideIt) {
  FollowCall();
  Poll("SSI:9001 D_TX_Granted Call ID:1207 Party_SSI:5011 Carrier:2610 ");
  EXPECT_EQ(form.lblCurrentSSI.caption.get(), " 5011");
}

TEST_F(CallEventsTest, ACeasedTransmissionIsLoggedOnceForTheTalker) {
  AddSubscriber(5010, 9001, "Car 3");
  FollowCall();
  Poll(Event("D_TX_Ceased", 9001, 1207));
  EXPECT_EQ(LastCallLine(), kNow + " - Call ID: 1207 - VC D-TX-Ceased SSI: 5010 [Car 3]");
  const int lines = form.lstCallLog.count();
  Poll(Event("D_TX_Ceased", 9001, 1207) + "again ");
  EXPECT_EQ(form.lstCallLog.count(), lines);
  EXPECT_EQ(form.lblCurrentSSI.caption.get(), " 5010");
}

TEST_F(CallEventsTest, AnEncryptedLineOfTheFollowedCallStillActs) {
  FollowCall();
  Poll("SSI:9001 D_TX_Granted PDU encrypted Call ID:1207 Party_SSI:5011");
  EXPECT_EQ(form.lblCurrentSSI.caption, " 5011");
  Poll("SSI:9001 D_Release PDU encrypted Call ID:1207 ");
  EXPECT_FALSE(follower.FollowingCall());
}

TEST_F(CallEventsTest, TalkersAreLookedUpUnderTheShownGroup) {
  AddSubscriber(5011, 9001, "Right");
  AddSubscriber(5011, 9009, "Wrong");
  FollowCall();
  Poll(Granted(9009, 1207, 5011));
  EXPECT_EQ(form.lblSSI_label.caption.get(), "Right");
}

TEST_F(CallEventsTest, AReleaseInTheSameLineAsAGrantComesFirst) {
  FollowCall();
  Poll("D_Release D_TX_Granted Call ID:1207 Party_SSI:5011");
  EXPECT_FALSE(follower.FollowingCall());
  EXPECT_EQ(form.lstCurrentSSI_Users.count(), 0);
}

}  // namespace
}  // namespace corvane
