// The Net Remote server without its sockets: up to four clients, what each has sent and not yet
// been answered, the time that handling takes, and replies gone wrong on purpose.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "standin/agenda.h"

namespace corvane::standin {

using ClientId = int;  // from 1 on, never given twice; 0: none

enum class FaultKind {
  kNone,
  kSplit,   // in two parts, the second `ms` later
  kJoin,    // held back for kMostHeldMs at most and sent together with the next one
  kDelay,   // `ms` later
  kGarble,  // every third byte replaced
  kDrop,    // not sent
  kText,    // `text` in its place
};

struct Fault {
  FaultKind kind = FaultKind::kNone;
  int ms = 0;
  std::string text;
  int count = 1;  // for so many replies; kForAll: until another fault is set
};
inline constexpr int kForAll = -1;

class NetRemoteServer {
 public:
  static constexpr int kMaxClients = 4;
  // One read takes no more; what is left comes with the next.
  static constexpr std::size_t kMaxReadBytes = 4096;
  static constexpr int kMostHeldMs = 1000;
  // A client that sends more than this without being read is cut off.
  static constexpr std::size_t kMaxInboxBytes = 1 << 20;

  // The connections, as far as the server needs them.
  class Wire {
   public:
    virtual ~Wire() = default;
    virtual void Send(ClientId client, std::string_view bytes) = 0;
    // `reset`: as if the program had died, not in good order.
    virtual void Close(ClientId client, bool reset) = 0;
    // The port opens or closes; `port` is 0 when nothing listens. False: it cannot be opened.
    virtual bool Listen(std::uint16_t port) = 0;
  };
  struct Hooks {
    std::function<std::int64_t()> now_ms;
    std::function<std::string(std::string_view)> answer;  // one command, one reply
    std::function<void(std::string_view kind, std::string_view detail)> log;
  };

  NetRemoteServer(Agenda& agenda, Hooks hooks);

  // Without a wire the port opens for nobody. The wire must outlive the server or be taken away.
  void SetWire(Wire* wire);

  // Opens the port, or closes it and every connection. False: the port cannot be opened.
  bool SetListening(bool on, std::uint16_t port);
  [[nodiscard]] bool listening() const { return listening_; }
  [[nodiscard]] std::uint16_t port() const { return port_; }
  // While it refuses, the port is closed although the server is switched on; connections stay.
  void SetRefusing(bool refusing);
  // A client can connect now.
  [[nodiscard]] bool Accepts(std::uint16_t port) const;
  // Ends all connections; the port stays as it is.
  void Cut(bool reset);
  // As when the program ends: everything closed, nothing left to be handled.
  void Die();

  // What the wire tells. Accepted gives 0 when there are four clients already: close it then. What
  // a client sent before it went is still carried out.
  ClientId Accepted();
  void Received(ClientId client, std::string_view bytes);
  void Gone(ClientId client);
  [[nodiscard]] std::size_t client_count() const { return clients_.size(); }

  void SetHandlingMs(int ms) { handling_ms_ = ms; }
  void SetReplyFault(Fault fault) { reply_fault_ = std::move(fault); }
  void SetGreetingFault(Fault fault) { greeting_fault_ = std::move(fault); }

 private:
  struct Client {
    std::string inbox;
    std::string held_back;
    std::int64_t held_since_ms = 0;
    bool busy = false;
    bool gone = false;              // nothing can be sent to it any more
    std::int64_t last_send_ms = 0;  // when the last part of what was answered goes out
  };

  void Open();
  void Read(ClientId id);
  void Finish(ClientId id, const std::string& command);
  void Emit(ClientId id, std::string reply, Fault& fault);
  void HoldBack(ClientId id, std::string_view reply);
  void Later(ClientId id, int ms, std::string bytes);
  void SendNow(ClientId id, std::string_view bytes);
  void Drop(ClientId id, bool reset);
  void Log(std::string_view kind, ClientId id, std::string_view detail);

  Agenda& agenda_;
  Hooks hooks_;
  Wire* wire_ = nullptr;
  bool listening_ = false;
  bool refusing_ = false;
  std::uint16_t port_ = 0;
  std::map<ClientId, Client> clients_;
  ClientId last_client_ = 0;
  int handling_ms_ = 0;
  Fault reply_fault_;
  Fault greeting_fault_;
};

}  // namespace corvane::standin
