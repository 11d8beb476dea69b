// Whole-file operations on Win32 handles.
#include "base/files_win.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

// The system takes and gives at most so much at once.
constexpr std::size_t kLargestTransfer = 16 * 1024 * 1024;

// Not in every toolchain's headers.
constexpr DWORD kDiskQuotaExceeded = 1295;

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() {
    if (valid()) CloseHandle(handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  [[nodiscard]] bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
  [[nodiscard]] HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

FileError FromSystem(DWORD error) {
  switch (error) {
    case ERROR_SUCCESS:
      return kFileOk;
    case ERROR_FILE_NOT_FOUND:
      return kFileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_DRIVE:
      return kPathNotFound;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return kFileExists;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case kDiskQuotaExceeded:
      return kDiskFull;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return kPermissionDenied;
    default:
      return kPathAccess;
  }
}

bool Directory(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool ReadOnlyFile(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES &&
         (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) ==
             FILE_ATTRIBUTE_READONLY;
}

// The number for a failed operation on a file. The system denies access to a directory that is
// used as a file, which is no matter of permission.
FileError Failure(DWORD error, const std::string& path) {
  if (error == ERROR_ACCESS_DENIED && Directory(path)) return kPathAccess;
  return FromSystem(error);
}

// A path with a zero byte in it would be cut short there.
bool Usable(const std::string& path) {
  return path.find('\0') == std::string::npos;
}

// An open is refused as well when it shares less than those who were there before already use.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE OpenForWriting(const std::string& path, DWORD disposition) {
  return CreateFileA(path.c_str(), GENERIC_WRITE, kShareAll, nullptr, disposition,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

HANDLE OpenForReading(const std::string& path) {
  return CreateFileA(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                     FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
}

// Fills `bytes`, or cuts it at the end of the file.
DWORD ReadBytes(HANDLE file, std::string& bytes) {
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const auto wanted = static_cast<DWORD>(std::min(bytes.size() - filled, kLargestTransfer));
    DWORD got = 0;
    if (ReadFile(file, bytes.data() + filled, wanted, &got, nullptr) == 0) return GetLastError();
    if (got == 0) break;
    filled += got;
  }
  bytes.resize(filled);
  return ERROR_SUCCESS;
}

DWORD WriteBytes(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto size = static_cast<DWORD>(std::min(bytes.size(), kLargestTransfer));
    DWORD written = 0;
    if (WriteFile(file, bytes.data(), size, &written, nullptr) == 0) return GetLastError();
    if (written == 0) return ERROR_DISK_FULL;
    bytes.remove_prefix(written);
  }
  return ERROR_SUCCESS;
}

DWORD Seek(HANDLE file, LONGLONG distance, DWORD from) {
  LARGE_INTEGER offset{};
  offset.QuadPart = distance;
  return SetFilePointerEx(file, offset, nullptr, from) != 0 ? ERROR_SUCCESS : GetLastError();
}

}  // namespace

bool FilesWin::Exists(const std::string& path) {
  return Usable(path) && GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool FilesWin::IsDirectory(const std::string& path) {
  return Usable(path) && Directory(path);
}

bool FilesWin::IsReadOnly(const std::string& path) {
  return Usable(path) && ReadOnlyFile(path);
}

FileError FilesWin::MakeDirectory(const std::string& path) {
  if (!Usable(path)) return kPathAccess;
  if (CreateDirectoryA(path.c_str(), nullptr) != 0) return kFileOk;
  const DWORD error = GetLastError();
  return error == ERROR_ALREADY_EXISTS ? kPathAccess : FromSystem(error);
}

FileError FilesWin::Delete(const std::string& path) {
  if (!Usable(path)) return kPathAccess;
  return DeleteFileA(path.c_str()) != 0 ? kFileOk : Failure(GetLastError(), path);
}

FileError FilesWin::Rename(const std::string& from, const std::string& to) {
  if (!Usable(from) || !Usable(to)) return kPathAccess;
  return MoveFileExA(from.c_str(), to.c_str(), 0) != 0 ? kFileOk : FromSystem(GetLastError());
}

FileError FilesWin::MoveOver(const std::string& from, const std::string& to) {
  if (!Usable(from) || !Usable(to)) return kPathAccess;
  // Not every system that runs this program keeps a read-only file from being replaced.
  if (ReadOnlyFile(to)) return kPermissionDenied;
  const DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (MoveFileExA(from.c_str(), to.c_str(), flags) != 0) return kFileOk;
  const DWORD error = GetLastError();
  return Directory(to) ? kPathAccess : FromSystem(error);
}

FileError FilesWin::ReadAll(const std::string& path, std::string& content) {
  if (!Usable(path)) return kPathAccess;
  const Handle file(OpenForReading(path));
  if (!file.valid()) return Failure(GetLastError(), path);
  LARGE_INTEGER size{};
  if (GetFileSizeEx(file.get(), &size) == 0) return FromSystem(GetLastError());
  if (static_cast<std::uint64_t>(size.QuadPart) > kLargestFile) return kPathAccess;
  std::string read(static_cast<std::size_t>(size.QuadPart), '\0');
  if (const DWORD error = ReadBytes(file.get(), read)) return FromSystem(error);
  content = std::move(read);
  return kFileOk;
}

FileError FilesWin::ReadPart(const std::string& path, std::uint64_t offset, std::size_t size,
                             std::string& content) {
  if (!Usable(path)) return kPathAccess;
  const Handle file(OpenForReading(path));
  if (!file.valid()) return Failure(GetLastError(), path);
  if (const DWORD error = Seek(file.get(), static_cast<LONGLONG>(offset), FILE_BEGIN)) {
    return FromSystem(error);
  }
  std::string read(size, '\0');
  if (const DWORD error = ReadBytes(file.get(), read)) return FromSystem(error);
  content = std::move(read);
  return kFileOk;
}

FileError FilesWin::WriteAll(const std::string& path, std::string_view content) {
  if (!Usable(path)) return kPathAccess;
  const Handle file(OpenForWriting(path, CREATE_ALWAYS));
  if (!file.valid()) return Failure(GetLastError(), path);
  if (const DWORD error = WriteBytes(file.get(), content)) return FromSystem(error);
  return FlushFileBuffers(file.get()) != 0 ? kFileOk : FromSystem(GetLastError());
}

FileError FilesWin::Append(const std::string& path, std::string_view content) {
  if (!Usable(path)) return kPathAccess;
  const Handle file(OpenForWriting(path, OPEN_ALWAYS));
  if (!file.valid()) return Failure(GetLastError(), path);
  LARGE_INTEGER size{};
  if (GetFileSizeEx(file.get(), &size) == 0) return FromSystem(GetLastError());
  if (const DWORD error = Seek(file.get(), 0, FILE_END)) return FromSystem(error);
  const DWORD error = WriteBytes(file.get(), content);
  if (error != ERROR_SUCCESS && Seek(file.get(), size.QuadPart, FILE_BEGIN) == ERROR_SUCCESS) {
    SetEndOfFile(file.get());
  }
  return FromSystem(error);
}

FileError FilesWin::Patch(const std::string& path, std::uint32_t offset, std::string_view bytes) {
  if (!Usable(path)) return kPathAccess;
  const Handle file(OpenForWriting(path, OPEN_ALWAYS));
  if (!file.valid()) return Failure(GetLastError(), path);
  if (const DWORD error = Seek(file.get(), offset, FILE_BEGIN)) return FromSystem(error);
  return FromSystem(WriteBytes(file.get(), bytes));
}

std::string FilesWin::FromUtf8(std::string_view text) {
  if (text.empty()) return {};
  const auto length = static_cast<int>(std::min(text.size(), kLargestTransfer));
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), length)));
  const auto convert = [&wide](char* to, int size) {
    // Without the flag a letter that is not there becomes one that looks like it.
    return WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(),
                               static_cast<int>(wide.size()), to, size, "?", nullptr);
  };
  std::string ansi(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(ansi.data(), static_cast<int>(ansi.size()));
  return ansi;
}

}  // namespace corvane
