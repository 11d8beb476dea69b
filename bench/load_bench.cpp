// What a busy network's lines cost the calls between them, on the virtual clock, so that the
// figures are the same on every machine; beside them what queueing theory expects.
#include <cstdio>
#include <vector>

#include "scenarios/load_figures.h"

int main() {
  using namespace corvane::sim;
  std::vector<corvane::load::Figures> once;
  std::vector<corvane::load::Figures> repeated;
  for (const double lines_per_s : {1, 4, 8, 12, 15, 17, 20}) {
    once.push_back(MeasureUnderLoad(lines_per_s, false));
    repeated.push_back(MeasureUnderLoad(lines_per_s, true));
  }
  std::printf("%s", corvane::load::Table(once, repeated).c_str());
  const std::int64_t caught_up_ms = MeasureCatchingUp(1000);
  std::printf("a call behind 1000 lines at once: followed after %.1f s (%.1f s of polls)\n",
              static_cast<double>(caught_up_ms) / 1000.0, 1000 * corvane::load::kPollS);
  return caught_up_ms >= 0 ? 0 : 1;
}
