// Each client has one reader: it takes what waits as one command, is busy for the handling time,
// and only then sees what came meanwhile - which is how two commands become one faulty one.
#include "standin/net_remote_server.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "standin/net_remote_dialogue.h"

namespace corvane::standin {

NetRemoteServer::NetRemoteServer(Agenda& agenda, Hooks hooks)
    : agenda_(agenda), hooks_(std::move(hooks)) {}

void NetRemoteServer::SetWire(Wire* wire) {
  wire_ = wire;
  if (wire_ != nullptr && listening_ && !refusing_) Open();
}

bool NetRemoteServer::SetListening(bool on, std::uint16_t port) {
  if (!on) {
    Cut(false);
    listening_ = false;
    if (wire_ != nullptr) wire_->Listen(0);
    return true;
  }
  if (listening_ && port_ == port) return true;
  port_ = port;
  listening_ = true;
  if (!refusing_) Open();
  return listening_;
}

void NetRemoteServer::SetRefusing(bool refusing) {
  if (refusing_ == refusing) return;
  refusing_ = refusing;
  if (!listening_) return;
  if (refusing) {
    if (wire_ != nullptr) wire_->Listen(0);
  } else {
    Open();
  }
}

bool NetRemoteServer::Accepts(std::uint16_t port) const {
  return listening_ && !refusing_ && port_ == port;
}

void NetRemoteServer::Cut(bool reset) {
  while (!clients_.empty()) Drop(clients_.begin()->first, reset);
}

void NetRemoteServer::Die() {
  Cut(true);
  listening_ = false;
  if (wire_ != nullptr) wire_->Listen(0);
}

ClientId NetRemoteServer::Accepted() {
  if (clients_.size() >= kMaxClients) {
    Log("refuse-client", 0, "there are four clients already");
    return 0;
  }
  const ClientId id = ++last_client_;
  clients_[id];
  Log("accept", id, "");
  // As an event of its own: a server that hangs greets nobody.
  agenda_.Add(hooks_.now_ms(), [this, id] { Emit(id, std::string(kGreeting), greeting_fault_); });
  return id;
}

void NetRemoteServer::Received(ClientId client, std::string_view bytes) {
  const auto found = clients_.find(client);
  if (found == clients_.end() || bytes.empty()) return;
  found->second.inbox += bytes;
  if (found->second.inbox.size() > kMaxInboxBytes) {
    Drop(client, true);
    return;
  }
  if (found->second.busy) return;
  found->second.busy = true;
  agenda_.Add(hooks_.now_ms(), [this, client] { Read(client); });
}

void NetRemoteServer::Gone(ClientId client) {
  const auto found = clients_.find(client);
  if (found == clients_.end()) return;
  found->second.gone = true;
  if (found->second.busy) return;
  clients_.erase(found);
  Log("close", client, "by the client");
}

void NetRemoteServer::Open() {
  if (wire_ != nullptr && !wire_->Listen(port_)) listening_ = false;
}

void NetRemoteServer::Read(ClientId id) {
  const auto found = clients_.find(id);
  if (found == clients_.end()) return;
  std::string& inbox = found->second.inbox;
  std::string command = inbox.substr(0, kMaxReadBytes);
  inbox.erase(0, command.size());
  Log("command", id, command);
  if (handling_ms_ == 0) {
    Finish(id, command);
    return;
  }
  agenda_.Add(hooks_.now_ms() + handling_ms_,
              [this, id, command = std::move(command)] { Finish(id, command); });
}

void NetRemoteServer::Finish(ClientId id, const std::string& command) {
  if (!clients_.contains(id)) return;
  Emit(id, hooks_.answer(command), reply_fault_);
  const auto found = clients_.find(id);
  if (found == clients_.end()) return;
  found->second.busy = !found->second.inbox.empty();
  if (found->second.busy) {
    agenda_.Add(hooks_.now_ms(), [this, id] { Read(id); });
  } else if (found->second.gone) {
    Gone(id);
  }
}

void NetRemoteServer::Emit(ClientId id, std::string reply, Fault& fault) {
  const auto found = clients_.find(id);
  if (found == clients_.end()) return;
  const Fault now = fault;
  if (fault.kind != FaultKind::kNone && fault.count != kForAll && --fault.count <= 0) {
    fault = Fault{};
  }
  if (now.kind == FaultKind::kText) reply = now.text;
  if (now.kind == FaultKind::kGarble) {
    for (std::size_t i = 2; i < reply.size(); i += 3) reply[i] = '#';
  }
  if (now.kind == FaultKind::kJoin) {
    HoldBack(id, reply);
    return;
  }
  reply.insert(0, std::exchange(found->second.held_back, {}));
  switch (now.kind) {
    case FaultKind::kDrop:
      Log("drop", id, reply);
      break;
    case FaultKind::kDelay:
      Later(id, now.ms, std::move(reply));
      break;
    case FaultKind::kSplit:
      Later(id, 0, reply.substr(0, reply.size() / 2));
      Later(id, now.ms, reply.substr(reply.size() / 2));
      break;
    default:
      Later(id, 0, std::move(reply));
      break;
  }
}

void NetRemoteServer::HoldBack(ClientId id, std::string_view reply) {
  Client& client = clients_.at(id);
  Log("hold-back", id, reply);
  client.held_back += reply;
  if (client.held_back.size() > reply.size()) return;
  const std::int64_t since_ms = hooks_.now_ms();
  client.held_since_ms = since_ms;
  agenda_.Add(since_ms + kMostHeldMs, [this, id, since_ms] {
    const auto found = clients_.find(id);
    if (found == clients_.end() || found->second.held_since_ms != since_ms) return;
    Later(id, 0, std::exchange(found->second.held_back, {}));
  });
}

void NetRemoteServer::Later(ClientId id, int ms, std::string bytes) {
  // Nothing overtakes what is still held up.
  std::int64_t& due = clients_.at(id).last_send_ms;
  due = std::max(due, hooks_.now_ms() + ms);
  if (due <= hooks_.now_ms()) {
    SendNow(id, bytes);
  } else {
    agenda_.Add(due, [this, id, bytes = std::move(bytes)] { SendNow(id, bytes); });
  }
}

void NetRemoteServer::SendNow(ClientId id, std::string_view bytes) {
  const auto found = clients_.find(id);
  if (found == clients_.end() || found->second.gone || bytes.empty()) return;
  Log("reply", id, bytes);
  if (wire_ != nullptr) wire_->Send(id, bytes);
}

void NetRemoteServer::Drop(ClientId id, bool reset) {
  if (clients_.erase(id) == 0) return;
  Log("close", id, reset ? "reset" : "by the server");
  if (wire_ != nullptr) wire_->Close(id, reset);
}

void NetRemoteServer::Log(std::string_view kind, ClientId id, std::string_view detail) {
  hooks_.log(kind, "client=" + Decimal(id) + " " + std::string(detail));
}

}  // namespace corvane::standin
