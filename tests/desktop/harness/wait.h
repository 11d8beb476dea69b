// Waiting for states. No test waits for a time to pass, and none looks once at what another program
// changes by itself: it waits for the state, or holds every look of a period against what may be
// seen in it.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace corvane::desktop {

// Far more than a loaded machine needs; reaching it is a failure.
inline constexpr int kGenerousLimit_ms = 60'000;
inline constexpr int kLookAgainAfter_ms = 15;

// Looks at the state again and again until it holds. False: it did not within the limit.
[[nodiscard]] inline bool WaitFor(const std::function<bool()>& state,
                                  int limit_ms = kGenerousLimit_ms,
                                  int look_again_after_ms = kLookAgainAfter_ms) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(limit_ms);
  while (!state()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(look_again_after_ms));
  }
  return true;
}

}  // namespace corvane::desktop
