// Runs a program's benchmarks, and with --short judges them: not how fast they are, which depends
// on the machine, but whether they stay as fast as the data grows.
#pragma once

#include <initializer_list>

namespace corvane::bench {

// Of all sizes of benchmark `family` ("Family/size"), none may take more than `factor` times as
// long as another.
struct Flat {
  const char* family;
  double factor;
};

// main() of a benchmark program. With --short each benchmark runs only briefly and `claims` are
// tested: 1 when one is broken or its family was not run. Other arguments are the library's.
[[nodiscard]] int Run(int argc, char** argv, std::initializer_list<Flat> claims);

}  // namespace corvane::bench
