// Countdown, manual release and temporary lockouts.
#include "core/watchdog.h"

#include <algorithm>

#include "base/number_text.h"
#include "base/text.h"

namespace corvane {

namespace {
constexpr int kLockoutTicks = 16;
constexpr int kReplyPollMs = 1;
}  // namespace

void Watchdog::OnCallTick() {
  if (!context_.flags.FollowingCall) return;
  context_.call.CallTimeoutTicks = std::max(0, context_.call.CallTimeoutTicks - 1);
  if (!context_.link.CommandUnderWay()) {
    context_.link.SendNetRemoteGet("AudioIsMuted");
    while (context_.flags.mblnReceiving) {
      if (context_.flags.mblnShuttingDown || !context_.link.SocketConnected()) return;
      context_.loop.Sleep(kReplyPollMs);
      context_.loop.DoEvents();
    }
  }
  if (!context_.flags.AudioIsMuted()) {
    context_.call.CallTimeoutTicks = TimeoutTicks(context_.presets.CallTimeoutSeconds);
  }
}

void Watchdog::ManualRelease() {
  if (!context_.flags.FollowingCall) return;
  const std::string group(Trim(context_.form.lblGroupNumber.caption.get()));
  std::vector<LockoutRow>& rows = context_.TempGroupLockouts;
  const auto known = std::find_if(rows.begin(), rows.end(),
                                  [&](const LockoutRow& row) { return row.group == group; });
  if (known != rows.end()) {
    known->seconds = "0";
  } else if (rows.size() > 1) {
    rows.push_back({group, "0"});
  } else {
    rows.front() = {group, "0"};  // the one row is reused, whatever group it held
  }
  call_end_.ResetCallDisplay();
}

void Watchdog::OnLockoutTick() {
  std::vector<LockoutRow>& rows = context_.TempGroupLockouts;
  if (rows.size() == 1 && rows.front().group.empty()) return;
  for (LockoutRow& row : rows) {
    row.seconds = Decimal(ParseDecimal<std::int32_t>(row.seconds).value_or(0) + 1);
  }
  std::erase_if(rows, [](const LockoutRow& row) { return row.seconds == Decimal(kLockoutTicks); });
  if (rows.empty()) rows.push_back({});
}

}  // namespace corvane
