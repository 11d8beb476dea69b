// The followed call's own signalling: release, disconnect, and who talks.
#pragma once

#include <cstdint>
#include <string>

#include "core/bookkeeping.h"
#include "core/call_context.h"
#include "core/call_end.h"

namespace corvane {

class CallEvents {
 public:
  CallEvents(CallContext& context, CallEnd& call_end, Bookkeeping& bookkeeping)
      : context_(context), call_end_(call_end), bookkeeping_(bookkeeping) {}

  // Acts on a line that carries the followed call's Call ID; ignores every other. False when an end
  // of the call was broken off. Lets events run.
  bool Handle(const std::string& line);

 private:
  void TransmissionCeased();
  void TransmissionGranted(const std::string& line);
  std::string LookupLabel(std::int32_t ssi);

  CallContext& context_;
  CallEnd& call_end_;
  Bookkeeping& bookkeeping_;
};

}  // namespace corvane
