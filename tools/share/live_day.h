// A day folder while Corvane writes to it: which recordings got their names, and which calls they
// are of. Opens files for moments only, with full sharing.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/date_time.h"
#include "tools/share/live_calls.h"
#include "tools/share/sidecar.h"

namespace corvane::tools {

class LiveDay {
 public:
  // How long the end of a call may be written after its recording got its name.
  static constexpr std::int64_t kEndComesLateS = 2;

  // `calls` outlives it.
  LiveDay(std::filesystem::path folder, const DateTime& day, LiveCalls& calls);

  // Whether a recording needs no looking at any more.
  using IsKnown = std::function<bool(const std::string& day, const std::string& name)>;

  // The calls that are complete and were not given before; `now` is local time. `notices` gets a
  // line for each recording that is passed over, or waited for because it cannot be opened.
  [[nodiscard]] std::vector<SharedCall> Look(std::int64_t now, const IsKnown& is_known,
                                             std::vector<std::string>& notices);

 private:
  // What is gone comes again under another name or not at all.
  void ForgetGone(const std::vector<SharedCall>& there);
  // Fills in what is known besides the name.
  [[nodiscard]] bool IsComplete(SharedCall& shared, std::int64_t now,
                                std::vector<std::string>& notices);

  std::filesystem::path folder_;
  DateTime day_;
  std::string name_;
  LiveCalls& calls_;
  std::unordered_set<std::string> given_;
  std::unordered_map<std::string, std::int64_t> seen_;  // when a recording was seen first
  std::unordered_set<std::string> held_;
};

}  // namespace corvane::tools
