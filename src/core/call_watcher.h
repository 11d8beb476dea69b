// Who is told what becomes of each setup line and how each followed call ends. Told of, never
// asked: nothing that the program does depends on it.
#pragma once

#include <cstdint>

#include "core/setup_decision.h"

namespace corvane {

enum class CallEnd {
  kReleased,
  kDisconnected,
  kTimedOut,
  kReset,     // dropped by the user, by LOG mode, by a failing connection, or at closing
  kLinkLost,  // dropped with the link; nothing is sent
};

class CallWatcher {
 public:
  virtual ~CallWatcher() = default;

  // Once for each setup line, when it is done with: a call that was given up while SDR# was being
  // tuned to it is kAbandoned. Must not throw.
  virtual void SetupDecided(const SetupDecision& decision) = 0;
  // Once for each call that was followed, before SDR# is tuned back. Must not throw.
  virtual void FollowedCallEnded(std::int16_t call_id, CallEnd how) = 0;
};

// "released", "timed out", ...
[[nodiscard]] const char* NameOf(CallEnd how);

}  // namespace corvane
