// A small TCP server on this machine, on a port of the system's choice, served by a thread of its
// own as an independent program would be.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace corvane::contract {

class TcpPeer {
 public:
  TcpPeer();
  ~TcpPeer();
  TcpPeer(const TcpPeer&) = delete;
  TcpPeer& operator=(const TcpPeer&) = delete;

  // Keeps its value whether it listens or not.
  [[nodiscard]] std::uint16_t port() const;
  void SetListening(bool listening);
  // To the client that connected last, once it has; waits for that.
  void Send(const std::string& bytes);
  // In good order, or as if the program had died.
  void Close(bool reset);
  // From all clients so far.
  [[nodiscard]] std::string Received() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace corvane::contract
