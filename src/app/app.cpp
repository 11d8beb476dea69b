// Connecting the parts, and loading.
#include "app/app.h"

#include "panel/logs.h"

namespace corvane {

namespace {
constexpr int kCallWatchdogMs = 300;
constexpr int kLockoutTickMs = 1000;
}  // namespace

App::App(const Platform& platform, Shell& shell)
    : platform_(platform),
      shell_(shell),
      files_(platform.files, platform.loop),
      form_(platform.sink),
      start_errors_(files_, platform.prompts, platform.program_folder),
      settings_(files_, platform.prompts, platform.clock, flags_, form_, presets_, start_errors_,
                platform.program_folder),
      rec_only_(files_, platform.clock, form_, platform.program_folder),
      label_files_(files_, platform.prompts, form_, names_, platform.program_folder),
      group_list_(files_, form_, groups_, platform.program_folder),
      subscriber_list_(files_, platform.clock, form_, subscribers_, platform.program_folder),
      folders_(files_, form_, platform.program_folder),
      logs_(files_, platform.clock, form_),
      activity_(files_, platform.clock, folders_, form_),
      recorder_(platform.mci, files_, form_, [this] { return folders_.DayFolder(); }),
      windows_(platform.windows, platform.loop),
      link_{platform.loop, platform.clock, windows_, platform.socket, form_, flags_},
      discovery_(link_),
      net_remote_(link_, logs_, platform.program_folder, call_follower_,
                  [this] { return tmrSaveTimed_->enabled(); }),
      network_info_(link_, discovery_),
      daily_(platform.clock, form_, folders_, logs_, activity_),
      call_follower_({platform.loop, platform.clock, form_, flags_, presets_, network_, groups_,
                      subscribers_, daily_, recorder_, net_remote_}),
      scanner_(
          {platform.clock, form_, flags_, network_info_, folders_, logs_, daily_, call_follower_}),
      sdr_setup_(link_, net_remote_, network_info_, presets_),
      network_watch_(link_, discovery_, network_, names_, groups_, call_follower_, scanner_),
      poll_cycle_(link_, {windows_, discovery_, net_remote_, network_info_, sdr_setup_,
                          network_watch_, call_follower_, folders_, activity_}),
      checkbox_detection_(link_, presets_),
      tmrCallWDT_(platform.loop.MakeTimer(kCallWatchdogMs, NonReentrant([this] {
                                            recorder_.Attend();
                                            call_follower_.OnWatchdogTick();
                                          }))),
      tmrTmpGssiLockout_(platform.loop.MakeTimer(
          kLockoutTickMs, NonReentrant([this] { call_follower_.OnLockoutTick(); }))),
      tmrSaveTimed_(
          platform.loop.MakeTimer(kSaveTickMs, NonReentrant([this] { periodic_save_.OnTick(); }))),
      tmrShutdown_(platform.loop.MakeTimer(kShutdownTickMs,
                                           NonReentrant([this] { shutdown_.OnShutdownTick(); }))),
      periodic_save_(*tmrSaveTimed_, flags_, platform.clock, form_, subscriber_list_, group_list_,
                     activity_, settings_),
      shutdown_({platform.loop, platform.prompts, *tmrSaveTimed_, *tmrShutdown_, flags_, form_,
                 call_follower_, subscriber_list_, group_list_, activity_, settings_, recorder_,
                 platform.clock,
                 [this, &shell] {
                   editor_.Close();
                   shell.CloseMainWindow();
                 }}),
      main_form_(form_, presets_, flags_, checkbox_detection_.tmrDetectcheckbox(), *this),
      editor_(shell, {platform.loop,
                      platform.clock,
                      flags_,
                      form_,
                      main_form_.hand_over(),
                      groups_,
                      subscribers_,
                      names_,
                      network_,
                      call_follower_.locks(),
                      {}}) {
  windows_.SetListener([this](WindowHandle window, PatientWindows::Asked asked, Reply reply) {
    link_.answers.OnReply(window, asked, reply);
  });
}

App::~App() = default;

bool App::Load() {
  if (settings_.ReadSettings() == Load::kEnded) return false;
  main_form_.ApplyRestoredSettings();
  if (LoadAllLists(rec_only_, label_files_, group_list_, subscriber_list_, start_errors_) ==
      Load::kEnded) {
    return false;
  }
  net_remote_.SetEndpoint();
  discovery_.DiscoverSdrWindows(Discovery::Log::kWhole);
  folders_.CreateDayFolders(platform_.clock.Now());
  tmrCallWDT_->SetEnabled(true);
  tmrTmpGssiLockout_->SetEnabled(true);
  tmrSaveTimed_->SetEnabled(true);
  flags_.mblnFormLoaded = true;
  return true;
}

void App::ReportException(const char* what) {
  AddStatusLine(form_, std::string("Internal error: ") + what + " - " + NowText(platform_.clock));
}

App::View App::view() {
  return {flags_,
          call_follower_.call(),
          call_follower_.locks(),
          network_,
          groups_,
          subscribers_,
          presets_,
          recorder_,
          scanner_,
          activity_,
          poll_cycle_.tmrStartup(),
          *tmrCallWDT_,
          *tmrTmpGssiLockout_,
          *tmrSaveTimed_,
          *tmrShutdown_,
          checkbox_detection_.tmrDetectcheckbox(),
          editor_.dialog()};
}

void App::StartLink() {
  scanner_.ForgetPosition();
  poll_cycle_.Start();
}

void App::ManualRelease() {
  call_follower_.ManualRelease();
}

void App::ParkOnControlChannel() {
  call_follower_.Park();
}

void App::ToggleGroupHold() {
  call_follower_.ToggleGroupHold();
}

void App::LogModeSwitched(bool checked) {
  call_follower_.LogModeSwitched(checked);
}

void App::CaptureSdrPosition() {
  TakeSdrPosition(link_);
}

void App::SampleCheckedColour() {
  checkbox_detection_.SetCheckedValue();
}

void App::SampleUnCheckedColour() {
  checkbox_detection_.SetUnCheckedValue();
}

void App::SaveSettings() {
  settings_.SaveSettings();
}

void App::AddRecOnlyGssi() {
  rec_only_.AddRecOnlyGssi();
}

void App::RemoveRecOnlyGssi() {
  rec_only_.RemoveSelected();
}

void App::ShowEditor() {
  editor_.Show(form_);
}

void App::CloseRequested() {
  shutdown_.QueryUnload();
}

void App::SessionEnding() {
  shell_.HoldSession(true);
  shutdown_.EndSession();
  shell_.HoldSession(false);
}

std::int32_t App::mcc() const {
  return network_.mcc();
}

std::int32_t App::mnc() const {
  return network_.mnc();
}

}  // namespace corvane
