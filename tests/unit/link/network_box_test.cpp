#include "link/network_box.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

class NetworkBoxRuleTest : public LinkTest {
 protected:
  WindowHandle Port() { return Handle(ids().port); }
  WindowHandle Box() { return Handle(ids().network); }
  void Found() { rule.SwitchOnWhenFound(Port(), Box()); }
  void Refused() { rule.SwitchOnAfterRefusal(Port(), Box()); }

  NetworkBox rule{windows, desktop.socket()};
};

TEST_F(NetworkBoxRuleTest, WritesThePortAndPresses) {
  Found();
  EXPECT_EQ(sim().messages(),
            (std::vector<Message>{{Port(), Kind::kSetText, "3383"}, {Box(), Kind::kPress}}));
  sim().ForgetMessages();
  Refused();
  EXPECT_EQ(sim().messages(),
            (std::vector<Message>{{Port(), Kind::kSetText, "3383"}, {Box(), Kind::kPress}}));
}

TEST_F(NetworkBoxRuleTest, DoesNotPressUnderALiveConnectionButWritesThePort) {
  desktop.socket().PretendState(SocketState::kConnected);
  Found();
  EXPECT_EQ(sim().messages(), (std::vector<Message>{{Port(), Kind::kSetText, "3383"}}));
}

TEST_F(NetworkBoxRuleTest, PressesInEveryOtherStateOfTheSocket) {
  int expected = 0;
  for (const SocketState state : {SocketState::kClosed, SocketState::kConnecting,
                                  SocketState::kClosing, SocketState::kError}) {
    desktop.socket().PretendState(state);
    Found();
    EXPECT_EQ(Presses(ids().network), ++expected);
  }
}

TEST_F(NetworkBoxRuleTest, DoesNotPressRightAfterTheRefusedConnectionPressedTheSameBox) {
  Refused();
  sim().ForgetMessages();
  Found();
  EXPECT_EQ(sim().messages(), (std::vector<Message>{{Port(), Kind::kSetText, "3383"}}));
  Found();
  EXPECT_EQ(Presses(ids().network), 1) << "the press counts for one run alone";
}

TEST_F(NetworkBoxRuleTest, PressesTheBoxOfAnSdrThatWasStartedAnewSinceTheRefusal) {
  Refused();
  desktop.Do("die");
  desktop.Do("revive");
  sim().ForgetMessages();
  Found();
  EXPECT_EQ(Presses(ids().network), 1);
}

TEST_F(NetworkBoxRuleTest, APressThatWasRefusedDoesNotCount) {
  sim().SetRefusing(true);
  Refused();
  sim().SetRefusing(false);
  sim().ForgetMessages();
  Found();
  EXPECT_EQ(Presses(ids().network), 1);
}

// It may have been carried out all the same.
TEST_F(NetworkBoxRuleTest, AfterAPressThatWasNotAnsweredTheConnectionIsTriedOnce) {
  for (const bool by_discovery : {false, true}) {
    sim().SetSilent(Box(), true);
    by_discovery ? Found() : Refused();
    sim().SetSilent(Box(), false);
    sim().ForgetMessages();
    Found();
    EXPECT_EQ(Presses(ids().network), 0) << by_discovery;
    Refused();
    EXPECT_EQ(Presses(ids().network), 1) << by_discovery;
    Found();  // takes note of the press
  }
}

TEST_F(NetworkBoxRuleTest, ARefusalThatMayBeOlderThanTheLatePressIsTriedOnceMore) {
  sim().SetSilent(Box(), true);
  Found();
  sim().SetSilent(Box(), false);
  sim().ForgetMessages();
  Refused();
  EXPECT_EQ(Presses(ids().network), 0);
  Found();
  EXPECT_EQ(Presses(ids().network), 0) << "no connection was tried since";
  Refused();
  EXPECT_EQ(Presses(ids().network), 1);
}

TEST_F(NetworkBoxRuleTest, AsLongAsNothingIsAnsweredNothingIsPressedAgain) {
  sim().SetSilent(Box(), true);
  Found();
  sim().SetSilent(Port(), true);
  sim().SetSilent(Box(), false);
  sim().ForgetMessages();
  for (int i = 0; i < 5; ++i) {
    Found();
    Refused();
  }
  EXPECT_EQ(Presses(ids().network), 0);
  sim().SetSilent(Port(), false);
  Refused();
  Found();
  Refused();
  EXPECT_EQ(Presses(ids().network), 1);
}

TEST_F(NetworkBoxRuleTest, WithoutWindowsNothingIsSent) {
  rule.SwitchOnAfterRefusal(0, 0);
  rule.SwitchOnWhenFound(0, 0);
  EXPECT_TRUE(sim().messages().empty());
}

TEST_F(NetworkBoxRuleTest, WhoRefusesNowHasNotTakenTheEarlierPressEither) {
  sim().SetSilent(Box(), true);
  Found();
  sim().SetSilent(Box(), false);
  sim().SetRefusing(true);
  Found();
  EXPECT_EQ(Presses(ids().network), 2);
  sim().SetRefusing(false);
  Found();
  EXPECT_EQ(Presses(ids().network), 3);
}

}  // namespace
}  // namespace corvane::test
