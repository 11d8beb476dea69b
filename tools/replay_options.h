// What the user asks a replay for.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/setup_decision.h"
#include "tools/command.h"

namespace corvane::tools {

enum class Format { kText, kJson, kCsv };

struct NetworkCode {
  std::int32_t mcc = 0;
  std::int32_t mnc = 0;
  auto operator<=>(const NetworkCode&) const = default;
};

struct ReplayOptions {
  // One line is taken per poll of 60 ms.
  static constexpr double kPaceMs = 60;
  static constexpr int kLongestTimeoutS = 3600;

  std::string input;
  Format format = Format::kText;
  std::string output;  // "": the standard output
  std::string lists;   // "": none, as for all files below
  std::string settings;
  std::string events;
  std::string expect;
  std::optional<NetworkCode> network;
  std::optional<std::int32_t> held;
  bool log_mode = false;
  std::set<std::int32_t> groups;   // empty: all
  std::set<SetupOutcome> reasons;  // empty: all
  double pace_ms = kPaceMs;
  std::optional<std::int16_t> timeout_s;
  bool quiet = false;
};

// What is wrong with `arguments`; "" when nothing is.
[[nodiscard]] std::string ParseReplayOptions(const Arguments& arguments, ReplayOptions& options);

// Reads "262/42". False when it is no network.
[[nodiscard]] bool ReadNetwork(std::string_view text, std::optional<NetworkCode>& network);

extern const char* const kReplayHelp;

}  // namespace corvane::tools
