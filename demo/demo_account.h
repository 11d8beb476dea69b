// The running account of a demonstration: what the two programs show, told in the field's words.
// Knows nothing of how their lines are got hold of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "desktop/harness/standin_program.h"

namespace corvane::desktop {

class DemoAccount {
 public:
  // `tell` takes each line of the account.
  explicit DemoAccount(std::function<void(const std::string&)> tell) : tell_(std::move(tell)) {}

  // Tells what came since the last look: new lines of the call log, without their date and time,
  // and of the stand-in's log. Both are given as they stand now.
  void Look(const std::vector<std::string>& calls, const std::vector<LogLine>& log);

  [[nodiscard]] int calls_begun() const { return calls_begun_; }
  // Calls that were followed to their end.
  [[nodiscard]] int calls_ended() const { return calls_ended_; }

 private:
  void TellCallLine(const std::string& line);
  void TellStandinLine(const std::vector<LogLine>& log, std::size_t index);
  void TellTuning(const std::string& hertz, std::int64_t ms, std::optional<std::int64_t> setup_ms);

  std::function<void(const std::string&)> tell_;
  std::size_t call_lines_ = 0;
  std::size_t standin_lines_ = 0;
  std::string control_channel_;  // its frequency in Hz; "" before the first tuning
  int calls_begun_ = 0;
  int calls_ended_ = 0;
  bool voice_told_ = false;  // of the present call
};

}  // namespace corvane::desktop
