// Closing the main window: the last save, guarded by tmrShutdown.
#pragma once

#include <functional>
#include <string>

#include "base/loop.h"
#include "base/prompts.h"
#include "base/wall_clock.h"
#include "core/call_follower.h"
#include "panel/form1.h"
#include "panel/program_flags.h"
#include "record/recorder.h"
#include "store/call_activity.h"
#include "store/saved_lists.h"
#include "store/settings.h"

namespace corvane {

inline constexpr int kShutdownTickMs = 5000;

// What a Shutdown works on; everything outlives it.
struct ShutdownParts {
  Loop& loop;
  Prompts& prompts;
  Timer& tmrSaveTimed;
  Timer& tmrShutdown;
  ProgramFlags& flags;
  Form1& form;
  CallFollower& follower;
  SubscriberList& subscribers;
  GroupList& groups;
  CallActivity& activity;
  SettingsFile& settings;
  Recorder& recorder;
  const WallClock& clock;
  std::function<void()> close_windows;  // the editor, then the main window
};

class Shutdown {
 public:
  explicit Shutdown(const ShutdownParts& parts) : parts_(parts) {}

  // The user or the system wants the main window closed: ends a followed call, waits for a periodic
  // save under way, saves everything, then closes the editor and the main window. A second request
  // does nothing. Lets events run.
  void QueryUnload();

  // The same at the end of the session, where nobody can answer a box and the system waits for a
  // few seconds alone: failures become lines of the status log, and a device that hangs is given up
  // soon.
  void EndSession();

  // The handler of tmrShutdown, which the caller makes with kShutdownTickMs, NonReentrant because
  // the box lets it tick on, and leaves disabled: the wait above took too long. Saves the settings
  // and ends the program. Lets events run.
  void OnShutdownTick();

 private:
  void SaveEverything();
  void Report(const std::string& text);

  ShutdownParts parts_;
  bool ended_ = false;
  bool session_ends_ = false;
};

}  // namespace corvane
