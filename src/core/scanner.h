// The poll step: takes at most one new line of the Network Info box, lists and logs it, has calls
// set up and ended by it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/wall_clock.h"
#include "core/call_follower.h"
#include "core/daily_calls.h"
#include "core/ports.h"
#include "panel/form1.h"
#include "panel/program_flags.h"
#include "store/day_folders.h"
#include "store/log_files.h"

namespace corvane {

class Scanner {
 public:
  // What a poll step works on; everything outlives it.
  struct Surroundings {
    const WallClock& clock;
    Form1& form;
    const ProgramFlags& flags;
    NetworkInfoBox& box;
    DayFolders& folders;
    LogFiles& logs;
    DailyCalls& daily;
    CallFollower& follower;
  };
  explicit Scanner(const Surroundings& around) : around_(around) {}

  // One poll step. Does nothing while a call is being set up, ended or reset further down the
  // stack, or while the program shuts down. Lets events run.
  void ScanNetworkInfo();

  // The part of a poll step that deals with a line: `line` has just been completed, "" for none. A
  // line that repeats one of the two before it counts as none. Lets events run.
  PollStep OnLine(std::string_view line);

  // The next poll step takes what stands in the box as history, as after each start.
  void ForgetPosition() { ScanPrimed = false; }

  // Lines of the box consumed so far.
  std::int32_t LastLineIndex = 0;
  bool ScanPrimed = false;
  // Poll steps in LOG mode since the box was last cleared; stops at kPollsBeforeClear.
  std::int32_t PollsSinceClear = 0;
  // First entry of the call log not yet in the event log.
  std::int16_t EventLogNextIndex = 0;

  static constexpr std::int32_t kPollsBeforeClear = 101000;
  static constexpr int kCallLogLimit = 1001;

 private:
  std::string TakeLine();
  [[nodiscard]] bool IsRepeat(std::string_view line);
  void ClearBoxWhenDue(const std::string& line);
  void ListLine(std::string_view line);
  void AppendToCcLog(std::string_view line);
  PollStep HandleLine(std::string_view line);
  void WriteEventLog();

  Surroundings around_;
  std::uintptr_t box_ = 0;  // the box that LastLineIndex counts in
  // Two slots are written in turn; the third is compared but stays empty.
  std::array<std::string, 3> RecentLines;
  std::uint8_t RecentLineSlot = 0;
};

}  // namespace corvane
