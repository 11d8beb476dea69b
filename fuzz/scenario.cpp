// A scenario file of the stand-in.
#include "standin/scenario.h"

#include "fuzz/fuzzing.h"

namespace corvane::standin {
namespace {

void Check(const std::string& content) {
  using fuzzing::Require;
  Scenario scenario;
  const std::string fault = ParseScenario(content, scenario);
  Require(scenario.commands.size() <= kMaxScenarioLines, "the number of commands has its limit");
  if (!fault.empty()) return;
  std::int64_t previous_ms = 0;
  for (const TimedCommand& timed : scenario.commands) {
    Require(timed.ms >= previous_ms, "commands are in order of time");
    Require(timed.line >= 1, "every command has its line");
    previous_ms = timed.ms;
  }
}

}  // namespace
}  // namespace corvane::standin

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::standin::Check(corvane::fuzzing::Text(data, size));
  return 0;
}
