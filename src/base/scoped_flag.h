// Holds a flag set, or a count raised, until the scope is left by whatever way.
#pragma once

namespace corvane {

// `F` takes and gives a bool. A flag that was set before is cleared at the end all the same.
template <typename F>
class ScopedFlag {
 public:
  explicit ScopedFlag(F& flag) : flag_(flag) { flag_ = true; }
  ~ScopedFlag() { flag_ = false; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  F& flag_;
};

// One deeper: for what may be entered again while it runs.
class ScopedDepth {
 public:
  explicit ScopedDepth(int& depth) : depth_(depth) { ++depth_; }
  ~ScopedDepth() { --depth_; }
  ScopedDepth(const ScopedDepth&) = delete;
  ScopedDepth& operator=(const ScopedDepth&) = delete;

 private:
  int& depth_;
};

}  // namespace corvane
