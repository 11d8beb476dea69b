// Where opening a file never hinders anybody.
#include <cstdio>
#include <system_error>

#include "archive/shared_file.h"

namespace corvane::tools {

struct SharedFile::Handle {
  std::FILE* stream = nullptr;
  std::filesystem::path path;
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
  std::error_code error;
  if (!std::filesystem::exists(path, error) || std::filesystem::is_directory(path, error)) {
    return false;
  }
  std::FILE* stream = std::fopen(path.c_str(), "rb");
  if (stream == nullptr) return false;
  std::setvbuf(stream, nullptr, _IONBF, 0);
  handle_ = std::make_unique<Handle>(Handle{stream, path});
  return true;
}

void SharedFile::Close() {
  if (handle_ != nullptr) std::fclose(handle_->stream);
  handle_.reset();
}

std::size_t SharedFile::Read(char* to, std::size_t size) {
  if (handle_ == nullptr) return 0;
  // What was appended since the last reading counts.
  std::clearerr(handle_->stream);
  const std::size_t got = std::fread(to, 1, size, handle_->stream);
  if (got == 0 && std::ferror(handle_->stream) != 0) failed_ = true;
  return got;
}

bool SharedFile::Seek(std::uint64_t offset) {
  return handle_ != nullptr &&
         std::fseek(handle_->stream, static_cast<long>(offset), SEEK_SET) == 0;
}

std::uint64_t SharedFile::Size() const {
  std::error_code error;
  if (handle_ == nullptr) return 0;
  const std::uintmax_t size = std::filesystem::file_size(handle_->path, error);
  return error ? 0 : size;
}

}  // namespace corvane::tools
