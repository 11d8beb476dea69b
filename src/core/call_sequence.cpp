// Nesting and deferring.
#include "core/call_sequence.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {
class DepthScope {
 public:
  explicit DepthScope(int& depth) : depth_(depth) { ++depth_; }
  ~DepthScope() { --depth_; }
  DepthScope(const DepthScope&) = delete;
  DepthScope& operator=(const DepthScope&) = delete;

 private:
  int& depth_;
};
}  // namespace

void CallSequence::Run(const std::function<void()>& body) {
  {
    DepthScope scope(depth_);
    body();
  }
  RunDeferred();
}

void CallSequence::RunOrDefer(int key, std::function<void()> action) {
  if (!running()) {
    action();
    return;
  }
  std::erase_if(deferred_, [key](const Deferred& waiting) { return waiting.key == key; });
  deferred_.push_back({key, std::move(action)});
}

bool CallSequence::IsDeferred(int key) const {
  return std::any_of(deferred_.begin(), deferred_.end(),
                     [key](const Deferred& waiting) { return waiting.key == key; });
}

void CallSequence::RunDeferred() {
  while (!running() && !deferred_.empty()) {
    const Deferred next = std::move(deferred_.front());
    deferred_.erase(deferred_.begin());
    next.action();
  }
}

}  // namespace corvane
