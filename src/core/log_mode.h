// Switching LOG mode, in which calls are counted and none is heard.
#pragma once

#include "core/call_context.h"
#include "core/call_end.h"
#include "core/call_sequence.h"

namespace corvane {

class LogMode {
 public:
  LogMode(CallContext& context, CallSequence& sequence, CallEnd& call_end)
      : context_(context), sequence_(sequence), call_end_(call_end) {}

  // The check box has just been checked or unchecked. Ends a followed call and logs the change;
  // when a call is being set up or ended, right after that. Lets events run.
  void Switched(bool checked);

 private:
  void SwitchOn();
  void SwitchOff();
  void AddLogModeLine(const std::string& text);

  CallContext& context_;
  CallSequence& sequence_;
  CallEnd& call_end_;
};

}  // namespace corvane
