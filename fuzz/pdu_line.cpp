// Lines from the air: each line of the input is one line of the Network Info box. The fields are
// read from it and a poll step decides about it, with every log and every recording on.
#include <algorithm>

#include "base/text.h"
#include "bench/following_rig.h"
#include "core/pdu_fields.h"
#include "fuzz/fuzzing.h"

namespace corvane {
namespace {

using fuzzing::Require;
using fuzzing::Within;

constexpr std::size_t kMostLines = 400;

void CheckFields(const std::string& line) {
  if (const auto service = BasicService(line)) Require(Within(line, *service), "service in line");
  if (const auto status = SetupStatus(line)) Require(Within(line, *status), "status in line");
  Require(CallId(line).value_or(0) >= 0, "no negative call");
  Require(CallingParty(line).value_or(0) >= 0, "no negative party");
  Require(Group(line).value_or(0) >= 0, "no negative group");
  Require(TimeSlot(line).value_or(0) >= 0, "no negative timeslot");
  Require(Carrier(line).value_or(0) >= 0, "no negative carrier");
  Require(GrantedParty(line).value_or(0) >= 0, "no negative talker");
}

void CheckState(const rig::Following& following) {
  Require(following.link.last_timeslot >= 0 && following.link.last_timeslot <= 4,
          "only timeslots that exist are pressed");
  Require(!following.follower.InSequence(), "no sequence is left open");
  Require(following.form.lstCallLog.count() <= Scanner::kCallLogLimit + 20, "the log is bounded");
  Require(following.form.lstStatusLog.count() <= 1002, "the status log is bounded");
  Require(!following.follower.call().RecordingActive() || following.follower.FollowingCall(),
          "nothing is recorded without a call");
}

// The first byte chooses the switches.
void SetSwitches(rig::Following& following, unsigned choice) {
  Form1& form = following.form;
  form.chkCreateCcVcLog.value = 1;
  form.chkCreateEventLog.value = 1;
  form.chkCreateCallActivityCvsFile.value = (choice & 1) != 0 ? 1 : 0;
  form.chkSuppressSomePduMessages.value = (choice & 2) != 0 ? 1 : 0;
  form.chkSuppressLockoutMessages.value = (choice & 4) != 0 ? 1 : 0;
  form.optRecordMode[0].value = false;
  form.optRecordMode[(choice & 8) != 0 ? 1 : 2].value = true;
  form.lstRecOnlyGSSI.Add("9001");
  GssiRecord locked;
  locked.Gssi = 9002;
  locked.Mcc = 262;
  locked.Mnc = 1;
  following.groups.Append(locked);
}

void Run(const std::string& input) {
  if (input.empty()) return;
  rig::Following following;
  SetSwitches(following, static_cast<unsigned char>(input[0]));
  std::size_t polls = 0;
  for (const std::string& line : Split(input.substr(1), '\n')) {
    if (++polls > kMostLines) break;
    CheckFields(line);
    following.Poll(line);
    following.follower.OnWatchdogTick();
    if (polls % 7 == 0) following.follower.ManualRelease();
    if (polls % 3 == 0) following.follower.OnLockoutTick();
    CheckState(following);
  }
  following.follower.ResetCallDisplay();
  Require(!following.follower.FollowingCall(), "a reset ends the call");
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Run(corvane::fuzzing::Text(data, size));
  return 0;
}
