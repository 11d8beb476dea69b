// The system's media control interface.
//
// Its commands are carried out by a thread of its own, because a sound device that was taken away
// may never answer: a command is waited for within its limit, and then counts as failed. What hangs
// is left behind, and the next commands go to a new thread, for which no device is open yet.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "record/mci.h"

namespace corvane {

// One in a program: the aliases of devices that hang are known to it alone.
class MciWin : public Mci {
 public:
  MciWin() = default;
  ~MciWin() override;
  MciWin(const MciWin&) = delete;
  MciWin& operator=(const MciWin&) = delete;

  Reply Send(const MciCommand& command, unsigned reply_length) override;
  [[nodiscard]] std::optional<Reply> Begin(const MciCommand& command,
                                           unsigned reply_length) override;
  [[nodiscard]] std::optional<Reply> Answer() override;
  Reply Await() override;
  void Hurry() override { hurried_ = true; }
  [[nodiscard]] std::string ErrorText(unsigned error) override;

 private:
  struct Orders;

  static DWORD WINAPI CarryOut(void* argument);
  void Order(const MciCommand& command, unsigned reply_length);
  [[nodiscard]] std::optional<Reply> WaitFor(DWORD limit_ms);
  [[nodiscard]] DWORD Limit(DWORD limit_ms) const;
  [[nodiscard]] bool HasThread();
  void LetGo();
  void GiveUp();

  std::shared_ptr<Orders> orders_;
  HANDLE thread_ = nullptr;
  std::vector<HANDLE> hanging_;
  unsigned given_up_ = 0;  // devices that hang, or did
  bool opened_ = false;    // "open" was sent to this thread
  bool hurried_ = false;
  bool recorded_before_ = false;                 // the first "record" of the run is over
  std::optional<ULONGLONG> under_way_until_ms_;  // of what Begin left
};

}  // namespace corvane
