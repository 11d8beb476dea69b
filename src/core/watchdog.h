// Ends what the network does not end: the silence countdown of the followed call, and the user's
// own release with its lockout.
#pragma once

#include "core/call_context.h"
#include "core/call_end.h"

namespace corvane {

class Watchdog {
 public:
  Watchdog(CallContext& context, CallEnd& call_end) : context_(context), call_end_(call_end) {}

  // Every 300 ms: runs the countdown down, asks whether the audio is muted and starts the countdown
  // again when the last answer said that it is not. Asks nothing while a command is under way.
  // Lets events run.
  void OnCallTick();

  // The click on "Call": drops the followed call and keeps its group from being followed for 16
  // ticks of OnLockoutTick. Lets events run.
  void ManualRelease();

  // Every 1000 ms: ages the lockouts and removes those that are over.
  void OnLockoutTick();

 private:
  CallContext& context_;
  CallEnd& call_end_;
};

}  // namespace corvane
