// Compares what is written with what a file holds, line by line, on its way to where it goes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "archive/log_lines.h"
#include "tools/output.h"

namespace corvane::tools {

class Expectation : public Output {
 public:
  explicit Expectation(Output& next) : next_(next) {}

  // False when the file cannot be read.
  [[nodiscard]] bool Open(const std::string& path) { return expected_.Open(path); }
  // After the last line. Says where the first difference is; "" when there is none.
  [[nodiscard]] std::string Difference();
  [[nodiscard]] bool failed() const { return expected_.failed(); }

 private:
  bool Put(std::string_view text) override;
  bool PutAll() override { return next_.Flush(); }
  void Compare(std::string_view line);

  Output& next_;
  LogLines expected_;
  std::string begun_;  // a line without its end yet
  std::uint64_t number_ = 0;
  std::string difference_;
};

}  // namespace corvane::tools
