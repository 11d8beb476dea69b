// Tells the user, in one line each, when SDR# begins to leave messages without an answer or the
// system begins to refuse them, and when that is over.
#pragma once

#include "base/wall_clock.h"
#include "link/patient_windows.h"
#include "link/window_ops.h"
#include "panel/form1.h"

namespace corvane {

class SdrAnswers {
 public:
  SdrAnswers(WindowOps& windows, Form1& form, const WallClock& clock)
      : windows_(windows), form_(form), clock_(clock) {}

  // Discovery knows SDR# by this window. What other programs answer is none of the user's concern.
  void SetSdr(WindowHandle main_window) { sdr_ = windows_.Program(main_window); }

  // What came of a message to any program's window (see PatientWindows::SetListener).
  void OnReply(WindowHandle window, PatientWindows::Asked asked, Reply reply);

 private:
  enum class State { kAnswers, kSilent, kRefuses };
  void Change(State state);

  WindowOps& windows_;
  Form1& form_;
  const WallClock& clock_;
  ProgramId sdr_ = 0;
  State state_ = State::kAnswers;
};

}  // namespace corvane
