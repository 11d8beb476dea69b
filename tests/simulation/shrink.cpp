// Leaves out halves, quarters, ... of the steps for as long as the plan still fails.
#include <algorithm>

#include "simulation/player.h"

namespace corvane::sim {

Plan Shrink(const Plan& plan, const std::function<bool(const Plan&)>& fails) {
  Plan least = plan;
  std::size_t length = std::max<std::size_t>(least.steps.size() / 2, 1);
  for (;;) {
    bool shorter = false;
    for (std::size_t from = 0; from < least.steps.size();) {
      Plan without = least;
      const auto begin = without.steps.begin() + static_cast<std::ptrdiff_t>(from);
      const auto end = without.steps.begin() +
                       static_cast<std::ptrdiff_t>(std::min(from + length, least.steps.size()));
      without.steps.erase(begin, end);
      if (fails(without)) {
        least = std::move(without);
        shorter = true;
      } else {
        from += length;
      }
    }
    if (length == 1 && !shorter) return least;
    if (length > 1) length = (length + 1) / 2;
  }
}

}  // namespace corvane::sim
