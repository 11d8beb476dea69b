// The recordings of a report as sound: pictures and pauses of them, and all of them in one file.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "archive/call_record.h"
#include "archive/wav_file.h"
#include "tools/command.h"
#include "tools/report/report_options.h"

namespace corvane::tools {

class SoundWork {
 public:
  // All three outlive this.
  SoundWork(const ReportOptions& options, Console& console, const std::vector<CallRecord>& calls)
      : options_(options), console_(console), calls_(calls) {}

  // One for each call, as far as it has a recording with sound in it; none at all when the user
  // does not want them.
  [[nodiscard]] std::vector<std::optional<Waveform>> Look() const;

  // Writes the file that the user asked for. A recording of another form than the first is left
  // out, with a notice. "" or what is wrong.
  [[nodiscard]] std::string Merge(std::vector<std::string>& notices) const;

 private:
  [[nodiscard]] std::uint64_t Bytes() const;

  const ReportOptions& options_;
  Console& console_;
  const std::vector<CallRecord>& calls_;
};

}  // namespace corvane::tools
