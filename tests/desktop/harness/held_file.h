// Files that a tested program cannot use: held by another program, or marked read-only.
#pragma once

#include <filesystem>

namespace corvane::desktop {

// Keeps a file open, as another program would.
class HeldFile {
 public:
  enum class Sharing {
    kNone,      // nobody else can open it
    kReadOnly,  // others can read it, but neither write, delete nor replace it
  };
  // Throws when the file cannot be opened.
  HeldFile(const std::filesystem::path& file, Sharing sharing);
  ~HeldFile();
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

 private:
  void* handle_;
};

// Throws when the attribute cannot be changed.
void SetReadOnly(const std::filesystem::path& file, bool read_only);

}  // namespace corvane::desktop
