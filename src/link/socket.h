// The seam to one TCP client connection.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace corvane {

enum class SocketState : int {
  kClosed = 0,
  kOpen = 1,
  kListening = 2,
  kConnectionPending = 3,
  kResolvingHost = 4,
  kHostResolved = 5,
  kConnecting = 6,
  kConnected = 7,
  kClosing = 8,  // the peer has closed
  kError = 9,
};

inline constexpr int kConnectionRefused = 10061;

// Never blocks. Its events come through the loop as socket events, never from inside a call.
class Socket {
 public:
  struct Events {
    // `bytes` wait to be read.
    std::function<void(std::size_t bytes)> data_arrival;
    // The State is kError already. `number` as Winsock gives it, `description` the system's text.
    std::function<void(int number, const std::string& description)> error;
  };
  virtual ~Socket() = default;

  virtual void SetEvents(Events events) = 0;
  virtual void SetRemote(const std::string& host, std::uint16_t port) = 0;
  [[nodiscard]] virtual SocketState State() const = 0;

  // From kClosed to kConnecting (or kError, with the event).
  virtual void Connect() = 0;
  // To kClosed from any state; what was received and not read is lost, no event follows.
  virtual void Close() = 0;
  // One write. False when not all of it was taken at once.
  virtual bool SendData(std::string_view data) = 0;
  // Everything that waits.
  [[nodiscard]] virtual std::string GetData() = 0;
};

}  // namespace corvane
