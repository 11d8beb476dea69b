// Clients, reads, handling time, and replies gone wrong.
#include "standin/net_remote_server.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "standin/net_remote_dialogue.h"

namespace corvane::standin {
namespace {

class NetRemoteServerTest : public ::testing::Test, public NetRemoteServer::Wire {
 protected:
  NetRemoteServerTest()
      : server_(agenda_, {[this] { return now_ms_; },
                          [this](std::string_view text) {
                            answered_.emplace_back(text);
                            return "<" + std::string(text) + ">";
                          },
                          [](std::string_view, std::string_view) {}}) {
    server_.SetWire(this);
  }

  void Send(ClientId client, std::string_view bytes) override {
    sent_.push_back(std::to_string(now_ms_) + ":" + std::to_string(client) + ":" +
                    std::string(bytes));
  }
  void Close(ClientId client, bool reset) override {
    closed_.push_back(std::to_string(client) + (reset ? " reset" : ""));
  }
  bool Listen(std::uint16_t port) override {
    ports_.push_back(port);
    return port != 666;
  }

  void Advance(std::int64_t to_ms) {
    while (agenda_.NextDueMs() && *agenda_.NextDueMs() <= to_ms) {
      now_ms_ = *agenda_.NextDueMs();
      while (const auto action = agenda_.TakeDue(now_ms_)) action();
    }
    now_ms_ = to_ms;
  }
  ClientId Connect() {
    const ClientId id = server_.Accepted();
    Advance(now_ms_);
    sent_.clear();
    return id;
  }

  using Strings = std::vector<std::string>;
  std::int64_t now_ms_ = 0;
  Agenda agenda_;
  NetRemoteServer server_;
  Strings answered_;
  Strings sent_;
  Strings closed_;
  std::vector<int> ports_;
};

TEST_F(NetRemoteServerTest, OpensAndClosesThePort) {
  EXPECT_FALSE(server_.Accepts(3383));
  EXPECT_TRUE(server_.SetListening(true, 3383));
  EXPECT_TRUE(server_.Accepts(3383));
  EXPECT_FALSE(server_.Accepts(3384));
  Connect();
  server_.SetListening(false, 0);
  EXPECT_FALSE(server_.Accepts(3383));
  EXPECT_EQ(closed_, Strings{"1"});
  EXPECT_EQ(ports_, (std::vector<int>{3383, 0}));
}

TEST_F(NetRemoteServerTest, DoesNotListenOnATakenPort) {
  EXPECT_FALSE(server_.SetListening(true, 666));
  EXPECT_FALSE(server_.listening());
}

TEST_F(NetRemoteServerTest, RefusesWithoutEndingConnections) {
  server_.SetListening(true, 3383);
  const ClientId client = Connect();
  server_.SetRefusing(true);
  EXPECT_FALSE(server_.Accepts(3383));
  server_.Received(client, "a");
  Advance(0);
  EXPECT_EQ(sent_, Strings{"0:1:<a>"});
  server_.SetRefusing(false);
  EXPECT_TRUE(server_.Accepts(3383));
}

TEST_F(NetRemoteServerTest, GreetsAClient) {
  server_.Accepted();
  EXPECT_TRUE(sent_.empty());
  Advance(0);
  EXPECT_EQ(sent_, Strings{"0:1:" + std::string(kGreeting)});
}

TEST_F(NetRemoteServerTest, TakesFourClientsAndNoFifth) {
  for (int i = 1; i <= 4; ++i) EXPECT_EQ(server_.Accepted(), i);
  EXPECT_EQ(server_.Accepted(), 0);
  server_.Gone(2);
  EXPECT_EQ(server_.Accepted(), 5);
  EXPECT_EQ(server_.client_count(), 4u);
}

TEST_F(NetRemoteServerTest, AnswersAfterTheHandlingTime) {
  const ClientId client = Connect();
  server_.SetHandlingMs(100);
  server_.Received(client, "a");
  Advance(99);
  EXPECT_TRUE(sent_.empty());
  Advance(100);
  EXPECT_EQ(sent_, Strings{"100:1:<a>"});
}

TEST_F(NetRemoteServerTest, TakesWhatCameMeanwhileAsOneCommand) {
  const ClientId client = Connect();
  server_.SetHandlingMs(100);
  server_.Received(client, "a");
  Advance(10);
  server_.Received(client, "b");
  Advance(20);
  server_.Received(client, "c");
  Advance(300);
  EXPECT_EQ(sent_, (Strings{"100:1:<a>", "200:1:<bc>"}));
}

TEST_F(NetRemoteServerTest, CarriesOutWhatAClientSentBeforeItWent) {
  const ClientId client = Connect();
  server_.SetHandlingMs(100);
  server_.Received(client, "a");
  Advance(10);
  server_.Received(client, "b");
  server_.Gone(client);
  Advance(150);
  EXPECT_EQ(server_.client_count(), 1u);
  Advance(300);
  EXPECT_EQ(answered_, (Strings{"a", "b"}));
  EXPECT_EQ(sent_, Strings{});
  EXPECT_EQ(server_.client_count(), 0u);
}

TEST_F(NetRemoteServerTest, TakesWhatComesAtTheSameMomentAsOneCommand) {
  const ClientId client = Connect();
  server_.Received(client, "a");
  server_.Received(client, "b");
  Advance(0);
  EXPECT_EQ(sent_, Strings{"0:1:<ab>"});
}

TEST_F(NetRemoteServerTest, ReadsNoMoreThanOneBufferAtOnce) {
  const ClientId client = Connect();
  server_.Received(client, std::string(NetRemoteServer::kMaxReadBytes + 1, 'x'));
  Advance(0);
  ASSERT_EQ(sent_.size(), 2u);
  EXPECT_EQ(sent_[1], "0:1:<x>");
}

TEST_F(NetRemoteServerTest, CutsOffAClientThatSendsWithoutEnd) {
  const ClientId client = Connect();
  server_.SetHandlingMs(1000);
  const std::string much(NetRemoteServer::kMaxInboxBytes / 2 + 1, 'x');
  server_.Received(client, much);
  server_.Received(client, much);
  EXPECT_EQ(closed_, Strings{"1 reset"});
  Advance(5000);
  EXPECT_TRUE(sent_.empty());
}

TEST_F(NetRemoteServerTest, SplitsAReply) {
  const ClientId client = Connect();
  server_.SetReplyFault({FaultKind::kSplit, 30, "", 1});
  server_.Received(client, "abcd");
  Advance(100);
  server_.Received(client, "e");
  Advance(100);
  EXPECT_EQ(sent_, (Strings{"0:1:<ab", "30:1:cd>", "100:1:<e>"}));
}

TEST_F(NetRemoteServerTest, JoinsAReplyWithTheNext) {
  const ClientId client = Connect();
  server_.SetReplyFault({FaultKind::kJoin, 0, "", 1});
  server_.Received(client, "a");
  Advance(5);
  EXPECT_TRUE(sent_.empty());
  server_.Received(client, "b");
  Advance(5);
  EXPECT_EQ(sent_, Strings{"5:1:<a><b>"});
}

TEST_F(NetRemoteServerTest, AReplyThatIsHeldBackWaitsASecondForTheNext) {
  const ClientId client = Connect();
  server_.SetReplyFault({FaultKind::kJoin, 0, "", 2});
  server_.Received(client, "a");
  Advance(400);
  server_.Received(client, "b");
  Advance(999);
  EXPECT_TRUE(sent_.empty());
  server_.SetReplyFault({FaultKind::kJoin, 0, "", 1});
  Advance(1500);
  EXPECT_EQ(sent_, Strings{"1000:1:<a><b>"});
  server_.Received(client, "c");
  Advance(1600);
  server_.Received(client, "d");
  Advance(5000);
  EXPECT_EQ(sent_, (Strings{"1000:1:<a><b>", "1600:1:<c><d>"}));
}

TEST_F(NetRemoteServerTest, DelaysRepliesInTheirOrder) {
  const ClientId client = Connect();
  server_.SetReplyFault({FaultKind::kDelay, 50, "", 1});
  server_.Received(client, "a");
  Advance(10);
  server_.Received(client, "b");
  Advance(100);
  EXPECT_EQ(sent_, (Strings{"50:1:<a>", "50:1:<b>"}));
}

TEST_F(NetRemoteServerTest, GarblesDropsAndReplacesReplies) {
  const ClientId client = Connect();
  server_.SetReplyFault({FaultKind::kGarble, 0, "", 1});
  server_.Received(client, "abcd");
  Advance(0);
  server_.SetReplyFault({FaultKind::kDrop, 0, "", 2});
  for (const char* text : {"x", "y"}) {
    server_.Received(client, text);
    Advance(0);
  }
  server_.SetReplyFault({FaultKind::kText, 0, "own", 1});
  server_.Received(client, "z");
  Advance(0);
  EXPECT_EQ(sent_, (Strings{"0:1:<a#cd#", "0:1:own"}));
}

TEST_F(NetRemoteServerTest, KeepsAFaultForAllRepliesUntilItIsTakenBack) {
  const ClientId client = Connect();
  server_.SetReplyFault({FaultKind::kDrop, 0, "", kForAll});
  for (int i = 0; i < 10; ++i) {
    server_.Received(client, "x");
    Advance(0);
  }
  EXPECT_TRUE(sent_.empty());
  server_.SetReplyFault({});
  server_.Received(client, "y");
  Advance(0);
  EXPECT_EQ(sent_, Strings{"0:1:<y>"});
}

TEST_F(NetRemoteServerTest, SpoilsTheGreetingApartFromReplies) {
  server_.SetGreetingFault({FaultKind::kText, 0, "hello", 1});
  server_.Accepted();
  Advance(0);
  server_.Received(1, "a");
  Advance(0);
  EXPECT_EQ(sent_, (Strings{"0:1:hello", "0:1:<a>"}));
}

TEST_F(NetRemoteServerTest, AnswersNobodyWhoIsGone) {
  const ClientId client = Connect();
  server_.SetHandlingMs(10);
  server_.SetReplyFault({FaultKind::kDelay, 50, "", 1});
  server_.Received(client, "a");
  Advance(20);
  server_.Gone(client);
  server_.Received(client, "b");
  Advance(1000);
  EXPECT_TRUE(sent_.empty());
  EXPECT_TRUE(closed_.empty());
}

TEST_F(NetRemoteServerTest, CutsAllConnectionsAndGoesOnListening) {
  server_.SetListening(true, 3383);
  Connect();
  Connect();
  server_.Cut(true);
  EXPECT_EQ(closed_, (Strings{"1 reset", "2 reset"}));
  EXPECT_TRUE(server_.Accepts(3383));
}

}  // namespace
}  // namespace corvane::standin
