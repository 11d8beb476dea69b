// What a scenario line, or a command given at run time, asks for. Reading them is checked here,
// carrying them out is the player's.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "standin/air.h"
#include "standin/net_remote_server.h"

namespace corvane::standin {

// Percentages are of all calls.
struct TrafficSettings {
  int calls_per_hour = 0;  // 0: no traffic
  std::vector<std::int32_t> groups = {9001, 9002, 9003};
  std::int32_t first_party = 5010;
  std::int32_t last_party = 5040;
  std::vector<int> carriers = {2610, 2611};
  int shortest_ms = 5000;
  int longest_ms = 40000;
  int individual = 0;
  int encrypted = 0;
  int queued = 0;
  int not_granted = 0;
  int missed = 0;        // their release is not sent
  int disconnected = 0;  // end with D_Disconnect
  int first_id = 1;
};

struct CallCommand {
  Call call;
  std::int64_t for_ms = 0;     // released after so long; 0: not by itself
  std::int64_t repeat_ms = 0;  // its setup is sent again and again; 0: once
  bool missed = false;         // the release after for_ms is not sent
};
struct SpeakCommand {
  int id = 0;
  std::int32_t party = 0;
};
struct PauseCommand {
  int id = 0;
};
struct EndCommand {
  int id = 0;
  bool disconnect = false;
  bool missed = false;
  std::string cause = "User_requested";
};
struct LineCommand {
  std::string text;
  int count = 1;
  bool ended = true;          // with a line end
  bool everywhere = true;     // written whatever is tuned
  std::int32_t carrier = -1;  // else: on this one; -1: on the control channel
};
struct DuplicateCommand {
  int count = 1;
};
struct BurstCommand {
  Call first;  // the others have the next Call IDs
  int count = 1;
};
struct NetworkCommand {
  bool none = false;
  Identity identity;
};
struct TrafficCommand {
  TrafficSettings settings;
};
struct NoiseCommand {
  int per_hour = 0;
};
struct HangCommand {
  std::int64_t ms = 0;
};
struct DieCommand {};
struct ReviveCommand {};
enum class WindowAction { kClose, kOpen, kHide, kShow, kMinimise, kRestore };
struct WindowCommand {
  bool info = false;  // the Network Info window, else the main window
  WindowAction action = WindowAction::kClose;
};
struct MoveCommand {
  bool info = false;
  int left = 0;
  int top = 0;
};
struct ClearBoxCommand {};
struct PanelCommand {
  bool tetra = true;
  bool expand = true;
};
struct ListenCommand {
  bool on = true;
};
struct RefuseCommand {
  bool on = true;
};
struct CutCommand {
  bool reset = false;
};
struct FaultCommand {
  bool greeting = false;
  Fault fault;
};
struct HandlingCommand {
  int ms = 0;
};
struct SourceCommand {
  bool works = true;
};
struct CheckCommand {
  bool automatic = false;
  bool on = true;
};
struct PaintCommand {
  bool automatic = false;
  bool other = false;
};
struct PressCommand {
  std::string text;
};
struct SetCommand {
  std::string method;
  std::string value;
};
struct PlayCommand {
  bool on = true;
};
struct LockCommand {
  std::int64_t ms = 0;
};
struct SignallingCommand {
  bool on_control = false;
};
struct HistoryCommand {
  bool keep = true;
};
struct NoteCommand {
  std::string text;
};
struct EndScenarioCommand {};

using Command =
    std::variant<CallCommand, SpeakCommand, PauseCommand, EndCommand, LineCommand, DuplicateCommand,
                 BurstCommand, NetworkCommand, TrafficCommand, NoiseCommand, HangCommand,
                 DieCommand, ReviveCommand, WindowCommand, MoveCommand, ClearBoxCommand,
                 PanelCommand, ListenCommand, RefuseCommand, CutCommand, FaultCommand,
                 HandlingCommand, SourceCommand, CheckCommand, PaintCommand, PressCommand,
                 SetCommand, PlayCommand, LockCommand, SignallingCommand, HistoryCommand,
                 NoteCommand, EndScenarioCommand>;

// One word of a line: `value`, or `name=value`; a value may stand in double quotes.
struct Word {
  std::string name;
  std::string value;
  bool quoted = false;
};
inline constexpr std::size_t kMaxLineBytes = 4096;

// "" or what is wrong.
[[nodiscard]] std::string SplitWords(std::string_view line, std::vector<Word>& words);
[[nodiscard]] std::string ParseCommand(const std::vector<Word>& words, Command& command);

}  // namespace corvane::standin
