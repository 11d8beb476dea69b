// What every log file must hold after the traffic of busy_traffic.h, worked out from the events
// alone: a second opinion that shares no code with the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "scenarios/busy_traffic.h"

namespace corvane::busy {

class Model {
 public:
  // The traffic begins on 15 November 2026, `begin_s` seconds after midnight. `call_log` is what
  // the program's call log holds by then; it is not yet in the event log.
  Model(std::int64_t begin_s, std::vector<std::string> call_log);

  void Take(const Event& event);
  // The traffic is over; nothing happens any more until then.
  void End(std::int64_t ms);

  // Content by "20261115\TETRA_cc.log" and the like.
  [[nodiscard]] const std::map<std::string, std::string>& files() const { return files_; }
  // How often each thing came about that the traffic is there for.
  struct Seen {
    int repeats = 0;
    int wraps = 0;
    int counted = 0;
    int not_counted = 0;
    int not_granted = 0;
    int followed = 0;
    int skipped_by_lockout = 0;
    int timed_out = 0;
    int ended_by_log_mode = 0;
    int log_clears = 0;
  };
  [[nodiscard]] const Seen& seen() const { return seen_; }

 private:
  void AdvanceTo(std::int64_t ms);
  void TakeLine(const Event& event);
  void List(const std::string& line);
  bool CountAsNew(const Event& setup);
  void Count(const Event& setup);
  void Follow(const Event& setup);
  void FollowedCall(const Event& event);
  void EndCall(const std::string& text);
  void Log(const std::string& text);
  void Stamped(const std::string& text);
  void EndStep();
  void WriteCcLog(const std::string& line);
  [[nodiscard]] std::string Stamp() const;
  [[nodiscard]] std::string Time() const;
  [[nodiscard]] int Day() const;
  [[nodiscard]] std::string Folder(int day) const;
  [[nodiscard]] std::string DailyFile(int day) const;
  [[nodiscard]] std::string GroupText(int group) const;
  [[nodiscard]] std::string PartyText(int party) const;

  std::int64_t begin_s_;
  std::int64_t now_ms_ = 0;
  std::map<std::string, std::string> files_;
  std::vector<std::string> log_;
  std::size_t log_written_ = 0;
  std::string last_lines_[2];
  int next_slot_ = 0;
  bool log_mode_ = false;
  int last_id_ = -1;
  std::map<int, int> today_;
  std::map<int, int> total_;
  int day_;
  bool following_ = false;
  Event followed_;
  std::int64_t deadline_ms_ = 0;
  Seen seen_;
};

}  // namespace corvane::busy
