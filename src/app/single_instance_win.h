// One running program per program folder: two would write the same files and fight over SDR#.
#pragma once

#include <memory>
#include <string>

namespace corvane {

class SingleInstance {
 public:
  // Claims `program_folder` until the object or the process ends, however it ends.
  explicit SingleInstance(const std::string& program_folder);
  ~SingleInstance();

  // False: another program runs from this folder.
  [[nodiscard]] bool is_first() const;

  // Makes the first program's main window (an HWND) known to later ones.
  void PublishWindow(void* window);

  // Brings the first program's main window to the front, restored if it was minimised. Waits up to
  // kWindowWaitMs for it to be published. Nothing when it does not come.
  void BringFirstToFront();

  static constexpr int kWindowWaitMs = 3000;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace corvane
