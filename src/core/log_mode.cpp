// LOG mode switch.
#include "core/log_mode.h"

#include "panel/logs.h"

namespace corvane {

namespace {
constexpr int kVisibleRows = 22;
}  // namespace

void LogMode::Switched(bool checked) {
  if (checked) {
    sequence_.RunOrDefer(kDeferLogModeOn, [this] { SwitchOn(); });
  } else if (sequence_.IsDeferred(kDeferLogModeOn)) {
    sequence_.RunOrDefer(kDeferLogModeOff, [this] { SwitchOff(); });
  } else {
    SwitchOff();
  }
}

void LogMode::SwitchOn() {
  if (context_.flags.FollowingCall) call_end_.ResetCallDisplay();
  AddLogModeLine("");
  AddLogModeLine(NowText(context_.clock) + " - LOG mode active - No calls will be heard");
}

void LogMode::SwitchOff() {
  AddLogModeLine(NowText(context_.clock) + " - LOG mode de-activated - Calls can now be heard");
}

void LogMode::AddLogModeLine(const std::string& text) {
  ListBox& log = context_.form.lstCallLog;
  log.Add(text);
  if (log.count() > kVisibleRows) log.SelectLast();
}

}  // namespace corvane
