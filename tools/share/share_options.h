// What the user asks to be shared.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/command.h"

namespace corvane::tools {

struct ShareOptions {
  std::string day;  // "" with follow
  bool follow = false;
  std::string folder = ".";
  std::string outbox = "Outbox";
  std::vector<std::string> hook;  // the words of its command line; empty: none
  std::optional<std::int64_t> system;
};

// What is wrong with `arguments`; "" when nothing is.
[[nodiscard]] std::string ParseShareOptions(const Arguments& arguments, ShareOptions& options);

extern const char* const kShareHelp;

}  // namespace corvane::tools
