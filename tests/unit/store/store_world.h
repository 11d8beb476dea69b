// Everything of the store on one simulated computer, as the program puts it together.
#pragma once

#include <string>

#include "panel/form1.h"
#include "panel/presets.h"
#include "panel/program_flags.h"
#include "store/call_activity.h"
#include "store/day_folders.h"
#include "store/group_list.h"
#include "store/label_files.h"
#include "store/rec_only_list.h"
#include "store/settings_file.h"
#include "store/start_load.h"
#include "store/subscriber_list.h"
#include "tests/unit/store/store_fakes.h"

namespace corvane {

// One run of the program on `files`; several runs may follow each other on the same files.
struct StoreRun {
  explicit StoreRun(MemoryFiles& disk) : files(disk) {}

  // Start-up: settings, then the lists. False when the program was ended.
  bool Start() {
    return settings.ReadSettings() == Load::kOk &&
           LoadAllLists(rec_only, labels, groups, subscribers, errors) == Load::kOk;
  }

  MemoryFiles& files;
  FakePrompts prompts;
  FakeClock clock;
  QuietSink sink;
  Form1 form{sink};
  Presets presets;
  FileNumbers numbers;
  GssiTable group_table;
  SsiTable subscriber_table;
  NetworkNames names;
  StartErrors errors{files, prompts, numbers, kFolder};
  SettingsFile settings{files, prompts, clock, form, presets, errors, kFolder};
  RecOnlyList rec_only{files, clock, form, numbers, kFolder};
  LabelFiles labels{files, prompts, form, names, kFolder};
  GroupList groups{files, form, group_table, kFolder};
  SubscriberList subscribers{files, clock, form, subscriber_table, kFolder};
  DayFolders folders{files, form, kFolder};
  CallActivity activity{files, clock, folders, form};
};

inline const std::string kSettingsPath = kFolder + "\\corvane_simple.dat";
inline const std::string kCountryPath = kFolder + "\\TETRA_mcc.txt";
inline const std::string kNetworkPath = kFolder + "\\TETRA_mnc.txt";
inline const std::string kOldNetworkPath = kFolder + "\\TETRA_network.txt";
inline const std::string kAreaPath = kFolder + "\\TETRA_la.txt";
inline const std::string kGroupPath = kFolder + "\\TETRA_GSSI.txt";
inline const std::string kSubscriberPath = kFolder + "\\TETRA_SSI.txt";
inline const std::string kRecOnlyPath = kFolder + "\\TETRA_rec_gssi.txt";
inline const std::string kDayPath = kFolder + "\\Daily\\20261115";
inline const std::string kActivityPath = kDayPath + "\\Call_Activity_15-11-2026.csv";

}  // namespace corvane
