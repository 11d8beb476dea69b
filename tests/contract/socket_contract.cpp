// Socket: states, events and what becomes of data, against a server on this machine.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "contract/factories.h"

namespace corvane::contract {
namespace {

class SocketContract : public ::testing::Test {
 protected:
  SocketContract() {
    socket_.SetEvents({[this](std::size_t bytes) { OnData(bytes); },
                       [this](int number, const std::string& description) {
                         inside_call_ = inside_call_ || calling_;
                         state_in_error_ = socket_.State();
                         errors_.emplace_back(number, description);
                       }});
    socket_.SetRemote("127.0.0.1", world_->port());
  }

  void OnData(std::size_t bytes) {
    inside_call_ = inside_call_ || calling_;
    ++arrivals_;
    if (!reading_) return;
    const std::string data = socket_.GetData();
    EXPECT_GE(data.size(), bytes);
    received_ += data;
  }
  bool Until(const std::function<bool()>& done) { return world_->idle().IdleUntil(done); }
  bool UntilState(SocketState state) {
    return Until([&] { return socket_.State() == state; });
  }
  // Connected, the greeting read.
  void Connect() {
    world_->SetListening(true);
    calling_ = true;
    socket_.Connect();
    calling_ = false;
    ASSERT_TRUE(UntilState(SocketState::kConnected));
    ASSERT_TRUE(Until([this] { return received_.ends_with("\r\n"); }));
    received_.clear();
  }

  std::unique_ptr<SocketUnderTest> world_ = MakeSocket();
  Socket& socket_ = world_->socket();
  bool reading_ = true;
  bool calling_ = false;
  bool inside_call_ = false;
  int arrivals_ = 0;
  std::string received_;
  SocketState state_in_error_ = SocketState::kClosed;
  std::vector<std::pair<int, std::string>> errors_;
};

TEST_F(SocketContract, StartsClosedAndIsConnectingUntilEventsAreDispatched) {
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
  world_->SetListening(true);
  socket_.Connect();
  EXPECT_EQ(socket_.State(), SocketState::kConnecting);
  world_->idle().loop().Sleep(200);
  EXPECT_EQ(socket_.State(), SocketState::kConnecting);
  EXPECT_TRUE(UntilState(SocketState::kConnected));
  EXPECT_TRUE(errors_.empty());
}

TEST_F(SocketContract, ConnectsWhileOnlySocketEventsAreServed) {
  world_->SetListening(true);
  socket_.Connect();
  const std::int64_t end = world_->idle().loop().TickMs() + kPatienceMs;
  while (!received_.ends_with("\r\n") && world_->idle().loop().TickMs() < end) {
    world_->idle().loop().WaitForSocketEvents(100);
  }
  EXPECT_EQ(socket_.State(), SocketState::kConnected);
  EXPECT_TRUE(received_.ends_with("\r\n"));
}

TEST_F(SocketContract, ARefusedConnectionGivesTheErrorEventWithTheStateAlreadySet) {
  world_->SetListening(false);
  calling_ = true;
  socket_.Connect();
  calling_ = false;
  ASSERT_TRUE(Until([this] { return !errors_.empty(); }));
  EXPECT_EQ(errors_[0].first, kConnectionRefused);
  EXPECT_NE(errors_[0].second, "");
  EXPECT_EQ(state_in_error_, SocketState::kError);
  EXPECT_FALSE(inside_call_);
  world_->idle().Idle(200);
  EXPECT_EQ(errors_.size(), 1U);
  socket_.Close();
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
  Connect();
}

TEST_F(SocketContract, ClosingWhileConnectingBringsNoEvent) {
  world_->SetListening(false);
  socket_.Connect();
  socket_.Close();
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
  world_->idle().Idle(500);
  EXPECT_TRUE(errors_.empty());
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
}

TEST_F(SocketContract, SendsBytesAsTheyAre) {
  Connect();
  const std::string command = R"({"Command": "Get", "Method": "IsPlaying"})";
  EXPECT_TRUE(socket_.SendData(command));
  EXPECT_TRUE(Until([&] { return world_->PeerReceived() == command; }));
}

TEST_F(SocketContract, SendingWithoutAConnectionFails) {
  EXPECT_FALSE(socket_.SendData("x"));
  world_->SetListening(true);
  socket_.Connect();
  EXPECT_FALSE(socket_.SendData("x"));
  Connect();
  socket_.Close();
  EXPECT_FALSE(socket_.SendData("x"));
}

TEST_F(SocketContract, DataArrivesAsAnEventAndWhole) {
  Connect();
  arrivals_ = 0;
  world_->PeerSends("{\"Result\":\"OK\"}\r\n");
  world_->idle().loop().Sleep(200);
  EXPECT_EQ(arrivals_, 0);
  ASSERT_TRUE(Until([this] { return received_.size() >= 17; }));
  EXPECT_EQ(received_, "{\"Result\":\"OK\"}\r\n");
  EXPECT_GE(arrivals_, 1);
  EXPECT_EQ(socket_.GetData(), "");
}

TEST_F(SocketContract, ManyAndLargePiecesArriveInOrder) {
  Connect();
  std::string sent;
  for (int i = 0; i < 200; ++i) {
    const std::string piece = std::to_string(i) + std::string(static_cast<std::size_t>(i * 7), '.');
    sent += piece;
    world_->PeerSends(piece);
  }
  const std::string large(300'000, 'x');
  sent += large;
  world_->PeerSends(large);
  ASSERT_TRUE(Until([&] { return received_.size() >= sent.size(); }));
  EXPECT_EQ(received_, sent);
}

TEST_F(SocketContract, WhatIsNotReadWaits) {
  Connect();
  reading_ = false;
  world_->PeerSends("one ");
  ASSERT_TRUE(Until([this] { return arrivals_ > 0; }));
  world_->PeerSends("two");
  world_->idle().Idle(300);
  // Nothing says when the second piece has come as long as the first one is not read.
  std::string got = socket_.GetData();
  EXPECT_TRUE(got.starts_with("one ")) << got;
  EXPECT_TRUE(Until([&] {
    got += received_ + socket_.GetData();
    received_.clear();
    return got.size() >= 7;
  }));
  EXPECT_EQ(got, "one two");
  EXPECT_EQ(socket_.GetData(), "");
}

TEST_F(SocketContract, ThePeersCloseLeadsToClosingAfterTheLastData) {
  Connect();
  world_->PeerSends("last words");
  world_->PeerCloses();
  ASSERT_TRUE(UntilState(SocketState::kClosing));
  EXPECT_EQ(received_, "last words");
  EXPECT_TRUE(errors_.empty());
  EXPECT_FALSE(socket_.SendData("x"));
  world_->idle().Idle(200);
  EXPECT_EQ(socket_.State(), SocketState::kClosing);
  socket_.Close();
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
  Connect();
}

// Wine 8 reports a reset like a close in good order.
TEST_F(SocketContract, AResetIsAnErrorOrAtLeastTheEnd) {
  Connect();
  world_->PeerResets();
  ASSERT_TRUE(Until([this] { return socket_.State() != SocketState::kConnected; }));
  if (socket_.State() == SocketState::kError) {
    ASSERT_EQ(errors_.size(), 1U);
    EXPECT_EQ(state_in_error_, SocketState::kError);
    EXPECT_EQ(errors_[0].first, 10054);
    EXPECT_NE(errors_[0].second, "");
  } else {
    EXPECT_EQ(socket_.State(), SocketState::kClosing);
    EXPECT_TRUE(errors_.empty());
  }
  EXPECT_FALSE(socket_.SendData("x"));
  socket_.Close();
  Connect();
}

TEST_F(SocketContract, ClosingDropsWhatTheOldConnectionStillHad) {
  Connect();
  world_->PeerSends("for the old connection");
  world_->idle().loop().Sleep(200);
  socket_.Close();
  EXPECT_EQ(socket_.GetData(), "");
  arrivals_ = 0;
  socket_.Connect();
  ASSERT_TRUE(UntilState(SocketState::kConnected));
  ASSERT_TRUE(Until([this] { return received_.ends_with("\r\n"); }));
  EXPECT_EQ(received_.find("old"), std::string::npos);
  EXPECT_TRUE(errors_.empty());
}

TEST_F(SocketContract, ConnectingAndClosingInTurnKeepsConnectionsApart) {
  world_->SetListening(true);
  for (int i = 0; i < 20; ++i) {
    socket_.Connect();
    world_->idle().loop().Sleep(5);
    socket_.Close();
  }
  world_->idle().Idle(300);
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
  EXPECT_EQ(arrivals_, 0);
  EXPECT_TRUE(errors_.empty());
  Connect();
  world_->idle().Idle(300);
  EXPECT_EQ(socket_.State(), SocketState::kConnected);
}

TEST_F(SocketContract, ADataHandlerMayCloseTheSocket) {
  Connect();
  socket_.SetEvents({[this](std::size_t) {
                       ++arrivals_;
                       socket_.Close();
                     },
                     nullptr});
  arrivals_ = 0;
  world_->PeerSends("x");
  ASSERT_TRUE(UntilState(SocketState::kClosed));
  world_->idle().Idle(200);
  EXPECT_EQ(arrivals_, 1);
  EXPECT_EQ(socket_.State(), SocketState::kClosed);
}

}  // namespace
}  // namespace corvane::contract
