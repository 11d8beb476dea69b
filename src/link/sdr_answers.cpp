// The lines about answers.
#include "link/sdr_answers.h"

#include "panel/logs.h"

namespace corvane {

void SdrAnswers::OnReply(WindowHandle window, PatientWindows::Asked asked, Reply reply) {
  // What changes nothing, which is nearly all of them, need not be asked whose it is.
  const bool as_before = reply == Reply::kAnswered && state_ == State::kAnswers;
  if (sdr_ == 0 || as_before || windows_.Program(window) != sdr_) return;
  switch (reply) {
    case Reply::kNoAnswer:
      if (state_ == State::kAnswers) Change(State::kSilent);
      return;
    case Reply::kRefused:
      if (state_ != State::kRefuses) Change(State::kRefuses);
      return;
    case Reply::kAnswered: {
      // Texts are answered to a program of fewer rights as well.
      const bool over = state_ == State::kSilent ||
                        (state_ == State::kRefuses && asked != PatientWindows::Asked::kText);
      if (over) Change(State::kAnswers);
      return;
    }
    case Reply::kGone:
      return;
  }
}

void SdrAnswers::Change(State state) {
  state_ = state;
  switch (state) {
    case State::kSilent:
      return AddStatusLineInView(form_, "SDR# does not answer - " + NowText(clock_));
    case State::kRefuses:
      return AddStatusLineInView(
          form_, "SDR# runs with administrator rights - start this program in the same way");
    case State::kAnswers:
      return AddStatusLineInView(form_, "SDR# answers again - " + NowText(clock_));
  }
}

}  // namespace corvane
