// The real loop, files and boxes behind the contract cases.
#pragma once

#include <string>

#include "base/loop_win.h"
#include "contract/factories.h"

namespace corvane::contract {

class RealLoopUnderTest : public LoopUnderTest {
 public:
  Loop& loop() override { return loop_; }
  void Idle(int ms) override;
  void SetErrorReporter(std::function<void(const std::string&)> reporter) override;
  [[nodiscard]] LoopWin& real() { return loop_; }

 private:
  LoopWin loop_;
};

// A fresh folder below the system's temporary one, with a blank in its name; removed at the end
// with the files in it and in its folders.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// The child process that ends its program in an event and must not make `marker` afterwards.
inline constexpr char kEndSwitch[] = "--child-end-program";
int RunEndOfProgram(const std::string& marker);

}  // namespace corvane::contract
