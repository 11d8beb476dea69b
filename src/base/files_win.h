// The files of the system. Other programs may do with an open file what they like: who looks at it
// for a moment, as a virus scanner does, is not refused. A file that they have locked gives
// kPermissionDenied.
#pragma once

#include "base/files.h"

namespace corvane {

class FilesWin : public Files {
 public:
  // No file of the program is larger; ReadAll gives kPathAccess for one that is.
  static constexpr std::uint64_t kLargestFile = 1024ULL * 1024 * 1024;

  [[nodiscard]] bool Exists(const std::string& path) override;
  [[nodiscard]] bool IsDirectory(const std::string& path) override;
  [[nodiscard]] bool IsReadOnly(const std::string& path) override;
  [[nodiscard]] FileError MakeDirectory(const std::string& path) override;
  [[nodiscard]] FileError Delete(const std::string& path) override;
  [[nodiscard]] FileError Rename(const std::string& from, const std::string& to) override;
  [[nodiscard]] FileError MoveOver(const std::string& from, const std::string& to) override;
  [[nodiscard]] FileError ReadAll(const std::string& path, std::string& content) override;
  [[nodiscard]] FileError ReadPart(const std::string& path, std::uint64_t offset, std::size_t size,
                                   std::string& content) override;
  [[nodiscard]] FileError WriteAll(const std::string& path, std::string_view content) override;
  [[nodiscard]] FileError Append(const std::string& path, std::string_view content) override;
  [[nodiscard]] FileError Patch(const std::string& path, std::uint32_t offset,
                                std::string_view bytes) override;
  [[nodiscard]] std::string FromUtf8(std::string_view text) override;
};

}  // namespace corvane
