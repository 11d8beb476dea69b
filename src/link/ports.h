// What the link needs of call following, which it drives.
#pragma once

namespace corvane {

class CallFollower {
 public:
  virtual ~CallFollower() = default;
  // One poll step. Lets events run.
  virtual void ScanNetworkInfo() = 0;
  // Drops whatever call there is and parks. Lets events run.
  virtual void ResetCallDisplay() = 0;
};

}  // namespace corvane
