// What happens to the whole program, in any order: calls, what the user does, what goes wrong. The
// bytes choose one step after the other; all that must hold at random must hold here.
#include "fuzz/fuzzing.h"
#include "simulation/player.h"

namespace corvane::sim {
namespace {

void Run(const std::string& input) {
  const Plan plan = PlanFromBytes(input);
  const Played played = Play(plan);
  if (!played.violation.empty()) std::fprintf(stderr, "%s", ToText(plan).c_str());
  fuzzing::Require(played.violation.empty(), played.violation.c_str());
}

}  // namespace
}  // namespace corvane::sim

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::sim::Run(corvane::fuzzing::Text(data, size));
  return 0;
}
