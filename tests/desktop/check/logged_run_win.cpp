// By CreateProcess, with the log as the standard outputs that the program inherits.
#include "desktop/check/logged_run.h"

#include <windows.h>

#include "desktop/harness/process.h"

namespace corvane::desktop {

namespace {

constexpr unsigned kEndedExitCode = 0xDEAD;

HANDLE OpenLog(const std::filesystem::path& log) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  return CreateFileW(log.wstring().c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                     &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

std::optional<unsigned> RunLogged(const std::string& command, const std::filesystem::path& log,
                                  int limit_s) {
  const HANDLE file = OpenLog(log);
  if (file == INVALID_HANDLE_VALUE) return std::nullopt;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = file;
  startup.hStdError = file;
  PROCESS_INFORMATION started{};
  std::wstring line = std::filesystem::path(command).wstring();
  const bool runs = CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                   OwnFolder().wstring().c_str(), &startup, &started) != FALSE;
  CloseHandle(file);
  if (!runs) return std::nullopt;
  std::optional<unsigned> code;
  if (WaitForSingleObject(started.hProcess, static_cast<DWORD>(limit_s) * 1000) == WAIT_OBJECT_0) {
    DWORD told = 0;
    GetExitCodeProcess(started.hProcess, &told);
    code = told;
  } else {
    TerminateProcess(started.hProcess, kEndedExitCode);
    WaitForSingleObject(started.hProcess, 10'000);
  }
  CloseHandle(started.hThread);
  CloseHandle(started.hProcess);
  return code;
}

}  // namespace corvane::desktop
