// What the simulated desktop adds for tests: answers that do not come, a socket that is told what
// to say. What it shares with the real one is held by the contract cases.
#include "sim_desktop/sim_desktop.h"

#include <gtest/gtest.h>

#include "sim/sim_loop.h"

namespace corvane::sim {
namespace {

class SimDesktopHooksTest : public ::testing::Test {
 protected:
  SimDesktopHooksTest() {
    loop.SetOutside([this] { desktop.CatchUp(); }, [this] { return desktop.NextDueMs(); });
  }
  static standin::Options Open() {
    standin::Options options;
    options.info_open = true;
    options.network_on = true;
    return options;
  }
  [[nodiscard]] WindowHandle Port() { return desktop.Handle(desktop.ids().port); }
  [[nodiscard]] WindowHandle Edit() { return desktop.Handle(desktop.ids().info_box); }
  void Connect() {
    socket.SetRemote("127.0.0.1", 3383);
    socket.Connect();
    loop.AdvanceMs(10);
    ASSERT_EQ(socket.State(), SocketState::kConnected);
  }

  SimLoop loop;
  SimDesktop desktop{loop, Open()};
  SimWindowOps& windows = desktop.windows();
  SimSocket& socket = desktop.socket();
};

TEST_F(SimDesktopHooksTest, KeepsWhatWasSentAndTellsOfItBeforeItArrives) {
  using Message = SimWindowOps::Message;
  std::string before;
  windows.SetOnMessage([&](const Message& message) {
    if (message.sent == SimWindowOps::Sent::kSetText) before = windows.Text(Port()).value;
  });
  EXPECT_EQ(windows.SetText(Port(), "1"), Reply::kAnswered);
  EXPECT_EQ(before, "3383");
  windows.SetOnMessage(nullptr);
  (void)windows.Line(Edit(), 7);
  (void)windows.Text(0);
  (void)windows.Line(Edit(), -1);
  EXPECT_EQ(windows.messages(), (std::vector<Message>{{Port(), SimWindowOps::Sent::kSetText, "1"},
                                                      {Port(), SimWindowOps::Sent::kText},
                                                      {Edit(), SimWindowOps::Sent::kLine, "", 7}}))
      << "no window and no line are asked nothing";
  EXPECT_EQ(windows.send_count(), 3);
  windows.ForgetMessages();
  EXPECT_TRUE(windows.messages().empty());
}

TEST_F(SimDesktopHooksTest, SdrWithMoreRightsRefusesAllButItsTexts) {
  const auto foreign = desktop.AddForeignWindow("Notepad", "text", {0, 0, 10, 10});
  windows.SetRefusing(true);
  EXPECT_EQ(windows.Text(Port()).value, "3383");
  EXPECT_EQ(windows.LineCount(Edit()).reply, Reply::kRefused);
  EXPECT_EQ(windows.Line(Edit(), 0).reply, Reply::kRefused);
  EXPECT_EQ(windows.SetText(Port(), "x"), Reply::kRefused);
  EXPECT_EQ(windows.Press(desktop.Handle(desktop.ids().network)), Reply::kRefused);
  EXPECT_EQ(windows.PressSelector(desktop.Handle(desktop.ids().timeslots[1])), Reply::kRefused);
  EXPECT_EQ(windows.SetText(desktop.Handle(foreign), "x"), Reply::kAnswered);
  EXPECT_EQ(windows.Press(4711), Reply::kGone);
  EXPECT_EQ(windows.Text(Port()).value, "3383") << "what is refused has no effect";
}

TEST_F(SimDesktopHooksTest, ASilentWindowAndTheNextMessagesGetNoAnswerAtOnce) {
  const std::int64_t begin = loop.TickMs();
  windows.SetSilent(Port(), true);
  EXPECT_EQ(windows.Text(Port()).reply, Reply::kNoAnswer);
  EXPECT_EQ(windows.LineCount(Edit()).reply, Reply::kAnswered);
  windows.SetSilent(Port(), false);
  windows.FailNextSends(1);
  EXPECT_EQ(windows.Text(Port()).reply, Reply::kNoAnswer);
  EXPECT_EQ(windows.Text(Port()).reply, Reply::kAnswered);
  EXPECT_EQ(loop.TickMs(), begin);
}

TEST_F(SimDesktopHooksTest, AWindowPretendsToBeShownOtherwise) {
  Placement placement;
  windows.PretendShowState(3);
  ASSERT_TRUE(windows.GetPlacement(desktop.Handle(desktop.ids().main), placement));
  EXPECT_EQ(placement.show_state, 3u);
  windows.PretendShowState(SimWindowOps::kNoShowState);
  ASSERT_TRUE(windows.GetPlacement(desktop.Handle(desktop.ids().main), placement));
  EXPECT_EQ(placement.show_state, kShowNormal);
}

TEST_F(SimDesktopHooksTest, BytesBesideTheServersReachTheClient) {
  Connect();
  (void)socket.GetData();
  desktop.wire().SendToAll("garbage");
  loop.AdvanceMs(2);
  EXPECT_EQ(socket.GetData(), "garbage");
}

TEST_F(SimDesktopHooksTest, TheSocketPretendsAStateAndTellsOfEachSend) {
  Connect();
  int sends = 0;
  socket.SetOnSend([&] { ++sends; });
  socket.PretendState(SocketState::kResolvingHost);
  EXPECT_EQ(socket.State(), SocketState::kResolvingHost);
  socket.PretendState(std::nullopt);
  EXPECT_EQ(socket.State(), SocketState::kConnected);
  EXPECT_TRUE(socket.SendData("x"));
  EXPECT_EQ(sends, 1);
  EXPECT_EQ(socket.sent().size(), 1u);
  socket.ForgetSent();
  EXPECT_TRUE(socket.sent().empty());
}

}  // namespace
}  // namespace corvane::sim
