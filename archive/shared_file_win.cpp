// Every kind of sharing is allowed: Corvane may write, rename and delete what is open here.
#include <windows.h>

#include <algorithm>

#include "archive/shared_file.h"

namespace corvane::tools {

struct SharedFile::Handle {
  HANDLE file = INVALID_HANDLE_VALUE;
};

SharedFile::SharedFile() = default;
SharedFile::~SharedFile() {
  Close();
}
SharedFile::SharedFile(SharedFile&& other) noexcept = default;
SharedFile& SharedFile::operator=(SharedFile&& other) noexcept {
  if (this == &other) return *this;
  Close();
  handle_ = std::move(other.handle_);
  failed_ = other.failed_;
  return *this;
}

bool SharedFile::Open(const std::filesystem::path& path) {
  Close();
  failed_ = false;
  const HANDLE file = CreateFileW(
      path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  handle_ = std::make_unique<Handle>(Handle{file});
  return true;
}

void SharedFile::Close() {
  if (handle_ != nullptr) CloseHandle(handle_->file);
  handle_.reset();
}

std::size_t SharedFile::Read(char* to, std::size_t size) {
  constexpr std::size_t kMost = 1U << 30U;
  if (handle_ == nullptr) return 0;
  DWORD got = 0;
  if (::ReadFile(handle_->file, to, static_cast<DWORD>(std::min(size, kMost)), &got, nullptr) ==
      0) {
    failed_ = true;
    return 0;
  }
  return got;
}

bool SharedFile::Seek(std::uint64_t offset) {
  LARGE_INTEGER place;
  place.QuadPart = static_cast<LONGLONG>(offset);
  return handle_ != nullptr && SetFilePointerEx(handle_->file, place, nullptr, FILE_BEGIN) != 0;
}

std::uint64_t SharedFile::Size() const {
  LARGE_INTEGER size;
  if (handle_ == nullptr || GetFileSizeEx(handle_->file, &size) == 0) return 0;
  return static_cast<std::uint64_t>(size.QuadPart);
}

}  // namespace corvane::tools
