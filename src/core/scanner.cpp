// The poll step.
#include "core/scanner.h"

#include <algorithm>

#include "base/text.h"
#include "core/pdu_fields.h"
#include "panel/logs.h"

namespace corvane {

namespace {

// Tested one after the other and independently, so a D_Connect_Acknowledge line is listed twice.
constexpr std::array kListedNames = {
    "D_Alert",       "D_Call_Proceeding", "D_Call_Restore", "D_Connect",  "D_Connect_Acknowledge",
    "D_Disconnect",  "D_Facility",        "D_Info",         "D_SDS_Data", "D_Status",
    "D_TX_Continue", "D_TX_Granted",      "D_Wait"};

}  // namespace

void Scanner::ScanNetworkInfo() {
  if (around_.follower.InSequence() || around_.flags.mblnShuttingDown) return;
  const std::uintptr_t box = around_.box.Identity();
  if (box != 0 && box != box_) ScanPrimed = false;

  const std::int32_t line_count = around_.box.LineCount();
  const bool answered = line_count > 0;
  if (answered && line_count < LastLineIndex) LastLineIndex = line_count;

  const DateTime now = around_.clock.Now();
  around_.daily.ChangeDay(now);
  around_.folders.CreateDayFolders(now);

  std::string line;
  if (answered && !ScanPrimed) {
    box_ = box;
    LastLineIndex = line_count;
    ScanPrimed = true;
  } else {
    if (answered && line_count > LastLineIndex) line = TakeLine();
    ClearBoxWhenDue(line);
  }
  if (HandleLine(line) == PollStep::kEnds) return;

  around_.form.lblTimeoutCountdown.caption =
      std::to_string(around_.follower.call().CallTimeoutTicks);
  WriteEventLog();
  if (around_.form.lstCallLog.count() >= kCallLogLimit) {
    around_.form.lstCallLog.Clear();
    EventLogNextIndex = 0;
  }
}

std::string Scanner::TakeLine() {
  // The box's last line is still being written; the one before it has just been completed.
  std::optional<std::string> taken = around_.box.Line(LastLineIndex - 1);
  if (!taken) return {};
  ++LastLineIndex;
  if (IsRepeat(*taken)) return {};
  return *std::move(taken);
}

bool Scanner::IsRepeat(std::string_view line) {
  if (std::find(RecentLines.begin(), RecentLines.end(), line) != RecentLines.end()) return true;
  RecentLines[RecentLineSlot] = line;
  RecentLineSlot = RecentLineSlot == 0 ? 1 : 0;
  return false;
}

void Scanner::ClearBoxWhenDue(const std::string& line) {
  if (!around_.form.chkCreateCallActivityCvsFile.checked()) return;
  if (PollsSinceClear < kPollsBeforeClear) {
    ++PollsSinceClear;
    return;
  }
  if (!Contains(line, "D_Release") && !Contains(line, "D_Connect")) return;
  around_.box.Clear();
  PollsSinceClear = 0;
  AddStatusLineInView(around_.form,
                      NowText(around_.clock) + " - 'Network Info' editbox has been cleared");
}

PollStep Scanner::OnLine(std::string_view line) {
  return HandleLine(line.empty() || IsRepeat(line) ? std::string_view() : line);
}

PollStep Scanner::HandleLine(std::string_view line) {
  CallFollower& follower = around_.follower;
  if (line.empty()) return follower.EndIfTimedOut();
  AppendToCcLog(line);
  ListLine(line);
  if (IsSetup(line)) {
    const SetupOutcome outcome = follower.OnSetup(line).outcome;
    if (outcome == SetupOutcome::kAbandoned) return PollStep::kEnds;
    if (outcome == SetupOutcome::kCounted || outcome == SetupOutcome::kCountedBefore) {
      return follower.EndIfTimedOut();
    }
  }
  // Readers of this log rely on it: a line that LOG mode counted stands in it once, every other
  // one twice.
  AppendToCcLog(line);
  if (!follower.FollowingCall()) return PollStep::kGoesOn;
  if (follower.OnCallEvent(line) == PollStep::kEnds) return PollStep::kEnds;
  return follower.EndIfTimedOut();
}

void Scanner::ListLine(std::string_view line) {
  if (around_.form.chkSuppressSomePduMessages.checked() || IsEncrypted(line)) return;
  for (const char* name : kListedNames) {
    if (Contains(line, name)) {
      AddCallLine(around_.form, NowText(around_.clock) + " - " + std::string(line));
    }
  }
}

void Scanner::AppendToCcLog(std::string_view line) {
  if (!around_.form.chkCreateCcVcLog.checked()) return;
  const std::string& folder = around_.folders.DayFolder();
  if (folder.empty()) return;
  around_.logs.Append(LogKind::kCcLog, folder + "\\TETRA_cc.log", std::string(line) + "\r\n");
}

void Scanner::WriteEventLog() {
  const ListBox& log = around_.form.lstCallLog;
  if (!around_.form.chkCreateEventLog.checked() || EventLogNextIndex == log.count()) return;
  std::string lines;
  for (int index = EventLogNextIndex; index < log.count(); ++index) {
    lines += log.Item(index) + "\r\n";
  }
  if (around_.logs.Append(LogKind::kEventLog, around_.folders.DayFolder() + "\\TETRA_event.log",
                          lines)) {
    EventLogNextIndex = static_cast<std::int16_t>(log.count());
  }
}

}  // namespace corvane
