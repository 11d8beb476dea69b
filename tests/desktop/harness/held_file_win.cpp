// Sharing modes and attributes by the system's own calls.
#include "desktop/harness/held_file.h"

#include <windows.h>

#include <stdexcept>

namespace corvane::desktop {

HeldFile::HeldFile(const std::filesystem::path& file, Sharing sharing)
    : handle_(CreateFileW(file.wstring().c_str(), GENERIC_READ,
                          sharing == Sharing::kReadOnly ? FILE_SHARE_READ : 0, nullptr,
                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {
  if (handle_ == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot hold " + file.string());
}

HeldFile::~HeldFile() {
  CloseHandle(handle_);
}

void SetReadOnly(const std::filesystem::path& file, bool read_only) {
  const DWORD attributes = read_only ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL;
  if (SetFileAttributesW(file.wstring().c_str(), attributes) == 0) {
    throw std::runtime_error("cannot change " + file.string());
  }
}

}  // namespace corvane::desktop
