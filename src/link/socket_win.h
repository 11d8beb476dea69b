// One TCP client connection to this machine, on Winsock without blocking.
#pragma once

#include <winsock2.h>

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "link/socket.h"

namespace corvane {

class LoopWin;

// There is one at a time: it takes the loop's socket messages.
class SocketWin : public Socket {
 public:
  // What is received and not read is kept up to this size; then the sender has to wait.
  static constexpr std::size_t kInboxLimit = 1024 * 1024;

  // The loop must outlive the socket. No handler of its events may destroy it.
  explicit SocketWin(LoopWin& loop);
  ~SocketWin() override;
  SocketWin(const SocketWin&) = delete;
  SocketWin& operator=(const SocketWin&) = delete;

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
  [[nodiscard]] unsigned MessageNumber() const;
  [[nodiscard]] int Open();
  void CloseSocket();
  void Fail(int number);
  void PostForThisConnection(std::function<void()> event);
  void OnConnected(int error);
  void OnReadable();
  void OnPeerClosed(int error);
  void OnMessage(unsigned message, std::uintptr_t w, std::intptr_t l);
  int Receive();

  LoopWin& loop_;
  Events events_;
  std::string host_ = "127.0.0.1";
  std::uint16_t port_ = 0;
  SocketState state_ = SocketState::kClosed;
  int startup_error_ = 0;
  SOCKET socket_ = INVALID_SOCKET;
  std::uint64_t connection_ = 0;  // counts up with every Connect and Close
  std::string inbox_;
  // Ends with the socket: what the loop still holds for it then goes nowhere.
  std::shared_ptr<SocketWin*> self_ = std::make_shared<SocketWin*>(this);
};

}  // namespace corvane
