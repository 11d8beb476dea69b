// A file that is read while another program writes, renames or deletes it, and that stands in
// nobody's way meanwhile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace corvane::tools {

class SharedFile {
 public:
  SharedFile();
  ~SharedFile();
  SharedFile(SharedFile&& other) noexcept;
  SharedFile& operator=(SharedFile&& other) noexcept;

  // False when it cannot be opened, or is a folder.
  [[nodiscard]] bool Open(const std::filesystem::path& path);
  void Close();
  [[nodiscard]] bool is_open() const { return handle_ != nullptr; }

  // Reads on from where it stands; how many bytes came, 0 at the end and when reading fails.
  [[nodiscard]] std::size_t Read(char* to, std::size_t size);
  // From the beginning. False when there is no such place.
  [[nodiscard]] bool Seek(std::uint64_t offset);
  // As it is now; it may grow.
  [[nodiscard]] std::uint64_t Size() const;
  [[nodiscard]] bool failed() const { return failed_; }

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
  bool failed_ = false;
};

// All of it, up to `most` bytes. False when it cannot be read.
[[nodiscard]] bool ReadShared(const std::filesystem::path& path, std::size_t most,
                              std::string& content);

}  // namespace corvane::tools
