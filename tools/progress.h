// How far a command has come, as a bar on the terminal.
#pragma once

#include <cstdint>

#include "tools/command.h"

namespace corvane::tools {

class Progress {
 public:
  // `in_all` 0: not known, no bar. There is none either where the error output is no terminal.
  Progress(Console& console, bool wanted, std::uint64_t in_all);

  void Show(std::uint64_t done) {
    if (done >= next_) Draw(done);
  }
  void Clear();

 private:
  void Draw(std::uint64_t done);

  Console& console_;
  std::uint64_t in_all_;
  std::uint64_t next_;
  bool drawn_ = false;
};

}  // namespace corvane::tools
