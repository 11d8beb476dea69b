// Everything of the store on one simulated computer, as the program puts it together.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "app/start_load.h"
#include "panel/form1.h"
#include "panel/presets.h"
#include "panel/program_flags.h"
#include "sim/sim_clock.h"
#include "sim/sim_files.h"
#include "sim/sim_loop.h"
#include "sim/sim_prompts.h"
#include "sim/trace_sink.h"
#include "store/call_activity.h"
#include "store/day_folders.h"
#include "store/labels.h"
#include "store/rec_only_list.h"
#include "store/saved_lists.h"
#include "store/settings.h"

namespace corvane {

inline const std::string kFolder = "C:\\Corvane";
inline const std::string kNow = "15/11/2026 14:23:05";  // where the simulated clock begins

// One run of the program on `files`; several runs may follow each other on the same files.
struct StoreRun {
  explicit StoreRun(sim::SimFiles& disk) : files(disk) {}

  // Start-up: settings, then the lists. False when the program was ended.
  bool Start() {
    const bool loaded = settings.ReadSettings() == Load::kOk &&
                        LoadAllLists(rec_only, labels, groups, subscribers, errors) == Load::kOk;
    if (loaded) flags.mblnFormLoaded = true;
    return loaded;
  }

  sim::SimFiles& files;
  sim::SimLoop loop;
  sim::SimPrompts prompts{loop};
  sim::SimClock clock{loop};
  sim::TraceSink sink;
  Form1 form{sink};
  Presets presets;
  ProgramFlags flags;
  GssiTable group_table;
  SsiTable subscriber_table;
  NetworkNames names;
  StartErrors errors{files, prompts, kFolder};
  SettingsFile settings{files, prompts, clock, flags, form, presets, errors, kFolder};
  RecOnlyList rec_only{files, clock, form, kFolder};
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

// One good file of every kind that a start reads.
inline void PutGoodFiles(sim::SimFiles& files) {
  files.Put(kSettingsPath, EncodeSettings(SettingsRecord()));
  files.Put(kRecOnlyPath, "9001\r\n");
  files.Put(kNetworkPath, "262;1;Net\r\n");
  files.Put(kAreaPath, "262;1;100;Area\r\n");
  files.Put(kCountryPath, "262;Land\r\n");
  files.Put(kGroupPath, "9001;262;1;Fire;0;True\r\n");
  files.Put(kSubscriberPath, "5010;9001;262;1;Car;15/11/2026 14:23:05\r\n");
}

// The files of a computer by their paths.
using Contents = std::map<std::string, std::string>;

inline Contents AllFiles(const sim::SimFiles& files) {
  Contents contents;
  for (const std::string& name : files.List(kFolder)) {
    const std::string path = kFolder + "\\" + name;
    contents[path] = files.Content(path).value_or("");
  }
  return contents;
}

inline void PutAll(sim::SimFiles& files, const Contents& contents) {
  for (const auto& [path, text] : contents) files.Put(path, text);
}

inline bool Has(const sim::SimFiles& files, const std::string& path) {
  return files.Content(path).has_value();
}

using Box = sim::SimPrompts::Box;

inline Box FileAccessBox(int number) {
  return {
      "Possible file access error.\r\nMake sure any required files are not opened.\r\n"
      "Error: [" +
          std::to_string(number) + "]\r\nAborting.",
      "Error", BoxIcon::kCritical};
}

inline Box VersionChangeBox() {
  return {
      "Settings file version change.\r\nPlease restart to re-create\r\n"
      "You will need to reconfigure options\r\nAborting.",
      "Error", BoxIcon::kCritical};
}

inline Box CorruptBox() {
  return {"Settings file appears corrupt, has been deleted. Please restart.", "Corvane",
          BoxIcon::kNone};
}

}  // namespace corvane
