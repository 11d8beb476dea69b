// The simulated connection to the Net Remote server.
#include "sim_desktop/sim_socket.h"

#include <gtest/gtest.h>

#include "sim/sim_loop.h"
#include "sim_desktop/sim_desktop.h"

namespace corvane::sim {
namespace {

constexpr const char* kGreeting = "{\"Name\":\"Net Remote\",\"Version\":\"1.0.5282.28765\"}\r\n";
constexpr const char* kGetPlaying = "{\"Command\": \"Get\", \"Method\": \"IsPlaying\"}";
constexpr const char* kPlayingReply =
    "{\"Result\":\"OK\",\"Method\":\"IsPlaying\",\"Value\":false}\r\n";

class SimSocketTest : public ::testing::Test {
 protected:
  SimSocketTest() {
    loop_.SetOutside([this] { desktop_.CatchUp(); }, [this] { return desktop_.NextDueMs(); });
    Listen(socket_);
    socket_.SetRemote("127.0.0.1", 3383);
  }
  void Listen(SimSocket& socket) {
    socket.SetEvents({[this, &socket](std::size_t bytes) {
                        const std::string data = socket.GetData();
                        EXPECT_EQ(bytes, data.size());
                        received_.push_back(data);
                      },
                      [this, &socket](int number, const std::string& description) {
                        EXPECT_EQ(socket.State(), SocketState::kError);
                        EXPECT_FALSE(description.empty());
                        errors_.push_back(number);
                      }});
  }
  void Connect() {
    desktop_.Do("listen on");
    socket_.Connect();
    loop_.AdvanceMs(20);
    ASSERT_EQ(socket_.State(), SocketState::kConnected);
    received_.clear();
  }

  SimLoop loop_;
  SimDesktop desktop_{loop_};
  SimSocket& socket_ = desktop_.socket();
  std::vector<std::string> received_;
  std::vector<int> errors_;
};

TEST_F(SimSocketTest, ConnectsAndIsGreeted) {
  desktop_.Do("listen on");
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
  socket_.Connect();
  EXPECT_EQ(socket_.State(), SocketState::kConnecting);
  loop_.Sleep(250);
  EXPECT_EQ(socket_.State(), SocketState::kConnecting);  // Sleep dispatches nothing
  loop_.DoEvents();
  EXPECT_EQ(socket_.State(), SocketState::kConnected);
  EXPECT_EQ(received_, std::vector<std::string>{kGreeting});
}

TEST_F(SimSocketTest, IsRefusedWhereNothingListens) {
  socket_.Connect();
  loop_.AdvanceMs(20);
  EXPECT_EQ(errors_, std::vector<int>{kConnectionRefused});
  EXPECT_EQ(socket_.State(), SocketState::kError);
  socket_.Close();
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
  desktop_.Do("listen on");
  desktop_.Do("refuse on");
  socket_.Connect();
  loop_.AdvanceMs(20);
  EXPECT_EQ(errors_.size(), 2u);
}

TEST_F(SimSocketTest, ExchangesCommandAndReplyWithTheLatency) {
  Connect();
  desktop_.wire().SetLatencyMs(15);
  EXPECT_TRUE(socket_.SendData(kGetPlaying));
  loop_.AdvanceMs(29);
  EXPECT_TRUE(received_.empty());
  loop_.AdvanceMs(1);
  EXPECT_EQ(received_, std::vector<std::string>{kPlayingReply});
  EXPECT_EQ(socket_.sent(), std::vector<std::string>{kGetPlaying});
}

TEST_F(SimSocketTest, ArrivesWhileOnlySocketEventsAreServed) {
  Connect();
  socket_.SendData(kGetPlaying);
  loop_.WaitForSocketEvents(200);
  EXPECT_EQ(received_, std::vector<std::string>{kPlayingReply});
}

TEST_F(SimSocketTest, JoinsCommandsThatArriveWhileOneIsHandled) {
  Connect();
  desktop_.Do("handling 100");
  socket_.SendData(kGetPlaying);
  loop_.AdvanceMs(10);
  socket_.SendData(kGetPlaying);
  loop_.AdvanceMs(10);
  socket_.SendData(kGetPlaying);
  loop_.AdvanceMs(400);
  ASSERT_EQ(received_.size(), 2u);
  EXPECT_NE(received_[1].find("Syntax error"), std::string::npos);
}

TEST_F(SimSocketTest, ClosesWhenTheServerCuts) {
  Connect();
  desktop_.Do("cut");
  loop_.AdvanceMs(20);
  EXPECT_EQ(socket_.State(), SocketState::kClosing);
  EXPECT_TRUE(errors_.empty());
  EXPECT_FALSE(socket_.SendData("x"));
}

TEST_F(SimSocketTest, FailsWhenTheServerDies) {
  Connect();
  desktop_.Do("die");
  loop_.AdvanceMs(20);
  EXPECT_EQ(socket_.State(), SocketState::kError);
  EXPECT_EQ(errors_, std::vector<int>{10054});
}

TEST_F(SimSocketTest, ForgetsWhatWasOnItsWayWhenItIsClosed) {
  Connect();
  socket_.SendData(kGetPlaying);
  loop_.Sleep(20);
  socket_.Close();
  loop_.AdvanceMs(50);
  EXPECT_TRUE(received_.empty());
  EXPECT_EQ(desktop_.model().server().client_count(), 0u);
  socket_.Connect();
  loop_.AdvanceMs(20);
  EXPECT_EQ(received_, std::vector<std::string>{kGreeting});
}

TEST_F(SimSocketTest, SendsNothingUnlessConnected) {
  EXPECT_FALSE(socket_.SendData("x"));
  Connect();
  socket_.RefuseNextSend();
  EXPECT_FALSE(socket_.SendData("x"));
  EXPECT_TRUE(socket_.SendData(kGetPlaying));
}

TEST_F(SimSocketTest, IsClosedAsTheFifthClient) {
  Connect();
  std::vector<std::unique_ptr<SimSocket>> others;
  for (int i = 0; i < 4; ++i) {
    others.push_back(desktop_.MakeSocket());
    Listen(*others.back());
    others.back()->SetRemote("127.0.0.1", 3383);
    others.back()->Connect();
    loop_.AdvanceMs(20);
  }
  EXPECT_EQ(others[2]->State(), SocketState::kConnected);
  EXPECT_EQ(others[3]->State(), SocketState::kClosing);
  EXPECT_EQ(received_.size(), 3u);
  EXPECT_EQ(desktop_.model().server().client_count(), 4u);
}

TEST_F(SimSocketTest, HearsNothingFromAServerThatHangs) {
  desktop_.Do("listen on");
  desktop_.Do("hang 500");
  socket_.Connect();
  loop_.AdvanceMs(490);
  EXPECT_EQ(socket_.State(), SocketState::kConnected);
  EXPECT_TRUE(received_.empty());
  loop_.AdvanceMs(20);
  EXPECT_EQ(received_, std::vector<std::string>{kGreeting});
}

TEST_F(SimSocketTest, CannotConnectWhenThePortIsTaken) {
  desktop_.wire().SetPortTaken(true);
  desktop_.Do("listen on");
  EXPECT_FALSE(desktop_.model().server().listening());
  socket_.Connect();
  loop_.AdvanceMs(20);
  EXPECT_EQ(errors_, std::vector<int>{kConnectionRefused});
}

}  // namespace
}  // namespace corvane::sim
