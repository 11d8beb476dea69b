// What the Winsock socket promises beyond the contract: limits and hosts.
#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "base/loop_win.h"
#include "contract/factories.h"
#include "contract/tcp_peer.h"
#include "link/socket_win.h"

namespace corvane::contract {
namespace {

class SocketWinTest : public ::testing::Test {
 protected:
  SocketWinTest() {
    peer_.SetListening(true);
    socket_.SetRemote("127.0.0.1", peer_.port());
    socket_.SetEvents({[this](std::size_t) {
                         ++arrivals_;
                         if (reading_) received_ += socket_.GetData();
                       },
                       [this](int number, const std::string&) { error_ = number; }});
  }
  bool Until(const std::function<bool()>& done) {
    const std::int64_t end = loop_.TickMs() + kPatienceMs;
    while (!done()) {
      if (loop_.TickMs() > end) return false;
      loop_.WaitForSocketEvents(50);
    }
    return true;
  }

  LoopWin loop_;
  TcpPeer peer_;
  SocketWin socket_{loop_};
  bool reading_ = true;
  int arrivals_ = 0;
  int error_ = 0;
  std::string received_;
};

TEST_F(SocketWinTest, AFloodThatIsNotReadIsHeldBackAndThenArrivesWhole) {
  std::string sent;
  while (sent.size() < 6 * SocketWin::kInboxLimit) sent += std::to_string(sent.size()) + " ";
  socket_.Connect();
  ASSERT_TRUE(Until([this] { return received_.ends_with("\r\n"); }));
  received_.clear();
  reading_ = false;
  const int before = arrivals_;
  std::thread sender([&] { peer_.Send(sent); });
  EXPECT_TRUE(Until([&] { return arrivals_ > before; }));
  const std::int64_t end = loop_.TickMs() + 1500;
  while (loop_.TickMs() < end) loop_.WaitForSocketEvents(50);
  received_ = socket_.GetData();
  EXPECT_LE(received_.size(), SocketWin::kInboxLimit);
  EXPECT_GE(received_.size(), 1U);
  reading_ = true;
  EXPECT_TRUE(Until([&] { return received_.size() >= sent.size(); }));
  sender.join();
  EXPECT_TRUE(received_ == sent);
}

TEST_F(SocketWinTest, OnlyThisMachineIsConnectedTo) {
  for (const char* host : {"192.0.2.1", "8.8.8.8", "", "nonsense", "0.0.0.0", "127.0.0.1.5"}) {
    error_ = 0;
    socket_.SetRemote(host, peer_.port());
    socket_.Connect();
    EXPECT_EQ(error_, 0) << host;
    ASSERT_TRUE(Until([this] { return error_ != 0; })) << host;
    EXPECT_EQ(error_, 10049) << host;
    EXPECT_EQ(socket_.State(), SocketState::kError) << host;
    socket_.Close();
  }
  socket_.SetRemote("localhost", peer_.port());
  socket_.Connect();
  EXPECT_TRUE(Until([this] { return socket_.State() == SocketState::kConnected; }));
}

TEST_F(SocketWinTest, AnErrorEventOfAClosedSocketDoesNotCome) {
  socket_.SetRemote("8.8.8.8", peer_.port());
  socket_.Connect();
  socket_.Close();
  loop_.WaitForSocketEvents(100);
  EXPECT_EQ(error_, 0);
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
}

TEST_F(SocketWinTest, ASecondConnectChangesNothing) {
  socket_.Connect();
  ASSERT_TRUE(Until([this] { return received_.ends_with("\r\n"); }));
  const std::string greeting = received_;
  socket_.Connect();
  loop_.WaitForSocketEvents(200);
  EXPECT_EQ(socket_.State(), SocketState::kConnected);
  EXPECT_EQ(received_, greeting);
}

TEST(SocketWinLife, EventsOfADestroyedSocketGoNowhere) {
  LoopWin loop;
  TcpPeer peer;
  peer.SetListening(true);
  int arrivals = 0;
  {
    SocketWin socket(loop);
    socket.SetRemote("127.0.0.1", peer.port());
    socket.SetEvents({[&](std::size_t) { ++arrivals; }, nullptr});
    socket.Connect();
    loop.Sleep(300);
  }
  loop.WaitForSocketEvents(300);
  EXPECT_EQ(arrivals, 0);
}

}  // namespace
}  // namespace corvane::contract
