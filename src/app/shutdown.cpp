// Closing of the main window.
#include "app/shutdown.h"

#include "panel/logs.h"

namespace corvane {

namespace {
constexpr int kWaitStepMs = 10;
}

void Shutdown::QueryUnload() {
  if (parts_.flags.mblnShuttingDown) return;
  parts_.flags.mblnShuttingDown = true;
  parts_.follower.EndForClosing();
  parts_.tmrShutdown.SetEnabled(true);
  parts_.tmrSaveTimed.SetEnabled(false);
  while (parts_.tmrSaveTimed.enabled()) {
    parts_.loop.DoEvents();
    if (ended_) return;
    parts_.loop.Sleep(kWaitStepMs);
  }
  parts_.tmrShutdown.SetEnabled(false);
  SaveEverything();
  parts_.close_windows();
}

void Shutdown::EndSession() {
  if (parts_.flags.mblnShuttingDown) return;
  session_ends_ = true;
  parts_.recorder.Hurry();
  QueryUnload();
}

void Shutdown::SaveEverything() {
  if (parts_.subscribers.SaveSsiList() == -1) Report("Error saving SSI list.");
  if (parts_.groups.SaveGssiList() == -1) Report("Error saving GSSI list.");
  if (parts_.form.chkCreateCallActivityCvsFile.checked() &&
      !parts_.activity.CallActivityTable.empty() && parts_.activity.SaveCallActivity() == -1) {
    Report("Error saving call activity log.");
  }
  parts_.settings.SaveSettings();
}

void Shutdown::Report(const std::string& text) {
  if (session_ends_) {
    AddStatusLineInView(parts_.form, text + " - " + NowText(parts_.clock));
  } else {
    parts_.prompts.ShowBox(text, "Error", BoxIcon::kCritical);
  }
}

void Shutdown::OnShutdownTick() {
  const std::string text = "Problem shutting down, Some of this sessions changes are lost, Sorry";
  if (session_ends_) {
    Report(text);
  } else {
    parts_.prompts.ShowBox(text, "Warning", BoxIcon::kCritical);
  }
  parts_.tmrShutdown.SetEnabled(false);
  parts_.settings.SaveSettings();
  ended_ = true;
  parts_.prompts.EndProgram();
}

}  // namespace corvane
