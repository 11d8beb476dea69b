// A poll step at a time: lines of the Network Info box as the plug-in writes them, and what came of
// them.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sim/core_parts.h"

namespace corvane {

class CoreTest : public ::testing::Test, protected sim::CoreParts {
 protected:
  // Takes what is in the box as history.
  void Prime() { scanner.ScanNetworkInfo(); }

  // Puts one completed line into the box and runs one poll step.
  void Poll(const std::string& line) {
    box.lines.push_back(line);
    scanner.ScanNetworkInfo();
  }
  void PollNothing() { scanner.ScanNetworkInfo(); }

  static std::string Setup(int gssi, int call_id, int party, int timeslot, int carrier,
                           const std::string& status = "Transmission Granted") {
    return "SSI:" + std::to_string(gssi) + " D_Setup " + status +
           " Call ID:" + std::to_string(call_id) +
           " Basic_service:Point_to_multipoint Party_SSI:" + std::to_string(party) +
           " TimeSlot:" + std::to_string(timeslot) + " Carrier:" + std::to_string(carrier) + " ";
  }
  static std::string Granted(int gssi, int call_id, int party) {
    return "SSI:" + std::to_string(gssi) + " D_TX_Granted Call ID:" + std::to_string(call_id) +
           " Transmission_grant:Granted_to_another_user Party_SSI:" + std::to_string(party);
  }
  static std::string Event(const std::string& name, int gssi, int call_id) {
    return "SSI:" + std::to_string(gssi) + " " + name + " Call ID:" + std::to_string(call_id) + " ";
  }

  void FollowCall(int gssi = 9001, int call_id = 1207, int party = 5010) {
    if (!scanner.ScanPrimed) Prime();
    Poll(Setup(gssi, call_id, party, 2, 2610));
    ASSERT_TRUE(follower.FollowingCall());
  }

  // Silence until the countdown of the followed call stands at `ticks`.
  void RunCountdownDownTo(int ticks) {
    flags.mblnAudioMuted = true;
    while (follower.call().CallTimeoutTicks > ticks) follower.OnWatchdogTick();
    flags.mblnAudioMuted = false;
  }
  // The group is left alone for a while from now on, as after a click on "Call".
  void DropByHand(int gssi) {
    FollowCall(gssi, 30000);
    follower.ManualRelease();
    form.lstCallLog.Clear();
    link.trace.clear();
  }

  [[nodiscard]] std::string FileText(const std::string& path) const {
    return files.Content(path).value_or("");
  }
  [[nodiscard]] std::vector<std::string> MciCommands() const {
    std::vector<std::string> texts;
    for (const auto& command : mci.commands()) texts.push_back(command.text);
    return texts;
  }
  [[nodiscard]] std::vector<std::string> CallLog() const {
    std::vector<std::string> lines;
    for (const std::string& line : form.lstCallLog.items()) {
      lines.push_back(line.starts_with(kNow) ? line.substr(kNow.size()) : line);
    }
    return lines;
  }
  [[nodiscard]] std::string LastCallLine() const {
    return form.lstCallLog.Item(form.lstCallLog.count() - 1);
  }
  std::size_t AddGroup(int gssi, const std::string& label, bool follow, int mnc = 1) {
    GssiRecord record;
    record.Gssi = gssi;
    record.Mcc = 262;
    record.Mnc = static_cast<std::int16_t>(mnc);
    record.Label = std::string_view(label);
    record.Follow = follow;
    return groups.Append(record);
  }
  std::size_t AddSubscriber(int ssi, int gssi, const std::string& label) {
    SsiRecord record;
    record.Ssi = ssi;
    record.LastGssi = gssi;
    record.Mcc = 262;
    record.Mnc = 1;
    record.Label = std::string_view(label);
    record.LastSeen = {2025, 1, 2, 3, 4, 5};
    return subscribers.Append(record);
  }

  const std::string kNow = "15/11/2026 14:23:05";
  const std::string kDay = "C:\\Corvane\\Daily\\20261115";
};

}  // namespace corvane
