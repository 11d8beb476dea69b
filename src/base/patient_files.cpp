// Trying again, and for how long not.
#include "base/patient_files.h"

namespace corvane {

namespace {
constexpr int kPause_ms = 10;
// The logs of a day have new names on the next.
constexpr std::size_t kMostDistrusted = 64;
}  // namespace

bool PatientFiles::MayPass(const std::string& path) {
  const auto found = distrusted_until_ms_.find(path);
  if (found != distrusted_until_ms_.end() && loop_.TickMs() < found->second) return false;
  return !files_.IsReadOnly(path);
}

FileError PatientFiles::Try(const std::string& path, const std::string& other,
                            const std::function<FileError()>& operation) {
  FileError error = operation();
  if (error == kPermissionDenied && MayPass(path) && (other.empty() || MayPass(other))) {
    const std::int64_t end_ms = loop_.TickMs() + kPatience_ms;
    while (error == kPermissionDenied && loop_.TickMs() < end_ms) {
      loop_.Sleep(kPause_ms);
      error = operation();
    }
    if (error == kPermissionDenied) {
      if (distrusted_until_ms_.size() >= kMostDistrusted) distrusted_until_ms_.clear();
      distrusted_until_ms_[path] = loop_.TickMs() + kDistrust_ms;
    }
  }
  if (error != kPermissionDenied && !distrusted_until_ms_.empty()) {
    distrusted_until_ms_.erase(path);
  }
  return error;
}

FileError PatientFiles::Delete(const std::string& path) {
  return Try(path, {}, [&] { return files_.Delete(path); });
}

FileError PatientFiles::Rename(const std::string& from, const std::string& to) {
  return Try(from, {}, [&] { return files_.Rename(from, to); });
}

FileError PatientFiles::MoveOver(const std::string& from, const std::string& to) {
  return Try(to, from, [&] { return files_.MoveOver(from, to); });
}

FileError PatientFiles::ReadAll(const std::string& path, std::string& content) {
  return Try(path, {}, [&] { return files_.ReadAll(path, content); });
}

FileError PatientFiles::ReadPart(const std::string& path, std::uint64_t offset, std::size_t size,
                                 std::string& content) {
  return Try(path, {}, [&] { return files_.ReadPart(path, offset, size, content); });
}

FileError PatientFiles::WriteAll(const std::string& path, std::string_view content) {
  return Try(path, {}, [&] { return files_.WriteAll(path, content); });
}

FileError PatientFiles::Append(const std::string& path, std::string_view content) {
  return Try(path, {}, [&] { return files_.Append(path, content); });
}

FileError PatientFiles::Patch(const std::string& path, std::uint32_t offset,
                              std::string_view bytes) {
  return Try(path, {}, [&] { return files_.Patch(path, offset, bytes); });
}

}  // namespace corvane
