// A disk that can be filled. CORVANE_SMALL_DISK names a folder on a file system of a few megabytes;
// without it, or on a larger one, the cases that want it fail.
#pragma once

#include <filesystem>

namespace corvane::desktop {

class SmallDisk {
 public:
  // New program folders lie on the disk while this exists.
  SmallDisk();
  ~SmallDisk();
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  // Not one byte is left.
  void Fill() const;
  void Free() const;

 private:
  std::filesystem::path filler_;
  std::filesystem::path usual_folder_;
};

}  // namespace corvane::desktop
