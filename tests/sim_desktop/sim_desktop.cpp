// The wire has an agenda of its own; CatchUp runs it and the model's in step, in order of time.
#include "sim_desktop/sim_desktop.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace corvane::sim {

namespace {

constexpr int kConnectionReset = 10054;
constexpr std::string_view kRefusedText =
    "No connection could be made because the target machine actively refused it.";
constexpr std::string_view kResetText =
    "An existing connection was forcibly closed by the remote host.";
constexpr standin::Box kOwnBox{1090, 40, 820, 390};

standin::Scenario Parse(std::string_view text) {
  standin::Scenario scenario;
  const std::string fault = standin::ParseScenario(text, scenario);
  if (!fault.empty()) throw std::invalid_argument(fault);
  return scenario;
}

}  // namespace

SimWire::SimWire(SimLoop& loop, standin::Model& model, std::function<void()> catch_up)
    : loop_(loop), model_(model), catch_up_(std::move(catch_up)) {
  model_.server().SetWire(this);
}

SimWire::~SimWire() {
  model_.server().SetWire(nullptr);
}

void SimWire::Send(standin::ClientId client, std::string_view bytes) {
  agenda_.Add(model_.now_ms() + latency_ms_, [this, client, text = std::string(bytes)] {
    if (SimSocket* socket = Find(client)) socket->OnData(text);
  });
}

void SimWire::SendToAll(std::string_view bytes) {
  catch_up_();
  for (const auto& [client, peer] : peers_) Send(client, bytes);
}

void SimWire::Close(standin::ClientId client, bool reset) {
  agenda_.Add(model_.now_ms() + latency_ms_, [this, client, reset] {
    SimSocket* socket = Find(client);
    peers_.erase(client);
    if (socket == nullptr) return;
    if (reset) {
      socket->OnError(kConnectionReset, std::string(kResetText));
    } else {
      socket->OnPeerClosed();
    }
  });
}

bool SimWire::Listen(std::uint16_t port) {
  return port == 0 || !port_taken_;
}

void SimWire::Connect(SimSocket& socket, std::uint64_t connection, std::uint16_t port) {
  const Peer peer{&socket, connection, socket.alive_};
  agenda_.Add(model_.now_ms() + latency_ms_, [this, peer, port] {
    if (!IsCurrent(peer)) return;
    if (!model_.server().Accepts(port)) {
      agenda_.Add(now_ms + std::max<std::int64_t>(refused_after_ms_, model_.refusal_ms()),
                  [this, peer] {
                    if (IsCurrent(peer)) {
                      peer.socket->OnError(kConnectionRefused, std::string(kRefusedText));
                    }
                  });
      return;
    }
    const standin::ClientId client = model_.server().Accepted();
    if (client != 0) peers_[client] = peer;
    peer.socket->OnConnected(client);
    if (client == 0) peer.socket->OnPeerClosed();
  });
}

void SimWire::Disconnect(standin::ClientId client) {
  peers_.erase(client);
  agenda_.Add(model_.now_ms() + latency_ms_, [this, client] { model_.server().Gone(client); });
}

void SimWire::ToServer(standin::ClientId client, std::string bytes) {
  agenda_.Add(model_.now_ms() + latency_ms_,
              [this, client, text = std::move(bytes)] { model_.server().Received(client, text); });
}

bool SimWire::IsCurrent(const Peer& peer) const {
  return !peer.alive.expired() && peer.socket->connection_ == peer.connection;
}

SimSocket* SimWire::Find(standin::ClientId client) const {
  const auto found = peers_.find(client);
  if (found == peers_.end() || !IsCurrent(found->second)) return nullptr;
  return found->second.socket;
}

SimDesktop::SimDesktop(SimLoop& loop, standin::Options options, std::string_view scenario)
    : loop_(loop), start_ms_(loop.TickMs()) {
  const auto catch_up = [this] { CatchUp(); };
  model_ = std::make_unique<standin::Model>(std::move(options), Parse(scenario));
  wire_ = std::make_unique<SimWire>(loop, *model_, catch_up);
  windows_ = std::make_unique<SimWindowOps>(loop, *model_, catch_up);
  socket_ = MakeSocket();
  own_window_ = AddForeignWindow("CorvaneMain", "Corvane", kOwnBox);
  windows_->SetOwnMainWindow(own_window_);
  CatchUp();
}

SimDesktop::~SimDesktop() = default;

std::unique_ptr<SimSocket> SimDesktop::MakeSocket() {
  return std::make_unique<SimSocket>(*wire_);
}

void SimDesktop::CatchUp() {
  if (catching_up_) return;
  catching_up_ = true;
  const std::int64_t now = loop_.TickMs() - start_ms_;
  const auto next_due = [&] {
    return std::min(wire_->agenda().NextDueMs().value_or(now + 1),
                    model_->NextDueMs().value_or(now + 1));
  };
  for (std::int64_t next = next_due(); next <= now; next = next_due()) {
    model_->Advance(next);
    wire_->now_ms = next;
    while (const std::function<void()> action = wire_->agenda().TakeDue(next)) action();
  }
  if (model_->now_ms() < now) model_->Advance(now);
  wire_->now_ms = now;
  catching_up_ = false;
}

std::optional<std::int64_t> SimDesktop::NextDueMs() const {
  std::optional<std::int64_t> due = model_->NextDueMs();
  const std::optional<std::int64_t> on_wire = wire_->agenda().NextDueMs();
  if (on_wire && (!due || *on_wire < *due)) due = on_wire;
  if (due) *due += start_ms_;
  return due;
}

void SimDesktop::Do(std::string_view command) {
  CatchUp();
  const std::string fault = model_->Do(command);
  if (!fault.empty()) throw std::invalid_argument(std::string(command) + ": " + fault);
}

standin::WindowId SimDesktop::AddForeignWindow(const std::string& class_name,
                                               const std::string& text, standin::Box box) {
  return model_->tree().Add(0, {standin::Kind::kFrame, class_name, text, box, true});
}

}  // namespace corvane::sim
