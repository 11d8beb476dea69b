// Files that another program holds for a moment: scanners, indexers and synchronising clients open
// a new file for some milliseconds after it was written, and whoever writes, renames or deletes it
// meanwhile is refused.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "base/files.h"
#include "base/loop.h"

namespace corvane {

// The operations of another Files. One on a file that is refused with kPermissionDenied is tried
// again for up to kPatience_ms, in which nothing is dispatched, unless the file is read-only. A
// file that was held longer is tried once at a time for the next kDistrust_ms: a log that somebody
// keeps open must not delay every line that is read.
class PatientFiles : public Files {
 public:
  static constexpr int kPatience_ms = 250;
  static constexpr int kDistrust_ms = 60'000;

  // Both outlive it.
  PatientFiles(Files& files, Loop& loop) : files_(files), loop_(loop) {}

  [[nodiscard]] bool Exists(const std::string& path) override { return files_.Exists(path); }
  [[nodiscard]] bool IsDirectory(const std::string& path) override {
    return files_.IsDirectory(path);
  }
  [[nodiscard]] bool IsReadOnly(const std::string& path) override {
    return files_.IsReadOnly(path);
  }
  // Once: what refuses a folder does not pass.
  [[nodiscard]] FileError MakeDirectory(const std::string& path) override {
    return files_.MakeDirectory(path);
  }
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
  [[nodiscard]] std::string FromUtf8(std::string_view text) override {
    return files_.FromUtf8(text);
  }

 private:
  // `path` is what may be held, `other` as well where two are named.
  FileError Try(const std::string& path, const std::string& other,
                const std::function<FileError()>& operation);
  [[nodiscard]] bool MayPass(const std::string& path);

  Files& files_;
  Loop& loop_;
  std::map<std::string, std::int64_t> distrusted_until_ms_;  // by path
};

}  // namespace corvane
