// The system's media control interface.
//
// Its commands run on one thread of their own, because one that never comes back (a device that was
// taken away in the middle of a recording) must not stop the program.
#pragma once

#include <memory>

#include "record/mci.h"

namespace corvane {

class MciWin : public Mci {
 public:
  // A command that is not answered within its limit has failed; until it is answered after all,
  // every further one fails at once.
  static constexpr unsigned kAnswerLimitMs = 5'000;
  static constexpr unsigned kSaveLimitMs = 60'000;  // copies the whole recording

  MciWin();
  ~MciWin() override;

  Reply Send(const std::string& command, unsigned reply_length) override;
  [[nodiscard]] std::string ErrorText(unsigned error) override;

 private:
  class Clerk;
  std::unique_ptr<Clerk> clerk_;
};

}  // namespace corvane
