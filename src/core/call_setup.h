// The decision about one setup line: to count it, to skip it, or to follow the call.
#pragma once

#include <cstdint>
#include <string>

#include "core/bookkeeping.h"
#include "core/call_context.h"
#include "core/call_sequence.h"
#include "core/daily_calls.h"

namespace corvane {

enum class SetupOutcome {
  kDone,              // the poll step goes on with the line
  kCountedInLogMode,  // the poll step leaves the line; also for a repeat
  kAbandoned,         // tuning was broken off: the poll step ends
};

class CallSetup {
 public:
  CallSetup(CallContext& context, CallSequence& sequence, Bookkeeping& bookkeeping,
            DailyCalls& daily)
      : context_(context), sequence_(sequence), bookkeeping_(bookkeeping), daily_(daily) {}

  // `line` is a setup line. A line with a missing or senseless field is passed over in silence.
  // Lets events run.
  SetupOutcome Decide(const std::string& line);

 private:
  // The fields of the line that a call to be followed needs.
  struct Setup {
    std::int16_t call_id = 0;
    std::int32_t party = 0;
    std::string status;
    std::int32_t gssi = 0;
    std::int16_t timeslot = 0;
    std::int32_t carrier = 0;
  };

  SetupOutcome DecideGroupCall(Setup& setup, const std::string& line);
  void CountInLogMode(const Setup& setup, std::size_t group);
  [[nodiscard]] bool IsWanted(const Setup& setup, std::size_t group);
  [[nodiscard]] bool IsLockedOutByHand(std::int32_t gssi) const;
  void ReportLockout(const Setup& setup, std::size_t group);
  SetupOutcome Follow(const Setup& setup, std::size_t group);
  void ShowCaller(const Setup& setup, const std::string& label);
  bool TuneAndStart(const Setup& setup, const std::string& frequency_hz);
  [[nodiscard]] bool IsToBeRecorded(std::int32_t gssi) const;
  void StartRecording(const Setup& setup);

  CallContext& context_;
  CallSequence& sequence_;
  Bookkeeping& bookkeeping_;
  DailyCalls& daily_;
};

}  // namespace corvane
