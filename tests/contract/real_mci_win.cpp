// Factory of the real recording device. It needs a device that can record.
#include <memory>

#include "base/files_win.h"
#include "contract/real_program_win.h"
#include "record/mci_win.h"

namespace corvane::contract {

namespace {

class RealMciUnderTest : public MciUnderTest {
 public:
  Mci& mci() override { return mci_; }
  Files& files() override { return files_; }
  std::string folder() override { return folder_.path(); }
  void Pass(int ms) override { loop_.Idle(ms); }

 private:
  TemporaryFolder folder_;
  RealLoopUnderTest loop_;
  FilesWin files_;
  MciWin mci_;
};

}  // namespace

std::unique_ptr<MciUnderTest> MakeMci() {
  return std::make_unique<RealMciUnderTest>();
}

}  // namespace corvane::contract
