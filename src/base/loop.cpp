// Waiting helpers on top of the loop seam.
#include "base/loop.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace corvane {

namespace {
constexpr int kYieldSliceMs = 10;

// Puts a flag back when the handler is left by whatever way.
class FlagScope {
 public:
  explicit FlagScope(bool& flag) : flag_(flag) { flag_ = true; }
  ~FlagScope() { flag_ = false; }
  FlagScope(const FlagScope&) = delete;
  FlagScope& operator=(const FlagScope&) = delete;

 private:
  bool& flag_;
};
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
    FlagScope scope(*running);
    handler();
  };
}

}  // namespace corvane
