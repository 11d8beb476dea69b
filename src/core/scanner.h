// The poll step: takes at most one new line of the Network Info box, lists and logs it, has calls
// set up and ended by it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/call_context.h"
#include "core/call_end.h"
#include "core/call_events.h"
#include "core/call_sequence.h"
#include "core/call_setup.h"
#include "core/daily_calls.h"

namespace corvane {

class Scanner {
 public:
  Scanner(CallContext& context, CallSequence& sequence, CallEnd& call_end, CallSetup& setup,
          CallEvents& events, DailyCalls& daily)
      : context_(context),
        sequence_(sequence),
        call_end_(call_end),
        setup_(setup),
        events_(events),
        daily_(daily) {}

  // One poll step. Does nothing while a call is being set up, ended or reset further down the
  // stack, or while the program shuts down. Lets events run.
  void ScanNetworkInfo();

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
  bool IsRepeat(const std::string& line);
  void ClearBoxWhenDue(const std::string& line);
  void ListLine(const std::string& line);
  void AppendToCcLog(const std::string& line);
  bool HandleLine(const std::string& line);
  bool FinishTimedOutCall();
  void WriteEventLog();

  CallContext& context_;
  CallSequence& sequence_;
  CallEnd& call_end_;
  CallSetup& setup_;
  CallEvents& events_;
  DailyCalls& daily_;

  std::uintptr_t box_ = 0;  // the box that LastLineIndex counts in
  // Two slots are written in turn; the third is compared but stays empty.
  std::array<std::string, 3> RecentLines;
  std::uint8_t RecentLineSlot = 0;
};

}  // namespace corvane
