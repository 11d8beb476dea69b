// Everything that the wire brings becomes a socket event of the loop first; the State changes when
// that is dispatched, as it does with a socket whose news come through the message queue.
#include "sim_desktop/sim_socket.h"

#include <utility>

#include "sim_desktop/sim_desktop.h"

namespace corvane::sim {

SimSocket::SimSocket(SimWire& wire) : wire_(wire), alive_(std::make_shared<bool>(true)) {}

SimSocket::~SimSocket() {
  Close();
}

void SimSocket::SetEvents(Events events) {
  events_ = std::move(events);
}

void SimSocket::SetRemote(const std::string& host, std::uint16_t port) {
  host_ = host;
  port_ = port;
}

SocketState SimSocket::State() const {
  return pretended_.value_or(state_);
}

void SimSocket::Connect() {
  wire_.CatchUp();
  if (on_connect_) on_connect_();
  ++connect_count_;
  ++connection_;
  state_ = SocketState::kConnecting;
  const bool leads_there = host_ == "127.0.0.1" && !std::exchange(refuse_next_connect_, false);
  wire_.Connect(*this, connection_, leads_there ? port_ : std::uint16_t{0});
}

void SimSocket::Close() {
  wire_.CatchUp();
  if (client_ != 0) wire_.Disconnect(client_);
  client_ = 0;
  ++connection_;
  inbox_.clear();
  state_ = SocketState::kClosed;
}

bool SimSocket::SendData(std::string_view data) {
  wire_.CatchUp();
  if (on_send_) on_send_();
  if (std::exchange(refuse_next_send_, false)) return false;
  if (state_ != SocketState::kConnected || client_ == 0) return false;
  sent_.emplace_back(data);
  if (sent_.size() > kMaxSent) sent_.erase(sent_.begin(), sent_.begin() + kMaxSent / 2);
  wire_.ToServer(client_, std::string(data));
  return true;
}

std::string SimSocket::GetData() {
  return std::exchange(inbox_, {});
}

void SimSocket::OnConnected(standin::ClientId client) {
  client_ = client;
  PostEvent([this] { state_ = SocketState::kConnected; });
}

void SimSocket::OnError(int number, const std::string& description) {
  client_ = 0;
  PostEvent([this, number, description] {
    state_ = SocketState::kError;
    if (events_.error) events_.error(number, description);
  });
}

void SimSocket::OnData(std::string_view bytes) {
  PostEvent([this, text = std::string(bytes)] {
    inbox_ += text;
    if (events_.data_arrival) events_.data_arrival(inbox_.size());
  });
}

void SimSocket::OnPeerClosed() {
  client_ = 0;
  PostEvent([this] { state_ = SocketState::kClosing; });
}

void SimSocket::PostEvent(std::function<void()> event) {
  const std::weak_ptr<bool> alive = alive_;
  wire_.loop().Post(EventSource::kSocket,
                    [this, alive, connection = connection_, event = std::move(event)] {
                      if (!alive.expired() && connection == connection_) event();
                    });
}

}  // namespace corvane::sim
