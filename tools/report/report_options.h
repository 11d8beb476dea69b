// What the user asks a report for.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/command.h"

namespace corvane::tools {

enum class ReportForm { kHtml, kJson, kCsv };

struct ReportOptions {
  static constexpr int kEarlierDays = 7;
  static constexpr int kMostEarlierDays = 3660;

  std::vector<std::string> days;
  ReportForm form = ReportForm::kHtml;
  std::string output;  // "": the standard output, or a page beside the first day folder
  std::string lists;   // "": the program folder that the day lies in
  std::string merge;   // "": no recordings are joined
  int earlier = kEarlierDays;
  bool waveforms = true;
  bool quiet = false;
};

// What is wrong with `arguments`; "" when nothing is.
[[nodiscard]] std::string ParseReportOptions(const Arguments& arguments, ReportOptions& options);

extern const char* const kReportHelp;

}  // namespace corvane::tools
