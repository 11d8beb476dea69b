// The running account of a demonstration: what the two programs show, told in the field's words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "desktop/harness/corvane_program.h"
#include "desktop/harness/standin_program.h"

namespace corvane::desktop {

class DemoAccount {
 public:
  DemoAccount(const CorvaneProgram& corvane, const StandinProgram& sdr)
      : corvane_(corvane), sdr_(sdr) {}

  // One line with the time since the beginning in front.
  void Tell(const std::string& text) const;
  // Tells what came since the last look: new lines of the call log and of the stand-in's log.
  void Look();

  [[nodiscard]] int calls_begun() const { return calls_begun_; }
  // Calls that were followed to their end.
  [[nodiscard]] int calls_ended() const { return calls_ended_; }
  // Speakers heard in the present call after the one that set it up.
  [[nodiscard]] int speaker_changes() const { return speaker_changes_; }

 private:
  void TellCallLine(const std::string& line);
  void TellStandinLine(const std::vector<LogLine>& log, std::size_t index);
  void TellTuning(const std::string& hertz, std::int64_t ms, std::optional<std::int64_t> setup_ms);

  const CorvaneProgram& corvane_;
  const StandinProgram& sdr_;
  std::size_t call_lines_ = 0;
  std::size_t standin_lines_ = 0;
  std::string control_channel_;  // its frequency in Hz; "" before the first tuning
  int calls_begun_ = 0;
  int calls_ended_ = 0;
  int speaker_changes_ = 0;
  bool voice_told_ = false;  // of the present call
};

}  // namespace corvane::desktop
