// Files, clock and running programs of Windows.
#include <windows.h>

#include <array>
#include <initializer_list>

#include "base/files_win.h"
#include "base/instance_name_win.h"
#include "base/wall_clock_win.h"
#include "tools/system.h"

namespace corvane::tools {

namespace {

constexpr DWORD kLongestPath = 32768;

using PathForm = DWORD(WINAPI*)(LPCSTR, LPSTR, DWORD);

DWORD WINAPI FullForm(LPCSTR path, LPSTR buffer, DWORD size) {
  return GetFullPathNameA(path, size, buffer, nullptr);
}

std::string InForm(PathForm form, const std::string& path) {
  std::string text(kLongestPath, '\0');
  const DWORD size = form(path.c_str(), text.data(), kLongestPath);
  text.resize(size < kLongestPath ? size : 0);
  while (text.ends_with('\\')) text.pop_back();
  return text;
}

bool IsClaimed(const std::string& folder) {
  if (folder.empty()) return false;
  const std::string name = InstanceObject(folder, kInstanceClaim);
  HANDLE claim = OpenMutexA(SYNCHRONIZE, FALSE, name.c_str());
  // One that may not be opened belongs to a program with more rights.
  if (claim == nullptr) return GetLastError() == ERROR_ACCESS_DENIED;
  CloseHandle(claim);
  return true;
}

// The system lets nobody write to the file of a program that runs, in whichever session.
bool IsRun(const std::string& program) {
  HANDLE file = CreateFileA(program.c_str(), GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_SHARING_VIOLATION;
  CloseHandle(file);
  return false;
}

// As programs take their command line apart again: marks and the backslashes before them are
// escaped.
std::string Quoted(const std::string& word) {
  std::string text = "\"";
  std::size_t backslashes = 0;
  for (const char c : word) {
    if (c == '"') text.append(backslashes + 1, '\\');
    backslashes = c == '\\' ? backslashes + 1 : 0;
    text += c;
  }
  text.append(backslashes, '\\');
  return text + '"';
}

class ProcessWin : public StartedProgram {
 public:
  explicit ProcessWin(HANDLE process) : process_(process) {}
  ~ProcessWin() override { CloseHandle(process_); }
  ProcessWin(const ProcessWin&) = delete;
  ProcessWin& operator=(const ProcessWin&) = delete;
  [[nodiscard]] std::optional<int> Code() override {
    DWORD code = 0;
    if (WaitForSingleObject(process_, 0) == WAIT_TIMEOUT) return std::nullopt;
    return GetExitCodeProcess(process_, &code) != 0 ? static_cast<int>(code) : -1;
  }

 private:
  HANDLE process_;
};

// A byte is locked that lies far behind whatever the file holds.
class ClaimWin : public FileClaim {
 public:
  explicit ClaimWin(const std::filesystem::path& file)
      : file_(CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE,
                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                          OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)) {
    OVERLAPPED place{};
    place.OffsetHigh = 0x40000000;
    taken_ = file_ != INVALID_HANDLE_VALUE &&
             LockFileEx(file_, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                        &place) == 0 &&
             GetLastError() == ERROR_LOCK_VIOLATION;
  }
  ~ClaimWin() override {
    if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
  }
  ClaimWin(const ClaimWin&) = delete;
  ClaimWin& operator=(const ClaimWin&) = delete;
  [[nodiscard]] bool taken() const { return taken_; }

 private:
  HANDLE file_;
  bool taken_ = false;
};

std::int64_t SecondsIn(const FILETIME& time) {
  constexpr std::int64_t kPerSecond = 10'000'000;
  const auto ticks = (static_cast<std::uint64_t>(time.dwHighDateTime) << 32U) | time.dwLowDateTime;
  return static_cast<std::int64_t>(ticks) / kPerSecond;
}

}  // namespace

std::unique_ptr<Files> SystemFiles() {
  return std::make_unique<FilesWin>();
}

std::unique_ptr<WallClock> SystemClock() {
  return std::make_unique<WallClockWin>();
}

std::int64_t SecondsAheadAt(std::int64_t second) {
  constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
  const auto ticks = static_cast<std::uint64_t>(second + kSecondsTo1970) * 10'000'000U;
  const FILETIME utc = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32U)};
  SYSTEMTIME utc_parts{};
  SYSTEMTIME local_parts{};
  FILETIME local{};
  if (FileTimeToSystemTime(&utc, &utc_parts) == 0 ||
      SystemTimeToTzSpecificLocalTime(nullptr, &utc_parts, &local_parts) == 0 ||
      SystemTimeToFileTime(&local_parts, &local) == 0) {
    return 0;
  }
  return SecondsIn(local) - SecondsIn(utc);
}

void WaitMs(int ms) {
  Sleep(static_cast<DWORD>(ms));
}

std::unique_ptr<StartedProgram> StartedProgram::Start(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + Quoted(word);
  STARTUPINFOA start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION started{};
  if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                     &started) == 0) {
    return nullptr;
  }
  CloseHandle(started.hThread);
  return std::make_unique<ProcessWin>(started.hProcess);
}

std::unique_ptr<FileClaim> FileClaim::Take(const std::filesystem::path& file) {
  auto claim = std::make_unique<ClaimWin>(file);
  if (claim->taken()) return nullptr;
  return claim;
}

bool CorvaneRunsIn(const std::string& folder) {
  const std::string full = InForm(FullForm, folder);
  // The program takes the form of its path that it can use.
  for (const std::string& form :
       {full, InForm(GetLongPathNameA, full), InForm(GetShortPathNameA, full)}) {
    if (IsClaimed(form)) return true;
  }
  return IsRun(folder + "\\Corvane.exe");
}

}  // namespace corvane::tools
