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

}  // namespace

std::unique_ptr<Files> SystemFiles() {
  return std::make_unique<FilesWin>();
}

std::unique_ptr<WallClock> SystemClock() {
  return std::make_unique<WallClockWin>();
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
