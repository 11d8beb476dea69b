// What the parts of call following share: the main window's state, the tables and the link.
//
// It owns nothing but the call's own state.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/loop.h"
#include "base/wall_clock.h"
#include "core/network_identity.h"
#include "core/ports.h"
#include "panel/form1.h"
#include "panel/presets.h"
#include "panel/program_flags.h"
#include "record/recorder.h"
#include "store/call_activity.h"
#include "store/day_folders.h"
#include "store/log_files.h"
#include "store/tables.h"

namespace corvane {

struct CallState {
  std::int16_t FollowedCallId = 0;
  std::int16_t CurrentPriority = 0;   // of the followed group; no decision reads it
  std::int32_t CallTimeoutTicks = 0;  // watchdog ticks left; 0 while following: timed out
};

// One group that the user dropped by hand, and for how long already, both as decimal text. The
// empty group marks the row of an empty table.
struct LockoutRow {
  std::string group;
  std::string seconds = "0";
};

struct CallContext {
  Loop& loop;
  const WallClock& clock;
  Form1& form;
  ProgramFlags& flags;
  Presets& presets;
  NetworkIdentity& network;
  GssiTable& groups;
  SsiTable& subscribers;
  Recorder& recorder;
  DayFolders& folders;
  LogFiles& logs;
  CallActivity& activity;
  SdrLink& link;
  NetworkInfoBox& box;

  CallState call{};
  std::vector<LockoutRow> TempGroupLockouts{LockoutRow{}};  // never without a row
};

// Adds "date time" + `text` to the call log.
void AddStampedCallLine(CallContext& context, const std::string& text);

// Clears what the window shows of a call: the eight captions.
void ClearCallCaptions(Form1& form);

// True when the list of talkers holds `ssi`, compared as numbers.
[[nodiscard]] bool ListsNumber(const ListBox& list, std::int32_t number);

// Who may break a tuning, and when.
enum class WaitRule {
  kAfterEverySet,       // ends when the socket is not connected or the program shuts down
  kOnlyWhileReceiving,  // the same, but tested only while a reply is being handled
};

// Sets "Frequency", then "AudioGain" 10 ms later, each with its wait. False when a wait ended it.
// Lets events run.
[[nodiscard]] bool Tune(CallContext& context, const std::string& frequency_hz,
                        const std::string& gain, WaitRule rule);

// The park carrier's frequency in Hz, as decimal text.
[[nodiscard]] std::string ParkFrequency(const CallContext& context);

inline constexpr const char* kParkedGain = "25";

}  // namespace corvane
