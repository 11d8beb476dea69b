// Every call on a seam that can fail fails once, in a run of its own: what a scripted run does must
// survive it, and nothing may be lost but what that call was for.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "scenarios/script.h"

namespace corvane::sim {

enum class Seam {
  kFiles,     // opening, reading, writing, flushing, deleting and moving a file
  kConnect,   // nothing listens
  kSend,      // the connection breaks at it, as a local one refuses nothing for other reasons
  kMessages,  // a window does not answer
  kWindows,   // a window is not there, or the screen cannot be read
  kSound,     // a command to the recording device
  kDates,     // a date in a list that the regional settings do not read
};
inline constexpr std::array kSeams = {Seam::kFiles,   Seam::kConnect, Seam::kSend, Seam::kMessages,
                                      Seam::kWindows, Seam::kSound,   Seam::kDates};
[[nodiscard]] const char* NameOf(Seam seam);

struct OneFailure {
  Seam seam = Seam::kFiles;
  std::int64_t call = 0;  // counted from 1 since the program began; 0: none
};

struct FailureRun {
  std::string violation;   // "": all that must hold held
  std::int64_t calls = 0;  // on that seam
  int followed = 0;
  int recorded = 0;
  int boxes = 0;
};

// Plays the script with that failure, gives the program time to recover, then puts a last call on
// the air, closes the program and starts another one on its files. `undisturbed` is the same run
// without a failure; nullptr when this is that one.
[[nodiscard]] FailureRun PlayWithOneFailure(const Script& script, const OneFailure& failure,
                                            const FailureRun* undisturbed);

}  // namespace corvane::sim
