// Guards the sequences of commands that must not be interleaved: tuning to a call, ending it, and
// the reset. Each of them lets events run.
#pragma once

#include <functional>
#include <vector>

namespace corvane {

class CallSequence {
 public:
  // Runs `body` as a guarded sequence. When the outermost one has ended, however it ended, carries
  // out what was deferred meanwhile, in order. Lets events run.
  void Run(const std::function<void()>& body);

  [[nodiscard]] bool running() const { return depth_ > 0; }

  // Carries out `action` at once, or, while a sequence runs, once after it. An action with the same
  // `key` as one that already waits takes its place.
  void RunOrDefer(int key, std::function<void()> action);

  [[nodiscard]] bool IsDeferred(int key) const;

 private:
  struct Deferred {
    int key;
    std::function<void()> action;
  };
  void RunDeferred();

  int depth_ = 0;
  std::vector<Deferred> deferred_;
};

}  // namespace corvane
