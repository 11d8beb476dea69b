// What the fuzz targets share: turning bytes into text, and a claim that ends the run when it is
// broken. No target may write files or wait.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace corvane::fuzzing {

inline std::string Text(const std::uint8_t* data, std::size_t size) {
  return std::string(data, data + size);
}

inline void Require(bool claim, const char* what) {
  if (claim) return;
  std::fprintf(stderr, "broken claim: %s\n", what);
  std::abort();
}

// True when `part` lies in `whole`, or is empty.
inline bool Within(std::string_view whole, std::string_view part) {
  return part.empty() ||
         (part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size());
}

}  // namespace corvane::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
