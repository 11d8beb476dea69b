// The system's media control interface.
//
// Its commands are carried out by a thread of its own, because a sound device that was taken away
// may never answer: a command is waited for within a limit, and then counts as failed. What hangs
// is left behind, and the next commands go to a new thread, for which no device is open yet.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "record/mci.h"

namespace corvane {

// One in a program: the aliases of devices that hang are known to it alone.
class MciWin : public Mci {
 public:
  // The longest that Send waits: "save" may have to copy hours of sound, and all else takes no
  // longer than the device needs for its next piece of sound.
  static constexpr int kLongestSave_ms = 60'000;
  static constexpr int kLongestCommand_ms = 3'000;

  MciWin() = default;
  ~MciWin() override;
  MciWin(const MciWin&) = delete;
  MciWin& operator=(const MciWin&) = delete;

  Reply Send(const MciCommand& command, unsigned reply_length) override;
  [[nodiscard]] std::string ErrorText(unsigned error) override;

 private:
  struct Orders;

  static DWORD WINAPI CarryOut(void* argument);
  [[nodiscard]] bool HasThread();
  void LetGo();
  void GiveUp();

  std::shared_ptr<Orders> orders_;
  HANDLE thread_ = nullptr;
  std::vector<HANDLE> hanging_;
  unsigned given_up_ = 0;  // devices that hang, or did
  bool opened_ = false;    // "open" was sent to this thread
};

}  // namespace corvane
