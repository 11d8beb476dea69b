// The system's media control interface.
//
// Its commands are carried out by a thread of its own, because a sound device that was taken away
// may never answer: a command is waited for within a limit, and then counts as failed. What hangs
// is left behind, and the next commands go to a new thread, for which no device is open yet.
#pragma once

#include <memory>

#include "record/mci.h"

namespace corvane {

class MciWin : public Mci {
 public:
  // The longest that Send waits: "save" may have to copy hours of sound, and all else takes no
  // longer than the device needs for its next piece of sound.
  static constexpr int kLongestSave_ms = 60'000;
  static constexpr int kLongestCommand_ms = 3'000;

  MciWin();
  ~MciWin() override;
  MciWin(const MciWin&) = delete;
  MciWin& operator=(const MciWin&) = delete;

  Reply Send(const std::string& command, unsigned reply_length) override;
  [[nodiscard]] std::string ErrorText(unsigned error) override;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace corvane
