// The system's media control interface.
#pragma once

#include "record/mci.h"

namespace corvane {

class MciWin : public Mci {
 public:
  Reply Send(const std::string& command, unsigned reply_length) override;
  [[nodiscard]] std::string ErrorText(unsigned error) override;

 private:
  void KeepWaveDriver();
  void AwaitRecordingThread() const;

  void* wave_driver_ = nullptr;
};

}  // namespace corvane
