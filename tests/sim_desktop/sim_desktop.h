// A desktop with SDR# on it for native tests: the stand-in's model behind the WindowOps and Socket
// seams, on the loop's virtual clock.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "sim/sim_loop.h"
#include "sim_desktop/sim_socket.h"
#include "sim_desktop/sim_window_ops.h"
#include "standin/agenda.h"
#include "standin/model.h"

namespace corvane::sim {

// The connections between sockets and server: every byte takes `latency_ms`.
class SimWire : public standin::NetRemoteServer::Wire {
 public:
  SimWire(SimLoop& loop, standin::Model& model, std::function<void()> catch_up);
  ~SimWire() override;

  void SetLatencyMs(int ms) { latency_ms_ = ms; }
  // How long the answer takes that nothing listens on the port.
  void SetRefusedAfterMs(int ms) { refused_after_ms_ = ms; }
  // To every client, beside what the server itself answers.
  void SendToAll(std::string_view bytes);
  // The port belongs to another program: SDR# cannot open it.
  void SetPortTaken(bool taken) { port_taken_ = taken; }

  void Send(standin::ClientId client, std::string_view bytes) override;
  void Close(standin::ClientId client, bool reset) override;
  bool Listen(std::uint16_t port) override;

  // For SimSocket.
  void Connect(SimSocket& socket, std::uint64_t connection, std::uint16_t port);
  void Disconnect(standin::ClientId client);
  void ToServer(standin::ClientId client, std::string bytes);
  [[nodiscard]] SimLoop& loop() { return loop_; }
  void CatchUp() { catch_up_(); }

  // For SimDesktop.
  [[nodiscard]] standin::Agenda& agenda() { return agenda_; }
  // The time of what happens now, on the desktop's clock.
  std::int64_t now_ms = 0;

 private:
  struct Peer {
    SimSocket* socket = nullptr;
    std::uint64_t connection = 0;
    std::weak_ptr<bool> alive;
  };
  [[nodiscard]] bool IsCurrent(const Peer& peer) const;
  [[nodiscard]] SimSocket* Find(standin::ClientId client) const;

  SimLoop& loop_;
  standin::Model& model_;
  std::function<void()> catch_up_;
  standin::Agenda agenda_;
  std::map<standin::ClientId, Peer> peers_;
  int latency_ms_ = 1;
  int refused_after_ms_ = 1;
  bool port_taken_ = false;
};

class SimDesktop {
 public:
  // Throws std::invalid_argument with the line number when the scenario is faulty.
  explicit SimDesktop(SimLoop& loop, standin::Options options = {}, std::string_view scenario = {});
  ~SimDesktop();
  SimDesktop(const SimDesktop&) = delete;
  SimDesktop& operator=(const SimDesktop&) = delete;

  [[nodiscard]] standin::Model& model() { return *model_; }
  [[nodiscard]] SimWindowOps& windows() { return *windows_; }
  [[nodiscard]] SimSocket& socket() { return *socket_; }
  [[nodiscard]] SimWire& wire() { return *wire_; }
  // One more client of the server.
  [[nodiscard]] std::unique_ptr<SimSocket> MakeSocket();

  // The world outside, for SimLoop::SetOutside: everything outside the program happens that is due
  // at the loop's time; and when the next of it is due. Calls into the desktop catch up by
  // themselves, but nothing arrives at a waiting program unless the loop is told of these two.
  void CatchUp();
  [[nodiscard]] std::optional<std::int64_t> NextDueMs() const;

  // A command as in a scenario file, now. Throws std::invalid_argument when it is refused.
  void Do(std::string_view command);

  // Handles of SDR#'s windows; 0 while there is none.
  [[nodiscard]] WindowHandle Handle(standin::WindowId id) const {
    return SimWindowOps::HandleOf(id);
  }
  [[nodiscard]] const standin::SdrWindows::Ids& ids() const { return model_->ids(); }
  // A window of some other program, topmost.
  standin::WindowId AddForeignWindow(const std::string& class_name, const std::string& text,
                                     standin::Box box);
  [[nodiscard]] standin::WindowId own_window() const { return own_window_; }

 private:
  SimLoop& loop_;
  std::int64_t start_ms_;
  bool catching_up_ = false;
  std::unique_ptr<standin::Model> model_;
  std::unique_ptr<SimWire> wire_;
  std::unique_ptr<SimWindowOps> windows_;
  std::unique_ptr<SimSocket> socket_;
  standin::WindowId own_window_ = 0;
};

}  // namespace corvane::sim
