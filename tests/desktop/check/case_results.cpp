// From what GoogleTest prints, line by line.
#include "desktop/check/case_results.h"

#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr std::string_view kBegun = "[ RUN      ] ";
constexpr std::string_view kGood = "[       OK ] ";
constexpr std::string_view kBad = "[  FAILED  ] ";
constexpr std::string_view kSummary = "[  PASSED  ] ";

// "Suite.Case (12 ms)" and "Suite.Case, where GetParam() = 3 (12 ms)".
std::string NameIn(std::string_view rest) {
  return std::string(rest.substr(0, rest.find_first_of(" ,")));
}

}  // namespace

CaseResults ReadCaseResults(std::string_view output) {
  CaseResults results;
  std::string under_way;
  const auto fail = [&results](const std::string& name) {
    if (std::ranges::find(results.failed, name) == results.failed.end()) {
      results.failed.push_back(name);
    }
  };
  while (!output.empty()) {
    const std::size_t end = std::min(output.find('\n'), output.size());
    const std::string_view line = output.substr(0, end);
    output.remove_prefix(std::min(end + 1, output.size()));
    if (line.starts_with(kBegun)) {
      under_way = NameIn(line.substr(kBegun.size()));
      while (under_way.ends_with('\r')) under_way.pop_back();
    } else if (line.starts_with(kGood)) {
      ++results.passed;
      under_way.clear();
    } else if (line.starts_with(kBad) && !under_way.empty()) {
      fail(under_way);
      under_way.clear();
    } else if (line.starts_with(kSummary)) {
      results.whole = true;
    }
  }
  if (!under_way.empty()) fail(under_way);
  return results;
}

}  // namespace corvane::desktop
