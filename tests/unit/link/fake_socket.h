// A socket whose peer is the test.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/loop.h"
#include "link/socket.h"

namespace corvane::test {

class FakeSocket : public Socket {
 public:
  explicit FakeSocket(Loop& loop) : loop_(loop) {}

  SocketState state = SocketState::kClosed;
  std::string host;
  int port = 0;
  std::vector<std::string> sent;
  int connects = 0;
  int closes = 0;
  bool take_sends = true;
  std::function<void()> on_connect;
  std::function<void(const std::string&)> on_send;

  // The peer's bytes arrive: the event is posted.
  void Arrive(const std::string& bytes) {
    inbox_ += bytes;
    loop_.Post(EventSource::kSocket, [this] {
      if (!inbox_.empty() && events_.data_arrival) events_.data_arrival(inbox_.size());
    });
  }
  void Fail(int number, const std::string& description) {
    state = SocketState::kError;
    loop_.Post(EventSource::kSocket, [this, number, description] {
      if (events_.error) events_.error(number, description);
    });
  }
  [[nodiscard]] bool HasEvents() const { return static_cast<bool>(events_.data_arrival); }

  void SetEvents(Events events) override { events_ = std::move(events); }
  void SetRemote(const std::string& to, std::uint16_t number) override {
    host = to;
    port = number;
  }
  SocketState State() const override { return state; }
  void Connect() override {
    ++connects;
    state = SocketState::kConnecting;
    if (on_connect) on_connect();
  }
  void Close() override {
    ++closes;
    state = SocketState::kClosed;
    inbox_.clear();
  }
  bool SendData(std::string_view data) override {
    sent.emplace_back(data);
    if (on_send) on_send(sent.back());
    return take_sends;
  }
  std::string GetData() override { return std::exchange(inbox_, {}); }

 private:
  Loop& loop_;
  Events events_;
  std::string inbox_;
};

}  // namespace corvane::test
