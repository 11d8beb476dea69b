// A StoreRun with its timers, periodic save and shutdown.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "store/periodic_save.h"
#include "store/shutdown.h"
#include "tests/unit/store/store_world.h"

namespace corvane {

// Call and windows as saving and shutting down see them; everything they are told is in `told`.
class FakeProgram : public CallControl, public WindowControl {
 public:
  std::vector<std::string> told;
  bool followed = false;
  std::function<void()> while_ending;

  bool IsCallFollowed() const override { return followed; }
  void ResetCallDisplay() override {
    told.emplace_back("end call");
    if (while_ending) while_ending();
    followed = false;
  }
  void StopLeftoverRecording() override { told.emplace_back("stop recording"); }
  void CloseEditor() override { told.emplace_back("close editor"); }
  void CloseMainWindow() override { told.emplace_back("close main window"); }
};

// The program is loaded and its timers run.
struct SavingRun : StoreRun {
  explicit SavingRun(sim::SimFiles& disk) : StoreRun(disk) {
    flags.mblnFormLoaded = true;
    tmrSaveTimed->SetEnabled(true);
  }

  void AddOneOfEach() {
    GssiRecord group;
    group.Gssi = 9001;
    group_table.Append(group);
    SsiRecord subscriber;
    subscriber.Ssi = 5010;
    subscriber.LastSeen = clock.Now();
    subscriber_table.Append(subscriber);
    folders.CreateDayFolders(clock.Now());
    activity.LoadCallActivity();
    activity.CallActivityTable.Count(9001);
  }

  // Ten ticks of tmrSaveTimed, in no time.
  void SavePeriodically() {
    for (int tick = 0; tick < 10; ++tick) periodic.OnTick();
  }

  std::unique_ptr<Timer> tmrSaveTimed = loop.MakeTimer(kSaveTickMs, [this] { periodic.OnTick(); });
  std::unique_ptr<Timer> tmrShutdown =
      loop.MakeTimer(kShutdownTickMs, [this] { shutdown.OnShutdownTick(); });
  FakeProgram program;
  PeriodicSave periodic{*tmrSaveTimed, flags, clock, form, subscribers, groups, activity, settings};
  Shutdown shutdown{{loop, prompts, *tmrSaveTimed, *tmrShutdown, flags, form, program, program,
                     subscribers, groups, activity, settings}};
};

}  // namespace corvane
