// The decision about one setup line, as a value with a name. Changes nothing: acting on it is
// CallFollower's.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/call.h"
#include "core/group_locks.h"
#include "core/ports.h"
#include "panel/form1.h"
#include "panel/presets.h"
#include "store/tables.h"

namespace corvane {

enum class SetupOutcome {
  kMalformed,      // `malformed` is missing or no number of its type
  kIndividual,     // not a group's call
  kNotGranted,     // written down in LOG mode
  kCounted,        // LOG mode: never followed
  kCountedBefore,  // LOG mode: a repeat, or a Call ID below the highest
  kInCall,         // another call is followed, whatever the priorities
  kDroppedByHand,  // by the user, a moment ago
  kHeldElsewhere,  // another group is held
  kLockedOut,      // its record says so
  kBadCarrier,     // the frequency does not fit 32 bits
  kBadTimeslot,    // none of 1 to 4
  kFollowed,
  kAbandoned,  // was to be followed, but `cause` came between
};

enum class SetupField {
  kNone,
  kBasicService,
  kCallId,
  kCallingParty,
  kStatus,
  kGroup,
  kTimeslot,
  kCarrier,
};

// What ended a tuning before its second command was sent, or right after it.
enum class BrokenBy { kNothing, kShutdown, kSocket };

struct SetupDecision {
  SetupOutcome outcome = SetupOutcome::kMalformed;
  SetupField malformed = SetupField::kNone;
  BrokenBy cause = BrokenBy::kNothing;
  Setup setup;  // as far as it was read

  // Whether the line had all its fields, so that its group is known to the network.
  [[nodiscard]] bool IsWhole() const;
};

// What the decision depends on.
struct SetupSurroundings {
  const Call& call;
  const GroupLocks& locks;
  const GssiTable& groups;
  const NetworkIdentity& network;
  const Presets& presets;
  bool log_mode;
  std::int16_t LastCsvCallId;  // the highest one counted, -1 for none
};

// `line` is a setup line. kFollowed means that it is to be followed.
[[nodiscard]] SetupDecision DecideSetup(std::string_view line,
                                        const SetupSurroundings& surroundings);

// Whether LOG mode has not counted the call yet. A Call ID more than 50 below the highest one means
// that the network's counter has wrapped.
[[nodiscard]] bool IsNewCallId(std::int16_t call_id, std::int16_t highest);

// Whether the record mode wants the calls of `gssi` recorded.
[[nodiscard]] bool IsToBeRecorded(const RecordingPage& page, std::int32_t gssi);

// "followed", "held elsewhere", ...
[[nodiscard]] const char* NameOf(SetupOutcome outcome);
// "Call ID", "timeslot", ...; "" for kNone.
[[nodiscard]] const char* NameOf(SetupField field);

}  // namespace corvane
