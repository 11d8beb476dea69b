// How a followed call ends: by the network, by silence, or by a reset.
#pragma once

#include "core/bookkeeping.h"
#include "core/call_context.h"
#include "core/call_sequence.h"

namespace corvane {

enum class EndKind { kReleased, kDisconnected, kTimedOut };

class CallEnd {
 public:
  CallEnd(CallContext& context, CallSequence& sequence, Bookkeeping& bookkeeping)
      : context_(context), sequence_(sequence), bookkeeping_(bookkeeping) {}

  // Files the talkers, logs the end, tunes back to the control channel and saves the recording.
  // False when the connection was lost or the program shuts down while tuning: the rest is undone
  // then. Lets events run.
  bool EndCall(EndKind kind);

  // Drops whatever call there is: clears the display, parks when the link is up, logs it, and saves
  // a running recording as ended by force. Lets events run.
  void ResetCallDisplay();

  // The double click on "CC Park": a reset when the link is up; one that comes while a call is
  // being set up or ended is carried out right after. Lets events run.
  void Park();

 private:
  bool EndGuarded(EndKind kind);
  void ResetGuarded();

  CallContext& context_;
  CallSequence& sequence_;
  Bookkeeping& bookkeeping_;
};

// Keys of what can be deferred to the end of a call sequence.
inline constexpr int kDeferPark = 1;
inline constexpr int kDeferLogModeOn = 2;
inline constexpr int kDeferLogModeOff = 3;

}  // namespace corvane
