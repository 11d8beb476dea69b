// One TCP client connection to this machine, on Winsock without blocking.
#pragma once

#include <memory>

#include "link/socket.h"

namespace corvane {

class LoopWin;

// There is one at a time: it takes the loop's socket messages.
class SocketWin : public Socket {
 public:
  // What is received and not read is kept up to this size; then the sender has to wait.
  static constexpr std::size_t kInboxLimit = 1024 * 1024;

  // The loop must outlive the socket.
  explicit SocketWin(LoopWin& loop);
  ~SocketWin() override;

  void SetEvents(Events events) override;
  // Only this machine: a Connect to a host that is no loop-back address gives error 10049.
  void SetRemote(const std::string& host, std::uint16_t port) override;
  [[nodiscard]] SocketState State() const override;
  // Nothing happens unless the state is kClosed.
  void Connect() override;
  void Close() override;
  bool SendData(std::string_view data) override;
  [[nodiscard]] std::string GetData() override;

 private:
  class Impl;
  std::shared_ptr<Impl> impl_;
};

}  // namespace corvane
