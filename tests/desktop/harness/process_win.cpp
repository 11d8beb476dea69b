// Processes by the system's own calls. A job object ends the started programs with the test.
#include "desktop/harness/process.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <iostream>

#include "desktop/harness/system_objects_win.h"

namespace corvane::desktop {

namespace {

constexpr unsigned kKilledExitCode = 0xDEAD;
constexpr DWORD kKillLimit_ms = 10'000;
constexpr int kMostRefusedStarts = 3;

// Where programs of all tests belong: closing its last handle, even by a crash, ends them.
HANDLE OwnJob() {
  static const HANDLE job = [] {
    HANDLE made = CreateJobObjectA(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(made, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return made;
  }();
  return job;
}

std::wstring Quoted(const std::wstring& argument) {
  return L"\"" + argument + L"\"";
}

// A file that the new process writes to, and that others read meanwhile.
HANDLE OpenOutput(const std::filesystem::path& file) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  const HANDLE opened = CreateFileW(file.c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    &inherited, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  return opened == INVALID_HANDLE_VALUE ? nullptr : opened;
}

// Makes the process, of which nothing runs yet. While other programs begin and are killed beside
// it, Wine 8 answers about one in 5,000 of such calls with ERROR_INTERNAL_ERROR: the new process is
// gone before anything of the program has run. Only that is asked again, and said.
bool CreateSuspended(const std::wstring& program, const std::wstring& command,
                     const std::wstring& folder, HANDLE output, PROCESS_INFORMATION& information) {
  for (int refused = 0;; ++refused) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (output != nullptr) {
      startup.dwFlags = STARTF_USESTDHANDLES;
      startup.hStdOutput = startup.hStdError = output;
    }
    std::wstring own_command = command;  // the call may change it
    if (CreateProcessW(program.c_str(), own_command.data(), nullptr, nullptr, output != nullptr,
                       CREATE_SUSPENDED, nullptr, folder.c_str(), &startup, &information)) {
      return true;
    }
    const DWORD error = GetLastError();
    std::cout << "the system did not make the process: error " << error << std::endl;
    if (error != ERROR_INTERNAL_ERROR || refused == kMostRefusedStarts) return false;
  }
}

// Both take the process handle; neither is in the import library.
bool CallNtdll(const char* function, HANDLE process) {
  using Call = LONG(WINAPI*)(HANDLE);
  const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  const auto call =
      reinterpret_cast<Call>(reinterpret_cast<void*>(GetProcAddress(ntdll, function)));
  return call != nullptr && call(process) >= 0;
}

}  // namespace

struct Process::Handles {
  HANDLE process = nullptr;
  DWORD id = 0;
};

Process::Process(std::unique_ptr<Handles> handles) : handles_(std::move(handles)) {}

Process::~Process() {
  Kill();
  CloseHandle(handles_->process);
}

std::unique_ptr<Process> Process::Start(const std::filesystem::path& program,
                                        const std::vector<std::string>& arguments,
                                        const std::filesystem::path& folder,
                                        const std::filesystem::path& output) {
  std::wstring command = Quoted(program.wstring());
  for (const std::string& argument : arguments) {
    command += L" " + Quoted(std::filesystem::path(argument).wstring());
  }
  PROCESS_INFORMATION information{};
  const HANDLE sink = output.empty() ? nullptr : OpenOutput(output);
  const bool made =
      CreateSuspended(program.wstring(), command, folder.wstring(), sink, information);
  if (sink != nullptr) CloseHandle(sink);
  if (!made) return nullptr;
  AssignProcessToJobObject(OwnJob(), information.hProcess);
  ResumeThread(information.hThread);
  CloseHandle(information.hThread);
  auto handles = std::make_unique<Handles>();
  handles->process = information.hProcess;
  handles->id = information.dwProcessId;
  return std::unique_ptr<Process>(new Process(std::move(handles)));
}

unsigned Process::Id() const {
  return handles_->id;
}

bool Process::Running() const {
  return WaitForSingleObject(handles_->process, 0) == WAIT_TIMEOUT;
}

std::optional<unsigned> Process::ExitCode() const {
  return WaitForExit(0);
}

std::optional<unsigned> Process::WaitForExit(int limit_ms) const {
  if (WaitForSingleObject(handles_->process, static_cast<DWORD>(limit_ms)) != WAIT_OBJECT_0) {
    return std::nullopt;
  }
  DWORD code = 0;
  GetExitCodeProcess(handles_->process, &code);
  return code;
}

void Process::Kill() {
  if (!Running()) return;
  TerminateProcess(handles_->process, kKilledExitCode);
  WaitForSingleObject(handles_->process, kKillLimit_ms);
}

bool Process::Suspend() {
  return CallNtdll("NtSuspendProcess", handles_->process);
}
bool Process::Resume() {
  return CallNtdll("NtResumeProcess", handles_->process);
}

namespace {

constexpr std::int64_t kTicksPerMicrosecond = 10;

std::int64_t TicksOf(const FILETIME& time) {
  return static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

// Summed up over its threads: of another process as a whole some systems tell nothing.
std::int64_t ProcessorTimeOf(DWORD process_id) {
  std::int64_t ticks = 0;
  const HANDLE threads = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  if (threads == INVALID_HANDLE_VALUE) return 0;
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Thread32First(threads, &entry); more; more = Thread32Next(threads, &entry)) {
    if (entry.th32OwnerProcessID != process_id) continue;
    const HANDLE thread = OpenThread(THREAD_QUERY_INFORMATION, FALSE, entry.th32ThreadID);
    if (thread == nullptr) continue;
    FILETIME begin{};
    FILETIME end{};
    FILETIME kernel{};
    FILETIME user{};
    if (GetThreadTimes(thread, &begin, &end, &kernel, &user) != FALSE) {
      ticks += TicksOf(kernel) + TicksOf(user);
    }
    CloseHandle(thread);
  }
  CloseHandle(threads);
  return ticks / kTicksPerMicrosecond;
}

}  // namespace

Process::Use Process::TheUse() const {
  Use use;
  const SystemObjects objects = ObjectsOf(handles_->process);
  use.handles = objects.handles;
  use.gdi_objects = objects.gdi;
  use.user_objects = objects.user;
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  if (GetProcessMemoryInfo(handles_->process, &memory, sizeof memory) != FALSE) {
    use.private_kib = memory.PagefileUsage / 1024;
  }
  use.processor_us = ProcessorTimeOf(Id());
  return use;
}

std::filesystem::path OwnFolder() {
  std::wstring path(32'768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return std::filesystem::path(path).parent_path();
}

unsigned OwnProcessId() {
  return GetCurrentProcessId();
}

}  // namespace corvane::desktop
