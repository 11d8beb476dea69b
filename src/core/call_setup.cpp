// Deciding about a setup, and tuning to the call.
#include "core/call_setup.h"

#include <limits>

#include "base/number_text.h"
#include "base/text.h"
#include "core/pdu_fields.h"
#include "panel/logs.h"

namespace corvane {

namespace {

constexpr int kHighestTimeslot = 4;

std::string GroupText(std::int32_t gssi, const std::string& label) {
  return Decimal(gssi) + " " + Bracketed(label);
}

std::string SetupLine(std::int16_t call_id, std::int32_t carrier, std::int32_t gssi,
                      const std::string& label) {
  return " - Call ID: " + Decimal(call_id) + " - On carrier: " + Decimal(carrier) +
         " - Group: " + GroupText(gssi, label);
}

bool FitsInt32(std::int64_t value) {
  return value >= std::numeric_limits<std::int32_t>::min() &&
         value <= std::numeric_limits<std::int32_t>::max();
}

}  // namespace

SetupOutcome CallSetup::Decide(const std::string& line) {
  const auto service = BasicService(line);
  if (!service) return SetupOutcome::kDone;
  const auto call_id = CallId(line);
  const auto party = CallingParty(line);
  const auto status = SetupStatus(line);
  const auto gssi = Group(line);
  if (!call_id || !party || !status || !gssi) return SetupOutcome::kDone;
  if (*service == "Individual") return SetupOutcome::kDone;

  Setup setup{*call_id, *party, std::string(*status), *gssi, 0, 0};
  if (setup.status == "Transmission Not_granted") {
    if (context_.form.chkCreateCallActivityCvsFile.checked()) {
      daily_.WriteCall(setup.gssi, setup.call_id, setup.status);
    }
    return SetupOutcome::kDone;
  }
  return DecideGroupCall(setup, line);
}

SetupOutcome CallSetup::DecideGroupCall(Setup& setup, const std::string& line) {
  const auto timeslot = TimeSlot(line);
  const auto carrier = Carrier(line);
  if (!timeslot || !carrier) return SetupOutcome::kDone;
  setup.timeslot = *timeslot;
  setup.carrier = *carrier;

  const std::size_t group = bookkeeping_.FindGroupIndex(setup.gssi);
  if (context_.form.chkCreateCallActivityCvsFile.checked()) {
    CountInLogMode(setup, group);
    return SetupOutcome::kCountedInLogMode;
  }
  if (context_.flags.FollowingCall || !IsWanted(setup, group)) return SetupOutcome::kDone;
  if (!FitsInt32(CarrierFrequency(context_.presets, setup.carrier))) return SetupOutcome::kDone;
  return Follow(setup, group);
}

void CallSetup::CountInLogMode(const Setup& setup, std::size_t group) {
  if (!daily_.WriteCall(setup.gssi, setup.call_id, setup.status)) return;
  daily_.Count(setup.gssi);
  Form1& form = context_.form;
  form.lblCallID.caption = " " + Decimal(setup.call_id);
  form.lblCarrierNumber.caption = " " + Decimal(setup.carrier);
  form.lblTimeSlotNumber.caption = " " + Decimal(setup.timeslot);
  form.lblGroupNumber.caption = " " + Decimal(setup.gssi);
  const std::string label = context_.groups[group].Label.trimmed();
  AddStampedCallLine(context_, SetupLine(setup.call_id, setup.carrier, setup.gssi, label));
  form.lblGSSI_label.caption = ForCaption(label);
}

bool CallSetup::IsWanted(const Setup& setup, std::size_t group) {
  if (IsLockedOutByHand(setup.gssi)) return false;
  const Label& hold = context_.form.lblGroupHold;
  if (hold.fore_colour.get() == kHoldOrange &&
      ParseShown<std::int32_t>(hold.tag.get()) != setup.gssi) {
    return false;
  }
  if (context_.groups[group].Follow) return true;
  ReportLockout(setup, group);
  return false;
}

bool CallSetup::IsLockedOutByHand(std::int32_t gssi) const {
  for (const LockoutRow& row : context_.TempGroupLockouts) {
    if (ParseShown<std::int32_t>(row.group) == gssi) return true;
  }
  return false;
}

void CallSetup::ReportLockout(const Setup& setup, std::size_t group) {
  if (context_.form.chkSuppressLockoutMessages.checked()) return;
  const std::string text = " - Skipping Call, lockout found GSSI: " +
                           GroupText(setup.gssi, context_.groups[group].Label.trimmed());
  // The last entry but one is looked at, so the second report of a group still comes.
  const ListBox& log = context_.form.lstCallLog;
  if (Contains(log.Item(log.count() - 2), text)) return;
  AddStampedCallLine(context_, text);
}

SetupOutcome CallSetup::Follow(const Setup& setup, std::size_t group) {
  Form1& form = context_.form;
  context_.recorder.ForcedEndSuffix.clear();
  form.lblGroupNumber.caption = " " + Decimal(setup.gssi);
  bookkeeping_.CheckGroup(setup.gssi);
  context_.call.CurrentPriority = context_.groups[group].Priority;
  const std::string label = context_.groups[group].Label.trimmed();
  form.lblGSSI_label.caption = ForCaption(label);
  context_.call.FollowedCallId = setup.call_id;
  const std::string frequency_hz = Decimal(CarrierFrequency(context_.presets, setup.carrier));
  // Too late for this tuning; it counts from the next one on.
  if (form.optOffsets[0].value) context_.presets.FrequencyOffset = 0;
  form.lblCarrierNumber.caption = " " + Decimal(setup.carrier);
  form.lblTimeSlotNumber.caption = " " + Decimal(setup.timeslot);
  ShowCaller(setup, label);

  if (setup.timeslot < 1 || setup.timeslot > kHighestTimeslot) {
    ClearCallCaptions(form);
    form.lstCurrentSSI_Users.Clear();
    AddStampedCallLine(context_, " - Timeslot is not valid - call setup aborted");
    return SetupOutcome::kDone;
  }
  bool started = false;
  sequence_.Run([&] { started = TuneAndStart(setup, frequency_hz); });
  return started ? SetupOutcome::kDone : SetupOutcome::kAbandoned;
}

void CallSetup::ShowCaller(const Setup& setup, const std::string& label) {
  Form1& form = context_.form;
  const std::string party = Decimal(setup.party);
  if (!ListsNumber(form.lstCurrentSSI_Users, setup.party)) {
    form.lblCurrentSSI.caption = " " + party;
    form.lstCurrentSSI_Users.Add(party);
  }
  AddStampedCallLine(context_, SetupLine(setup.call_id, setup.carrier, setup.gssi, label));
  const std::string party_label = bookkeeping_.LookupSsiLabel(setup.party, setup.gssi);
  std::string text = " - Call ID: " + Decimal(setup.call_id) + " - Calling SSI: " + party;
  if (!party_label.empty()) text += " [" + party_label + "]";
  AddStampedCallLine(context_, text);
}

bool CallSetup::TuneAndStart(const Setup& setup, const std::string& frequency_hz) {
  context_.link.PressTimeslot(setup.timeslot);
  context_.call.CallTimeoutTicks = TimeoutTicks(context_.presets.CallTimeoutSeconds);
  if (!Tune(context_, frequency_hz, Decimal(context_.presets.VcAudioGain),
            WaitRule::kAfterEverySet)) {
    return false;
  }
  if (IsToBeRecorded(setup.gssi)) StartRecording(setup);

  Form1& form = context_.form;
  context_.flags.FollowingCall = true;
  form.ShapeBusy_state.fill_colour = kGreen;
  form.lblSSI_label.caption = ForCaption(bookkeeping_.LookupSsiLabel(setup.party, setup.gssi));
  form.lblCallID.caption = " " + Decimal(setup.call_id);
  return true;
}

bool CallSetup::IsToBeRecorded(std::int32_t gssi) const {
  const Form1& form = context_.form;
  if (form.optRecordMode[1].value) return true;
  return form.optRecordMode[2].value && ListsNumber(form.lstRecOnlyGSSI, gssi);
}

void CallSetup::StartRecording(const Setup& setup) {
  const std::string name =
      ClockDigits(context_.clock.Now()) + "_" + Decimal(setup.call_id) + "_" + Decimal(setup.gssi);
  context_.recorder.StartRecording(name, "1", "16", "22050");
  context_.recorder.RecordingActive = true;
  ShowRecording(context_.form, true);
}

}  // namespace corvane
