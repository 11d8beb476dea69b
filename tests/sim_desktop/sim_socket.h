// Socket against the stand-in's Net Remote server, through a wire with a latency.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/loop.h"
#include "link/socket.h"
#include "standin/net_remote_server.h"

namespace corvane::sim {

class SimWire;

class SimSocket : public Socket {
 public:
  // The wire must outlive the socket.
  explicit SimSocket(SimWire& wire);
  ~SimSocket() override;

  void SetEvents(Events events) override;
  void SetRemote(const std::string& host, std::uint16_t port) override;
  SocketState State() const override;
  void Connect() override;
  void Close() override;
  bool SendData(std::string_view data) override;
  std::string GetData() override;

  // The next SendData takes nothing and answers false.
  void RefuseNextSend() { refuse_next_send_ = true; }
  // Nothing listens where the next Connect leads.
  void RefuseNextConnect() { refuse_next_connect_ = true; }
  // Is called inside each Connect, before anything comes of it.
  void SetOnConnect(std::function<void()> hook) { on_connect_ = std::move(hook); }
  // Is called inside each SendData, before it takes anything.
  void SetOnSend(std::function<void()> hook) { on_send_ = std::move(hook); }
  // What State answers, whatever it is; nullopt: the truth.
  void PretendState(std::optional<SocketState> state) { pretended_ = state; }
  // What was sent, one entry per SendData, oldest first; and how often Connect was called.
  [[nodiscard]] const std::vector<std::string>& sent() const { return sent_; }
  void ForgetSent() { sent_.clear(); }
  [[nodiscard]] int connect_count() const { return connect_count_; }

 private:
  static constexpr std::size_t kMaxSent = 100000;  // older ones are forgotten

  friend class SimWire;
  void OnConnected(standin::ClientId client);
  void OnError(int number, const std::string& description);
  void OnData(std::string_view bytes);
  void OnPeerClosed();
  void PostEvent(std::function<void()> event);

  SimWire& wire_;
  Events events_;
  std::string host_;
  std::uint16_t port_ = 0;
  SocketState state_ = SocketState::kClosed;
  standin::ClientId client_ = 0;
  std::string inbox_;
  bool refuse_next_connect_ = false;
  std::function<void()> on_connect_;
  bool refuse_next_send_ = false;
  std::function<void()> on_send_;
  std::optional<SocketState> pretended_;
  std::vector<std::string> sent_;
  int connect_count_ = 0;
  // Changes with every connection, so that what was on its way for an old one is dropped.
  std::uint64_t connection_ = 0;
  std::shared_ptr<bool> alive_;
};

}  // namespace corvane::sim
