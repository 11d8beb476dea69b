// The first row that applies decides.
#include "core/setup_decision.h"

#include <algorithm>
#include <limits>

#include "base/number_text.h"
#include "core/pdu_fields.h"

namespace corvane {

namespace {

constexpr int kHighestTimeslot = 4;
constexpr int kWrapDistance = 50;

bool FitsInt32(std::int64_t value) {
  return value >= std::numeric_limits<std::int32_t>::min() &&
         value <= std::numeric_limits<std::int32_t>::max();
}

// A group that is met for the first time is followed.
bool IsLockedOut(const SetupSurroundings& around, std::int32_t gssi) {
  const auto group = around.groups.Find(around.network.mcc(), around.network.mnc(), gssi);
  return group && !around.groups[*group].Follow;
}

// Fills `into` with a field of the line; `missing` becomes the first one that is not there.
template <typename Value, typename Into>
void Take(const std::optional<Value>& value, SetupField field, Into& into, SetupField& missing) {
  if (value) {
    into = static_cast<Into>(*value);
  } else if (missing == SetupField::kNone) {
    missing = field;
  }
}

SetupField TakeCaller(std::string_view line, std::string_view& service, Setup& setup) {
  SetupField missing = SetupField::kNone;
  Take(BasicService(line), SetupField::kBasicService, service, missing);
  Take(CallId(line), SetupField::kCallId, setup.call_id, missing);
  Take(CallingParty(line), SetupField::kCallingParty, setup.party, missing);
  Take(SetupStatus(line), SetupField::kStatus, setup.status, missing);
  Take(Group(line), SetupField::kGroup, setup.gssi, missing);
  return missing;
}

SetupField TakePlace(std::string_view line, Setup& setup) {
  SetupField missing = SetupField::kNone;
  Take(TimeSlot(line), SetupField::kTimeslot, setup.timeslot, missing);
  Take(Carrier(line), SetupField::kCarrier, setup.carrier, missing);
  return missing;
}

SetupOutcome DecideGroupCall(const Setup& setup, const SetupSurroundings& around) {
  if (around.log_mode) {
    return IsNewCallId(setup.call_id, around.LastCsvCallId) ? SetupOutcome::kCounted
                                                            : SetupOutcome::kCountedBefore;
  }
  if (around.call.FollowingCall()) return SetupOutcome::kInCall;
  if (around.locks.IsDropped(setup.gssi)) return SetupOutcome::kDroppedByHand;
  if (around.locks.IsHeldElsewhere(setup.gssi)) return SetupOutcome::kHeldElsewhere;
  if (IsLockedOut(around, setup.gssi)) return SetupOutcome::kLockedOut;
  if (!FitsInt32(CarrierFrequency(around.presets, setup.carrier)))
    return SetupOutcome::kBadFrequency;
  if (setup.timeslot < 1 || setup.timeslot > kHighestTimeslot) return SetupOutcome::kBadTimeslot;
  return SetupOutcome::kFollowed;
}

}  // namespace

SetupDecision DecideSetup(std::string_view line, const SetupSurroundings& surroundings) {
  SetupDecision decision;
  std::string_view service;
  if (IsEncrypted(line)) {
    decision.outcome = SetupOutcome::kEncrypted;
    return decision;
  }
  decision.malformed = TakeCaller(line, service, decision.setup);
  if (decision.malformed != SetupField::kNone) {
    decision.outcome = SetupOutcome::kMalformed;
  } else if (service == "Individual") {
    decision.outcome = SetupOutcome::kIndividual;
  } else if (decision.setup.status == "Transmission Not_granted") {
    decision.outcome = SetupOutcome::kNotGranted;
  } else if (decision.malformed = TakePlace(line, decision.setup);
             decision.malformed != SetupField::kNone) {
    decision.outcome = SetupOutcome::kMalformed;
  } else {
    decision.outcome = DecideGroupCall(decision.setup, surroundings);
  }
  return decision;
}

bool SetupDecision::IsWhole() const {
  return outcome != SetupOutcome::kEncrypted && outcome != SetupOutcome::kMalformed &&
         outcome != SetupOutcome::kIndividual && outcome != SetupOutcome::kNotGranted;
}

bool IsNewCallId(std::int16_t call_id, std::int16_t highest) {
  return call_id > highest || call_id < highest - kWrapDistance;
}

bool IsToBeRecorded(const RecordingPage& page, std::int32_t gssi) {
  if (page.optRecordMode[1].value) return true;
  const std::vector<std::string>& listed = page.lstRecOnlyGSSI.items();
  return page.optRecordMode[2].value &&
         std::any_of(listed.begin(), listed.end(), [gssi](const std::string& item) {
           return ParseShown<std::int32_t>(item) == gssi;
         });
}

const char* NameOf(SetupOutcome outcome) {
  switch (outcome) {
    case SetupOutcome::kEncrypted:
      return "encrypted";
    case SetupOutcome::kMalformed:
      return "malformed";
    case SetupOutcome::kIndividual:
      return "individual";
    case SetupOutcome::kNotGranted:
      return "not_granted";
    case SetupOutcome::kCounted:
      return "counted";
    case SetupOutcome::kCountedBefore:
      return "counted_before";
    case SetupOutcome::kInCall:
      return "in_call";
    case SetupOutcome::kDroppedByHand:
      return "dropped_by_hand";
    case SetupOutcome::kHeldElsewhere:
      return "held_elsewhere";
    case SetupOutcome::kLockedOut:
      return "locked_out";
    case SetupOutcome::kBadFrequency:
      return "bad_frequency";
    case SetupOutcome::kBadTimeslot:
      return "bad_timeslot";
    case SetupOutcome::kFollowed:
      return "followed";
    case SetupOutcome::kAbandoned:
      break;
  }
  return "abandoned";
}

const char* NameOf(SetupField field) {
  switch (field) {
    case SetupField::kBasicService:
      return "basic service";
    case SetupField::kCallId:
      return "Call ID";
    case SetupField::kCallingParty:
      return "calling party";
    case SetupField::kStatus:
      return "status";
    case SetupField::kGroup:
      return "group";
    case SetupField::kTimeslot:
      return "timeslot";
    case SetupField::kCarrier:
      return "carrier";
    case SetupField::kNone:
      break;
  }
  return "";
}

const char* NameOf(BrokenBy cause) {
  switch (cause) {
    case BrokenBy::kShutdown:
      return "shutdown";
    case BrokenBy::kSocket:
      return "connection lost";
    case BrokenBy::kFault:
      return "fault";
    case BrokenBy::kNothing:
      break;
  }
  return "";
}

}  // namespace corvane
