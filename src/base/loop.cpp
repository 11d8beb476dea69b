// Waiting helpers on top of the loop seam.
#include "base/loop.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/scoped_flag.h"

namespace corvane {

namespace {
constexpr int kYieldSliceMs = 10;
}  // namespace

bool SleepAndYield(Loop& loop, int ms, const std::function<bool()>& stop) {
  const std::int64_t end = loop.TickMs() + ms;
  for (;;) {
    if (stop && stop()) return false;
    const std::int64_t left = end - loop.TickMs();
    if (left <= 0) return true;
    loop.Sleep(static_cast<int>(std::min<std::int64_t>(left, kYieldSliceMs)));
    loop.DoEvents();
  }
}

std::function<void()> NonReentrant(std::function<void()> handler) {
  return [handler = std::move(handler), running = std::make_shared<bool>(false)] {
    if (*running) return;
    const ScopedFlag scope(*running);
    handler();
  };
}

}  // namespace corvane
