// One running program per program folder: two would write the same files and fight over SDR#.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace corvane {

class SingleInstance {
 public:
  // Claims `program_folder` until the object or the process ends, however it ends.
  explicit SingleInstance(const std::string& program_folder);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // The name of the object that stands for the claim.
  [[nodiscard]] static std::string ClaimName(const std::string& program_folder);

  // False: another program runs from this folder, perhaps as administrator when this one does not.
  [[nodiscard]] bool is_first() const { return first_; }

  // Makes the first program's main window known to later ones.
  void PublishWindow(HWND window);

  // Brings the first program's main window to the front, restored if it was minimised. Waits up to
  // kWindowWaitMs for it to be published. Nothing when it does not come, or when this program may
  // not know it.
  void BringFirstToFront();

  static constexpr int kWindowWaitMs = 3000;

 private:
  HANDLE mutex_ = nullptr;
  HANDLE memory_ = nullptr;
  volatile std::uint64_t* window_ = nullptr;  // in the shared memory
  bool first_ = false;
};

}  // namespace corvane
