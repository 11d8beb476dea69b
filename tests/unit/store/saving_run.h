// A StoreRun with its timers, periodic save and shutdown.
#pragma once

#include <memory>

#include "app/shutdown.h"
#include "sim/core_parts.h"
#include "store/periodic_save.h"
#include "tests/unit/store/store_world.h"

namespace corvane {

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
  NetworkIdentity network;
  sim::SimMci mci{loop, files};
  LogFiles logs{files, clock, form};
  Recorder recorder{mci, files, form, [this] { return folders.DayFolder(); }};
  DailyCalls daily{clock, form, folders, logs, activity};
  sim::NotedLink link{loop, flags};
  CallFollower follower{{loop, clock, form, flags, presets, network, group_table, subscriber_table,
                         daily, recorder, link}};
  PeriodicSave periodic{*tmrSaveTimed, flags, clock, form, subscribers, groups, activity, settings};
  Shutdown shutdown{{loop, prompts, *tmrSaveTimed, *tmrShutdown, flags, form, follower, subscribers,
                     groups, activity, settings, recorder, clock, [] {}}};
};

}  // namespace corvane
