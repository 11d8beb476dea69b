// The one place where the program is put together: every part, connected over the seams.
#pragma once

#include <memory>
#include <string>

#include "app/editor_host.h"
#include "app/platform.h"
#include "app/shell.h"
#include "app/shutdown.h"
#include "app/start_load.h"
#include "base/patient_files.h"
#include "core/call_follower.h"
#include "core/daily_calls.h"
#include "core/ports.h"
#include "core/scanner.h"
#include "link/checkbox_detection.h"
#include "link/discovery.h"
#include "link/net_remote.h"
#include "link/network_info.h"
#include "link/network_watch.h"
#include "link/patient_windows.h"
#include "link/poll_cycle.h"
#include "link/sdr_setup.h"
#include "store/labels.h"
#include "store/log_files.h"
#include "store/periodic_save.h"
#include "store/rec_only_list.h"
#include "store/saved_lists.h"
#include "store/settings.h"
#include "ui/actions.h"
#include "ui/main_form.h"

namespace corvane {

class App : private Actions {
 public:
  // `platform` and `shell` outlive the program.
  App(const Platform& platform, Shell& shell);
  ~App() override;
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  // Loads the main window: settings, lists, one look for SDR#'s windows; then the timers run.
  // False when a start-up error ended the program. Lets events run.
  [[nodiscard]] bool Load();

  // An exception got out of a handler: one line in the status log.
  void ReportException(const char* what);

  [[nodiscard]] Form1& form() { return form_; }
  [[nodiscard]] MainForm& main_form() { return main_form_; }
  [[nodiscard]] const ProgramFlags& flags() const { return flags_; }

  // The program's state as tests look at it.
  struct View {
    const ProgramFlags& flags;
    const Call& call;
    const GroupLocks& locks;
    const NetworkIdentity& network;
    const GssiTable& groups;
    const SsiTable& subscribers;
    const Presets& presets;
    const Recorder& recorder;
    const Scanner& scanner;
    const CallActivity& activity;
    Timer& tmrStartup;
    Timer& tmrCallWDT;
    Timer& tmrTmpGssiLockout;
    Timer& tmrSaveTimed;
    Timer& tmrShutdown;
    Timer& tmrDetectcheckbox;
    Dialog* dialog;  // nullptr while no editor is open
  };
  [[nodiscard]] View view();
  // Tells `watcher` of each setup and each end; it outlives the program. nullptr: nobody.
  void SetCallWatcher(CallWatcher* watcher) { call_follower_.SetWatcher(watcher); }

 private:
  // Actions
  void StartLink() override;
  void ManualRelease() override;
  void ParkOnControlChannel() override;
  void ToggleGroupHold() override;
  void LogModeSwitched(bool checked) override;
  void CaptureSdrPosition() override;
  void SampleCheckedColour() override;
  void SampleUnCheckedColour() override;
  void SaveSettings() override;
  void AddRecOnlyGssi() override;
  void RemoveRecOnlyGssi() override;
  void ShowEditor() override;
  void CloseRequested() override;
  void SessionEnding() override;
  [[nodiscard]] std::int32_t mcc() const override;
  [[nodiscard]] std::int32_t mnc() const override;

  Platform platform_;
  Shell& shell_;
  PatientFiles files_;
  // The main window's state and what is shared with it.
  Form1 form_;
  ProgramFlags flags_;
  Presets presets_;
  NetworkIdentity network_;

  // Store.
  StartErrors start_errors_;
  GssiTable groups_;
  SsiTable subscribers_;
  NetworkNames names_;
  SettingsFile settings_;
  RecOnlyList rec_only_;
  LabelFiles label_files_;
  GroupList group_list_;
  SubscriberList subscriber_list_;
  DayFolders folders_;
  LogFiles logs_;
  CallActivity activity_;
  Recorder recorder_;

  // SDR# link, as far as call following needs it.
  PatientWindows windows_;
  LinkContext link_;
  Discovery discovery_;
  NetRemote net_remote_;
  NetworkInfo network_info_;

  // Call following.
  DailyCalls daily_;
  CallFollower call_follower_;
  Scanner scanner_;

  // The rest of the link, which drives call following.
  SdrSetup sdr_setup_;
  NetworkWatch network_watch_;
  PollCycle poll_cycle_;
  CheckboxDetection checkbox_detection_;

  // Timers and what runs on them.
  std::unique_ptr<Timer> tmrCallWDT_;
  std::unique_ptr<Timer> tmrTmpGssiLockout_;
  std::unique_ptr<Timer> tmrSaveTimed_;
  std::unique_ptr<Timer> tmrShutdown_;
  PeriodicSave periodic_save_;
  Shutdown shutdown_;

  MainForm main_form_;
  EditorHost editor_;
};

}  // namespace corvane
