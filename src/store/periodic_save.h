// The save on every tenth tick of tmrSaveTimed.
#pragma once

#include <cstdint>
#include <string>

#include "base/loop.h"
#include "base/wall_clock.h"
#include "panel/form1.h"
#include "panel/program_flags.h"
#include "store/call_activity.h"
#include "store/saved_lists.h"
#include "store/settings.h"

namespace corvane {

inline constexpr int kSaveTickMs = 60000;

class PeriodicSave {
 public:
  PeriodicSave(Timer& tmrSaveTimed, const ProgramFlags& flags, const WallClock& clock, Form1& form,
               SubscriberList& subscribers, GroupList& groups, CallActivity& activity,
               SettingsFile& settings);

  std::int16_t SaveTickCount = 0;

  // The handler of tmrSaveTimed, which the caller makes with kSaveTickMs and enables at start.
  // Lets no events run.
  void OnTick();

 private:
  struct Texts {
    const char* saved;  // followed by the result and ") "
    const char* nothing;
    const char* failed;
  };
  void Report(const Texts& texts, std::int32_t result, bool empty);

  Timer& tmrSaveTimed_;
  const ProgramFlags& flags_;
  const WallClock& clock_;
  Form1& form_;
  SubscriberList& subscribers_;
  GroupList& groups_;
  CallActivity& activity_;
  SettingsFile& settings_;
};

}  // namespace corvane
