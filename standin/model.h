// The whole stand-in without its windows, sockets and sound: the air, the receiver, the Net Remote
// server, the windows' state and the scenario. Native tests and SdrStandin.exe run the same model.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "standin/agenda.h"
#include "standin/air.h"
#include "standin/event_log.h"
#include "standin/net_remote_server.h"
#include "standin/options.h"
#include "standin/receiver.h"
#include "standin/scenario.h"
#include "standin/sdr_windows.h"
#include "standin/traffic.h"
#include "standin/window_tree.h"

namespace corvane::standin {

class Model {
 public:
  // The main window is there when this returns; the scenario's commands for time 0 are carried out
  // by the first Advance.
  explicit Model(Options options, Scenario scenario = {});
  Model(const Model&) = delete;
  Model& operator=(const Model&) = delete;
  ~Model();

  // Does everything that is due up to `now_ms` (from 0 on, never backwards), each at its time.
  // While SDR# hangs nothing of it happens: that comes later, as soon as it no longer hangs.
  void Advance(std::int64_t now_ms);
  // When Advance has something to do next.
  [[nodiscard]] std::optional<std::int64_t> NextDueMs() const {
    const std::optional<std::int64_t> due = agenda_.NextDueMs();
    if (!due) return std::nullopt;
    return std::max(*due, hung_until_ms_);
  }
  [[nodiscard]] std::int64_t now_ms() const { return now_ms_; }

  // Carries out a command as a scenario line has it behind its time: "call id=7 ...", "hang 500".
  // "" or why it was not done.
  std::string Do(std::string_view command);

  // What commands do beyond what the parts below can do by themselves. Between Die and Revive there
  // are no windows.
  void Hang(std::int64_t ms);
  void Die();
  void Revive();
  void Listen(bool on);  // as the "Network" box does
  // A window of another program, of SDR#'s kind, comes above all others and hangs so long.
  void ShowStranger(std::int64_t ms);
  void SetElevated(bool elevated) { elevated_ = elevated; }
  void SetFrontKept(bool kept) { front_kept_ = kept; }
  void SetRefusalMs(std::int64_t ms) { refusal_ms_ = ms; }
  void WriteInfo(std::string_view text);
  [[nodiscard]] const std::string& last_line() const { return last_line_; }  // written last
  void Finish();
  void Log(std::string_view kind, std::string_view detail);

  [[nodiscard]] bool running() const { return running_; }  // false once it has died
  // Its windows answer no message until this time; in the past: they do.
  [[nodiscard]] std::int64_t hung_until_ms() const { return hung_until_ms_; }
  [[nodiscard]] std::int64_t hung_since_ms() const { return hung_since_ms_; }
  // The same of another program's window.
  [[nodiscard]] std::int64_t stranger_hung_until_ms(WindowId id) const;
  // The system lets other programs read SDR#'s texts and refuses everything else.
  [[nodiscard]] bool elevated() const { return elevated_; }
  // The system gives the front to no program that asks for it.
  [[nodiscard]] bool front_kept() const { return front_kept_; }
  // How long the system takes to say that nothing listens on a port.
  [[nodiscard]] std::int64_t refusal_ms() const { return refusal_ms_; }
  [[nodiscard]] bool finished() const { return finished_; }  // the scenario has come to its end
  // Called at the moment of death, of the beginning of a hang, and whenever the tone changes.
  struct Listeners {
    std::function<void()> died;
    std::function<void(std::int64_t ms)> hung;
    std::function<void(const std::optional<Tone>&)> tone;
  };
  void SetListeners(Listeners listeners) { listeners_ = std::move(listeners); }

  [[nodiscard]] WindowTree& tree() { return tree_; }
  [[nodiscard]] const SdrWindows::Ids& ids() const { return windows_->ids(); }
  [[nodiscard]] SdrWindows& windows() { return *windows_; }
  [[nodiscard]] Air& air() { return air_; }
  [[nodiscard]] Receiver& receiver() { return *receiver_; }
  [[nodiscard]] NetRemoteServer& server() { return *server_; }
  [[nodiscard]] Traffic& traffic() { return *traffic_; }
  [[nodiscard]] Agenda& agenda() { return agenda_; }
  [[nodiscard]] EventLog& log() { return log_; }
  [[nodiscard]] const Options& options() const { return options_; }
  [[nodiscard]] const Scenario& scenario() const { return scenario_; }

 private:
  [[nodiscard]] SdrWindows::Actions MakeActions();
  void OnPdu(const Pdu& pdu);
  void OnChange();
  void ShowIdentity();
  void ShowState();
  void ShowCalls();
  void PlanLock();

  const Options options_;
  const Scenario scenario_;
  Agenda agenda_;
  EventLog log_;
  WindowTree tree_;
  Air air_;
  HandCalls hand_calls_{air_};
  std::unique_ptr<Receiver> receiver_;
  std::unique_ptr<NetRemoteServer> server_;
  std::unique_ptr<SdrWindows> windows_;
  std::unique_ptr<Traffic> traffic_;
  Listeners listeners_;
  std::int64_t now_ms_ = 0;
  std::int64_t hung_until_ms_ = 0;
  std::int64_t hung_since_ms_ = 0;
  std::map<WindowId, std::int64_t> strangers_until_ms_;
  bool elevated_ = false;
  bool front_kept_ = false;
  std::int64_t refusal_ms_ = 0;
  bool running_ = false;
  bool finished_ = false;
  bool identity_seen_ = false;
  Agenda::Ticket lock_ticket_ = 0;
  std::string last_line_;
  std::string last_tuned_;
  std::optional<Tone> last_tone_;
};

}  // namespace corvane::standin
