// The Net Remote server's sockets: Winsock on the local machine alone, without Nagle's delay, its
// news through the message queue.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "standin/net_remote_server.h"

namespace corvane::standin {

class TcpWire : public NetRemoteServer::Wire {
 public:
  // `before_input` brings the model to the present time.
  TcpWire(NetRemoteServer& server, std::function<void()> before_input);
  ~TcpWire() override;

  void Send(ClientId client, std::string_view bytes) override;
  void Close(ClientId client, bool reset) override;
  bool Listen(std::uint16_t port) override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace corvane::standin
