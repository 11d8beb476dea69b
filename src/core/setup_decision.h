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

// What becomes of a setup line: each one ends as exactly one of these.
enum class SetupOutcome {
  kEncrypted,      // the line says so; nothing in it is relied on
  kMalformed,      // `malformed` is missing or no number of its type
  kIndividual,     // not a group's call
  kNotGranted,     // written down in LOG mode
  kCounted,        // LOG mode: never followed
  kCountedBefore,  // LOG mode: a repeat, or a Call ID below the highest
  kInCall,         // another call is followed, whatever the priorities
  kDroppedByHand,  // by the user, a moment ago
  kHeldElsewhere,  // another group is held
  kLockedOut,      // its record says so
  kBadFrequency,   // the carrier's does not fit 32 bits
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

// What ended a tuning before its second command was sent, or right after it; kFault: an exception.
enum class BrokenBy { kNothing, kShutdown, kSocket, kFault };

struct SetupDecision {
  SetupOutcome outcome = SetupOutcome::kMalformed;
  SetupField malformed = SetupField::kNone;
  BrokenBy cause = BrokenBy::kNothing;
  Setup setup;  // as far as it was read

  // Whether the line had all its fields and is a group's call, so that its group gets a record.
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

inline constexpr int kSetupOutcomes = static_cast<int>(SetupOutcome::kAbandoned) + 1;

// "followed", "held_elsewhere", ...: one word each.
[[nodiscard]] const char* NameOf(SetupOutcome outcome);
// "Call ID", "timeslot", ...; "" for kNone.
[[nodiscard]] const char* NameOf(SetupField field);
// "shutdown", "connection lost", ...; "" for kNothing.
[[nodiscard]] const char* NameOf(BrokenBy cause);

}  // namespace corvane
