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
  if (sequence_.running() || context_.flags.mblnShuttingDown) return;
  const std::uintptr_t box = context_.box.Identity();
  if (box != 0 && box != box_) ScanPrimed = false;

  const std::int32_t line_count = context_.box.LineCount();
  const bool answered = line_count > 0;
  if (answered && line_count < LastLineIndex) LastLineIndex = line_count;

  const DateTime now = context_.clock.Now();
  daily_.ChangeDay(now);
  context_.folders.CreateDayFolders(now);

  std::string line;
  if (answered && !ScanPrimed) {
    box_ = box;
    LastLineIndex = line_count;
    ScanPrimed = true;
  } else {
    if (answered && line_count > LastLineIndex) line = TakeLine();
    ClearBoxWhenDue(line);
  }
  if (!HandleLine(line)) return;

  context_.form.lblTimeoutCountdown.caption = std::to_string(context_.call.CallTimeoutTicks);
  WriteEventLog();
  if (context_.form.lstCallLog.count() >= kCallLogLimit) {
    context_.form.lstCallLog.Clear();
    EventLogNextIndex = 0;
  }
}

std::string Scanner::TakeLine() {
  // The box's last line is still being written; the one before it has just been completed.
  std::optional<std::string> taken = context_.box.Line(LastLineIndex - 1);
  if (!taken) return {};
  ++LastLineIndex;
  if (IsRepeat(*taken)) return {};
  return *std::move(taken);
}

bool Scanner::IsRepeat(const std::string& line) {
  if (std::find(RecentLines.begin(), RecentLines.end(), line) != RecentLines.end()) return true;
  RecentLines[RecentLineSlot] = line;
  RecentLineSlot = RecentLineSlot == 0 ? 1 : 0;
  return false;
}

void Scanner::ClearBoxWhenDue(const std::string& line) {
  if (!context_.form.chkCreateCallActivityCvsFile.checked()) return;
  if (PollsSinceClear < kPollsBeforeClear) {
    ++PollsSinceClear;
    return;
  }
  if (!Contains(line, "D_Release") && !Contains(line, "D_Connect")) return;
  context_.box.Clear();
  PollsSinceClear = 0;
  AddStatusLineInView(context_.form,
                      NowText(context_.clock) + " - 'Network Info' editbox has been cleared");
}

// False when the poll step ends here.
bool Scanner::HandleLine(const std::string& line) {
  if (line.empty()) return FinishTimedOutCall();
  AppendToCcLog(line);
  if (!Contains(line, "PDU encrypted")) {
    ListLine(line);
    if (IsSetup(line)) {
      switch (setup_.Decide(line)) {
        case SetupOutcome::kCountedInLogMode:
          return FinishTimedOutCall();
        case SetupOutcome::kAbandoned:
          return false;
        case SetupOutcome::kDone:
          break;
      }
    }
  }
  AppendToCcLog(line);
  if (!context_.flags.FollowingCall) return true;
  return events_.Handle(line) && FinishTimedOutCall();
}

bool Scanner::FinishTimedOutCall() {
  if (!context_.flags.FollowingCall || context_.call.CallTimeoutTicks != 0) return true;
  return call_end_.EndCall(EndKind::kTimedOut);
}

void Scanner::ListLine(const std::string& line) {
  if (context_.form.chkSuppressSomePduMessages.checked()) return;
  for (const char* name : kListedNames) {
    if (Contains(line, name)) AddStampedCallLine(context_, " - " + line);
  }
}

void Scanner::AppendToCcLog(const std::string& line) {
  if (!context_.form.chkCreateCcVcLog.checked()) return;
  const std::string& folder = context_.folders.DayFolder();
  if (folder.empty()) return;
  context_.logs.Append(LogKind::kCcLog, folder + "\\TETRA_cc.log", line + "\r\n");
}

void Scanner::WriteEventLog() {
  const ListBox& log = context_.form.lstCallLog;
  if (!context_.form.chkCreateEventLog.checked() || EventLogNextIndex == log.count()) return;
  const std::string& folder = context_.folders.DayFolder();
  if (folder.empty()) return;
  std::string lines;
  for (int index = EventLogNextIndex; index < log.count(); ++index) {
    lines += log.Item(index) + "\r\n";
  }
  if (context_.logs.Append(LogKind::kEventLog, folder + "\\TETRA_event.log", lines)) {
    EventLogNextIndex = static_cast<std::int16_t>(log.count());
  }
}

}  // namespace corvane
