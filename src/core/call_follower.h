// Follows calls: acts on the decision about a setup, on the followed call's own signalling, on
// silence and on the user, and brings SDR# back to the control channel.
//
// Three sequences of commands must not be interleaved: tuning to a call, ending it, and the reset.
// Each lets events run; while one runs, InSequence() is true, no line is taken, and "CC Park" and
// LOG mode wait until the outermost one has ended, however it ends.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/loop.h"
#include "base/wall_clock.h"
#include "core/bookkeeping.h"
#include "core/call.h"
#include "core/call_watcher.h"
#include "core/daily_calls.h"
#include "core/group_locks.h"
#include "core/ports.h"
#include "core/setup_decision.h"
#include "panel/form1.h"
#include "panel/presets.h"
#include "panel/program_flags.h"
#include "record/recorder.h"
#include "store/tables.h"

namespace corvane {

// Whether the poll step goes on after a part of it.
enum class PollStep { kGoesOn, kEnds };

class CallFollower {
 public:
  // What call following works on; everything outlives it.
  struct Surroundings {
    Loop& loop;
    const WallClock& clock;
    Form1& form;
    const ProgramFlags& flags;
    Presets& presets;
    const NetworkIdentity& network;
    GssiTable& groups;
    SsiTable& subscribers;
    DailyCalls& daily;
    Recorder& recorder;
    SdrLink& link;
  };
  explicit CallFollower(const Surroundings& around);

  [[nodiscard]] const Call& call() const { return call_; }
  [[nodiscard]] const GroupLocks& locks() const { return locks_; }
  [[nodiscard]] GroupLocks& locks() { return locks_; }
  [[nodiscard]] bool FollowingCall() const { return call_.FollowingCall(); }
  [[nodiscard]] bool InSequence() const { return depth_ > 0; }

  // `watcher` outlives the follower; nullptr: nobody.
  void SetWatcher(CallWatcher* watcher) { watcher_ = watcher; }

  // -- What the network says.

  // A setup line: decides about it and acts on the decision. Gives what came of it. Lets events
  // run.
  SetupDecision OnSetup(std::string_view line);
  // A line while a call is followed: acts on one that carries its Call ID, ignores every other.
  // Lets events run.
  PollStep OnCallEvent(std::string_view line);
  // Ends the followed call if it has been silent for too long. Lets events run.
  PollStep EndIfTimedOut();

  // -- What time does.

  // Every 300 ms: runs the countdown down, asks whether the audio is muted and loads the countdown
  // again when the last answer said that it is not. Asks nothing while a command is under way.
  // Lets events run.
  void OnWatchdogTick();
  // Every 1000 ms: ages the lockouts by hand.
  void OnLockoutTick() { locks_.AgeLockouts(); }

  // -- What the user does.

  // The click on "Call": drops the followed call and leaves its group alone for 16 s. Lets events
  // run.
  void ManualRelease();
  // The double click on "CC Park": a reset when the link is up; one that comes inside a sequence is
  // carried out right after it. Lets events run.
  void Park();
  // The LOG mode box has just been checked or unchecked. Ends a followed call and logs the change;
  // inside a sequence, right after it. Lets events run.
  void LogModeSwitched(bool checked);
  // Holds the group in the window, or releases the hold.
  void ToggleGroupHold() { locks_.ToggleHold(call_.shown_group()); }

  // -- What the rest of the program does.

  // Drops whatever call there is: clears the display, parks when the link is up, logs it, and saves
  // a running recording as ended by force. Lets events run.
  void ResetCallDisplay();
  // The link is gone: the call, its display and the hold go too; a recording is saved. Nothing is
  // sent.
  void DropWithLink();
  // Tunes to the control channel once more while no call is followed. Lets events run.
  void ParkAgain();
  // The program closes: ends a followed call by the reset, with every command answered before the
  // next one, and saves a recording that an ending under way has left. Lets events run.
  void EndForClosing();

 private:
  enum class Deferred { kPark, kLogModeOn, kLogModeOff };
  // What a tuning does between and after its two commands.
  enum class Tuning {
    kWhileLinked,  // ends when the program shuts down or the socket is not connected
    kToTheEnd,     // sends both, whatever happens
    kWithAnswers,  // sends both, each when the command before it has been answered
  };

  // Setups.
  void Report(const SetupDecision& decision);
  void Follow(SetupDecision& decision);
  BrokenBy TuneAndStart(const Setup& setup, const std::string& frequency_hz);
  void ShowSetup(const Setup& setup);
  void AbortBadTimeslot(const Setup& setup);
  void CountInLogMode(const Setup& setup);
  void ReportLockout(const Setup& setup);
  [[nodiscard]] std::string GroupLabel(std::int32_t gssi);

  // Events and ends.
  void EndFollowing(CallEnd kind);
  void TransmissionCeased();
  void TransmissionGranted(std::string_view line);
  [[nodiscard]] std::string TalkerLabel(std::int32_t ssi);
  PollStep EndCall(CallEnd kind);
  PollStep EndGuarded(CallEnd kind);
  void ResetGuarded(Tuning tuning);
  BrokenBy Tune(const std::string& frequency_hz, const std::string& gain, Tuning tuning);
  BrokenBy Park(Tuning tuning);
  [[nodiscard]] BrokenBy Broken() const;

  // Recordings.
  void StartRecording(const Setup& setup);
  void StopRecording();

  // LOG mode, the guard, and small things.
  void SwitchLogModeOn();
  void SwitchLogModeOff();
  void AddLogModeLine(const std::string& text);
  void RunGuarded(const std::function<void()>& sequence);
  void RunOrDefer(Deferred action);
  void RunDeferred();
  void Run(Deferred action);
  void LoadCountdown();
  void AddStampedCallLine(const std::string& text);

  Surroundings around_;
  Call call_;
  GroupLocks locks_;
  Bookkeeping bookkeeping_;
  CallWatcher* watcher_ = nullptr;
  int depth_ = 0;
  std::vector<Deferred> deferred_;  // each once
};

}  // namespace corvane
