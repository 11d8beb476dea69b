// The file system seam: whole-file operations, each of which either happens or gives a number.
//
// Paths are absolute, in the ANSI code page, with "\" between the parts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {

// Failure numbers as the message boxes show them. 0 is success.
using FileError = int;
inline constexpr FileError kFileOk = 0;
inline constexpr FileError kFileNotFound = 53;
inline constexpr FileError kFileExists = 58;
inline constexpr FileError kDiskFull = 61;
inline constexpr FileError kPermissionDenied = 70;  // in use by another program, or read-only
inline constexpr FileError kPathAccess = 75;        // any other failure
inline constexpr FileError kPathNotFound = 76;

class Files {
 public:
  virtual ~Files() = default;

  // True when the attributes can be read (a directory counts); false on any error.
  [[nodiscard]] virtual bool Exists(const std::string& path) = 0;
  [[nodiscard]] virtual bool IsDirectory(const std::string& path) = 0;
  // True for a file that the user, or who installed it, has marked as not to be written.
  [[nodiscard]] virtual bool IsReadOnly(const std::string& path) = 0;
  [[nodiscard]] virtual FileError MakeDirectory(const std::string& path) = 0;
  [[nodiscard]] virtual FileError Delete(const std::string& path) = 0;

  // Fails with kFileExists when `to` is there already.
  [[nodiscard]] virtual FileError Rename(const std::string& from, const std::string& to) = 0;
  // Puts `from` in the place of `to` in one step; a reader sees the one or the other whole.
  [[nodiscard]] virtual FileError MoveOver(const std::string& from, const std::string& to) = 0;

  [[nodiscard]] virtual FileError ReadAll(const std::string& path, std::string& content) = 0;
  // Reads up to `size` bytes from `offset` on; fewer, or none, where the file ends.
  [[nodiscard]] virtual FileError ReadPart(const std::string& path, std::uint64_t offset,
                                           std::size_t size, std::string& content) = 0;
  // Creates or empties the file, writes the content and has the system put it on the disk. After a
  // failure the file may hold a part of it.
  [[nodiscard]] virtual FileError WriteAll(const std::string& path, std::string_view content) = 0;
  // Opens for appending (creating), writes, closes. After a failure no part of `content` is left
  // behind, as far as the system allows.
  [[nodiscard]] virtual FileError Append(const std::string& path, std::string_view content) = 0;
  // Writes `bytes` at `offset` (from 0) without truncating; creates the file if it is missing.
  [[nodiscard]] virtual FileError Patch(const std::string& path, std::uint32_t offset,
                                        std::string_view bytes) = 0;

  // UTF-8 as text of the code page that paths and files are in; what that does not hold, and what
  // is no UTF-8, becomes "?".
  [[nodiscard]] virtual std::string FromUtf8(std::string_view text) = 0;
};

// Replaces the content of `path` in one step: writes a temporary file beside it, then moves that
// over. On failure the old file is whole, the temporary file is removed and the number returned.
[[nodiscard]] FileError ReplaceContent(Files& files, const std::string& path,
                                       std::string_view content);

}  // namespace corvane
