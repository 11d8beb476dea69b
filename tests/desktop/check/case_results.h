// What a program of cases says of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane::desktop {

struct CaseResults {
  int passed = 0;
  std::vector<std::string> failed;
  // The program came to its end and said how many passed.
  bool whole = false;
};

// From all that a GoogleTest program printed. A case that began and did not end failed.
[[nodiscard]] CaseResults ReadCaseResults(std::string_view output);

}  // namespace corvane::desktop
